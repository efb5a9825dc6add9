#!/usr/bin/env bash
# Start-up from the command line: the three jobs, a normal start, a second
# copy, and settings that are damaged.
set -u
. "$(dirname "$0")/../support/isolation.sh"
[ -z "${DBUS_SESSION_BUS_ADDRESS_PRIVATE:-}" ] && exec env DBUS_SESSION_BUS_ADDRESS_PRIVATE=1 dbus-run-session -- bash "$0" "$@"
program="$LANTERN_PROGRAM_DIR/lantern"
settings="$XDG_CONFIG_HOME/Fernwick Nib 2007.ini"
title="Fernwick Nib 2007"
log="$LANTERN_TEST_ROOT/stderr.log"
export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
passes=0 failures=0

check() {
  local what=$1; shift
  if "$@"; then echo "ok: $what"; passes=$((passes + 1)); else echo "FAIL: $what"; failures=$((failures + 1)); fi
}
# Runs the command ten times a second until it succeeds; false after $1 seconds.
poll() {
  local tries=$(($1 * 10)); shift
  until "$@"; do [ $((tries--)) -gt 0 ] || return 1; sleep 0.1; done
}
windows() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | wc -l; }
shown() { [ "$(windows "$1")" -gt 0 ]; }
ended() { ! kill -0 "$1" 2>/dev/null; }
write_settings() { mkdir -p "$XDG_CONFIG_HOME"; printf '%b' "$1" > "$settings"; }

# Starts the program with the given arguments, waits for its window, closes
# it the way the session does (SIGTERM) and waits until it has ended.
start_and_close() {
  "$program" "$@" 2>>"$log" &
  local pid=$!
  if poll 20 shown "$title" && kill -TERM "$pid" && poll 10 ended "$pid"; then
    wait "$pid"
    return
  fi
  tail -n 5 "$log" | sed 's/^/  | /'
  kill -9 "$pid" 2>/dev/null
  return 1
}

# /C and /CLR delete the tree and end without a window: with no display at
# all they must still succeed.
for option in /C /CLR; do
  write_settings '[Settings]\nShutdown=True\n[Key Settings]\nAlpha,1,1=A\n'
  env -u DISPLAY timeout 10 "$program" "$option"
  status=$?
  check "$option ends at once with status 0 ($status)" test "$status" -eq 0
  check "$option deletes the settings tree" test ! -e "$settings"
done

# Forms that only look like the options start the program normally.
for line in " /C" "/c" "/C x"; do
  write_settings '[Settings]\nShutdown=True\n'
  if [ "$line" = "/C x" ]; then args=(/C x); else args=("$line"); fi
  check "\"$line\" starts the program" start_and_close "${args[@]}"
  check "\"$line\" keeps the settings" grep -q '^Shutdown=True$' "$settings"
done

# With "Shutdown" on, quitting placed the start-up link and asked for the
# power-off of this kernel's row (recorded, never carried out).
entry="$XDG_CONFIG_HOME/autostart/Fernwick Nib 2007.desktop"
check "the start-up link starts lantern" grep -qF "Exec=\"$program\"" "$entry"
case "$(uname -r | cut -d. -f1)" in
  6) expected=powerOff ;;
  [7-9]|[1-9][0-9]) expected=logOff ;;
  *) expected="" ;;
esac
if [ -n "$expected" ]; then
  check "each quit asked for \"$expected\"" test "$(grep -c "^$expected\$" "$LANTERN_TEST_ROOT/power-requests.log")" -eq 3
fi

# A normal start writes every setting back when the window closes.
rm -f "$settings"
check "a plain start shows the window" start_and_close
check "closing saves the defaults" grep -q '^Music=True$' "$settings"
check "closing records the program folder" grep -qF "Path=$LANTERN_PROGRAM_DIR" "$settings"
check "with \"Shutdown\" off the start-up link is gone" test ! -e "$entry"

# The session may end at any moment of the start, here from the splash on:
# the program still closes the orderly way (settings saved, status 0) and
# ends, however far it had come.
for delay in 0 0.03 0.06 0.1 0.15 0.2 0.3; do
  rm -f "$settings"
  "$program" 2>>"$log" &
  pid=$!
  deadline=$(( $(date +%s) + 20 ))
  # No pause between looks: the first delay is the splash's first moment.
  until shown Lantern || ended "$pid" || [ "$(date +%s)" -ge "$deadline" ]; do :; done
  sleep "$delay"
  kill -TERM "$pid"
  if check "ended ${delay} s after the splash, within 10 s" poll 10 ended "$pid"; then
    wait "$pid"
    status=$?
    check "ended ${delay} s after the splash, with status 0 ($status)" test "$status" -eq 0
    check "ended ${delay} s after the splash, with the settings saved" grep -q '^Music=True$' "$settings"
  else
    kill -9 "$pid"
  fi
done

# A second copy shows nothing and ends at once.
"$program" 2>>"$log" &
first=$!
if check "the first copy shows its window" poll 20 shown "$title"; then
  start=$(date +%s%N)
  timeout 10 "$program"
  status=$?
  elapsed=$(( ($(date +%s%N) - start) / 1000000 ))
  check "the second copy ends with status 0" test "$status" -eq 0
  check "the second copy ends within 3 s (${elapsed} ms)" test "$elapsed" -lt 3000
  check "only one main window" test "$(windows "$title")" -eq 1
  check "the first copy still runs" kill -0 "$first"
fi
kill -TERM "$first" 2>/dev/null; poll 10 ended "$first" || kill -9 "$first"

# Damaged settings never stop the start.
write_settings '[Skin Settings]\nMusic=maybe\n'
check "a setting of \"maybe\" still starts" start_and_close
check "the failure is in the log" grep -q 'Main: load settings' "$XDG_STATE_HOME/lantern/lantern.log" "$log"
check "the bad value heals at the next save" grep -q '^Music=False$' "$settings"
head -c 4096 /dev/urandom > "$settings"
check "a settings file of random bytes still starts" start_and_close
chmod 000 "$settings" 2>/dev/null
check "an unreadable settings file still starts" start_and_close
rm -f "$settings"
no_home() { (unset HOME WINDIR; start_and_close); }
check "an unset HOME and WINDIR still start" no_home

# /? opens the help viewer and ends; the viewer keeps running.
timeout 10 "$program" '/?'
check "/? ends with status 0" test $? -eq 0
viewer_pid() { viewer=$(pgrep -f 'assistant -collectionFile .*LANTERN.qhc' | head -n 1); [ -n "$viewer" ]; }
check "/? started the help viewer on the program's help book" poll 5 viewer_pid
[ -n "$viewer" ] && kill "$viewer"

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
