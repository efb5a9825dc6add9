#!/usr/bin/env bash
# Runs a command with a display and a D-Bus session bus: the real ones when they
# exist, otherwise a private Xvfb and a private session bus that end with it.
set -euo pipefail

if [ -z "${DISPLAY:-}" ]; then
  for n in $(seq 90 130); do
    [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] || { display=":$n"; break; }
  done
  Xvfb "$display" -screen 0 1920x1080x24 -nolisten tcp >/dev/null 2>&1 &
  xvfb_pid=$!
  trap 'kill $xvfb_pid 2>/dev/null || true' EXIT
  for _ in $(seq 1 100); do
    [ -e "/tmp/.X11-unix/X${display#:}" ] && break
    sleep 0.05
  done
  export DISPLAY="$display"
fi

if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ]; then
  exec_cmd=(dbus-run-session -- "$@")
else
  exec_cmd=("$@")
fi
"${exec_cmd[@]}"
