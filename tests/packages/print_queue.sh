# The distribution's print scheduler, and a queue that writes what it prints to a file. packages_test.sh reads this.
# shellcheck shell=bash disable=SC2154

description=/etc/cups/ppd/office.ppd
printed=$work/printed.pdf
scheduler=

wait_until() {
  local tries
  for ((tries = 0; tries < 600; ++tries)); do
    ! "$@" || return 0
    sleep 0.2
  done
  return 1
}

runs() { [[ $(lpstat -r) == "scheduler is running" ]]; }

start_scheduler() {
  cupsd -f >>"$work/scheduler.log" 2>&1 &
  scheduler=$!
  wait_until runs
}

stop_scheduler() {
  [[ -n $scheduler ]] || return 0
  kill "$scheduler"
  wait "$scheduler" || true
  scheduler=
}

# The ports are those of the machine around this one, so the scheduler has its socket alone.
make_queue() {
  sed -i '/^Listen localhost/d; /^Port /d' /etc/cups/cupsd.conf
  echo "FileDevice Yes" >>/etc/cups/cups-files.conf
  start_scheduler && lpadmin -p office -E -v "file://$printed" -P "$tree/tests/script/driverless.ppd" &&
    test -s "$description"
}

has_no_jobs() { [[ -z $(lpstat -o office) ]]; }
send() { rm -f "$printed" && lp -d office "$@"; }

# prints [OPTION]... FILE: the job comes out.
prints() { send "$@" && wait_until has_no_jobs && test -s "$printed"; }

# stops [OPTION]... FILE: the job does not come out, and stays in the queue, which tells why.
tells_why() { lpstat -l -o office | grep "This queue does not offer" >/dev/null; }
stops() { send "$@" && wait_until tells_why && test ! -s "$printed" && cancel -a office && wait_until has_no_jobs; }

# shows FILE: what has come out last looks like the file.
shows() { draw "$printed" one && draw "$1" other && cmp "$work"/{one,other}.png; }
does_not_show() { draw "$printed" one && draw "$1" other && ! cmp "$work"/{one,other}.png; }
draw() { pdftoppm -singlefile -png -r 50 "$1" "$work/$2"; }

offers() { lpoptions -p office -l | grep "$1" >/dev/null; }
lists() { [[ $(kiln queue list | cut -f 1) == "$*" ]]; }
is_as_before() { cmp "$description" "$work/before.ppd"; }
does_not_name_kiln() { ! grep -r kiln /etc/cups; }
