#!/usr/bin/env bash
# Builds the program and its unit suites a second time, with AddressSanitizer
# and UndefinedBehaviorSanitizer, in BUILD/sanitize, and runs the unit suites
# there:  scripts/sanitized-tests.sh [BUILD]
# A memory fault or undefined behaviour stops the suite that met it.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}/sanitize"
flags="-O1 -g -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"

if [ ! -f "$build/build.ninja" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=None -DLANTERN_BENCH=OFF \
    -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
fi
cmake --build "$build" -j "$(nproc)"

# Qt, fontconfig and the program's own singletons keep memory until the end on
# purpose: leaks are not what this run looks for.
export ASAN_OPTIONS="detect_leaks=0:abort_on_error=0:halt_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
exec bash scripts/with-session.sh ctest --test-dir "$build" -L unit --output-on-failure -j "$(nproc)"
