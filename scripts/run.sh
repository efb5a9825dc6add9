#!/usr/bin/env bash
# Starts Lantern from the build tree. With no display, it runs on a virtual one
# and writes a screenshot every ten seconds so that the window can be looked at.
set -euo pipefail
build=${1:-build}
program="$PWD/$build/bin/lantern"

if [ -n "${DISPLAY:-}" ]; then
  exec "$program"
fi

# A virtual screen is no real desktop session: power requests are written down
# instead of switching this machine off.
export LANTERN_POWER_CONTROL="record:/tmp/lantern-power-requests.log"
echo "No display: starting Lantern on a virtual screen."

# The loop that keeps a picture of the screen; runs beside the program.
watch='
  "$1" &
  pid=$!
  trap "kill $pid 2>/dev/null" EXIT INT TERM
  while kill -0 $pid 2>/dev/null; do
    sleep 10
    /usr/bin/import -window root "$2.part.png" 2>/dev/null && mv "$2.part.png" "$2" || true
  done
'

if [ "$(id -u)" = 0 ] && [ -x /usr/lib/ibus-mozc/ibus-engine-mozc ]; then
  # The Japanese input method (Mozc) refuses to run as root, so the whole
  # session runs as the unprivileged user 65534 with a home of its own under
  # the build folder: documents and settings survive from one run to the next.
  home="$PWD/$build/run-home"
  mkdir -p "$home"
  chown -R 65534:65534 "$home"
  chmod 755 "$home"
  shot="$home/lantern-screenshot.png"
  echo "The program runs as user 65534 with its files in $home;"
  echo "a screenshot is written to $shot every 10 seconds. Stop with Ctrl+C."
  LANTERN_SESSION_HOME="$home" exec bash scripts/ibus-session.sh bash -c "$watch" _ "$program" "$shot"
fi

shot="$PWD/$build/lantern-screenshot.png"
echo "A screenshot is written to $shot every 10 seconds; stop with Ctrl+C."
exec bash scripts/with-session.sh bash -c "$watch" _ "$program" "$shot"
