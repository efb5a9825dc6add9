#!/usr/bin/env bash
# Each shipped character greets on the X display; a picture of it speaking is
# saved and checked. Run by hand with LANTERN_SCREENSHOT_DIR=<folder> to keep
# the pictures (and the raw screen as the X server shows it, *-screen.png) and
# look at them.
set -euo pipefail
. "$(dirname "$0")/../../support/isolation.sh"

build="${LANTERN_BUILD_DIR:?}"
preview="$build/programs/character_preview"
out="${LANTERN_SCREENSHOT_DIR:-${LANTERN_TEST_ROOT:-$(mktemp -d)}/shots}"
mkdir -p "$out"

if [ -z "${DISPLAY:-}" ]; then
  echo "no X display: nothing to look at"
  exit 0
fi
export QT_QPA_PLATFORM=xcb

for file in "$LANTERN_PROGRAM_DIR"/CHARS/*.ACS; do
  name=$(basename "$file" .ACS)
  shot="$out/greeting-$name.png"
  report=$("$preview" "$file" "$shot" "hello!")
  echo "$report"

  grep -q "^character $name visible 1 " <<<"$report" || { echo "FAIL: $name was not shown"; exit 1; }
  grep -q "^balloon visible 1 .*: こんにちは。今日もよろしくお願いします。$" <<<"$report" \
    || { echo "FAIL: $name's balloon did not show the greeting"; exit 1; }

  # A real picture: large enough for character and balloon, and not one flat colour.
  size=$(/usr/bin/identify -format '%w %h' "$shot")
  read -r width height <<<"$size"
  [ "$width" -ge 250 ] && [ "$height" -ge 300 ] || { echo "FAIL: $shot is only $size"; exit 1; }
  spread=$(/usr/bin/convert "$shot" -colorspace Gray -format '%[fx:standard_deviation]' info:)
  awk -v s="$spread" 'BEGIN { exit !(s > 0.05) }' || { echo "FAIL: $shot is nearly blank ($spread)"; exit 1; }
  echo "$name: $shot ${width}x${height}, spread $spread"
done
