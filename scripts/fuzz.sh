#!/bin/sh
# Runs the fuzzers one after the other, out of the way of everything else: scripts/fuzz.sh RUNS [TARGET...]
# A line for each goes to build/fuzz/runs.log; findings go to build/fuzz/findings. Ends with 1 after a finding.
set -u
runs=${1:?how many runs}
shift
cd "$(dirname "$0")/.." || exit 2
folder=build/fuzz
[ $# -gt 0 ] || set -- deployment_file locator_reply unit_list page_command station_request data_file \
  settings_file packet_stream gpx_import web_request
mkdir -p $folder/findings
# A small quarantine and short stacks: twice the runs in the same time.
export ASAN_OPTIONS=quarantine_size_mb=8:malloc_context_size=4
failed=0
for target; do
  case $target in
    locator_reply | unit_list) length=64 ;;
    page_command | packet_stream | settings_file | data_file) length=112 ;;
    station_request | deployment_file | web_request) length=256 ;;
    *) length=512 ;;
  esac
  dictionary=
  [ -f "fuzz/$target.dict" ] && dictionary=-dict=fuzz/$target.dict
  mkdir -p "$folder/found/$target"
  nice -n 10 "$folder/fuzz/fuzz_$target" -runs="$runs" -max_len=$length $dictionary -print_final_stats=1 \
    -timeout=10 -rss_limit_mb=1024 -artifact_prefix="$folder/findings/$target-" \
    "$folder/found/$target" "fuzz/corpora/$target" >"$folder/$target.log" 2>&1
  code=$?
  [ $code -eq 0 ] || failed=1
  done=$(sed -n 's/^stat::number_of_executed_units: *//p' "$folder/$target.log")
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$folder/$target.log")
  memory=$(sed -n 's/^stat::peak_rss_mb: *//p' "$folder/$target.log")
  echo "$(date -u +%FT%TZ) $target: ${done:-?} runs, ${rate:-?}/s, peak ${memory:-?} MB, exit $code" |
    tee -a $folder/runs.log
done
exit $failed
