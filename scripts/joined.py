"""Joins sources of the same compile command into a few files, for checkers that spend most of their time on headers.

Each header is included once per file. Sources that declare the same name go into different files.
"""

import json
import os
import re
import shlex

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
LINES = 4000  # of a file, when its sources allow

INCLUDE = re.compile(r'\s*#\s*include\s*(["<][^">]+[">])')
# The declared name in a line that begins at the left margin, as everything outside of classes and functions does. Several
# sources may have an abbreviation for the same namespace.
DECLARED = re.compile(r"(?!namespace|template)(?:(?:struct|class|enum class|enum|using)\s+(\w+)|[A-Za-z_][\w:<>,*&\s\[\]()]*?[\s*&](operator\W+|\w+)\s*([({\[=;]))")


class Source:
    def __init__(self, path, command):
        self.path = path
        self.command = command
        with open(path, encoding="latin-1") as file:
            self.lines = file.read().split("\n")
        self.names = set()
        is_internal = False
        for line in self.lines:
            if line in ("namespace", "} // namespace"):
                is_internal = line == "namespace"
            elif found := DECLARED.match(line):
                # Functions that other sources may call differ in their parameters.
                self.names.add(line if found[3] == "(" and not is_internal else found[1] or found[2])


class Batch:
    """Sources that are compiled by the same command."""

    def __init__(self, source):
        self.sources = [source]
        self.names = set(source.names)
        self.size = len(source.lines)

    def takes(self, source):
        return (
            source.command == self.sources[0].command
            and self.size + len(source.lines) <= LINES
            and not self.names & source.names
        )

    def add(self, source):
        self.sources.append(source)
        self.names |= source.names
        self.size += len(source.lines)

    def write(self, path, directives=False):
        """Writes the file of all sources; remembers where each of its lines is from, or says so in #line directives."""
        self.path = path
        self.places = []
        seen = set()
        with open(path, "w", encoding="latin-1") as file:
            for source in self.sources:
                before = frozenset(seen)
                if directives:
                    file.write(f'#line 1 "{os.path.relpath(source.path, ROOT)}"\n')
                for number, line in enumerate(source.lines, 1):
                    if found := INCLUDE.match(line):
                        seen.add(found[1])
                        if found[1] in before:
                            line = ""  # twice in one file would be found fault with
                    file.write(line + "\n")
                    self.places.append((source.path, number))

    def directories(self):
        """Those of the sources, where the headers that they include by name alone are looked for."""
        return sorted({os.path.dirname(source.path) for source in self.sources})


def join(sources):
    """The sources in as few files as their names allow."""
    batches = []
    for source in sorted(sources, key=lambda source: -len(source.lines)):
        room = next((batch for batch in batches if batch.takes(source)), None)
        if room:
            room.add(source)
        else:
            batches.append(Batch(source))
    return batches


def read_sources(build, folders, wanted=()):
    """The sources below the folders that a build of clang++ compiles, or those of them that are wanted."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    sources = []
    for entry in entries:
        path = entry["file"]
        folder = os.path.relpath(path, ROOT).split(os.sep)[0]
        if folder not in folders or (wanted and path not in wanted):
            continue
        words = shlex.split(entry["command"])
        command = words[words.index(next(word for word in words if "clang++" in word)) + 1 : words.index("-o")]
        sources.append(Source(path, tuple(command)))
    return sources
