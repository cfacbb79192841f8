#!/usr/bin/env bash
# Installs clang where it is missing, builds the fuzzers and runs them, one a core, out of the way of everything
# else: scripts/fuzz.sh RUNS|SECONDSs [TARGET...]
#
#     scripts/fuzz.sh 10000000                 # every target in fuzz/ so many runs
#     scripts/fuzz.sh 60s gpx_import           # one of them for a minute
#
# A line for each goes to build/fuzz/runs.log too; findings lie in build/fuzz/findings. Ends with 1 after a finding, or
# where a target is missing or did not run.
set -euo pipefail
amount=${1:?how many runs, or how many seconds as in 60s}
shift
cd "$(dirname "$0")/.."
case $amount in
  *[!0-9]*s | s | *[!0-9s]* | '') echo "not a number of runs or seconds: $amount" >&2; exit 2 ;;
  *s) limit=-max_total_time=${amount%s} ;;
  *) limit=-runs=$amount ;;
esac

scripts/setup.sh
# Asked by a try: clang may come from anywhere, and its runtime is a package of its own.
can_fuzz() {
  echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' |
    clang++ -x c++ -fsanitize=fuzzer,address,undefined - -o /dev/null 2>/dev/null
}
can_fuzz || scripts/setup.sh clang libclang-rt-dev
can_fuzz || { echo "clang++ can't build fuzzers" >&2; exit 2; }

folder=build/fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

if [ $# -eq 0 ]; then
  for source in fuzz/*_fuzz.cpp; do
    name=${source#fuzz/}
    set -- "$@" "${name%_fuzz.cpp}"
  done
fi
mkdir -p $folder/findings
marker=$(mktemp)
trap 'rm -f "$marker"' EXIT
# A small quarantine and short stacks: twice the runs in the same time.
export ASAN_OPTIONS=quarantine_size_mb=8:malloc_context_size=4

# Runs one target and says in a line what came of it.
run() {
  local target=$1 program=$folder/fuzz/fuzz_$1 log=$folder/$1.log code=0 flags=() corpora=()
  if [ ! -x "$program" ] || [ ! -f "fuzz/${target}_fuzz.cpp" ]; then
    echo "$target: NOT BUILT"
    return 1
  fi
  read -ra flags < <(sed -n 's|^// Flags: ||p' "fuzz/${target}_fuzz.cpp") || true
  [ -f "fuzz/$target.dict" ] && flags+=("-dict=fuzz/$target.dict")
  mkdir -p "$folder/found/$target"
  corpora=("$folder/found/$target")
  [ -d "fuzz/corpora/$target" ] && corpora+=("fuzz/corpora/$target")
  nice -n 10 "$program" "$limit" -max_len=512 "${flags[@]}" -print_final_stats=1 -timeout=10 -rss_limit_mb=1024 \
    -artifact_prefix="$folder/findings/$target-" "${corpora[@]}" >"$log" 2>&1 || code=$?
  stat() { sed -n "s/^stat::$1: *//p" "$log"; }
  local runs=$(stat number_of_executed_units)
  echo "$(date -u +%FT%TZ) $target: ${runs:-no} runs, $(stat average_exec_per_sec)/s, peak $(stat peak_rss_mb) MB, exit $code" |
    tee -a $folder/runs.log
  [ $code -ne 0 ] || [ "${runs:-0}" -gt 0 ] || { echo "$target: DID NOT RUN, see $log"; return 1; }
  [ $code -eq 0 ] && return 0
  grep -aE 'ERROR: |runtime error: |SUMMARY: |Assertion ' "$log" | sort -u | sed "s/^/$target: /"
  find $folder/findings -newer "$marker" -name "$target-*" -printf "$target: FOUND %p\n"
  return 1
}

failed=0
for target; do
  while [ "$(jobs -pr | wc -l)" -ge "$(nproc)" ]; do wait -n || failed=1; done
  run "$target" &
done
while [ -n "$(jobs -p)" ]; do wait -n || failed=1; done
[ $failed -eq 0 ] && echo "$# fuzzers, no finding" || echo "fuzzing failed: see above, build/fuzz/findings and build/fuzz/*.log"
exit $failed
