#!/usr/bin/env bash
# rtfconv on RTF files and saved documents, and on input it must refuse.
set -u
. "$(dirname "$0")/../../support/isolation.sh"
conv="$LANTERN_PROGRAM_DIR/rtfconv"
work=$(mktemp -d "${LANTERN_TEST_ROOT:-/tmp}/rtfconv.XXXXXX")
failures=0

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

expect_output() { # name expected actual
  if [ "$2" != "$3" ]; then
    fail "$1"
    printf 'expected:\n%s\nactual:\n%s\n' "$2" "$3"
  fi
}

# A WordPad-style file: code page 1252 declared, Japanese font, bullets, centring.
printf '%s\r\n' \
  '{\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\fnil\fcharset128 \'"'"'82\'"'"'6c\'"'"'82\'"'"'72 \'"'"'82\'"'"'6f\'"'"'83\'"'"'53\'"'"'83\'"'"'56\'"'"'83\'"'"'62\'"'"'83\'"'"'4e;}{\f1\fnil\fcharset2 Symbol;}}' \
  '\viewkind4\uc1\pard\qc\b\f0\fs40 \'"'"'93\'"'"'fa\'"'"'96\'"'"'7b\'"'"'8c\'"'"'ea\b0\fs24\par' \
  '\pard{\pntext\f1\'"'"'B7\tab}{\*\pn\pnlvlblt\pnf1\pnindent0{\pntxtb\'"'"'B7}}\fi-360\li360 one \u-10174?\u-8265?\par' \
  '{\pntext\f1\'"'"'B7\tab}two\par' \
  '\pard last\par' '}' > "$work/letter.rtf"
expected_text=$'日本語\none 𠮷\ntwo\nlast'

text=$("$conv" --text "$work/letter.rtf"); status=$?
[ $status -eq 0 ] || fail "--text on an RTF file exits with $status"
expect_output "--text on an RTF file" "$expected_text" "$text"

# --rtf writes what the reader read; reading that again gives the same text.
"$conv" --rtf "$work/letter.rtf" > "$work/again.rtf" || fail "--rtf on an RTF file"
head -c 70 "$work/again.rtf" | grep -q '^{\\rtf1\\ansi\\ansicpg932\\deff0\\deflang1033\\deflangfe1041{\\fonttbl' \
  || fail "--rtf does not start with the rich-text box header"
grep -q "\\\\'93\\\\'fa\\\\'96\\\\'7b\\\\'8c\\\\'ea" "$work/again.rtf" || fail "--rtf lost the code page 932 bytes"
grep -q '{\\pntext\\f1\\fs24\\'"'"'B7\\tab}{\\\*\\pn\\pnlvlblt\\pnf1\\pnfs24' "$work/again.rtf" \
  || fail "--rtf lost the bullets or their size"
text=$("$conv" --text "$work/again.rtf")
expect_output "--text after --rtf" "$expected_text" "$text"

# A saved document: the title line in code page 932 (旅行), then the body over
# several lines, which the store joins keeping a line end between them.
{
  printf '"\227\267\215\163",#2009-04-01 09:30:15#\r\n'
  cat "$work/again.rtf"
  printf '\r\n'
} > "$work/20090401093015.TXT"
text=$("$conv" --text "$work/20090401093015.TXT"); status=$?
[ $status -eq 0 ] || fail "--text on a saved document exits with $status"
expect_output "--text on a saved document" "$expected_text" "$text"

# A body whose lines end right after a control word: the line end ends it.
printf '"x",#2009-04-01#\r\n{\\rtf1\\ansi First\\par\r\nSecond \\b\r\nbold\\b0\\fs\r\n36\\par\r\n}\r\n' > "$work/lines.TXT"
expect_output "--text on a body broken after control words" $'First\nSecond bold36' "$("$conv" --text "$work/lines.TXT")"

# A saved blank document has an empty body: no text, no error.
printf '"",#2009-04-01#\r\n\r\n' > "$work/blank.TXT"
text=$("$conv" --text "$work/blank.TXT"); status=$?
[ $status -eq 0 ] || fail "a blank document exits with $status"
expect_output "a blank document" "" "$text"

# Refused input: a message on stderr, status 1, nothing on stdout.
refuse() { # name file
  local out err status
  out=$("$conv" --text "$2" 2> "$work/err"); status=$?
  [ $status -eq 1 ] || fail "$1: status $status"
  [ -s "$work/err" ] || fail "$1: no message on stderr"
  [ -z "$out" ] || fail "$1: wrote to stdout"
}
printf 'just some text\r\n' > "$work/plain.txt"
refuse "not RTF" "$work/plain.txt"
head -c 300 "$work/letter.rtf" > "$work/cut.rtf"
refuse "cut-off RTF" "$work/cut.rtf"
refuse "missing file" "$work/no-such-file.rtf"
printf '"title",#2009-04-01#\r\nnot rtf either\r\n' > "$work/bad.TXT"
refuse "document with a body that is not RTF" "$work/bad.TXT"

"$conv" --html "$work/letter.rtf" > /dev/null 2>&1; status=$?
[ $status -eq 2 ] || fail "an unknown option exits with $status"

# Garbage after an RTF start: it ends, without crashing, in reasonable time.
{ printf '{\\rtf1 '; head -c 20000000 /dev/urandom; } > "$work/garbage.rtf"
timeout 60 "$conv" --text "$work/garbage.rtf" > /dev/null 2>&1; status=$?
[ $status -le 1 ] || fail "garbage: status $status"

rm -rf "$work"
if [ $failures -ne 0 ]; then
  echo "$failures failure(s)"
  exit 1
fi
echo "all rtfconv checks passed"
