#!/usr/bin/env bash
# rtfconv on the files in tests/data/rtfconv: <case>.rtf or <case>.TXT (a saved
# document) prints <case>.txt; a refused-* file is refused.
set -u
. "$(dirname "$0")/../../support/isolation.sh"
conv="$LANTERN_PROGRAM_DIR/rtfconv"
data="$(dirname "$0")/../../data/rtfconv"
work=$(mktemp -d "$LANTERN_TEST_ROOT/rtfconv.XXXXXX")
passes=0 failures=0
check() { # what, then a command that succeeds when it holds
  local what=$1; shift
  if "$@"; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $what"; fi
}

for input in "$data"/*.rtf "$data"/*.TXT; do
  case=${input%.*}
  out=$("$conv" --text "$input" 2> "$work/err"); status=$?
  if [ -f "$case.txt" ]; then
    check "$(basename "$input"): status $status" [ $status -eq 0 ]
    check "$(basename "$input"): text" [ "$out" = "$(cat "$case.txt")" ]
  else
    # Refused: status 1, a message on stderr, nothing on stdout.
    check "$(basename "$input"): refused with $status" [ $status -eq 1 -a -s "$work/err" -a -z "$out" ]
  fi
done
"$conv" --text "$data/no-such-file.rtf" > "$work/out" 2> "$work/err"
check "a missing file: status $?" [ $? -eq 1 -a -s "$work/err" -a ! -s "$work/out" ]

# --rtf writes what the reader read, as the rich-text box writes it.
"$conv" --rtf "$data/letter.rtf" > "$work/letter.rtf"
check "--rtf" cmp "$work/letter.rtf" "$data/letter-rewritten.rtf"
"$conv" --html "$data/letter.rtf" > /dev/null 2>&1
check "an unknown option: status $?" [ $? -eq 2 ]

rm -rf "$work"
echo "$passes passed, $failures failed"
[ $failures -eq 0 ]
