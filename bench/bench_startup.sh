#!/usr/bin/env bash
# Start-up time: from process start until the main window is mapped and
# painted, median of repeated runs under the current (virtual) display, each
# with a fresh HOME; beside the same figure for FocusWriter, a comparable Qt
# writing program from Debian.
set -u
build=${1:-build}
runs=${RUNS:-11}
here=$(dirname "$0")
command -v focuswriter >/dev/null || bash scripts/setup-debian.sh
dpkg-query -W python3-xlib >/dev/null 2>&1 || apt-get install -y -qq python3-xlib focuswriter >/dev/null
echo -n "lantern:     "
dbus-run-session -- /usr/bin/python3 "$here/startup_probe.py" "$runs" '^Fernwick Nib 2007$' -- "$build/bin/lantern"
if command -v focuswriter >/dev/null; then
  echo -n "focuswriter: "
  dbus-run-session -- /usr/bin/python3 "$here/startup_probe.py" "$runs" 'FocusWriter' -- focuswriter
fi
