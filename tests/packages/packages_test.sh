#!/usr/bin/env bash
# Installs the packages of a folder, uses them, and removes them again. It changes the system that it runs on, so it is
# for a bare one: tools/package --check runs it there.
#
#   packages_test.sh FOLDER
set -euo pipefail
cd "$1"
work=$(mktemp -d)
export DEBIAN_FRONTEND=noninteractive HOME=$work/home
mkdir "$HOME"

# fact SENTENCE COMMAND...: the command succeeds.
fact() {
  "${@:2}" >"$work/log" 2>&1 || { echo "Not so: $1" >&2; tail -n 40 "$work/log" >&2; exit 1; }
  echo "$1"
}

ours=(zorvueffect zorvueffect-cups libkiln-dev)
system_files() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path /root -o \
    -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}

apt-get update -qq
# What the packages need comes first, so that what is left of themselves shows.
needed() {
  local simulated
  simulated=$(apt-get install --simulate --no-install-recommends ./*.deb)
  awk '/^Inst / { print $2 }' <<<"$simulated" | grep -vxFf <(printf '%s\n' "${ours[@]}")
}
mapfile -t packages < <(needed)
fact "what the packages need is in the distribution" \
  apt-get install -y --no-install-recommends "${packages[@]}"
system_files >"$work/before"

fact "the packages install" apt-get install -y --no-install-recommends ./*.deb
fact "kiln tells its version" kiln --version
fact "kiln makes a sample" kiln sample "$work/letter.pdf"
fact "kiln prints with a watermark" kiln print "$work/letter.pdf" "$work/printed.pdf" --watermark Draft
fact "the printed file is larger than the job" \
  test "$(stat -c %s "$work/printed.pdf")" -gt "$(stat -c %s "$work/letter.pdf")"
fact "kiln draws pages" kiln picture "$work/printed.pdf" "$work/page.png"
fact "kiln packs profiles" kiln profile export "$work/settings.zip"
fact "kiln draws its window" env QT_QPA_PLATFORM=offscreen kiln show "$work/letter.pdf" --screenshot "$work/window.png"

filter=/usr/lib/cups/filter/kiln
for file in "$filter" /etc/kiln; do
  fact "$file is root's, and others may not change it" \
    test "$(stat -c '%U:%G %a' "$file")" = "root:root 755"
done
kiln ticket --set MirrorImage=MirrorImage >/etc/kiln/office.xml
as_scheduler() {
  setpriv --reuid lp --regid lp --clear-groups env PRINTER=office HOME=/nonexistent TMPDIR=/tmp \
    "$filter" 1 ann letter 1 "" <"$work/letter.pdf" >"$work/filtered.pdf" 2>"$work/messages"
}
fact "the filter of the queue prints as the scheduler's user" as_scheduler
fact "the filter prints with the settings of /etc/kiln" grep office.xml "$work/messages"
for file in include/kiln/plugin.h share/pkgconfig/kiln.pc share/cmake/Kiln/KilnConfig.cmake; do
  fact "the contract has $file" test -f "/usr/$file"
done

fact "the packages are removed with all that they have made" apt-get purge -y "${ours[@]}"
system_files >"$work/after"
fact "nothing is left of them, and nothing else is gone" diff "$work/before" "$work/after"
rm -r "$work"
