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
# The same with 1,000 documents in the folder, as the recent list reads them.
documents=$(mktemp -d)
/usr/bin/python3 - "$documents" <<'PY'
import sys, datetime
folder = sys.argv[1]
start = datetime.datetime(2026, 1, 1, 9, 0, 0)
for i in range(1000):
    when = start + datetime.timedelta(minutes=37 * i)
    title = '\u65e5\u8a18 %d' % i
    body = r"{\rtf1\ansi\ansicpg932\deff0{\fonttbl{\f0\fnil\fcharset128 MS UI Gothic;}}\f0\fs24 " + ("\\'93\\'fa\\'96\\'7b\\'8c\\'ea " * 40) + r"\par}"
    with open('%s/%s.TXT' % (folder, when.strftime('%Y%m%d%H%M%S')), 'wb') as f:
        f.write(('"%s",#%s#\r\n' % (title, when.strftime('%Y-%m-%d %H:%M:%S'))).encode('cp932') + body.encode('ascii') + b'\r\n')
PY
programs="lantern ^Fernwick.Nib.2007$ -- $build/bin/lantern ;; lantern-1000-documents ^Fernwick.Nib.2007$ --documents $documents -- $build/bin/lantern"
command -v focuswriter >/dev/null && programs="$programs ;; focuswriter FocusWriter -- focuswriter"
dbus-run-session -- /usr/bin/python3 "$here/startup_probe.py" "$runs" $programs
rm -rf "$documents"
