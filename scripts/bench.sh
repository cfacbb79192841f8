#!/usr/bin/env bash
# Builds the benchmarks in a release build, runs them and prints the tables of docs/speed.md. Arguments go to every
# benchmark program, e.g. --benchmark_filter=Raster.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
cmake --preset release -DPALLOMIR_BENCH=ON >/dev/null
cmake --build --preset release
failed=0
for program in build/release/bench/*_bench; do
  "$program" "$@" || failed=1
done
exit $failed
