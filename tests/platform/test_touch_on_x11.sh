#!/usr/bin/env bash
# The widget suites of the touch controls, window shaping, flat scroll bars and
# the window-buffer warm-up again on a real X server: hover, grabs, window
# flags and shared-memory buffers go through the X11 platform there instead
# of the off-screen one.
set -u
. "$(dirname "$0")/../support/isolation.sh"
if [ -z "${DISPLAY:-}" ]; then
  echo "no X display; run through scripts/with-session.sh" >&2
  exit 1
fi
export QT_QPA_PLATFORM=xcb
status=0
for suite in test_touch_platform test_userform_app test_flatscrollbar_tools test_backing_store_warmup_platform; do
  program="$LANTERN_BUILD_DIR/tests/$suite"
  if [ ! -x "$program" ]; then
    echo "missing $program" >&2
    status=1
    continue
  fi
  "$program" -silent || status=1
done
exit $status
