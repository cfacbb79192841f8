#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests. The preset may be named: release (default), debug, asan, asan-core.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
failed=0
ctest --preset "$preset" -j "$(nproc)" || failed=$?
# Why tests were skipped, which ctest keeps to itself.
sed -n '/: Skipped$/{n;s/^/Skipped: /p}' "build/$preset/Testing/Temporary/LastTest.log" | sort -u
exit $failed
