#!/usr/bin/env bash
# Runs a command inside a private input-method session with Mozc:
#   scripts/im-session.sh ibus|fcitx5 COMMAND [ARGS...]
# (scripts/ibus-session.sh and scripts/fcitx-session.sh name the framework.)
# Mozc refuses to run as root, so when started as root the whole session (its
# own D-Bus session bus, the framework, mozc_server and COMMAND) runs as the
# unprivileged user 65534 with a fresh HOME of its own: Mozc learns from use,
# and every run must start from the same, empty profile. The session gets an
# X display of its own (a private Xvfb) where Xvfb is installed, so that the
# keyboard focus and the mouse belong to it alone even while other tests run;
# otherwise it uses the one in $DISPLAY.
# Environment inside COMMAND: HOME, XDG_CONFIG_HOME, QT_IM_MODULE,
# XMODIFIERS, QT_QPA_PLATFORM=xcb, DISPLAY; LANTERN_IM_SESSION=ibus|fcitx5;
# under IBus also IBUS_ADDRESS_FILE and LANTERN_IBUS_SESSION=1.
# Exit status 77: this machine cannot hold such a session (the reason is said).
set -euo pipefail

say() { echo "im-session: $*" >&2; }

# Our own mozc_server, found by our own user and HOME: it outlives the
# framework that started it.
stop_our_mozc() {
  for pid in $(pgrep -u "$(id -u)" -x mozc_server || true); do
    if tr '\0' '\n' <"/proc/$pid/environ" 2>/dev/null | grep -qx "HOME=$HOME"; then
      kill "$pid" 2>/dev/null || true
    fi
  done
}

start_ibus() {
  ibus-daemon --daemonize --replace --panel=disable --emoji-extension=disable \
              --config=disable >"$HOME/ibus.log" 2>&1 || true
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
    say "the mozc-jp engine did not start"
    ibus exit >/dev/null 2>&1 || true
    return 1
  fi
  IBUS_ADDRESS_FILE=$(ls "$XDG_CONFIG_HOME"/ibus/bus/* | head -n 1)
  export IBUS_ADDRESS_FILE
}

stop_ibus() {
  ibus exit >/dev/null 2>&1 || true
}

# Asks the bus whether a name has an owner, never starting anything: any call
# to Fcitx's own name would start a second fcitx5 through bus activation.
has_owner() {
  busctl --user --auto-start=no call org.freedesktop.DBus /org/freedesktop/DBus \
    org.freedesktop.DBus NameHasOwner s "$1" 2>/dev/null | grep -q true
}

fcitx_pid=
start_fcitx5() {
  local config="$XDG_CONFIG_HOME/fcitx5"
  mkdir -p "$config"
  # One group: the US keyboard and Mozc. Mozc is off in a new window, as
  # under IBus; the kanji key (Zenkaku_Hankaku) switches it on and off.
  cat >"$config/profile" <<'EOF'
[Groups/0]
Name=Default
Default Layout=us
DefaultIM=mozc

[Groups/0/Items/0]
Name=keyboard-us
Layout=

[Groups/0/Items/1]
Name=mozc
Layout=

[GroupOrder]
0=Default
EOF
  cat >"$config/config" <<'EOF'
[Behavior]
ActiveByDefault=False
ShareInputState=No
EOF
  # classicui draws the candidates; notificationitem tells Mozc's mode.
  fcitx5 -D --disable=all \
    --enable=xcb,dbus,dbusfrontend,keyboard,mozc,classicui,notificationitem \
    >"$HOME/fcitx5.log" 2>&1 &
  fcitx_pid=$!
  for _ in $(seq 1 200); do
    has_owner org.fcitx.Fcitx5 && return 0
    kill -0 "$fcitx_pid" 2>/dev/null || break
    sleep 0.05
  done
  say "fcitx5 did not come up on the session bus"
  stop_fcitx5
  return 1
}

stop_fcitx5() {
  [ -n "$fcitx_pid" ] || return 0
  busctl --user --auto-start=no call org.fcitx.Fcitx5 /controller \
    org.fcitx.Fcitx.Controller1 Exit >/dev/null 2>&1 || true
  for _ in $(seq 1 60); do
    kill -0 "$fcitx_pid" 2>/dev/null || break
    sleep 0.05
  done
  kill "$fcitx_pid" 2>/dev/null || true
  wait "$fcitx_pid" 2>/dev/null || true
  fcitx_pid=
}

if [ "${1:-}" = "--inside" ]; then
  framework=$2
  shift 2
  # From here on we are the session's own user, inside its own session bus.
  "start_$framework" || { stop_our_mozc; exit 77; }
  status=0
  "$@" || status=$?
  "stop_$framework"
  stop_our_mozc
  exit $status
fi

framework=${1:-}
shift || true
case "$framework" in
  ibus)
    command -v ibus-daemon >/dev/null && [ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] \
      || { say "IBus or ibus-mozc is not installed"; exit 77; }
    im_module=ibus ;;
  fcitx5)
    installed() { [ -n "$(find /usr/lib -path "$1" -print -quit 2>/dev/null)" ]; }
    command -v fcitx5 >/dev/null && installed '*/fcitx5/fcitx5-mozc.so' \
      || { say "Fcitx 5 or fcitx5-mozc is not installed"; exit 77; }
    installed '*/qt6/plugins/platforminputcontexts/libfcitx5platforminputcontextplugin.so' \
      || { say "fcitx5-frontend-qt6 (the Qt 6 plugin of Fcitx 5) is not installed"; exit 77; }
    im_module=fcitx ;;
  *) echo "usage: $0 ibus|fcitx5 COMMAND [ARGS...]" >&2; exit 2 ;;
esac
[ $# -gt 0 ] || { echo "usage: $0 $framework COMMAND [ARGS...]" >&2; exit 2; }

root=$(mktemp -d "${TMPDIR:-/tmp}/lantern-im.XXXXXX")
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
  [ -s "$root/display" ] || { say "Xvfb did not start"; exit 77; }
  export DISPLAY=":$(head -n 1 "$root/display")"
fi
[ -n "${DISPLAY:-}" ] || { say "no X display"; exit 77; }
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
    say "user 65534 cannot run $1 (is the build tree readable by others?)"
    exit 77
  fi
fi

ibus_flag=()
[ "$framework" = ibus ] && ibus_flag=(LANTERN_IBUS_SESSION=1)
status=0
"${run_as[@]}" env -u DBUS_SESSION_BUS_ADDRESS -u XDG_RUNTIME_DIR -u LANTERN_IM_FRAMEWORK \
  HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
  XDG_CACHE_HOME="$home/.cache" XDG_STATE_HOME="$home/.local/state" \
  QT_IM_MODULE=$im_module GTK_IM_MODULE=$im_module XMODIFIERS=@im=$im_module QT_QPA_PLATFORM=xcb \
  LANTERN_IM_SESSION=$framework "${ibus_flag[@]}" LANTERN_POWER_CONTROL="${LANTERN_POWER_CONTROL:-}" \
  dbus-run-session -- bash "$script" --inside "$framework" "$@" || status=$?
exit $status
