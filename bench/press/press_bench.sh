#!/bin/bash
# Times printing on a job of text against other programs, in turns.
# Usage: press_bench.sh FOLDER, where FOLDER holds the built programs. PAGES=10000 for a longer job, ROUNDS for more turns.
set -eu

bin=${1:?Usage: press_bench.sh FOLDER-OF-THE-BUILT-PROGRAMS}
pages=${PAGES:-1000}
rounds=${ROUNDS:-7}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

printer=("$bin/kiln" print --home "$work/home")
transforms=(--set MirrorImage=MirrorImage --set NegativeImage=Negative --set Rotate180=Rotate180
            --set Rotate180ForA3LD=Rotate180)
watermark=(--set WatermarkSel=1 --set Watermark=Watermark)
overlay=(--set OverlayImage=OverlayImage --set "OverlaySourceFileName=$work/form.pdf")
"$bin/press_bench_job" job.pdf "$pages"
"$bin/press_bench_job" form.pdf 1

cat > overlay.js <<'END'
// A form on every page, by MuPDF's own loop.
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

names=() commands=()
add() { names+=("$1"); shift; commands+=("$(printf '%q ' "$@")"); }
add "qpdf copy" qpdf job.pdf copy.pdf
add "qpdf --overlay" qpdf job.pdf --overlay form.pdf --repeat=1 -- overlay.pdf
add "mutool, a loop over pages" mutool run overlay.js job.pdf mutool.pdf
[ -x "$(command -v pdftk)" ] && add "pdftk stamp" pdftk job.pdf stamp form.pdf output pdftk.pdf
[ "$pages" -le 1000 ] && add "Ghostscript copy" gs -q -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile=gs.pdf job.pdf
add "kiln, no effects" "${printer[@]}" job.pdf plain.pdf
add "kiln, mirror, turn, negative" "${printer[@]}" job.pdf transformed.pdf "${transforms[@]}"
add "kiln, watermark" "${printer[@]}" job.pdf marked.pdf "${watermark[@]}"
add "kiln, watermark and overlay" "${printer[@]}" job.pdf both.pdf "${watermark[@]}" "${overlay[@]}"

for ((round = 0; round < rounds; ++round)); do
  for index in "${!names[@]}"; do
    start=${EPOCHREALTIME/[.,]/}
    eval "${commands[index]}" > /dev/null 2>&1
    echo $((${EPOCHREALTIME/[.,]/} - start)) >> "times.$index"
  done
done

# The median, which one slow disk flush does not move.
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
reference=$(median times.1)
echo "$pages pages, $(($(stat -c %s job.pdf) / 1024)) KiB; against qpdf --overlay; peak memory"
for index in "${!names[@]}"; do
  memory=$(eval "/usr/bin/time -f %M ${commands[index]}" 2>&1 > /dev/null | tail -1)
  awk -v n="${names[index]}" -v t="$(median "times.$index")" -v r="$reference" -v m="$memory" \
    'BEGIN { printf "%-32s %8.1f ms  %5.2f x  %6.1f MiB\n", n, t / 1000, t / r, m / 1024 }'
done
grown() { echo "bytes added to a page by $1: $((($(stat -c %s "$2") - $(stat -c %s plain.pdf)) / pages))"; }
grown "a watermark" marked.pdf
grown "a watermark and an overlay" both.pdf
