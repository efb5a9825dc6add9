#!/usr/bin/env bash
# Runs a command with a display and a D-Bus session bus: the real ones when they
# exist, otherwise a private Xvfb and a private session bus that end with it.
set -euo pipefail

if [ -z "${DISPLAY:-}" ]; then
  # Xvfb picks a free display number itself and writes it to us, so that
  # several sessions started at once never share a screen. Without -noreset
  # it resets each time its last client leaves, and a program that connects
  # during the reset finds no display.
  number_file=$(mktemp)
  exec 3>"$number_file"
  Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset >/dev/null 2>&1 &
  xvfb_pid=$!
  exec 3>&-
  trap 'kill $xvfb_pid 2>/dev/null || true; rm -f "$number_file"' EXIT
  for _ in $(seq 1 200); do
    [ -s "$number_file" ] && break
    sleep 0.05
  done
  export DISPLAY=":$(tr -d '[:space:]' < "$number_file")"
  # Wait until the screen answers, so the first client never finds it absent.
  for _ in $(seq 1 100); do
    xdpyinfo >/dev/null 2>&1 && break
    sleep 0.05
  done
fi

if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ]; then
  exec_cmd=(dbus-run-session -- "$@")
else
  exec_cmd=("$@")
fi
"${exec_cmd[@]}"
