#!/usr/bin/env bash
# Runs one test with a HOME and XDG folders of its own, so that no test ever
# reads or writes the real user's files, and removes them afterwards.
set -u
root=$(mktemp -d "${TMPDIR:-/tmp}/lantern-test.XXXXXX")
chmod 755 "$root"
export HOME="$root/home"
export XDG_CONFIG_HOME="$HOME/.config"
export XDG_DATA_HOME="$HOME/.local/share"
export XDG_STATE_HOME="$HOME/.local/state"
export XDG_CACHE_HOME="$HOME/.cache"
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_STATE_HOME" "$XDG_CACHE_HOME"
export LANTERN_TEST_ROOT="$root"
# No test may ever switch the machine off: power requests are only written down.
export LANTERN_POWER_CONTROL="record:$root/power-requests.log"
# Widget suites draw off screen unless a test asks for the real display.
export QT_QPA_PLATFORM="${LANTERN_TEST_QPA:-offscreen}"
unset WINDIR
case "$1" in
  *.py) /usr/bin/python3 "$@" ;;
  *.sh) bash "$@" ;;
  *) "$@" ;;
esac
status=$?
rm -rf "$root"
exit $status
