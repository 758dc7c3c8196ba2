#!/usr/bin/env python3
"""Prints many jobs through a print scheduler of its own, with kiln's filter and with the scheduler's page filter alone.

    queue_bench.py FOLDER-OF-THE-BUILT-PROGRAMS [JOBS]

JOBS is 20 unless given. The jobs have 1 to 50 pages. Tells jobs per second, the most memory of
one filter, and how many jobs are lost when the scheduler is killed in the middle and started again, which has to be
none. Needs cupsd, the clients of CUPS and qpdf; leaves the system's printing alone."""
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

DESCRIPTION = (pathlib.Path(__file__).resolve().parent.parent / "tests/script/driverless.ppd").read_text()
SIZES = (1, 2, 3, 5, 8, 13, 21, 34, 50)


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Scheduler:
    def __init__(self, folder, kiln):
        self.folder = folder
        self.address = f"127.0.0.1:{free_port()}"
        self.environment = dict(os.environ, CUPS_SERVER=self.address, HOME=str(folder))
        for name in ("bin/filter", "bin/backend", "cups/ppd", "spool", "cache", "run", "tmp", "log", "printed"):
            (folder / name).mkdir(parents=True)
        (folder / "tmp").chmod(0o1777)
        (folder / "printed").chmod(0o777)
        (folder / "bin/daemon").symlink_to("/usr/lib/cups/daemon")
        self.add_program("filter/pdftopdf", "exec /usr/lib/cups/filter/pdftopdf \"$@\"")
        self.add_program("filter/kiln", f"exec {kiln} filter --queues {folder}/queues --tickets {folder} \"$@\"")
        self.add_program("backend/keep", f"[ $# = 0 ] && exit 0\ncat ${{6:+\"$6\"}} > {folder}/printed/$1.part && "
                                         f"mv {folder}/printed/$1.part {folder}/printed/$1.pdf")
        (folder / "cups-files.conf").write_text(
            f"ServerRoot {folder}/cups\nServerBin {folder}/bin\nRequestRoot {folder}/spool\nCacheDir {folder}/cache\n"
            f"StateDir {folder}/run\nTempDir {folder}/tmp\nAccessLog {folder}/log/access\nErrorLog {folder}/log/error\n"
            f"PageLog {folder}/log/page\n")
        (folder / "cupsd.conf").write_text(
            f"Listen {self.address}\nLogLevel warn\nBrowsing No\nWebInterface No\nDefaultAuthType None\nMaxJobs 0\n"
            "DirtyCleanInterval 0\n"  # a job is on the disk before its sender hears of it
            "<Location />\nAllow from 127.0.0.1\n</Location>\n"
            "<Policy default>\n<Limit All>\nAllow from 127.0.0.1\n</Limit>\n</Policy>\n")
        self.start()

    def add_program(self, name, script):
        file = self.folder / "bin" / name
        file.write_text(f"#!/bin/sh\n{script}\n")
        file.chmod(0o700 if name.startswith("backend/") else 0o755)

    def start(self):
        self.process = subprocess.Popen(["/usr/sbin/cupsd", "-f", "-c", self.folder / "cupsd.conf", "-s",
                                         self.folder / "cups-files.conf"], stderr=subprocess.DEVNULL)
        while "is running" not in self.client("lpstat", "-r"):
            time.sleep(0.05)

    def client(self, *words):
        return subprocess.run(words, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True).stdout

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def stop(self):
        self.process.terminate()
        self.process.wait()

    def send(self, queue, job):
        said = self.client("lp", "-d", queue, str(job))
        number = re.search(r"request id is \S+-(\d+)", said)
        if not number:
            sys.exit(f"a job is not taken: {said}")
        return number[1]

    def printed(self, numbers):
        return sum((self.folder / "printed" / f"{number}.pdf").exists() for number in numbers)

    def wait_for(self, numbers):
        """False when the queues are idle before all jobs are printed."""
        while self.printed(numbers) < len(numbers):
            if not self.client("lpstat", "-o"):
                return self.printed(numbers) == len(numbers)
            time.sleep(0.1)
        return True


def peak_memory(job, words):
    """The most memory of one filter for a job, in MiB."""
    measured = subprocess.run(["/usr/bin/time", "-f", "%M"] + words + ["1", "somebody", "job", "1", "", str(job)],
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                              env=dict(os.environ, PRINTER="memory"))
    return int(measured.stderr.split()[-1]) / 1024


def make_jobs(kiln, folder):
    sample = folder / "sample.pdf"
    subprocess.run([kiln, "sample", sample], check=True)
    jobs = []
    for size in SIZES:
        job = folder / f"{size}.pdf"
        pages = []
        while len(pages) < size:
            pages += ["1", "2", "3", "4"]
        subprocess.run(["qpdf", "--empty", "--pages", sample, ",".join(pages[:size]), "--", job], check=True)
        jobs.append(job)
    return jobs


def measure(name, scheduler, queue, jobs, count):
    start = time.monotonic()
    numbers = [scheduler.send(queue, jobs[i % len(jobs)]) for i in range(count)]
    whole = scheduler.wait_for(numbers)
    seconds = time.monotonic() - start
    print(f"{name:34} {count / seconds:7.2f} jobs a second{'' if whole else ', NOT ALL PRINTED'}", flush=True)


def lose(scheduler, queue, jobs, count):
    numbers = [scheduler.send(queue, jobs[i % len(jobs)]) for i in range(count)]
    while scheduler.printed(numbers) < count // 3:
        time.sleep(0.05)
    before = scheduler.printed(numbers)
    scheduler.kill()
    scheduler.start()
    scheduler.client("cupsenable", queue)
    scheduler.wait_for(numbers)
    print(f"killed after {before} of {count} jobs, and started again: {count - scheduler.printed(numbers)} lost",
          flush=True)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit("Usage: queue_bench.py FOLDER-OF-THE-BUILT-PROGRAMS [JOBS]")
    kiln = pathlib.Path(sys.argv[1]).resolve() / "kiln"
    count = int(sys.argv[2]) if len(sys.argv) == 3 else 20
    folder = pathlib.Path(tempfile.mkdtemp(prefix="kiln-queue-bench-"))
    folder.chmod(0o755)
    try:
        jobs = make_jobs(kiln, folder)
        ticket = folder / "ticket.xml"
        ticket.write_bytes(subprocess.run([kiln, "ticket", "--watermark", "Confidential", "--home", folder / "home"],
                                          stdout=subprocess.PIPE, check=True).stdout)
        scheduler = Scheduler(folder / "scheduler", kiln)
        (folder / "driverless.ppd").write_text(DESCRIPTION)
        for queue in ("plain", "effects"):
            scheduler.client("lpadmin", "-p", queue, "-E", "-v", "keep:/", "-P", str(folder / "driverless.ppd"))
        subprocess.run([kiln, "queue", "enable", "effects", "--ticket", ticket, "--queues",
                        scheduler.folder / "queues"], env=scheduler.environment, check=True)
        measure("the page filter alone", scheduler, "plain", jobs, count)
        measure("kiln, and the page filter", scheduler, "effects", jobs, count)
        shutil.copy(ticket, folder / "memory.xml")
        for name, words in (("pdftopdf", ["/usr/lib/cups/filter/pdftopdf"]),
                            ("kiln", [str(kiln), "filter", "--tickets", str(folder)])):
            print(f"memory of {name} for {SIZES[-1]} pages".ljust(34) +
                  f" {peak_memory(jobs[-1], words):7.1f} MiB", flush=True)
        lose(scheduler, "effects", jobs, count)
        scheduler.stop()
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
