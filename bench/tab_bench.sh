#!/usr/bin/env bash
# Times the tab in scripts: from the start of the process to its first answer, and one click with all its effects.
# Usage: tab_bench.sh FOLDER, where FOLDER contains the built programs.
set -euo pipefail
kiln=${1:?Usage: tab_bench.sh FOLDER-OF-THE-BUILT-PROGRAMS}/kiln
rounds=${ROUNDS:-31}
clicks=2000
script=$(mktemp)
trap 'rm -f "$script"' EXIT

# The time of a script with $1 clicks in microseconds, including its process.
timed() {
  for ((i = 0; i < $1; ++i)); do echo 'click chk_EffRot180Deg'; done > "$script"
  local start=${EPOCHREALTIME/[.,]/}
  "$kiln" drive "$script" > /dev/null
  echo $((${EPOCHREALTIME/[.,]/} - start))
}
median() { sort -n | sed -n "$((($1 + 1) / 2))p"; }

one=$(for ((round = 0; round < rounds; ++round)); do timed 1; done | median "$rounds")
many=$(for ((round = 0; round < 5; ++round)); do timed "$clicks"; done | median 5)
awk -v one="$one" -v many="$many" -v n="$clicks" 'BEGIN {
  printf "process start to first answer, and its end  %7.1f ms\n", one / 1000
  printf "one click to all signals settled, answered  %7.1f us\n", (many - one) / (n - 1)
}'
