#!/usr/bin/env bash
# Pad key to character on screen: without an input method (off screen), then
# under a private IBus + Mozc session on the X display, with the input
# method off and composing. Usage: bench/bench_padtyping.sh [BUILD]
set -u
build=$(readlink -f "${1:-build}")
source=$(cd "$(dirname "$0")/.." && pwd)
program="$build/bench/bench_padtyping"
[ -x "$program" ] || { echo "bench_padtyping is not built"; exit 0; }
export LANTERN_PROGRAM_DIR="$build/bin"
echo "-- no input method (offscreen)"
QT_QPA_PLATFORM=offscreen QT_IM_MODULE=none "$program" --benchmark_filter=Direct
if [ -n "${DISPLAY:-}" ]; then
  echo "-- IBus with Mozc (X display)"
  bash "$source/scripts/ibus-session.sh" "$program"
fi
