#!/usr/bin/env bash
# Runs a command inside a private IBus + Mozc session:
#   scripts/ibus-session.sh COMMAND [ARGS...]
# Mozc refuses to run as root, so when started as root the whole session (its
# own D-Bus session bus, ibus-daemon, mozc_server and COMMAND) runs as the
# unprivileged user 65534 with a fresh HOME of its own: Mozc learns from use,
# and every run must start from the same, empty profile. The session gets an
# X display of its own (a private Xvfb) where Xvfb is installed, so that the
# keyboard focus and the mouse belong to it alone even while other tests run;
# otherwise it uses the one in $DISPLAY.
# Environment inside COMMAND: HOME, XDG_CONFIG_HOME, QT_IM_MODULE=ibus,
# QT_QPA_PLATFORM=xcb, IBUS_ADDRESS_FILE; LANTERN_IBUS_SESSION=1; DISPLAY.
set -euo pipefail

if [ "${1:-}" = "--inside" ]; then
  shift
  # From here on we are the session's own user, inside its own session bus.
  log="$HOME/ibus.log"
  ibus-daemon --daemonize --replace --panel=disable --emoji-extension=disable \
              --config=disable >"$log" 2>&1 || true
  for _ in $(seq 1 200); do
    ibus list-engine >/dev/null 2>&1 && break
    sleep 0.05
  done
  # The engine may be reported as failed and still be set: read it back.
  for _ in $(seq 1 100); do
    ibus engine mozc-jp >/dev/null 2>&1 || true
    [ "$(ibus engine 2>/dev/null)" = "mozc-jp" ] && break
    sleep 0.1
  done
  if [ "$(ibus engine 2>/dev/null)" != "mozc-jp" ]; then
    echo "ibus-session: the mozc-jp engine did not start" >&2
    ibus exit >/dev/null 2>&1 || true
    exit 77
  fi
  IBUS_ADDRESS_FILE=$(ls "$XDG_CONFIG_HOME"/ibus/bus/* | head -n 1)
  export IBUS_ADDRESS_FILE
  status=0
  "$@" || status=$?
  ibus exit >/dev/null 2>&1 || true
  # mozc_server outlives the daemon: stop ours, found by our own user and HOME.
  for pid in $(pgrep -u "$(id -u)" -x mozc_server || true); do
    if tr '\0' '\n' <"/proc/$pid/environ" 2>/dev/null | grep -qx "HOME=$HOME"; then
      kill "$pid" 2>/dev/null || true
    fi
  done
  exit $status
fi

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }
command -v ibus-daemon >/dev/null && [ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] \
  || { echo "ibus-session: ibus or ibus-mozc is missing" >&2; exit 77; }

root=$(mktemp -d "${TMPDIR:-/tmp}/lantern-ibus.XXXXXX")
chmod 755 "$root"
xvfb_pid=
cleanup() {
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null
  rm -rf "$root"
}
trap cleanup EXIT

if command -v Xvfb >/dev/null; then
  # Xvfb picks a free display itself and tells its number on a descriptor.
  exec 3> "$root/display"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset >/dev/null 2>&1 &
  xvfb_pid=$!
  exec 3>&-
  for _ in $(seq 1 100); do
    [ -s "$root/display" ] && break
    sleep 0.05
  done
  [ -s "$root/display" ] || { echo "ibus-session: Xvfb did not start" >&2; exit 77; }
  export DISPLAY=":$(head -n 1 "$root/display")"
fi
[ -n "${DISPLAY:-}" ] || { echo "ibus-session: no X display" >&2; exit 77; }
# LANTERN_SESSION_HOME keeps the session's home between runs (make run uses
# it so that documents survive); tests always get a fresh one.
home="${LANTERN_SESSION_HOME:-$root/home}"
mkdir -p "$home/.config" "$home/.local/share" "$home/.cache"
script=$(readlink -f "$0")

run_as=()
if [ "$(id -u)" = 0 ]; then
  chown -R 65534:65534 "$home"
  run_as=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  # The unprivileged user must reach this script and the command.
  if ! "${run_as[@]}" test -r "$script" || ! "${run_as[@]}" bash -c 'command -v "$1" >/dev/null' _ "$1"; then
    echo "ibus-session: user 65534 cannot run $1 (is the build tree readable by others?)" >&2
    exit 77
  fi
fi

status=0
"${run_as[@]}" env -u DBUS_SESSION_BUS_ADDRESS -u XDG_RUNTIME_DIR \
  HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
  XDG_CACHE_HOME="$home/.cache" XDG_STATE_HOME="$home/.local/state" \
  QT_IM_MODULE=ibus GTK_IM_MODULE=ibus XMODIFIERS=@im=ibus QT_QPA_PLATFORM=xcb \
  LANTERN_IBUS_SESSION=1 LANTERN_POWER_CONTROL="${LANTERN_POWER_CONTROL:-}" \
  dbus-run-session -- bash "$script" --inside "$@" || status=$?
exit $status
