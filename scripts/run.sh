#!/usr/bin/env bash
# Starts Lantern from the build tree with the input method the machine's
# desktop uses:  scripts/run.sh [BUILD]   (make run; IM=ibus|fcitx5 chooses)
#
# The desktop's framework is, in this order: LANTERN_IM (make run IM=...);
# QT_IM_MODULE ("ibus", "fcitx"); XMODIFIERS ("@im=ibus", "@im=fcitx");
# Debian's input-method setting (run_im in ~/.xinputrc, then
# /etc/X11/xinit/xinputrc, as im-config writes it); on "auto" or without a
# setting, Fcitx 5 where fcitx5-mozc is installed, as Debian chooses for
# Japanese, else IBus where ibus-mozc is.
#
# With a display, the program joins that desktop; a framework that is not
# running yet is started for this user first. With no display it runs on a
# virtual one and writes a screenshot every ten seconds; as root the whole
# session then runs as the unprivileged user 65534 (Mozc refuses root), under
# IBus unless LANTERN_IM says otherwise.
set -euo pipefail
build=${1:-build}
program="$PWD/$build/bin/lantern"

has_mozc() {
  case "$1" in
    ibus) [ -x /usr/lib/ibus-mozc/ibus-engine-mozc ] && command -v ibus-daemon >/dev/null ;;
    fcitx5) command -v fcitx5 >/dev/null && [ -n "$(find /usr/lib -path '*/fcitx5/fcitx5-mozc.so' -print -quit 2>/dev/null)" ] ;;
    *) return 1 ;;
  esac
}

# ibus, fcitx5, or nothing.
framework_named() {
  case "$1" in
    ibus) echo ibus ;;
    fcitx|fcitx5) echo fcitx5 ;;
  esac
}

desktop_framework() {
  local chosen=
  chosen=$(framework_named "${LANTERN_IM:-}")
  [ -z "$chosen" ] && chosen=$(framework_named "${QT_IM_MODULE:-}")
  [ -z "$chosen" ] && chosen=$(framework_named "$(sed -n 's/.*@im=\([a-z0-9]*\).*/\1/p' <<<"${XMODIFIERS:-}")")
  if [ -z "$chosen" ]; then
    for file in "$HOME/.xinputrc" /etc/X11/xinit/xinputrc; do
      [ -r "$file" ] || continue
      chosen=$(framework_named "$(sed -n 's/^[[:space:]]*run_im[[:space:]]\+\([a-z0-9]*\).*/\1/p' "$file" | tail -n 1)")
      break
    done
  fi
  if [ -z "$chosen" ]; then
    if has_mozc fcitx5; then chosen=fcitx5; elif has_mozc ibus; then chosen=ibus; fi
  fi
  echo "$chosen"
}

name_of() { [ "$1" = fcitx5 ] && echo "Fcitx 5 with Mozc" || echo "IBus with Mozc"; }

if [ -n "${DISPLAY:-}" ]; then
  framework=$(desktop_framework)
  # Mozc never runs as root: there the desktop's own framework is only joined.
  [ "$(id -u)" = 0 ] && start_missing=false || start_missing=true
  case "$framework" in
    fcitx5)
      export QT_IM_MODULE=fcitx XMODIFIERS=@im=fcitx
      # Asks the bus without starting anything through it.
      if $start_missing && ! busctl --user --auto-start=no status org.fcitx.Fcitx5 >/dev/null 2>&1; then
        echo "Starting $(name_of fcitx5) for this desktop."
        fcitx5 -d >/dev/null 2>&1 || true
      fi ;;
    ibus)
      export QT_IM_MODULE=ibus XMODIFIERS=@im=ibus
      if $start_missing && { ! ibus address >/dev/null 2>&1 || [ "$(ibus address 2>/dev/null)" = "(null)" ]; }; then
        echo "Starting $(name_of ibus) for this desktop."
        ibus-daemon --daemonize --xim >/dev/null 2>&1 || true
      fi ;;
  esac
  [ -n "$framework" ] && echo "Input method: $(name_of "$framework")." || echo "Input method: none found."
  exec "$program"
fi

# A virtual screen is no real desktop session: power requests are written down
# instead of switching this machine off.
export LANTERN_POWER_CONTROL="record:/tmp/lantern-power-requests.log"
echo "No display: starting Lantern on a virtual screen."

# The loop that keeps a picture of the screen; runs beside the program.
watch='
  "$1" &
  pid=$!
  trap "kill $pid 2>/dev/null" EXIT INT TERM
  while kill -0 $pid 2>/dev/null; do
    sleep 10
    /usr/bin/import -window root "$2.part.png" 2>/dev/null && mv "$2.part.png" "$2" || true
  done
'

framework=$(framework_named "${LANTERN_IM:-ibus}")
has_mozc "$framework" || { has_mozc fcitx5 && framework=fcitx5; } || { has_mozc ibus && framework=ibus; } || framework=
if [ -n "$framework" ]; then
  # The input method runs in a private session with the program. Mozc
  # refuses to run as root, so as root the whole session runs as the
  # unprivileged user 65534. Its home lies under the build folder: documents
  # and settings survive from one run to the next.
  home="$PWD/$build/run-home"
  mkdir -p "$home"
  if [ "$(id -u)" = 0 ]; then
    chown -R 65534:65534 "$home"
    chmod 755 "$home"
  fi
  shot="$home/lantern-screenshot.png"
  echo "Input method: $(name_of "$framework"), started in a private session."
  [ "$(id -u)" = 0 ] && echo "The program runs as user 65534 with its files in $home;" \
                     || echo "The program keeps its files in $home;"
  echo "a screenshot is written to $shot every 10 seconds. Stop with Ctrl+C."
  LANTERN_SESSION_HOME="$home" exec bash scripts/im-session.sh "$framework" bash -c "$watch" _ "$program" "$shot"
fi

shot="$PWD/$build/lantern-screenshot.png"
echo "Input method: none (neither IBus nor Fcitx 5 with Mozc is installed)."
echo "A screenshot is written to $shot every 10 seconds; stop with Ctrl+C."
exec bash scripts/with-session.sh bash -c "$watch" _ "$program" "$shot"
