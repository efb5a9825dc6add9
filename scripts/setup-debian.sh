#!/usr/bin/env bash
# Installs the Debian 12 packages that building, running and testing Lantern need.
# Safe to run again: it only asks apt for packages that are missing.
set -euo pipefail

packages=(
  # build
  cmake g++ make pkg-config ninja-build clang libclang-rt-14-dev
  qt6-base-dev qt6-base-private-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools
  qt6-multimedia-dev libqt6svg6-dev libgl-dev libicu-dev zlib1g-dev libxcb1-dev libfontconfig-dev libbenchmark-dev
  qt6-documentation-tools qt6-qpa-plugins qt6-wayland
  # a display, a session bus and accessibility for tests and headless runs
  xvfb xauth x11-utils xdotool dbus dbus-x11 python3-dbus python3-gi python3-icu at-spi2-core python3-pyatspi python3-dogtail python3-xlib
  imagemagick poppler-utils
  # fonts
  fonts-noto-cjk fonts-ipaexfont fontconfig python3-fontforge
  # draws text the way GTK programs do, to see what other programs get
  pango1.0-tools
  # input methods: both common frameworks with Mozc, and Mozc's own tools
  ibus ibus-mozc mozc-server fcitx5 fcitx5-mozc fcitx5-frontend-qt6 mozc-utils-gui
  # handwriting recognition and its Japanese model
  libzinnia-dev tegaki-zinnia-japanese
  # printing
  cups cups-client cups-bsd printer-driver-cups-pdf
  # voice, sounds and music
  open-jtalk open-jtalk-mecab-naist-jdic hts-voice-nitech-jp-atr503-m001 espeak-ng sox
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good pulseaudio fluidsynth fluid-soundfont-gm
  # help viewer
  assistant-qt6
  # the Debian package: libraries worked out, icon rendered, package and menu files checked
  dpkg-dev librsvg2-bin lintian desktop-file-utils appstream
  # the start-up benchmark compares with this Qt writing program
  focuswriter
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"

# The Japanese HTS voice lives in Debian's contrib component.
if ! grep -rqs 'contrib' /etc/apt/sources.list /etc/apt/sources.list.d/ 2>/dev/null; then
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    $sudo sed -i -E 's/^(Components:.*\bmain\b)(.*)$/\1 contrib\2/' /etc/apt/sources.list.d/debian.sources
  else
    echo 'deb http://deb.debian.org/debian bookworm main contrib' | $sudo tee /etc/apt/sources.list.d/lantern-contrib.list >/dev/null
  fi
fi

echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
