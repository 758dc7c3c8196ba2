#!/usr/bin/env bash
# Installs the packages of a folder, uses them, and removes them again. It changes the system that it runs on, so it is
# for a bare one: tools/package --check runs it there.
#
#   packages_test.sh FOLDER
set -euo pipefail
tree=$(cd "$(dirname "$0")/../.." && pwd)
cd "$1"
work=$(mktemp -d)
export DEBIAN_FRONTEND=noninteractive HOME=$work/home
mkdir "$HOME"

# fact SENTENCE COMMAND...: the command succeeds.
fact() {
  "${@:2}" >"$work/log" 2>&1 || { echo "Not so: $1" >&2; tail -n 40 "$work/log" >&2; exit 1; }
  echo "$1"
}

# shellcheck source=tests/packages/print_queue.sh
. "$tree/tests/packages/print_queue.sh"
trap stop_scheduler EXIT

ours=(zorvueffect zorvueffect-cups libkiln-dev)
# The scheduler keeps files of its own.
system_files() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path /root -o \
    -path /var/lib/dpkg -o -path /var/lib/apt -o -path /var/cache -o -path /var/log -o -path /var/spool/cups -o \
    -path /etc/cups \) -prune -o -print | sort
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
fact "the scheduler takes a queue" make_queue
cp "$description" "$work/before.ppd"
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

rm /etc/kiln/office.xml

letter=$work/letter.pdf
marked=(-o kilnWatermark=Confidential "$letter")
kiln print "$letter" "$work/marked.pdf" --watermark Confidential
fact "the queue prints" prints "$letter"
cp "$printed" "$work/without.pdf"
fact "the queue prints a letter that has a watermark already" prints "$work/marked.pdf"
cp "$printed" "$work/with.pdf"
fact "that looks otherwise" does_not_show "$work/without.pdf"
# Whoever is careful with what others may read can enable queues, too.
enable() { (umask 077 && kiln queue enable office --allow all); }
fact "kiln queue enable puts the effects on the queue" enable
fact "cupstestppd accepts the description of the queue" cupstestppd "$description"
fact "dialogs offer the watermarks" offers "^kilnWatermark/.* Confidential "
fact "kiln queue list names the queue" lists office
fact "a job that chooses nothing prints" prints "$letter"
fact "it has no watermark" shows "$work/without.pdf"
fact "a job that chooses a watermark prints" prints "${marked[@]}"
fact "it has the watermark" shows "$work/with.pdf"
fact "a job that chooses what is not offered is stopped" stops -o kilnWatermark=Secret "$letter"
fact "an upgrade installs" apt-get install -y --reinstall --no-install-recommends ./*.deb
fact "the queue keeps its effects" lists office
fact "a job that chooses a watermark prints after the upgrade" prints "${marked[@]}"
fact "it has the watermark, too" shows "$work/with.pdf"
fact "kiln queue disable takes the effects off" kiln queue disable office
fact "the description of the queue is as before" is_as_before
fact "the queue prints without effects" prints "${marked[@]}"
fact "what it prints has no watermark" shows "$work/without.pdf"

fact "the queue has effects once more" enable
fact "the packages are removed while the queue has effects" apt-get purge -y "${ours[@]}"
fact "their removal leaves the description of the queue as before" is_as_before
fact "the queue prints after the removal" prints "$letter"
fact "what it prints is as before" shows "$work/without.pdf"
fact "the packages install again" apt-get install -y --no-install-recommends ./*.deb
fact "the queue has effects after that" enable
stop_scheduler
fact "the packages are removed while the scheduler does not run" apt-get purge -y "${ours[@]}"
fact "that leaves the description of the queue as before, too" is_as_before
fact "the scheduler starts" start_scheduler
fact "the queue prints then" prints "$letter"
fact "nothing of the scheduler's names the filter" does_not_name_kiln
stop_scheduler
system_files >"$work/after"
fact "nothing is left of them, and nothing else is gone" diff "$work/before" "$work/after"
rm -r "$work"
