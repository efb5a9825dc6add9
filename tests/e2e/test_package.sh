#!/usr/bin/env bash
# The Debian package: built by CPack from this build folder, unpacked under a
# throw-away root, checked file by file and by Debian's own checkers, and its
# program started from there, through the menu entry's command, to its window.
set -u
. "$(dirname "$0")/../support/isolation.sh"
[ -z "${DBUS_SESSION_BUS_ADDRESS_PRIVATE:-}" ] && exec env DBUS_SESSION_BUS_ADDRESS_PRIVATE=1 dbus-run-session -- bash "$0" "$@"
for tool in cpack dpkg-deb lintian desktop-file-validate appstreamcli xdotool; do
  command -v "$tool" >/dev/null || { echo "skip: $tool is missing (scripts/setup-debian.sh installs it)"; exit 77; }
done
build=$LANTERN_BUILD_DIR
out="$LANTERN_TEST_ROOT/package"
root="$LANTERN_TEST_ROOT/root"
lib="$root/usr/lib/lantern"
title="Fernwick Nib 2007"
settings="$XDG_CONFIG_HOME/$title.ini"
passes=0 failures=0

check() {
  local what=$1; shift
  if "$@"; then echo "ok: $what"; passes=$((passes + 1)); else echo "FAIL: $what"; failures=$((failures + 1)); return 1; fi
}
poll() {
  local tries=$(($1 * 10)); shift
  until "$@"; do [ $((tries--)) -gt 0 ] || return 1; sleep 0.1; done
}
shown() { [ "$(xdotool search --onlyvisible --name "^$title\$" 2>/dev/null | wc -l)" -gt 0 ]; }
ended() { ! kill -0 "$1" 2>/dev/null; }
has() { grep -qxF -- "$2" "$1"; }
png_size() { python3 -c 'import struct,sys; d=open(sys.argv[1],"rb").read(24); print("%dx%d" % struct.unpack(">II", d[16:24]))' "$1"; }

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
(cd "$build" && cpack -G DEB -B "$out" --config CPackConfig.cmake) > "$LANTERN_TEST_ROOT/cpack.log" 2>&1
deb="$out/lantern_${version}_amd64.deb"
if ! check "cpack wrote lantern_${version}_amd64.deb" test -f "$deb"; then
  tail -n 20 "$LANTERN_TEST_ROOT/cpack.log"
  echo "$passes passed, $failures failed"; exit 1
fi

# What apt must bring in beside the libraries (one entry a line, versions dropped).
for field in Depends Recommends; do
  dpkg-deb -f "$deb" "$field" | tr ',' '\n' | sed 's/^ *//; s/ (.*)$//' > "$LANTERN_TEST_ROOT/$field"
done
while read -r field entry; do
  check "$field: $entry" has "$LANTERN_TEST_ROOT/$field" "$entry"
done <<'EOF'
Depends libqt6widgets6
Depends libqt6multimedia6
Depends libicu72
Depends qt6-qpa-plugins
Depends ibus-mozc | fcitx5-mozc
Depends open-jtalk
Depends open-jtalk-mecab-naist-jdic
Depends hts-voice-nitech-jp-atr503-m001
Depends fonts-noto-cjk
Depends fluidsynth
Depends fluid-soundfont-gm
Depends assistant-qt6
Recommends tegaki-zinnia-japanese
EOF
# No maintainer scripts: removing the package touches nothing in the users' homes.
check "the control part is only control and md5sums" \
  test "$(dpkg-deb --ctrl-tarfile "$deb" | tar -t | grep -v '^\./$' | sort | tr '\n' ' ')" = "./control ./md5sums "
lintian --fail-on error "$deb" > "$LANTERN_TEST_ROOT/lintian.log" 2>&1
check "lintian reports no errors" test $? -eq 0
sed -n '/^[EW]:/s/^/  | /p' "$LANTERN_TEST_ROOT/lintian.log"

dpkg -x "$deb" "$root"
while read -r kind path; do
  check "$kind /$path" test "-$kind" "$root/$path"
