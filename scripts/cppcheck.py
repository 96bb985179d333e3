#!/usr/bin/env python3
"""Runs cppcheck on the library: scripts/cppcheck.py

cppcheck spends most of its time on headers, once per source. So several sources are checked as one file. Findings name the
place in the real source.
"""

import os
import subprocess
import sys

from joined import ROOT, join, read_sources

BUILD = os.path.join(ROOT, "build", "tidy")  # which sources the library has
JOINED = os.path.join(ROOT, "build", "cppcheck")


def main():
    os.makedirs(JOINED, exist_ok=True)
    files, directories = [], set()
    for number, batch in enumerate(join(read_sources(BUILD, ("src",)))):
        files.append(os.path.join(JOINED, f"{number}.cpp"))
        batch.write(files[-1], directives=True)
        directories |= {os.path.relpath(directory, ROOT) for directory in batch.directories()}
    options = ["--quiet", f"-j{os.cpu_count()}", "--std=c++20", "--enable=warning,performance,portability"]
    options += ["--error-exitcode=1", "--suppressions-list=.cppcheck-suppressions", "--library=.cppcheck-library.xml"]
    options += ["-D__linux__", "-DJOBX_BUILDING_LIBRARY", "-Isrc"]
    sys.exit(subprocess.run(["cppcheck", *options, *(f"-I{name}" for name in sorted(directories)), *files], cwd=ROOT).returncode)


if __name__ == "__main__":
    main()
