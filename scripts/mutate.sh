#!/usr/bin/env bash
# What would no test notice? Makes small faults (mutants) in a copy of the tree, runs the tests that reach each of them,
# and prints those that live. A habit for whoever changes code, not a gate.
#
#     scripts/mutate.sh main                           # of the lines changed since main
#     scripts/mutate.sh -n 80 -p map_test src/map      # 80 in a room, tried by one test program
#     scripts/mutate.sh --matrix src/map/projection.cpp  # also the tests that kill nothing alone
#
# New files have to be known to git (git add -N). See --help for the rest.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
exec python3 "$top/scripts/mutate/mutate.py" "$@"
