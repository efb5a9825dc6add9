#!/usr/bin/env bash
# Runs every benchmark: the Google Benchmark programs, then the timed harnesses
# for whole-program figures (bench/*.sh).
set -u
build=${1:-build}
root=$(mktemp -d)
export HOME="$root" XDG_CONFIG_HOME="$root/.config" XDG_DATA_HOME="$root/.local/share" XDG_STATE_HOME="$root/.local/state"
for program in "$build"/bench/bench_*; do
  [ -x "$program" ] || continue
  echo "== $(basename "$program")"
  "$program" --benchmark_min_time=0.2
done
for script in bench/bench_*.sh; do
  [ -f "$script" ] || continue
  echo "== $(basename "$script")"
  bash "$script" "$build"
done
rm -rf "$root"