done <<'EOF'
x usr/lib/lantern/lantern
f usr/lib/lantern/SKIN/WELCOME.BMP
f usr/lib/lantern/SKIN/KEYS.INI
f usr/lib/lantern/SKIN/USERFONT/EUDC.TTE
f usr/lib/lantern/CHARS/LANTERN.ACS
f usr/lib/lantern/CHARS/FUKURO.ACS
f usr/lib/lantern/LANTERN.qhc
f usr/lib/lantern/help/index.html
L usr/bin/lantern
f usr/share/applications/lantern.desktop
f usr/share/metainfo/jp.fernwick.lantern.metainfo.xml
f usr/share/icons/hicolor/scalable/apps/lantern.svg
f usr/share/man/man1/lantern.1.gz
f usr/share/doc/lantern/copyright
f usr/share/doc/lantern/changelog.gz
EOF
check "/usr/bin/lantern leads to the program folder" \
  test "$(cd "$root/usr/bin" && realpath lantern)" = "$(realpath "$lib/lantern")"
for size in 48 128 256; do
  png="$root/usr/share/icons/hicolor/${size}x${size}/apps/lantern.png"
  check "the ${size} px icon is ${size}x${size}" test "$(png_size "$png" 2>/dev/null)" = "${size}x${size}"
done
# The help viewer opens the book the collection names, relative to the collection.
book=$(python3 -c 'import sqlite3,sys; print(sqlite3.connect(sys.argv[1]).execute("select FilePath from NamespaceTable").fetchone()[0])' "$lib/LANTERN.qhc")
check "the help collection's book ($book) is inside the program folder" test -f "$lib/$book" -a "${book#../}" = "$book"
check "the program holds no path of the build or source tree" \
  bash -c '! grep -qaF -e "$1" -e "$2" "$3"' _ "$build" "$LANTERN_SOURCE_DIR" "$lib/lantern"

desktop="$root/usr/share/applications/lantern.desktop"
check "desktop-file-validate accepts the menu entry" desktop-file-validate "$desktop"
check "appstreamcli accepts the metainfo" appstreamcli validate --no-net "$root/usr/share/metainfo/jp.fernwick.lantern.metainfo.xml"
while read -r line; do
  check "the menu entry says $line" has "$desktop" "$line"
done <<'EOF'
Name=Lantern
Name[ja]=ランタン
Comment=Write letters and notes with the mouse alone
Comment[ja]=マウスだけで手紙やメモを書くワープロ
Categories=Office;WordProcessor;
Icon=lantern
EOF

# The installed program, found on PATH as the menu would find it.
export PATH="$root/usr/bin:$PATH" QT_QPA_PLATFORM=xcb
command=$(sed -n 's/^Exec=//p' "$desktop")
mkdir -p "$XDG_CONFIG_HOME"
printf '[Settings]\nShutdown=False\n' > "$settings"
touch "$LANTERN_TEST_ROOT/before-start"
env -u DISPLAY timeout 10 $command /C
check "the installed lantern /C ends with status 0" test $? -eq 0
check "the installed lantern /C deletes the settings" test ! -e "$settings"

$command 2>>"$LANTERN_TEST_ROOT/stderr.log" &
pid=$!
if check "the menu entry's command \"$command\" opens the main window" poll 30 shown; then
  mkdir -p "$build/screenshots"
  import -window root "$build/screenshots/package_main_window.png" 2>/dev/null
  kill -TERM "$pid"
  if check "the installed program ends when closed" poll 10 ended "$pid"; then
    wait "$pid"
    check "it ended with status 0" test $? -eq 0
  fi
else
  tail -n 5 "$LANTERN_TEST_ROOT/stderr.log" | sed 's/^/  | /'
fi
kill -9 "$pid" 2>/dev/null
check "its settings went to the user's folder" grep -qF "Path=$lib" "$settings"
check "nothing under the installed tree was written" \
  test -z "$(find "$root" -newer "$LANTERN_TEST_ROOT/before-start" -print -quit)"

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
