#!/usr/bin/env python3
"""Check the help texts: check_examples.py JOBX MANUAL SAMPLE

Each begins with an example that works, is at most 80 columns wide, and explains every column that its command can print;
so does the manual page.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# The tables of each command, as words behind its name.
TABLES = {
    "layers": [[]],
    "nets": [[], ["--pins"]],
    "components": [[]],
    "packages": [[]],
    "panel": [[]],
    "features": [[]],
    "tree": [[]],
    "info": [["--layers"], ["--symbols"], ["--all"], ["--compact"]],
}
WITHOUT_TABLE = {"json", "diff", "convert", "edit", "write"}
LEAST_TABLES = {"info": 9}  # tables of "info" on the sample that have different columns


def run(program, *words):
    return subprocess.run([program, *words], check=True, capture_output=True, text=True).stdout


def titles_in(text):
    """The titles of all aligned tables: the line above each line of dashes."""
    lines = text.splitlines()
    heads = set()
    for above, line in zip(lines, lines[1:]):
        if re.fullmatch(r" *-+(  -+)*", line):
            spans = [match.span() for match in re.finditer(r"-+", line)]
            heads.add(tuple(above[start:end].strip() for start, end in spans))
    return heads


def columns_of(program, sample, command, words):
    """The titles and the keys of all columns that the tables have in any form."""
    heads = titles_in(run(program, command, sample, *words))
    names = {title for head in heads for title in head}
    if command not in ("tree", "info"):
        every = run(program, command, sample, *words, "--wide")
        heads |= titles_in(every)
        names |= {title for head in titles_in(every) for title in head}
        names |= set(run(program, command, sample, *words, "--csv").splitlines()[0].split(","))
        if command != "features" and not words:
            names |= {title for head in titles_in(run(program, command, sample, "--legacy")) for title in head}
    assert heads and all(names), (command, words, names)
    return {re.sub(r" (mm|inch)$", "", name) for name in names}, len(heads)


def explained_in(text):
    """The words that stand in front of an explanation, alone or in a list, without their case and blanks."""
    heads = re.findall(r"^  (\S(?:[^ \n]| (?! ))*)(?:  .*)?$", text, re.MULTILINE)
    words = [word for head in heads for word in re.split(r", | \(|\)", head)]
    return {plain(word) for word in words if word}


def plain(name):
    return name.replace(" ", "").lower()


def explained_in_page(part):
    heads = re.findall(r"^\.TP\n\.B (.*)$", part, re.MULTILINE)
    return explained_in("\n".join("  " + head.replace('"', "") for head in heads))


def example_in(text):
    found = re.match(r"Example:\n  # [^\n]+\n  (jobx [^\n]+)\n\n", text)
    assert found, text.splitlines()[:4]
    return found.group(1)


def check_columns(program, page, sample, command, text):
    part = re.search(rf"^\.SS jobx {command}\n(.*?)(?=^\.S[HS] )", page, re.MULTILINE | re.DOTALL).group(1)
    total = 0
    for words in TABLES[command]:
        names, tables = columns_of(program, sample, command, words)
        total += tables
        for where, explained in (("help", explained_in(text)), ("page", explained_in_page(part))):
            missing = {name for name in names if plain(name) not in explained}
            assert not missing, (command, words, where, missing)
    assert total >= LEAST_TABLES.get(command, 1), (command, total)


def check_example(program, directory, command, example):
    """Runs it where a person would: in the directory that has "samples"."""
    assert example.split()[1] == command, example
    environment = {**os.environ, "PATH": str(Path(program).resolve().parent) + os.pathsep + os.environ["PATH"]}
    result = subprocess.run(example, shell=True, capture_output=True, text=True, cwd=directory, env=environment)
    assert result.returncode == 0, (example, result)
    made = re.search(r"(?:> |-o )(\S+)$", example)
    assert (result.stdout or (directory / made.group(1)).exists()), example
    assert "no " + command not in result.stdout, example


def main(program, manual, sample):
    page = re.sub(r"\\f[A-Z]", "", Path(manual).read_text()).replace("\\-", "-")
    overview = run(program, "--help")
    commands = re.findall(r"^  ([a-z]+) ", overview[overview.index("\nSubcommands:") :].split("\n\n")[0], re.MULTILINE)
    assert set(commands) == set(TABLES) | WITHOUT_TABLE, commands
    texts = {command: run(program, command, "--help") for command in commands}
    for text in [overview, *texts.values()]:
        assert max(map(len, text.splitlines())) <= 80, max(text.splitlines(), key=len)
    with tempfile.TemporaryDirectory() as name:
        directory = Path(name)
        shutil.copytree(sample, directory / "samples" / "blinker")
        shutil.copytree(sample, directory / "newer")
        for command in commands:
            check_example(program, directory, command, example_in(texts[command]))
        copy = str(directory / "samples" / "blinker")
        for command in TABLES:
            check_columns(program, page, copy, command, texts[command])
    print(f"{len(commands)} examples")


if __name__ == "__main__":
    main(*sys.argv[1:])
