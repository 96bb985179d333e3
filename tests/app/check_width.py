#!/usr/bin/env python3
"""Check that what jobx prints fits a terminal: check_width.py JOBX JOB [JOB...]

Jobs that are not there are skipped. Exit status 77 when this system has no pseudo-terminals.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import terminal

TABLES = [["layers"], ["nets"], ["nets", "--pins"], ["components"], ["packages"], ["panel"], ["features", "--layer", "*top*"]]
COMMANDS = [*TABLES, ["tree"], ["features"], ["features", "--layer", "*drill*"], ["info"]]
SCREEN = 24


def run_on_terminal(columns, *arguments):
    """What a terminal of that width receives on standard output and standard error."""
    environment = {**os.environ, "TERM": "xterm", "NO_COLOR": ""}
    result = terminal.run_on_terminal(arguments, streams=("out", "err"), environment=environment, columns=columns)
    assert result.status in (0, 1 if "diff" in arguments else 0), (arguments, result.shown)
    return result.shown


def lines_of(text):
    """The lines without the progress line, which overwrites itself, and without colours, which take no room."""
    plain = re.sub(r"\x1b\[[0-9;]*m", "", text)
    return [line.split("\r")[-1] for line in plain.rstrip("\n").split("\n")]


def is_memory_checked(program):
    """Such a program is slow."""
    text = Path(program).read_bytes()
    return b"__asan_init" in text or b"__tsan_init" in text


class Check:
    def __init__(self, program):
        self.program = program
        self.widest = 0

    def fits(self, columns, *arguments):
        """The lines of what jobx prints; none is longer than the terminal."""
        lines = lines_of(run_on_terminal(columns, self.program, *arguments))
        lines = [line for line in lines if columns == 80 or not line.startswith("jobx: ")]
        assert lines, arguments
        assert max(map(len, lines)) <= columns, (arguments, columns, max(lines, key=len))
        if columns == 80:
            self.widest = max(self.widest, *map(len, lines))
        return lines

    def keeps_first_column(self, job, table):
        lines = self.fits(40, *table, job, "--messages", "none")
        wide = subprocess.run(
            [self.program, *table, job, "--messages", "none", "--quiet"], check=True, stdout=subprocess.PIPE
        )
        first = wide.stdout.decode().splitlines()[0].split()[0]
        assert lines[0].split()[0] == first, (table, "the first column is not left out")

    def fits_narrow(self, *arguments):
        """Likewise on a terminal of 60 columns, whose width is used."""
        lines = self.fits(60, *arguments, "--messages", "none")
        assert max(map(len, lines)) > 50, (arguments, "the width is not used")

    def job(self, job, is_brief):
        for command in COMMANDS:
            lines = self.fits(80, *command, job)
            if command == ["info"]:
                assert len(lines) < SCREEN, lines
        if is_brief:
            return
        self.fits_narrow("info", job)
        for table in TABLES:
            self.fits(132, *table, job, "--messages", "none")
            self.keeps_first_column(job, table)

    def diff(self, a, b):
        lines = self.fits(80, "diff", a, b)
        assert lines[-1].endswith("places") or "could not be compared" in lines[-1], lines[-1]
        self.fits_narrow("diff", a, b)

    def changed_copy(self, job):
        """Against a copy with other places and longer names."""
        with tempfile.TemporaryDirectory() as directory:
            copy = Path(directory) / "job"
            shutil.copytree(job, copy)
            layer = sorted(copy.glob("steps/*/layers/*top*/features"))[0]
            layer.write_bytes(re.sub(rb"(?m)^(P|L) [-0-9.]+ ", rb"\1 7.25 ", layer.read_bytes()))
            for eda in copy.glob("steps/*/eda/data"):
                eda.write_bytes(re.sub(rb"(?m)^NET (\S+)", rb"NET " + 3 * rb"\1_", eda.read_bytes()))
            self.diff(job, str(copy))


def check_narrow(program, job):
    narrow = run_on_terminal(40, program, "components", job, "--messages", "none")
    assert "jobx: not shown for lack of room: " in narrow, narrow
    assert "not shown" not in run_on_terminal(40, program, "components", job, "--messages", "none", "--quiet")
    full = run_on_terminal(40, program, "components", job, "--wide", "--messages", "none")
    assert max(map(len, lines_of(full))) > 80, "--wide is not shortened"


def main():
    program, *jobs = sys.argv[1:]
    jobs = [job for job in jobs if Path(job).is_dir()]
    is_brief = is_memory_checked(program)
    check = Check(program)
    for job in jobs:
        check.job(job, is_brief)
    for job in jobs[:1] if is_brief else jobs:
        check.changed_copy(job)
    if len(jobs) > 1:
        check.diff(jobs[0], jobs[-1])
    assert check.widest > 70, "nothing came near the width of the terminal"
    check_narrow(program, jobs[0])
    print(f"{len(jobs)} jobs, lines of at most {check.widest} characters")


if __name__ == "__main__":
    main()
