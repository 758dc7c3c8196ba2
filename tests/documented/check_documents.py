#!/usr/bin/env python3
"""Runs the commands that the documents name, and looks for the files that they name.

    check_documents.py SOURCE-FOLDER BUILD-FOLDER

A command is a line of a code block, or words in backquotes, that begins with one of PROGRAMS; so are the examples
that "kiln help" gives. Commands run with Bash in a folder of their document's own, in the order of the document, with
the programs that are built on PATH. Of commands that only name presets, the presets and targets are looked up.
commands.txt, beside this file, tells what is run in the place of a command that cannot run as it stands, or why none
is. It also fails on an option that a script does not have, and on a link or a path that leads nowhere."""
import dataclasses
import glob
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile

PROGRAMS = r"(\./|tools/|bench/\S+\.(sh|py)\b|tests/\S+\.(sh|py)\b|build/\S+/bin/|" \
    r"(kiln|cmake|ctest|ninja|cat|chmod|cp|diff|echo|exec|git|lp|lpadmin|lpoptions|make-report|mkdir|printf|python3|" \
    r"sudo|vcpkg|apt-get|clang-format\S*|clang-tidy\S*|qpdf|mutool|\w+_(bench|fuzz|tests))( |$))"
FOLDERS = r"(app|base|bench|check|cmake|docs|effect|examples|files|fuzz|host|kiln|press|script|tests|tools|window)/"
SOURCES = r"[\w-]+\.(h|cpp|sh|py|xul|dtd|cmake)"
SECONDS_EACH = 300  # a disk may stand still for minutes

failures = []


def fail(place, what):
    failures.append(f"{place}: {what}")


@dataclasses.dataclass
class Command:
    place: str
    text: str
    shown: str = ""  # what the document shows as its output


@dataclasses.dataclass
class Entry:
    place: str
    runs: str = ""
    named: bool = False


def read_table(file):
    """Entries by command. Below each command, indented, is "run: ..." or "not run: ..."."""
    entries = {}
    command = None
    for number, line in enumerate(file.read_text().splitlines(), 1):
        place = f"{file.name}:{number}"
        verdict = re.fullmatch(r" +(run|not run): (.+)", line)
        if not line.strip() or line.startswith("#"):
            continue
        if not line.startswith(" "):
            if line in entries:
                fail(place, f"twice: {line}")
            command = line
            entries[command] = Entry(place)
        elif not verdict or command is None:
            fail(place, "neither a command nor a verdict")
        elif verdict[1] == "run":
            entries[command].runs = verdict[2]
    return entries


def code_blocks(lines):
    """(number of the first line, lines without their indentation) of each code block, and the other lines by number."""
    blocks, prose = [], {}
    number = 0
    while number < len(lines):
        line = lines[number]
        fence = re.match(r" *(```|~~~)", line)
        if fence:
            end = number + 1
            while end < len(lines) and not lines[end].lstrip().startswith(fence[1]):
                end += 1
            blocks.append((number + 2, lines[number + 1:end]))
            number = end + 1
        elif line.startswith("    ") and (number == 0 or not lines[number - 1].strip()):
            end = number
            while end < len(lines) and (lines[end].startswith("    ") or not lines[end].strip()):
                end += 1
            block = lines[number:end]
            indentation = min(len(each) - len(each.lstrip()) for each in block if each.strip())
            blocks.append((number + 1, [each[indentation:] for each in block]))
            number = end
        else:
            prose[number + 1] = line
            number += 1
    return blocks, prose


def commands_of_block(document, first, lines):
    commands = []
    number = 0
    while number < len(lines):
        place = f"{document}:{first + number}"
        line = lines[number]
        number += 1
        prompt = line.startswith("$ ")
        text = line.removeprefix("$ ")
        if not re.match(PROGRAMS, text):
            continue
        while number < len(lines) and (text.endswith(("\\", "^")) or re.match(r"\s+\S", lines[number])):
            text = re.sub(r"\s*[\\^]$", "", text) + " " + lines[number].strip()
            number += 1
        here = re.search(r"<<-?'?(\w+)'?", text)
        if here:
            while number < len(lines) and lines[number].strip() != here[1]:
                number += 1
            number += 1
        command = Command(place, re.sub(r"\s{2,}#? ?[^|>]*$", "", text) if "  " in text else text)
        while prompt and number < len(lines) and lines[number].strip() and not lines[number].startswith("$ "):
            command.shown += lines[number] + "\n"
            number += 1
        commands.append(command)
    return commands


