# Sourced first by every script test. Run by hand, outside CTest, the script
# starts again through tests/isolated.sh, so that it too gets its own HOME and
# XDG folders and a recording power control.
if [ -z "${LANTERN_TEST_ROOT:-}" ]; then
  echo "$(basename "$0"): not isolated yet; running again through tests/isolated.sh" >&2
  exec bash "$(dirname "${BASH_SOURCE[0]}")/../isolated.sh" "$0" "$@"
fi
# Whatever the caller set, a test never reaches the real power control.
case "${LANTERN_POWER_CONTROL:-}" in
  record:*) ;;
  *) export LANTERN_POWER_CONTROL="record:$LANTERN_TEST_ROOT/power-requests.log" ;;
esac
