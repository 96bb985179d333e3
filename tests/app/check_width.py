#!/usr/bin/env python3
"""Check that tables fit a terminal: check_width.py JOBX JOB [JOB...]

Jobs that are not there are skipped. Exit status 77 when this system has no pseudo-terminals.
"""

import os
import struct
import subprocess
import sys
from pathlib import Path

try:
    import fcntl
    import pty
    import termios
except ImportError:
    print("SKIPPED: no pseudo-terminals here")
    sys.exit(77)

COMMANDS = [["layers"], ["nets"], ["nets", "--pins"], ["components"], ["packages"], ["panel"], ["tree"]]
COMMANDS += [["features", "--layer", layer] for layer in ("*top*", "*drill*")]


def run_on_terminal(columns, *arguments):
    """What a terminal of that width receives on standard output and standard error."""
    master, slave = pty.openpty()
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    with subprocess.Popen(arguments, stdout=slave, stderr=slave) as process:
        os.close(slave)
        shown = b""
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
    assert status == 0, (arguments, shown)
    return shown.replace(b"\r\n", b"\n").decode()


def lines_of(text):
    """The lines without the progress line, which overwrites itself."""
    return [line.split("\r")[-1] for line in text.rstrip("\n").split("\n")]


def main():
    program, *jobs = sys.argv[1:]
    jobs = [job for job in jobs if Path(job).is_dir()]
    widest = 0
    for job in jobs:
        for command in COMMANDS:
            for columns in (80, 60, 132):
                shown = run_on_terminal(columns, program, *command, job, "--messages", "none")
                lines = [line for line in lines_of(shown) if columns == 80 or not line.startswith("jobx: ")]
                assert lines, command
                assert max(map(len, lines)) <= columns, (command, job, columns, max(lines, key=len))
                widest = max(widest, len(max(lines, key=len))) if columns == 80 else widest
            wide = subprocess.run([program, *command, job, "--messages", "none", "--quiet"], stdout=subprocess.PIPE)
            first = wide.stdout.decode().splitlines()[0].split()[0]
            assert lines_of(shown)[0].split()[0] == first, (command, "the first column is not left out")
    assert widest > 70, "nothing came near the width of the terminal"
    narrow = run_on_terminal(40, program, "components", jobs[0], "--messages", "none")
    assert "jobx: not shown for lack of room: " in narrow, narrow
    assert "not shown" not in run_on_terminal(40, program, "components", jobs[0], "--messages", "none", "--quiet")
    full = run_on_terminal(40, program, "components", jobs[0], "--wide", "--messages", "none")
    assert max(map(len, lines_of(full))) > 80, "--wide is not shortened"
    print(f"{len(jobs)} jobs, lines of at most {widest} characters")


if __name__ == "__main__":
    main()
