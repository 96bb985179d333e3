#!/usr/bin/env python3
"""Runs clang-tidy on the library and the program: scripts/tidy.py [--alone] [SOURCE...]

clang-tidy spends most of its time on the standard library's headers, once per source. So several sources are checked as
one file, in which each header is included once. Sources that declare the same name go into different files. If a file does
not compile, each half of its sources is checked as one file. Findings name the place in the real source.

An unused using-declaration is not found if another source of the same file uses the name. With --alone every source is
checked by itself.
"""

import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

from joined import ROOT, Batch, join, read_sources

BUILD = os.path.join(ROOT, "build", "tidy")
JOINED = os.path.join(BUILD, "joined")
CLANG_TIDY = "clang-tidy-14"


def tidy(batch):
    """clang-tidy's exit status and what it says."""
    # The compiler itself warns of shadowed names; here they are only those of other sources.
    arguments = [*batch.sources[0].command, "-Wno-shadow"]
    for directory in batch.directories():
        arguments += ["-iquote", directory]
    done = subprocess.run(
        [CLANG_TIDY, "-quiet", f"--config-file={ROOT}/.clang-tidy", batch.path, "--"] + arguments,
        cwd=BUILD,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        encoding="latin-1",
        check=False,
    )
    if done.returncode and len(batch.sources) > 1 and "clang-diagnostic-error" in done.stdout:
        return tidy_halves(batch)
    said = re.sub(
        rf"^{re.escape(batch.path)}:(\d+):",
        lambda found: "{}:{}:".format(*batch.places[int(found[1]) - 1]),
        done.stdout,
        flags=re.MULTILINE,
    )
    said = re.sub(r"^\d+ warnings?( and \d+ errors?)? (generated|treated as errors)\.?\n", "", said, flags=re.MULTILINE)
    return done.returncode, said


def tidy_halves(batch):
    status, said = 0, f"do not compile as one file: {' '.join(os.path.relpath(source.path, ROOT) for source in batch.sources)}\n"
    middle = len(batch.sources) // 2
    for number, sources in enumerate((batch.sources[:middle], batch.sources[middle:])):
        half = Batch(sources[0])
        for source in sources[1:]:
            half.add(source)
        half.write(f"{batch.path.removesuffix('.cpp')}_{number}.cpp")
        code, text = tidy(half)
        status = status or code
        said += text
    return status, said


def main():
    options = [word for word in sys.argv[1:] if word.startswith("-")]
    wanted = {os.path.abspath(word) for word in sys.argv[1:] if not word.startswith("-")}
    if options not in ([], ["--alone"]):
        sys.exit(__doc__)
    sources = read_sources(BUILD, ("src", "app"), wanted)
    missing = wanted - {source.path for source in sources}
    if missing or not sources:
        sys.exit(f"not compiled here: {' '.join(sorted(missing))}")

    batches = [Batch(source) for source in sources] if options else join(sources)
    os.makedirs(JOINED, exist_ok=True)
    for number, batch in enumerate(batches):
        batch.write(os.path.join(JOINED, f"{number}.cpp"))
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        answers = list(workers.map(tidy, sorted(batches, key=lambda batch: -batch.size)))
    for _, said in answers:
        sys.stdout.write(said)
    failed = sum(1 for status, _ in answers if status)
    print(f"{len(sources)} sources in {len(batches)} files: {'findings' if failed else 'nothing found'}")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
