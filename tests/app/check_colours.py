#!/usr/bin/env python3
"""Check what is coloured and when: check_colours.py JOBX JOB

Exit status 77 when this system has no pseudo-terminals.
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import terminal

ESCAPE = re.compile(r"\x1b\[[0-9;]*m")
PLAIN = {"TERM": "xterm"}


def run_on_terminal(*arguments, **options):
    """As terminal.run_on_terminal, without the progress line that a slow build may show."""
    result = terminal.run_on_terminal(*arguments, **options)
    result.shown = "\n".join(line.split("\r")[-1] for line in result.shown.split("\n"))
    return result


def has_escapes(text):
    return "\x1b" in text


def without_escapes(text):
    assert "\x1b" not in ESCAPE.sub("", text), "only colours are escape codes"
    return ESCAPE.sub("", text)


def edit(path, before, after):
    text = path.read_text()
    assert before in text, path
    path.write_text(text.replace(before, after, 1))


def make_jobs(sample, directory):
    """A job with an error and a warning, and one that differs in components, a net and features."""
    faulty = directory / "faulty"
    shutil.copytree(sample, faulty)
    (faulty / "steps" / "pcb" / "profile").unlink()
    with (faulty / "steps" / "pcb" / "layers" / "top" / "features").open("a") as features:
        features.write("Q 1\nL 0 0 1 1 0 P 0 0 0\nP x 0 0 P 0 0\n")
    newer = directory / "newer"
    shutil.copytree(sample, newer)
    components = newer / "steps" / "pcb" / "layers" / "comp_+_bot" / "components"
    edit(components, " C3 ", " C33 ")
    edit(newer / "steps" / "pcb" / "eda" / "data", "NET BTN", "NET BUTTON")
    return str(faulty), str(newer)


def check_severities(program, faulty):
    shown = run_on_terminal([program, "info", faulty, "--messages", "all"], environment=PLAIN).shown
    for severity, code in (("error", "1;31"), ("warning", "1;33"), ("note", "36")):
        assert f": \x1b[{code}m{severity}\x1b[0m " in shown, (severity, shown)
    piped = subprocess.run([program, "info", faulty, "--messages", "all"], capture_output=True, text=True, env=PLAIN)
    assert without_escapes(shown) == piped.stderr and not has_escapes(piped.stderr + piped.stdout)
    wrong = run_on_terminal([program, "info", "nosuch"], environment=PLAIN).shown
    assert wrong.startswith("\x1b[1;31mjobx:\x1b[0m "), wrong
    wrong = run_on_terminal([program, "info", "nosuch", "--color", "never"], environment=PLAIN).shown
    assert wrong.startswith("jobx: "), wrong
    wrong = run_on_terminal([program, "info", "--color", "never", "--nosuch"], environment=PLAIN).shown
    assert wrong.startswith("jobx: "), wrong


def check_notes(program, sample, directory):
    note = run_on_terminal([program, "write", sample, "-o", str(directory / "out")], environment=PLAIN).shown
    assert "jobx: \x1b[36mnote:\x1b[0m the font is not written" in note, note


def check_diff(program, sample, newer):
    words = [program, "diff", sample, newer]
    shown = run_on_terminal(words, streams=("out", "err"), environment=PLAIN).shown
    for text in ("32m1 added (C33)", "31m1 removed (C3)", "32m1 added (BUTTON)", "31m1 removed (BTN)"):
        assert f"\x1b[{text}\x1b[0m" in shown, (text, shown)
    assert re.search(r"component C3\b.*: \x1b\[31monly in A\x1b\[0m\n", shown), shown
    assert re.search(r"component C33\b.*: \x1b\[32monly in B\x1b\[0m\n", shown), shown
    piped = subprocess.run(words, capture_output=True, text=True, env=PLAIN)
    assert without_escapes(shown) == piped.stdout


def check_when(program, faulty, newer):
    """Each stream for itself; what the environment and the option say."""
    words = [program, "diff", faulty, newer]
    only_err = run_on_terminal(words, streams=("err",), environment=PLAIN)
    assert has_escapes(only_err.shown) and not has_escapes(only_err.out)
    only_out = run_on_terminal(words, streams=("out",), environment=PLAIN)
    assert has_escapes(only_out.shown) and not has_escapes(only_out.out)
    cases = [
        (PLAIN, [], True),
        ({**PLAIN, "NO_COLOR": ""}, [], True),
        ({**PLAIN, "NO_COLOR": "0"}, [], False),
        ({"TERM": "dumb"}, [], False),
        ({}, [], False),
        (PLAIN, ["--color", "auto"], True),
        (PLAIN, ["--color=never"], False),
        ({"TERM": "dumb", "NO_COLOR": "1"}, ["--color", "always"], True),
    ]
    for environment, option, expected in cases:
        shown = run_on_terminal(words + option, streams=("out", "err"), environment=environment).shown
        assert has_escapes(shown) == expected, (environment, option, shown)
    for option, expected in (([], False), (["--color=always"], True), (["--color=never"], False)):
        piped = subprocess.run(words + option, capture_output=True, text=True, env=PLAIN)
        assert (has_escapes(piped.stdout), has_escapes(piped.stderr)) == (expected, expected), option


def check_documents_and_tables(program, sample, newer):
    """Documents have no colours; neither have tables, whose widths are those of plain text."""
    always = ["--color", "always"]
    for words in (["diff", sample, newer, "--json"], ["components", sample, "--csv"], ["json", sample]):
        assert "\x1b" not in subprocess.run([program, *words, *always], capture_output=True, text=True).stdout, words
    for words in (["components"], ["nets", "--pins"], ["tree"], ["layers"], ["info"], ["info", "--all"]):
        coloured = run_on_terminal([program, *words, sample, *always], streams=("out",), environment=PLAIN)
        plain = run_on_terminal([program, *words, sample, "--color", "never"], streams=("out",), environment=PLAIN)
        assert without_escapes(coloured.shown) == plain.shown, words


def main():
    program, original = sys.argv[1:]
    with tempfile.TemporaryDirectory() as name:
        directory = Path(name)
        sample = str(directory / "sample")
        shutil.copytree(original, sample)
        faulty, newer = make_jobs(sample, directory)
        check_severities(program, faulty)
        check_notes(program, sample, directory)
        check_diff(program, sample, newer)
        check_when(program, faulty, newer)
        check_documents_and_tables(program, sample, newer)


if __name__ == "__main__":
    main()
