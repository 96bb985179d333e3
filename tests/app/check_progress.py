#!/usr/bin/env python3
"""Check the progress line on a terminal: check_progress.py JOBX JOB

Exit status 77 when this system has no pseudo-terminals.
"""

import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import pty
except ImportError:
    print("SKIPPED: no pseudo-terminals here")
    sys.exit(77)


def run_on_terminal(arguments):
    """Exit status, standard output and what the terminal that is standard error received."""
    master, slave = pty.openpty()
    with subprocess.Popen(arguments, stdout=subprocess.PIPE, stderr=slave) as process:
        os.close(slave)
        shown = b""
        out = process.stdout.read()
        while True:
            try:
                piece = os.read(master, 65536)
            except OSError:
                break
            if not piece:
                break
            shown += piece
        status = process.wait()
    os.close(master)
    return status, out, shown.replace(b"\r\n", b"\n").decode()


def check_progress(program, job):
    status, out, shown = run_on_terminal([program, "info", job])
    assert status == 0
    assert b"\r" not in out
    drawn = [text.strip() for text in shown.split("\r")]
    stages = [
        "0% Reading the job",
        "20% Complete symbol file reading.",
        "Complete profile file reading",
        "Complete layers file reading",
        "Complete eda file reading",
        "Complete netlists file reading",
        "20% Complete PCB reading.",
        "100% Complete PANEL reading.",
    ]
    at = 0
    for stage in stages:
        while at < len(drawn) and stage not in drawn[at]:
            at += 1
        assert at < len(drawn), (stage, drawn)
    # The last thing drawn is an empty line with the cursor at its start.
    assert shown.endswith("\r" + " " * 78 + "\r"), repr(shown[-100:])
    assert "\n" not in shown
    assert all(len(text) <= 78 for text in shown.split("\r"))


def check_quiet(program, job):
    status, _, shown = run_on_terminal([program, "info", job, "--quiet"])
    assert (status, shown) == (0, ""), shown


def check_error_after_line(program, directory):
    status, out, shown = run_on_terminal([program, "info", directory])
    assert (status, out) == (3, b"")
    assert "There is no ODB Data" not in shown
    last = shown.split("\r")[-1]
    assert last.startswith("jobx: ") and last.count("\n") == 1, shown


def check_hostile_name(program, job):
    """A step's name cannot steer the terminal and does not make the line wrap."""
    name = "\x1b[31m" + "\N{LATIN SMALL LETTER E WITH ACUTE}" * 100
    step = job / "steps" / name
    shutil.copytree(job / "steps" / "panel", step)
    (job / "matrix" / "matrix").write_text("STEP {\nCOL=1\nNAME=" + name + "\n}\n", encoding="utf-8")
    status, _, shown = run_on_terminal([program, "info", str(job), "--messages", "none"])
    assert status == 0
    assert "\x1b" not in shown
    assert all(len(text) <= 78 for text in shown.split("\r"))


def main():
    program, sample = sys.argv[1:]
    with tempfile.TemporaryDirectory() as directory:
        job = Path(directory) / "job"
        shutil.copytree(sample, job)
        check_progress(program, str(job))
        check_quiet(program, str(job))
        check_hostile_name(program, job)
        empty = Path(directory) / "empty"
        empty.mkdir()
        check_error_after_line(program, str(empty))


if __name__ == "__main__":
    main()
