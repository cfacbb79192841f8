#!/usr/bin/env bash
# Runs clang-tidy with the project's own checks: scripts/tidy.sh [--since REVISION | FILE.cpp…]. Without arguments it
# looks at the sources that the last day's commits changed, the twenty that changed last at most, which takes a minute
# or two. Ends with 1 when a check complains.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/release

sources=('src/*.cpp' 'station/*.cpp' 'servicehost/*.cpp')
if [ "${1:-}" = --since ]; then
  mapfile -t files < <(git diff --name-only --diff-filter=d "$2" -- "${sources[@]}")
elif [ $# -gt 0 ]; then
  files=("$@")
else
  day=$(git log -1 --format=%ct)
  mapfile -t files < <(git log --since="$((day - 86400))" --name-only --format= -- "${sources[@]}" | awk '!seen[$0]++' |
    while read -r file; do [ ! -f "$file" ] || echo "$file"; done | sed 20q)
fi
[ ${#files[@]} -gt 0 ] || { echo "tidy: no source has changed"; exit 0; }

scripts/setup.sh clang-tidy
[ -f $build/compile_commands.json ] || cmake --preset release >/dev/null
echo "tidy: ${#files[@]} files"
printf '%s\n' "${files[@]}" | nice -n 10 xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p $build 2> >(grep -v "warnings generated" >&2)
