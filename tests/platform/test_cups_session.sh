#!/usr/bin/env bash
# The private print system for tests (scripts/cups-session.sh): a job sent to
# its cups-pdf queue comes out as a PDF with the job's pages, the machine's own
# CUPS folders are left alone, and nothing is left running afterwards.
set -euo pipefail
. "$(dirname "$0")/../support/isolation.sh"
work=$(mktemp -d "$LANTERN_TEST_ROOT/cups.XXXXXX")
printf '%%!PS\n/Helvetica findfont 24 scalefont setfont\n72 700 moveto (one) show showpage\n72 700 moveto (two) show showpage\n' \
  | gs -q -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile="$work/in.pdf" -
system_state() { ls -la --time-style=full-iso /etc/cups /var/spool/cups-pdf "$(getent passwd root | cut -d: -f6)/PDF" 2>/dev/null | md5sum || true; }
before=$(system_state)

status=0
bash "$LANTERN_SOURCE_DIR/scripts/cups-session.sh" run bash -c '
  set -euo pipefail
  echo "$CUPS_SERVER" >"$2"
  lpstat -d | grep -q "system default destination: PDF"
  lp -d PDF -t lantern-test "$1" >/dev/null
  for _ in $(seq 1 300); do [ -z "$(lpstat -W not-completed -o PDF)" ] && break; sleep 0.2; done
  [ -z "$(lpstat -W not-completed -o PDF)" ] || { echo "the job is still in the queue" >&2; exit 1; }
  [ "$(lpstat -W completed -o PDF | wc -l)" -eq 1 ] || { echo "no completed job" >&2; exit 1; }
  shopt -s nullglob
  pdfs=("$LANTERN_CUPS_PDF_DIR"/*.pdf)
  [ ${#pdfs[@]} -eq 1 ] || { echo "expected one PDF, found ${#pdfs[@]}" >&2; exit 1; }
  pdfinfo "${pdfs[0]}" | grep -Eq "^Pages: +2$" || { echo "the PDF has not 2 pages" >&2; exit 1; }
' job "$work/in.pdf" "$work/server" || status=$?
[ $status -ne 77 ] || exit 77
[ $status -eq 0 ] || { echo "printing through the private queue failed ($status)"; exit 1; }

server=$(cat "$work/server")
[ ! -e "$(dirname "$server")" ] || { echo "the session folder was left behind"; exit 1; }
! CUPS_SERVER="$server" lpstat -r 2>/dev/null | grep -q "is running" || { echo "the private scheduler still answers"; exit 1; }
# Neither the machine's CUPS folders nor a PDF folder in root's home changed.
[ "$(system_state)" = "$before" ] || { echo "the machine's CUPS folders changed"; exit 1; }
echo "ok"
