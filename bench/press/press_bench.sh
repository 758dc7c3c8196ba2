#!/bin/bash
# Compares printing times with other programs: a text job, one with ten times as many pages, and one with pictures.
# Usage: press_bench.sh FOLDER, where FOLDER contains the built programs. ROUNDS=20 for more rounds; PAGES and
# SCANS for jobs of other sizes.
set -eu

bin=$(realpath -- "${1:?Usage: press_bench.sh FOLDER-OF-THE-BUILT-PROGRAMS}")
rounds=${ROUNDS:-7}
scans=${SCANS:-52}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

for needed in "qpdf qpdf" "mutool mupdf-tools" "gs ghostscript" "pdftk pdftk-java" "/usr/bin/time time"; do
  read -r program package <<< "$needed"
  command -v "$program" > /dev/null ||
    echo "$program is missing, and with it what it would be compared with: install $package."
done
has() { command -v "$1" > /dev/null; }

printer=("$bin/kiln" print --home "$work/home")
transforms=(--set MirrorImage=MirrorImage --set NegativeImage=Negative --set Rotate180=Rotate180
            --set Rotate180ForA3LD=Rotate180)
watermark=(--set WatermarkSel=1 --set Watermark=Watermark)
overlay=(--set OverlayImage=OverlayImage --set "OverlaySourceFileName=$work/form.pdf")

cat > overlay.js <<'END'
// Adds a form to every page with MuPDF.
var doc = new PDFDocument(scriptArgs[0])
var form = doc.addStream("0.5 g 100 100 300 40 re f", {Type: "XObject", Subtype: "Form", BBox: [0, 0, 600, 850]})
for (var i = 0, n = doc.countPages(); i < n; ++i) {
  var page = doc.findPage(i)
  var resources = page.Resources
  if (!resources.XObject) resources.XObject = doc.newDictionary()
  resources.XObject.Mark = form
  var contents = doc.newArray()
  contents.push(page.Contents)
  contents.push(doc.addStream("q /Mark Do Q", {}))
  page.Contents = contents
}
doc.save(scriptArgs[1], "")
END

# Copies a file as durably as printing does: flushed to the disk before it is renamed.
copyWhole() { cp "$1" "$2.new" && sync "$2.new" && mv "$2.new" "$2" && sync "$(dirname "$2")"; }

names=() commands=()
add() { names+=("$1"); shift; commands+=("$(printf '%q ' "$@")"); }

least() { sort -n "$1" | head -1; }
memoryOf() { has /usr/bin/time && eval "/usr/bin/time -f %M $1" 2>&1 > /dev/null | tail -1 || true; }

# Runs all added commands in turns, so that other load affects them equally, and prints the minimum of each: elapsed and
# CPU time, also relative to the first and the second command.
compare() {
  local title=$1 index round
  rm -f wall.* cpu.*
  for ((round = 0; round < rounds; ++round)); do
    for index in "${!names[@]}"; do
      TIMEFORMAT='%R %U %S'
      { time eval "${commands[index]}" > /dev/null 2>&1; } 2> took
      awk -v w="wall.$index" -v c="cpu.$index" '{ print 1000 * $1 >> w; print 1000 * ($2 + $3) >> c }' took
    done
  done
  echo
  echo "$title; least of $rounds; load $(cut -d ' ' -f 1 /proc/loadavg) on $(nproc) processors"
  printf '%-36s %9s %9s   %-14s %-14s %s\n' "" clock computing "x ${names[0]:0:12}" "x ${names[1]:0:12}" memory
  for index in "${!names[@]}"; do
    awk -v n="${names[index]}" -v w="$(least "wall.$index")" -v c="$(least "cpu.$index")" -v w0="$(least wall.0)" \
      -v c0="$(least cpu.0)" -v w1="$(least wall.1)" -v c1="$(least cpu.1)" -v m="$(memoryOf "${commands[index]}")" \
      'function against(a, b) { return b > 0 ? sprintf("%.2f", a / b) : "-" }
       BEGIN { printf "%-36s %6.0f ms %6.0f ms   %-14s %-14s %s\n", n, w, c, against(w, w0) " (" against(c, c0) ")",
                      against(w, w1) " (" against(c, c1) ")", m == "" ? "" : sprintf("%.1f MiB", m / 1024) }'
  done
  names=() commands=()
}

grown() { echo "bytes added to a page by $1: $((($(stat -c %s "$2") - $(stat -c %s plain.pdf)) / $3))"; }

addPrinting() {
  add "kiln, no effects" "${printer[@]}" job.pdf plain.pdf
  add "kiln, mirror, turn, negative" "${printer[@]}" job.pdf transformed.pdf "${transforms[@]}"
  add "kiln, watermark" "${printer[@]}" job.pdf marked.pdf "${watermark[@]}"
  add "kiln, watermark and overlay" "${printer[@]}" job.pdf both.pdf "${watermark[@]}" "${overlay[@]}"
}

echo "In brackets: the computing alone."
"$bin/press_bench_job" form.pdf 1
for pages in ${PAGES:-1000 10000}; do
  "$bin/press_bench_job" job.pdf "$pages"
  add "qpdf --overlay" qpdf job.pdf --overlay form.pdf --repeat=1 -- overlay.pdf
  has mutool && add "mutool, a loop over pages" mutool run overlay.js job.pdf mutool.pdf
  add "qpdf copy" qpdf job.pdf copy.pdf
  if ((pages == 1000)); then
    has pdftk && add "pdftk stamp" pdftk job.pdf stamp form.pdf output pdftk.pdf
    has gs && add "Ghostscript copy" gs -q -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile=gs.pdf job.pdf
  fi
  addPrinting
  compare "$pages pages of text, $(($(stat -c %s job.pdf) / 1024)) KiB"
  grown "a watermark" marked.pdf "$pages"
  grown "a watermark and an overlay" both.pdf "$pages"
  rm -f ./*.pdf.new mutool.pdf pdftk.pdf gs.pdf overlay.pdf copy.pdf
done

"$bin/press_bench_job" job.pdf "$scans" scan
export -f copyWhole
add "a copy" cp job.pdf copy.pdf
add "a copy, all on the disk" bash -c 'copyWhole job.pdf copy.pdf'
add "qpdf copy" qpdf job.pdf copied.pdf
addPrinting
compare "$scans scanned pages, $(($(stat -c %s job.pdf) >> 20)) MiB"
