#!/usr/bin/env bash
# The widget suites of the touch controls, window shaping, flat scroll bars,
# the window-buffer warm-up and the wallpaper again on a real X server: hover,
# grabs, window flags, shared-memory buffers and the desktop background go
# through the X11 platform there instead of the off-screen one. GNOME's
# settings are kept in a keyfile inside this test's own home folder.
set -u
. "$(dirname "$0")/../../support/isolation.sh"
[ -n "${DISPLAY:-}" ] || { echo "no X display; run through scripts/with-session.sh" >&2; exit 1; }
export QT_QPA_PLATFORM=xcb GSETTINGS_BACKEND=keyfile
status=0
for name in touch userform flatscrollbar backing_store_warmup wallpaper; do
  # The newest build of the suite, whichever test folder it lives in.
  program=$(ls -td "$LANTERN_BUILD_DIR"/tests/test_"$name"_* 2>/dev/null | grep -E "/test_${name}_[a-z0-9]+$" | head -1)
  [ -x "$program" ] || { echo "the $name suite is not built" >&2; status=1; continue; }
  echo "== $(basename "$program")"
  "$program" -silent || status=1
done
exit $status
