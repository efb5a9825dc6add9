#!/usr/bin/env bash
# The widget suites of the touch controls, window shaping and flat scroll bars
# again on a real X server: hover, grabs and window flags go through the X11
# platform there instead of the off-screen one.
set -u
if [ -z "${DISPLAY:-}" ]; then
  echo "no X display; run through scripts/with-session.sh" >&2
  exit 1
fi
export QT_QPA_PLATFORM=xcb
status=0
for suite in test_touch_platform test_userform_app test_flatscrollbar_tools; do
  program="$LANTERN_BUILD_DIR/tests/$suite"
  if [ ! -x "$program" ]; then
    echo "missing $program" >&2
    status=1
    continue
  fi
  "$program" -silent || status=1
done
exit $status
