#!/usr/bin/env python3
"""Compiles every source of the program and the tests, and the public headers, by itself: scripts/alone.py [FILE...]

The builds that run the tests compile many sources as one, where a source that forgets an include, or uses a name of
another source, goes unnoticed. This only looks for errors and warnings, and makes no objects. The preset "clang" says how;
its precompiled headers are made first. The optimised build compiles the sources of the library by themselves.
A header that another one includes before anything else has been compiled alone when that one was, so it is left out.
"""

import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, "build", "clang")
HEADERS = "src/JOBXCLSDLL_verify_interface_header_sets/"  # in the build: a source for each public header


def first_included(path):
    """The header of the library that a header includes before anything else, if it does."""
    with open(os.path.join(ROOT, path), encoding="latin-1") as file:
        for line in file:
            if line.startswith('#include "'):
                return "src/" + line.split('"')[1]
            if line.strip() and not line.startswith(("//", "#pragma once")):
                break
    return None


def commands(wanted):
    """How the sources are compiled, by their paths or those of the headers."""
    with open(os.path.join(BUILD, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    sources, headers = {}, {}
    for entry in entries:
        words = shlex.split(entry["command"])
        built = os.path.relpath(entry["file"], BUILD)
        path = os.path.relpath(entry["file"], ROOT)
        if built.startswith(HEADERS):
            headers["src/" + built.removeprefix(HEADERS).removesuffix(".cxx")] = words
        elif path.endswith(".cpp") and not path.startswith(("src/", "build/")):
            sources[path] = words
    if not headers:
        sys.exit("the preset checks no headers")
    proven = {first_included(path) for path in headers}
    found = sources | {path: words for path, words in headers.items() if path not in proven}
    return {path: words for path, words in found.items() if not wanted or path in wanted}


def make_precompiled_headers(compilations):
    headers = sorted({word for words in compilations for word in words if word.endswith(".pch")})
    if headers:
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
    print(f"{len(answers)} files compiled alone: {failed} failed" if failed else f"{len(answers)} files compiled alone")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
