#!/usr/bin/env bash
# The wallpaper suite on a real X server, where the desktop background is
# asked from the desktop's settings. GNOME's settings are kept in a keyfile
# inside this test's own home folder, never in the user's.
set -u
. "$(dirname "$0")/../support/isolation.sh"
if [ -z "${DISPLAY:-}" ]; then
  echo "no X display; run through scripts/with-session.sh" >&2
  exit 1
fi
export QT_QPA_PLATFORM=xcb
export GSETTINGS_BACKEND=keyfile
exec "$LANTERN_BUILD_DIR/tests/test_wallpaper_workspace" -silent
