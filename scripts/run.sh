#!/usr/bin/env bash
# Starts Lantern from the build tree. With no display, it runs on a virtual one
# and writes a screenshot after start-up so that the window can be looked at.
set -euo pipefail
build=${1:-build}
program="$build/bin/lantern"

if [ -n "${DISPLAY:-}" ]; then
  exec "$program"
fi

shot="$PWD/$build/lantern-screenshot.png"
# A virtual screen is no real desktop session: power requests are written down
# instead of switching this machine off.
export LANTERN_POWER_CONTROL="record:$PWD/$build/power-requests.log"
echo "No display: starting Lantern on a virtual screen (1920x1080)."
echo "A screenshot is written to $shot every 10 seconds; stop with Ctrl+C."
exec bash scripts/with-session.sh bash -c '
  "$0" &
  pid=$!
  trap "kill $pid 2>/dev/null" EXIT INT TERM
  while kill -0 $pid 2>/dev/null; do
    sleep 10
    import -window root "$1" 2>/dev/null || xwd -root -silent | convert xwd:- "$1" 2>/dev/null || true
  done
' "$program" "$shot"
