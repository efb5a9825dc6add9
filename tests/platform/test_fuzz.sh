#!/usr/bin/env bash
# Builds every fuzz/fuzz_<name>.cpp with clang, libFuzzer and the address and
# undefined-behaviour sanitizers in a build of its own, and runs each for a
# bounded time on its seed corpus fuzz/corpus/<name>/ (and fuzz/<name>.dict
# when there is one). Any crash, leak, hang or sanitizer report fails.
set -u
. "$(dirname "$0")/../support/isolation.sh"
source_dir="$LANTERN_SOURCE_DIR"
build_dir="$LANTERN_BUILD_DIR/fuzz"
command -v clang++ > /dev/null || { echo "FAIL: clang++ is not installed"; exit 1; }
flags="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
CC=clang CXX=clang++ cmake -S "$source_dir" -B "$build_dir" -G Ninja \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLANTERN_FUZZ=ON -DLANTERN_BENCH=OFF \
  -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
  -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" > "$build_dir.configure.log" 2>&1 \
  || { cat "$build_dir.configure.log"; echo "FAIL: configuring the fuzz build"; exit 1; }

work=$(mktemp -d "$LANTERN_TEST_ROOT/fuzz.XXXXXX")
failures=0
found=0
for source in "$source_dir"/fuzz/fuzz_*.cpp; do
  [ -e "$source" ] || continue
  found=$((found + 1))
  target=$(basename "$source" .cpp)
  name=${target#fuzz_}
  if ! cmake --build "$build_dir" -j2 --target "$target" > "$work/$target.build.log" 2>&1; then
    tail -40 "$work/$target.build.log"; echo "FAIL: building $target"; failures=$((failures + 1)); continue
  fi
  # New inputs go to a scratch folder; the seeds in the repository stay as they are.
  mkdir -p "$work/$name" "$LANTERN_BUILD_DIR/fuzz-artifacts"
  options=(-max_total_time="${LANTERN_FUZZ_SECONDS:-30}" -rss_limit_mb=2048 -timeout=10 -max_len=65536
           -artifact_prefix="$LANTERN_BUILD_DIR/fuzz-artifacts/$name-")
  [ -f "$source_dir/fuzz/$name.dict" ] && options+=(-dict="$source_dir/fuzz/$name.dict")
  seeds=()
  [ -d "$source_dir/fuzz/corpus/$name" ] && seeds=("$source_dir/fuzz/corpus/$name")
  echo "== $target"
  if ! ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 "$build_dir/fuzz-bin/$target" "${options[@]}" \
       "$work/$name" "${seeds[@]}" > "$work/$target.log" 2>&1; then
    # The failing input is kept in fuzz-artifacts under the build folder.
    tail -60 "$work/$target.log"; echo "FAIL: $target"; failures=$((failures + 1))
  fi
done
[ $found -gt 0 ] || { echo "FAIL: no fuzz targets found"; exit 1; }
[ $failures -eq 0 ] || { echo "$failures fuzz target(s) failed"; exit 1; }
echo "all $found fuzz target(s) ran clean"
