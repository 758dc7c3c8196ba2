#!/bin/bash
# Prints every PDF in some folders in several ways, each in a separate process, and reports defects of the results.
# Usage: print_documents.sh PRESS_PRINT FOLDER...
#
# Each must end as a printed file or as an error message, in little memory. A printed file has the right number of pages
# and no defect that the document itself does not have; after an error message there is no file. Files that end in .gz
# are unpacked, and those in .fuzz are taken for PDFs. SECONDS_EACH limits the processor time of each, and
# MEBIBYTES_EACH its memory.
set -u
shopt -s nullglob

usage="Usage: print_documents.sh PRESS_PRINT FOLDER..."
press_print=$(realpath -- "${1:?$usage}")
shift
(($#)) || { echo "$usage" >&2; exit 2; }
seconds=${SECONDS_EACH:-300}
mebibytes=${MEBIBYTES_EACH:-400}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

watermark=(--set Watermark=Watermark --set WatermarkText=Draft --set WatermarkTextTransparency=40)
transforms=(--set MirrorImage=MirrorImage --set NegativeImage=Negative --set Rotate180=Rotate180)
ways=(plain marked everything sheets)
plain=()
marked=("${watermark[@]}")
everything=("${watermark[@]}" "${transforms[@]}" --set WatermarkLayering=Underlay)
sheets=("${watermark[@]}" --set Nin1=2in1 --set WatermarkOccurance=PerPage)

documents=0 printed=0 refused=0 faults=0 slowest=0 largest=0

fault() {
  faults=$((faults + 1))
  echo "$1: $2"
}

# The result of qpdf --check: 0 for valid, 1 for warnings, 2 for damaged.
soundness() {
  local status=0
  qpdf --check "$1" > /dev/null 2>&1 || status=$?
  case $status in 0) echo 0 ;; 3) echo 1 ;; *) echo 2 ;; esac
}

# Prints the document in one way. The name is for messages.
attempt() {
  local name=$1 document=$2 way=$3 pages=$4 soundness=$5
  local -n effects=$way
  local folder=$work/out status after expected cost user system memory
  mkdir "$folder"
  (ulimit -t "$seconds"
   exec /usr/bin/time -q -o "$work/cost" -f '%U %S %M' "$press_print" "$document" "$folder/out.pdf" "${effects[@]}") \
    > /dev/null 2> "$work/said"
  status=$?
  read -r user system memory < <(tail -1 "$work/cost")
  cost=$(awk -v a="$user" -v b="$system" 'BEGIN { print int(1000 * (a + b)) }')
  ((cost > slowest)) && slowest=$cost
  ((memory > largest)) && largest=$memory
  ((memory / 1024 > mebibytes)) && fault "$name" "$way: takes $((memory / 1024)) MiB"
  local left=("$folder"/.[!.]* "$folder"/*)
  if ((status == 1)); then
    refused=$((refused + 1))
    ((${#left[@]})) && fault "$name" "$way: is refused and leaves ${left[*]##*/}"
    [[ $(wc -l < "$work/said") == 1 ]] || fault "$name" "$way: is not refused in one line: $(cat "$work/said")"
  elif ((status != 0)); then
    fault "$name" "$way: ends with status $status after $cost ms: $(tail -3 "$work/said")"
  else
    printed=$((printed + 1))
    [[ ${left[*]##*/} == out.pdf ]] || fault "$name" "$way: leaves ${left[*]##*/}"
    after=$(soundness "$folder/out.pdf")
    ((after <= soundness)) ||
      fault "$name" "$way: is less sound printed: $(qpdf --check "$folder/out.pdf" 2>&1 | tail -2)"
    expected=$pages
    [[ $way != sheets || -z $pages ]] || expected=$(((pages + 1) / 2))
    [[ -z $pages || $(qpdf --show-npages "$folder/out.pdf" 2> /dev/null) == "$expected" ]] ||
      fault "$name" "$way: has not $expected pages"
  fi
  rm -rf "$folder"
}

while IFS= read -r -d '' file; do
  document=$work/in.pdf
  case $file in
    *.gz) gzip -dc -- "$file" > "$document" ;;
    *) cp -- "$file" "$document" ;;
  esac
  documents=$((documents + 1))
  pages=$(qpdf --show-npages "$document" 2> /dev/null)
  [[ $pages != 0 ]] || pages=  # as of page trees that it does not find its way in
  sound=$(soundness "$document")
  for way in "${ways[@]}"; do attempt "$file" "$document" "$way" "$pages" "$sound"; done
done < <(find "$@" -type f \( -name '*.pdf' -o -name '*.pdf.gz' -o -name '*.fuzz' \) -print0 | sort -z)

echo "$documents documents, each in ${#ways[@]} ways: $printed printed, $refused refused, $faults faults;" \
  "at most $slowest ms of computing and $((largest / 1024)) MiB"
((faults == 0))
