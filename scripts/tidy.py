#!/usr/bin/env python3
"""Runs clang-tidy on the library and the program: scripts/tidy.py [--alone] [SOURCE...]

clang-tidy spends most of its time on the standard library's headers, once per source. So several sources are checked as
one file, in which each header is included once. Sources that declare the same name go into different files. If a file does
not compile, its sources are checked one by one. Findings name the place in the real source.

An unused using-declaration is not found if another source of the same file uses the name. With --alone every source is
checked by itself.
"""

import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build", "tidy")
JOINED = os.path.join(BUILD, "joined")
CLANG_TIDY = "clang-tidy-14"
LINES = 1600  # of a file, when its sources allow

INCLUDE = re.compile(r'\s*#\s*include\s*(["<][^">]+[">])')
USING_NAMESPACE = re.compile(r"using namespace ([\w:]+)")
# The declared name in a line that begins at the left margin, as everything outside of classes and functions does.
DECLARED = re.compile(r"(?:(?:struct|class|enum class|enum|using)\s+(\w+)|[A-Za-z_][\w:<>,*&\s\[\]()]*?[\s*&](operator\W+|\w+)\s*(?:[({\[=;]))")


class Source:
    def __init__(self, path, command):
        self.path = path
        self.command = command
        with open(path, encoding="latin-1") as file:
            self.lines = file.read().split("\n")
        self.names = set()
        self.namespaces = set()
        for line in self.lines:
            if found := USING_NAMESPACE.match(line):
                self.namespaces.add(found[1])
            elif found := DECLARED.match(line):
                self.names.add(found[1] or found[2])


class Batch:
    """Sources that are compiled by the same command, and clang-tidy's answer to them."""

    def __init__(self, source):
        self.sources = [source]
        self.names = set(source.names)
        self.namespaces = set(source.namespaces)
        self.size = len(source.lines)

    def takes(self, source):
        return (
            source.command == self.sources[0].command
            and self.size + len(source.lines) <= LINES
            and not self.names & source.names
            and self.namespaces == source.namespaces
        )

    def add(self, source):
        self.sources.append(source)
        self.names |= source.names
        self.size += len(source.lines)

    def write(self, path):
        """Writes the file of all sources; remembers where each of its lines is from."""
        self.path = path
        self.places = []
        seen = set()
        with open(path, "w", encoding="latin-1") as file:
            for source in self.sources:
                before = frozenset(seen)
                for number, line in enumerate(source.lines, 1):
                    if found := INCLUDE.match(line):
                        seen.add(found[1])
                        if found[1] in before:
                            line = ""  # twice in one file would be found fault with
                    file.write(line + "\n")
                    self.places.append((source.path, number))

    def tidy(self):
        """clang-tidy's exit status and what it says."""
        # The compiler itself warns of shadowed names; here they are only those of other sources.
        arguments = [*self.sources[0].command, "-Wno-shadow"]
        for directory in sorted({os.path.dirname(source.path) for source in self.sources}):
            arguments += ["-iquote", directory]
        done = subprocess.run(
            [CLANG_TIDY, "-quiet", f"--config-file={ROOT}/.clang-tidy", self.path, "--"] + arguments,
            cwd=BUILD,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            encoding="latin-1",
            check=False,
        )
        if done.returncode and len(self.sources) > 1 and "clang-diagnostic-error" in done.stdout:
            return tidy_alone(self.sources)
        said = re.sub(
            rf"^{re.escape(self.path)}:(\d+):",
            lambda found: "{}:{}:".format(*self.places[int(found[1]) - 1]),
            done.stdout,
            flags=re.MULTILINE,
        )
        said = re.sub(r"^\d+ warnings?( and \d+ errors?)? (generated|treated as errors)\.?\n", "", said, flags=re.MULTILINE)
        return done.returncode, said


def tidy_alone(sources):
    status, said = 0, f"checked one by one: {' '.join(os.path.relpath(source.path, ROOT) for source in sources)}\n"
    for source in sources:
        batch = Batch(source)
        batch.write(os.path.join(JOINED, os.path.relpath(source.path, ROOT).replace("/", "_")))
        code, text = batch.tidy()
        status = status or code
        said += text
    return status, said


def read_sources(wanted):
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    sources = []
    for entry in entries:
        path = entry["file"]
        folder = os.path.relpath(path, ROOT).split(os.sep)[0]
        if folder not in ("src", "app") or (wanted and path not in wanted):
            continue
        words = shlex.split(entry["command"])
        command = words[words.index(next(word for word in words if "clang++" in word)) + 1 : words.index("-o")]
        sources.append(Source(path, tuple(command)))
    return sources


def main():
    options = [word for word in sys.argv[1:] if word.startswith("-")]
    wanted = {os.path.abspath(word) for word in sys.argv[1:] if not word.startswith("-")}
    if options not in ([], ["--alone"]):
        sys.exit(__doc__)
    sources = read_sources(wanted)
    missing = wanted - {source.path for source in sources}
    if missing or not sources:
        sys.exit(f"not compiled here: {' '.join(sorted(missing))}")

    batches = []
    for source in sorted(sources, key=lambda source: -len(source.lines)):
        room = next((batch for batch in batches if not options and batch.takes(source)), None)
        if room:
            room.add(source)
        else:
            batches.append(Batch(source))
    os.makedirs(JOINED, exist_ok=True)
    for number, batch in enumerate(batches):
        batch.write(os.path.join(JOINED, f"{number}.cpp"))
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        answers = list(workers.map(Batch.tidy, sorted(batches, key=lambda batch: -batch.size)))
    for _, said in answers:
        sys.stdout.write(said)
    failed = sum(1 for status, _ in answers if status)
    print(f"{len(sources)} sources in {len(batches)} files: {'findings' if failed else 'nothing found'}")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
