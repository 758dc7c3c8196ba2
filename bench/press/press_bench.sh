#!/bin/bash
# Times printing with all page effects against a plain copy by qpdf, on 1000 pages of text, in turns.
# Usage: press_bench.sh FOLDER, where FOLDER holds the built programs.
set -eu

bin=${1:?Usage: press_bench.sh FOLDER-OF-THE-BUILT-PROGRAMS}
rounds=${ROUNDS:-15}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if [ -x "$bin/kiln" ]; then printer=("$bin/kiln" print); else printer=("$bin/press_print"); fi
effects=(--set MirrorImage=MirrorImage --set NegativeImage=Negative --set Rotate180=Rotate180
         --set Rotate180ForA3LD=Rotate180)
"$bin/press_bench_job" "$work/job.pdf"

# Microseconds that a command takes.
timed() {
  local start=${EPOCHREALTIME/[.,]/}
  "$@" > /dev/null
  echo $((${EPOCHREALTIME/[.,]/} - start))
}

copying=() printing=() plain=()
for ((round = 0; round < rounds; ++round)); do
  copying+=("$(timed qpdf "$work/job.pdf" "$work/copy.pdf")")
  plain+=("$(timed "${printer[@]}" "$work/job.pdf" "$work/plain.pdf")")
  printing+=("$(timed "${printer[@]}" "$work/job.pdf" "$work/printed.pdf" "${effects[@]}")")
done

# The median, which one slow disk flush does not move.
median() { printf '%s\n' "$@" | sort -n | sed -n "$((($# + 1) / 2))p"; }
copy=$(median "${copying[@]}")
report() { awk -v n="$1" -v t="$2" -v c="$copy" 'BEGIN { printf "%-32s %7.1f ms  %5.2f x\n", n, t / 1000, t / c }'; }

report "qpdf copy" "$copy"
report "printed without effects" "$(median "${plain[@]}")"
report "printed with all page effects" "$(median "${printing[@]}")"
bytes=$(($(stat -c %s "$work/printed.pdf") - $(stat -c %s "$work/copy.pdf")))
echo "bytes added to a page: $((bytes / 1000)) (job: $(($(stat -c %s "$work/job.pdf") / 1024)) KiB)"
