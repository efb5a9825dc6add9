# Shared helpers for the end-to-end scripts: the real program on the real
# display, each test with its own session bus (started by the caller).
program="$LANTERN_PROGRAM_DIR/lantern"
settings="$XDG_CONFIG_HOME/Fernwick Nib 2007.ini"
export QT_QPA_PLATFORM=xcb
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
failures=0
passes=0

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
pass() { echo "ok: $*"; passes=$((passes + 1)); }
check() { local what=$1; shift; if "$@"; then pass "$what"; else fail "$what"; fi; }

# Waits until a visible window with that exact title exists; prints its id.
wait_for_window() {
  local title=$1 timeout=${2:-20} id
  for _ in $(seq 1 $((timeout * 10))); do
    id=$(xdotool search --onlyvisible --name "^${title}\$" 2>/dev/null | head -n 1)
    [ -n "$id" ] && { echo "$id"; return 0; }
    sleep 0.1
  done
  return 1
}

window_count() {
  xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | wc -l
}

# Waits for a process to end; false when it is still running after the time.
wait_for_exit() {
  local pid=$1 timeout=${2:-10}
  for _ in $(seq 1 $((timeout * 10))); do
    kill -0 "$pid" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}

screenshot() {
  mkdir -p "$LANTERN_BUILD_DIR/screenshots"
  /usr/bin/import -window root "$LANTERN_BUILD_DIR/screenshots/$1.png" 2>/dev/null
}

finish() {
  echo "$passes passed, $failures failed"
  [ "$failures" -eq 0 ]
}