class Check:
    def __init__(self, source, build):
        self.source = source
        self.build = build
        self.files = [os.path.relpath(os.path.join(folder, name), source)
                      for folder, folders, names in os.walk(source)
                      if not (folder == str(source) and self.prune(folders)) for name in names]
        self.names = {os.path.basename(file) for file in self.files}
        self.presets = json.loads((source / "CMakePresets.json").read_text())
        self.options = set(re.findall(r"^option\((\w+)", (source / "CMakeLists.txt").read_text(), re.MULTILINE))
        # What the preset "linux" runs to build.
        self.product = subprocess.run(["ninja", "-C", build, "-t", "commands", "product"], check=True,
                                      capture_output=True, text=True).stdout
        self.entries = read_table(pathlib.Path(__file__).parent / "commands.txt")
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="kiln-documents-"))
        self.environment = {key: value for key, value in os.environ.items()
                            if key not in ("DISPLAY", "WAYLAND_DISPLAY", "PRINTER")}
        self.environment |= {"PATH": f"{build}/bin:{os.environ['PATH']}", "SOURCE": str(source), "BUILD": str(build),
                             "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}
        self.count = 0

    @staticmethod
    def prune(folders):
        folders[:] = [folder for folder in folders if folder not in ("build", "out", ".git")]
        return False

    def enter(self, document):
        """Makes the folder in which a document's commands run: two letters, and a home with one overlay."""
        self.folder = self.scratch / re.sub(r"\W", "_", document)
        self.folder.mkdir()
        for name in ("DATA", "CONFIG", "CACHE"):
            self.environment[f"XDG_{name}_HOME"] = str(self.folder / "home" / name.lower())
        self.environment |= {"HOME": str(self.folder / "home"), "DOCUMENT": str(self.source / document)}
        for command in ("mkdir home", "kiln sample letter.pdf", "kiln sample letterhead.pdf",
                        "kiln overlay create Letterhead letterhead.pdf"):
            self.run(document, command)

    def run(self, place, command, shown=""):
        self.count += 1
        with subprocess.Popen(["bash", "-euo", "pipefail", "-c", command], cwd=self.folder, env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              errors="replace", start_new_session=True) as process:
            try:
                output, errors = process.communicate(timeout=SECONDS_EACH)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                fail(place, f"does not end: {command}")
                return ""
        if process.returncode:
            fail(place, f"ends with status {process.returncode}: {command}\n{output[-500:]}{errors[-1500:]}")
        elif shown and output != shown:
            fail(place, f"{command}\nthe document shows:\n{shown}but the answer is:\n{output}")
        return output

    def preset(self, place, kind, name):
        if name not in [each["name"] for each in self.presets[kind] if not each.get("hidden")]:
            fail(place, f"{name} is not one of the {kind}")

    def target(self, place, name):
        if not re.search(rf"^build {re.escape(name)}:", (self.build / "build.ninja").read_text(), re.MULTILINE):
            fail(place, f"there is no target {name}")

    def by_presets(self, place, text):
        """Whether it is a command by presets alone, of which there is enough to know that the preset exists."""
        words = text.split()
        if match := re.fullmatch(r"cmake --preset (\w+)", text):
            self.preset(place, "configurePresets", match[1])
        elif match := re.fullmatch(r"cmake --build --preset (\w+)(?: --target ([\w ]+))?", text):
            self.preset(place, "buildPresets", match[1])
            for name in (match[2] or "").split():
                self.target(place, name)
        elif words[0] == "ctest" and len(words) > 2 and words[1] == "--preset":
            self.preset(place, "testPresets", words[2])
        else:
            return False
        return True

    def built(self, place, path):
        """Whether a file below build/ is one that its preset leaves there."""
        _, preset, file = path.rstrip("/").split("/", 2)
        if preset == "linux":
            found = re.search(rf"(?<!\S)({re.escape(str(self.build))}/)?{re.escape(file)}(?![\w.-])", self.product)
        else:
            found = (self.build / file).exists()
        if not found:
            fail(place, f"{path} is not built")

    def script_options(self, place, text):
        """Scripts that are not run: they exist, and have the options that are named."""
        for step in re.split(r" && | \| |; ", text):
            words = step.split()
            if not words or not re.match(r"\./|tools/|bench/|tests/", words[0]):
                continue
            script = self.source / words[0]
            if not os.access(script, os.X_OK) or not script.is_file():
                fail(place, f"{words[0]} cannot be run")
                continue
            # What follows a program that is run by the tool is that program's.
            own = re.split(r" (?=\./|build/)", step)[0] if words[0].startswith("tools/") else step
            for option in re.findall(r"(?<![\w-])--[a-z][a-z-]*", own):
                if option not in script.read_text():
                    fail(place, f"{words[0]} does not know {option}")

    def command(self, command):
        place, text = command.place, command.text
        for option in re.findall(r"-D(ZORVU_\w+)", text):
            if option not in self.options:
                fail(place, f"CMakeLists.txt has no option {option}")
        for path in re.findall(r"\bbuild/(?:linux|test|bench)/[\w./-]*\w", text):
            self.built(place, path)
        self.script_options(place, text)
        entry = self.entries.get(text)
        if entry:
            entry.named = True
            if entry.runs:
                self.run(f"{place} ({entry.place})", entry.runs)
        elif all([self.by_presets(place, step) for step in text.split(" && ")]):
            pass
        elif match := re.match(r"build/(test|bench)/bin/(\w+_tests|\w+_bench)\b", text):
            brief = " --benchmark_min_time=0.001" if match[2].endswith("_bench") else ""
            if "Running 0 tests" in self.run(place, re.sub(r"^build/\w+", str(self.build), text) + brief):
                fail(place, f"runs no test: {text}")
        elif re.match(r"kiln show (?!.*--screenshot)", text):
            # Nobody would close the window.
            self.run(place, f"{text} --screenshot shown.png")
        elif re.match(r"(kiln|(echo|printf) .*\| kiln) ", text) and not re.search(r"\bsudo\b|\s/\w", text):
            self.run(place, text, command.shown)
        else:
            fail(place, f"neither can this be run here, nor does commands.txt say why not: {text}")

    def mention(self, place, text):
        """Words in backquotes, where they are a command or a path."""
        path = text.rstrip("/") if re.fullmatch(r"[\w@.*/-]+", text) else None
        if path and re.match(r"build/(linux|test|bench)/", path):
            self.built(place, path)
        elif path and re.match(r"(bin|share)/", path):
            if not (self.build / path).exists():
                fail(place, f"{path} is not built")
        elif path and re.match(FOLDERS, text) and not os.access(self.source / path, os.X_OK):
            if not glob.glob(str(self.source / path)):
                fail(place, f"{path} does not exist")
        elif path and re.fullmatch(SOURCES, path):
            if path not in self.names:
                fail(place, f"there is no file {path}")
        elif match := re.fullmatch(r"kiln ([a-z]+(?: [a-z]+)?)", text):
            self.run(place, f"kiln {match[1]} --help")
        elif re.match(PROGRAMS, text) and re.search(r"[ /]", text) and not (self.source / text).is_dir():
            self.command(Command(place, text))

    def links(self, document, number, line):
        place = f"{document}:{number}"
        for name in re.findall(r"\bpreset `(\w+)`", line):
            self.preset(place, "configurePresets", name)
        for target in re.findall(r"\]\(([^)\s]+)\)", line):
            if re.match(r"[a-z]+:", target):
                continue
            path, _, anchor = target.partition("#")
            file = (self.source / document).parent / path if path else self.source / document
            if not file.exists():
                fail(place, f"the link {target} leads nowhere")
            elif anchor:
                headings = [re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
                            for heading in re.findall(r"^#+ (.+)$", file.read_text(), re.MULTILINE)]
                if anchor not in headings:
                    fail(place, f"{path or document} has no heading {anchor}")

    def document(self, document):
        self.enter(document)
        lines = (self.source / document).read_text().splitlines()
        blocks, prose = code_blocks(lines)
        found = [(int(command.place.rsplit(":", 1)[1]), self.command, (command,))
                 for first, block in blocks for command in commands_of_block(document, first, block)]
        for number, line in prose.items():
            self.links(document, number, line)
            found += [(number, self.mention, (f"{document}:{number}", text)) for text in re.findall(r"`([^`]+)`", line)]
        for _, action, arguments in sorted(found, key=lambda each: each[0]):
            action(*arguments)

    def help(self):
        """The examples that the command's own help gives."""
        self.enter("kiln help")
        subcommands = self.run("kiln help", "kiln help").split("Subcommands:\n")[1].split("\n\n")[0]
        seen = set()
        for name in ["", *re.findall(r"^  (\w+) ", subcommands, re.MULTILINE)]:
            text = self.run("kiln help", f"kiln help {name}")
            examples = text.split("Examples:\n")[1].split("\n\n")[0] if "Examples:\n" in text else ""
            for line in examples.splitlines():
                for command in commands_of_block(f"kiln help {name}".strip(), 1, [line.strip()]):
                    if command.text not in seen:
                        seen.add(command.text)
                        self.command(command)

    def all(self):
        documents = ["README.md", *(name for name in ("CONTRIBUTING.md", "SECURITY.md") if name in self.files),
                     *sorted(file for file in self.files if re.fullmatch(r"docs/[\w/-]+\.md", file))]
        for document in documents:
            self.document(document)
        self.help()
        for text, entry in self.entries.items():
            if not entry.named:
                fail(entry.place, f"no document names this any more: {text}")
        return len(documents)


def main():
    check = Check(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve())
    try:
        documents = check.all()
    finally:
        shutil.rmtree(check.scratch)
    for failure in failures:
        print(failure)
    print(f"{documents} documents, {check.count} commands run, {len(failures)} failures")
    sys.exit(bool(failures))


main()
