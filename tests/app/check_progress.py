#!/usr/bin/env python3
"""Check the progress line on a terminal, and that Ctrl-C ends jobx cleanly: check_progress.py JOBX JOB

Exit status 77 when this system has no pseudo-terminals.
"""

import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from terminal import run_on_terminal

LINE = re.compile(r"\[(#*)(-*)\] +(\d+)%(, \d+ (?:s|min \d+ s|h \d+ min) left)?: (.*)")
BEFORE_FIRST = 0.5  # seconds


def drawn_lines(shown):
    """What was drawn over each other, without the blanks that clear a line."""
    return [text.rstrip() for text in shown.split("\r") if text.strip()]


def is_cleared(shown):
    """Whether the last thing drawn is blanks over the line, with the cursor at its start."""
    return re.search(r"\r +\r(\x1b\[0m)*\Z", shown) is not None


def make_long(program, job):
    """Makes reading the job take more than a second, by lines that no reader knows."""
    features = job / "steps" / "pcb" / "layers" / "top" / "features"
    size = 2**20
    while size < 2**30:
        with features.open("ab") as file:
            file.write(b"Q 1\n" * (size // 4))
        size *= 2
        start = time.monotonic()
        subprocess.run([program, "layers", str(job), "--messages", "none"], check=True, stdout=subprocess.DEVNULL)
        if time.monotonic() - start > 3 * BEFORE_FIRST:
            return
    raise AssertionError("reading never takes long")


def check_short_work_shows_nothing(program, job):
    result = run_on_terminal([program, "info", job])
    assert result.status == 0
    assert "\r" not in result.out
    assert result.shown == "" or result.seconds > BEFORE_FIRST, result.shown


def check_long_work_shows_how_far_it_is(program, job):
    result = run_on_terminal([program, "layers", job, "--messages", "none"])
    assert result.status == 0
    assert "\r" not in result.out and "%" not in result.out
    lines = [LINE.fullmatch(text) for text in drawn_lines(result.shown)]
    assert len(lines) > 3 and all(lines), result.shown
    percents = [int(line.group(3)) for line in lines]
    assert percents == sorted(percents) and percents[0] < 90 and percents[-1] > percents[0], percents
    assert all(line.group(4) for line in lines if 1 < int(line.group(3)) < 100), result.shown
    assert all(len(line.group(1)) == int(line.group(3)) * 20 // 100 for line in lines)
    assert all(len(line.group(1) + line.group(2)) == 20 for line in lines)
    assert {line.group(5) for line in lines} == {"reading " + job}
    assert is_cleared(result.shown), repr(result.shown[-100:])
    assert "\n" not in result.shown


def check_estimate_is_near(program, job):
    """Halfway, the estimate is right within a factor of three."""
    halfway = []

    def is_halfway(shown):
        lines = [LINE.fullmatch(text) for text in drawn_lines(shown)]
        return any(line and int(line.group(3)) >= 50 and line.group(4) for line in lines)

    result = run_on_terminal([program, "layers", job, "--messages", "none"], press=is_halfway, keys=b"x")
    for text in drawn_lines(result.shown):
        line = LINE.fullmatch(text)
        if line and int(line.group(3)) >= 50 and line.group(4) and "min" not in text:
            halfway.append(int(re.search(r"(\d+) s left", text).group(1)))
    assert halfway, result.shown
    # The estimate is rounded up to a whole second.
    assert (halfway[0] - 1) / 3 <= result.seconds <= halfway[0] * 3, (halfway[0], result.seconds)


def check_narrow_terminal(program, job):
    result = run_on_terminal([program, "layers", job, "--messages", "none"], columns=30)
    assert drawn_lines(result.shown)
    assert all(len(text) < 30 for text in result.shown.split("\r")), result.shown


def check_silence(program, job):
    result = run_on_terminal([program, "layers", job, "--messages", "none", "--quiet"])
    assert (result.status, result.shown) == (0, ""), result.shown
    piped = subprocess.run([program, "layers", job, "--messages", "none"], capture_output=True, check=True)
    assert piped.stderr == b"", piped.stderr
    result = run_on_terminal([program, "layers", job, "--messages", "none"], streams=("out",))
    assert "%" not in result.shown + result.out and "\r" not in result.shown, "standard output is no place for it"


def check_error_after_line(program, directory):
    result = run_on_terminal([program, "info", directory], environment={"TERM": "dumb"})
    assert (result.status, result.out) == (3, "")
    assert "There is no ODB Data" not in result.shown
    last = result.shown.split("\r")[-1]
    assert last.startswith("jobx: ") and last.count("\n") == 1, result.shown


def check_hostile_name(program, job, directory):
    """The job's name cannot steer the terminal and does not make the line wrap."""
    name = directory / ("\x1b[31m" + "\N{LATIN SMALL LETTER E WITH ACUTE}" * 100)
    job.rename(name)
    result = run_on_terminal([program, "layers", str(name), "--messages", "none"])
    name.rename(job)
    assert result.status == 0 and drawn_lines(result.shown)
    assert "\x1b" not in result.shown
    assert all(len(text) < 80 for text in result.shown.split("\r"))


def make_wide(job):
    """Gives the job many features, so that everything that is done with them takes time."""
    features = job / "steps" / "pcb" / "layers" / "top" / "features"
    with features.open("ab") as file:
        for row in range(300):
            file.write(b"".join(b"P 0.%03d 0.%03d 2 P 0 0\n" % (row, column) for column in range(500)))


def seconds_of(words):
    start = time.monotonic()
    assert subprocess.run(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0, words
    return time.monotonic() - start


def check_other_stages(program, job, directory):
    """Comparing, searching, printing and writing have lines, too, if they take long here."""
    reading = seconds_of([program, "layers", job])
    shown_stages = []
    for stage, words, readings in (
        ("comparing", ["diff", job, job], 2),
        ("searching", ["features", job, "--csv"], 1),
        ("printing", ["json", job], 1),
        ("writing job", ["write", job, "-o", str(directory / "written")], 1),
    ):
        seconds = seconds_of([program, *words]) - readings * reading
        shutil.rmtree(directory / "written", ignore_errors=True)
        result = run_on_terminal([program, *words])
        shutil.rmtree(directory / "written", ignore_errors=True)
        assert result.status == 0, result.shown
        stages = {LINE.fullmatch(text).group(5) for text in drawn_lines(result.shown) if text.startswith("[")}
        assert stages <= {stage, "reading " + job}, stages
        assert "%" not in result.shown.split("\r")[-1], result.shown
        assert stage in stages or seconds < 3 * BEFORE_FIRST, (stage, seconds, stages)
        shown_stages += sorted(stages & {stage})
    return shown_stages


def is_reading(shown):
    return "%" in shown


def check_control_c(program, job):
    result = run_on_terminal([program, "layers", job, "--messages", "none"], press=is_reading)
    assert result.status == -signal.SIGINT, result.status
    assert result.out == "" and "jobx" not in result.shown.split("\r")[-1], result.shown
    assert is_cleared(result.shown), repr(result.shown[-100:])
    assert result.seconds < 1.0, result.seconds
    shell = 'trap : INT; "$@"; echo "status $?" >&2'
    result = run_on_terminal(["sh", "-c", shell, "sh", program, "layers", job, "--messages", "none"], press=is_reading)
    assert result.shown.endswith("status 130\n"), result.shown


def check_control_c_resets_colours(program, job, directory):
    environment = {"TERM": "xterm"}
    faulty = directory / "faulty"
    shutil.copytree(Path(job), faulty, ignore=lambda place, names: ["features"] if place.endswith("/top") else [])
    words = [program, "diff", str(faulty), job]
    result = run_on_terminal(words, environment=environment, press=is_reading)
    assert result.status == -signal.SIGINT, (result.status, result.shown)
    assert "\x1b[1;31merror\x1b[0m" in result.shown, result.shown
    assert result.shown.endswith("\r\x1b[0m"), repr(result.shown[-100:])
    shutil.rmtree(faulty)


def check_ignored_signal_stays_ignored(program, job):
    shell = 'trap "" INT; exec "$@"'
    words = ["sh", "-c", shell, "sh", program, "layers", job, "--messages", "none"]
    assert run_on_terminal(words, press=is_reading).status == 0


def check_control_c_while_writing(program, job, directory):
    """Nothing is left, neither on the terminal nor on the disk; a job that was already complete may be in its place."""
    out = directory / "out"

    def check_left():
        assert not out.exists() or [path.name for path in out.iterdir()] == ["job"], list(out.iterdir())
        shutil.rmtree(out, ignore_errors=True)

    words = [program, "write", job, "-o", str(out)]
    with subprocess.Popen([*words, "--quiet"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
        while process.poll() is None and not (out.exists() and any(out.iterdir())):
            time.sleep(0.001)
        process.send_signal(signal.SIGINT)
    assert process.returncode == -signal.SIGINT, "it was written before the signal came"
    check_left()
    result = run_on_terminal(words, press=is_reading)
    if is_reading(result.shown):
        assert result.status == -signal.SIGINT and is_cleared(result.shown), (result.status, result.shown)
    check_left()


def main():
    program, sample = sys.argv[1:]
    with tempfile.TemporaryDirectory() as name:
        directory = Path(name)
        job = directory / "job"
        shutil.copytree(sample, job)
        check_short_work_shows_nothing(program, str(job))
        empty = directory / "empty"
        empty.mkdir()
        check_error_after_line(program, str(empty))
        make_long(program, job)
        check_long_work_shows_how_far_it_is(program, str(job))
        check_estimate_is_near(program, str(job))
        check_narrow_terminal(program, str(job))
        check_silence(program, str(job))
        check_hostile_name(program, job, directory)
        check_control_c(program, str(job))
        check_control_c_resets_colours(program, str(job), directory)
        check_ignored_signal_stays_ignored(program, str(job))
        shutil.rmtree(job)
        shutil.copytree(sample, job)
        make_wide(job)
        check_control_c_while_writing(program, str(job), directory)
        print("further stages with a line: " + ", ".join(check_other_stages(program, str(job), directory)))


if __name__ == "__main__":
    main()
