#!/usr/bin/env python3
"""Compiles every source of the tests by itself: scripts/alone.py [SOURCE...]

The builds that run the tests compile many sources as one, where a source that forgets an include, or uses a name of
another source, goes unnoticed. This only looks for errors and warnings, and makes no objects. The preset "clang" says how;
its precompiled headers are made first. The optimised build compiles the sources of the library and the program by themselves.
"""

import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build", "clang")


def commands(wanted):
    """How the sources are compiled, by their paths."""
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    found = {}
    for entry in entries:
        path = os.path.relpath(entry["file"], ROOT)
        if path.endswith(".cpp") and not path.startswith(("app/", "src/", "build/")) and (not wanted or path in wanted):
            found[path] = shlex.split(entry["command"])
    return found


def make_precompiled_headers(compilations):
    headers = sorted({word for words in compilations for word in words if word.endswith(".pch")})
    targets = [os.path.relpath(header, BUILD) for header in headers]
    subprocess.run(["cmake", "--build", BUILD, "--target", *targets], check=True, stdout=subprocess.DEVNULL)


def compile_alone(words):
    """The compiler's exit status and what it says."""
    output = words.index("-o")
    words = [*words[:output], "-fsyntax-only", *words[output + 2 :]]
    done = subprocess.run(words, cwd=BUILD, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.returncode, done.stdout


def main():
    wanted = {os.path.relpath(os.path.abspath(word), ROOT) for word in sys.argv[1:]}
    compilations = commands(wanted)
    missing = wanted - compilations.keys()
    if missing or not compilations:
        sys.exit(f"not compiled here: {' '.join(sorted(missing))}")
    make_precompiled_headers(compilations.values())
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        answers = list(workers.map(compile_alone, compilations.values()))
    for _, said in answers:
        sys.stdout.write(said)
    failed = sum(1 for status, _ in answers if status)
    print(f"{len(answers)} sources compiled alone: {failed} failed" if failed else f"{len(answers)} sources compiled alone")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
