#!/usr/bin/env python3
"""Prints how much of each folder of src/ was executed, from an export of llvm-cov: coverage_report.py [--lines PERCENT]
[--branches PERCENT] [--uncovered FILE] <EXPORT

Prints a Markdown table. FILE gets every line that was not executed and every condition that never had one of its two
outcomes. Fails if less than PERCENT of all lines or of all branches was executed."""

import argparse
import collections
import json
import os
import sys


def main():
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("--lines", type=float, default=0)
    options.add_argument("--branches", type=float, default=0)
    options.add_argument("--uncovered")
    options = options.parse_args()
    (data,) = json.load(sys.stdin)["data"]
    files = sorted(data["files"], key=lambda file: file["filename"])
    if not files:
        sys.exit("error: no source was measured")
    root = os.path.dirname(os.path.commonpath([file["filename"] for file in files]))
    print_table(files, root)
    if options.uncovered:
        with open(options.uncovered, "w", encoding="utf-8") as out:
            for file in files:
                out.writelines(place + "\n" for place in uncovered(file, root))
    failed = False
    for what in ("lines", "branches"):
        percent, least = data["totals"][what]["percent"], getattr(options, what)
        if percent < least:
            print(f"error: {percent:.2f} per cent of the {what} are executed, less than {least:g}", file=sys.stderr)
            failed = True
    sys.exit(1 if failed else 0)


def print_table(files, root):
    rows = collections.defaultdict(collections.Counter)
    for file in files:
        folder = os.path.relpath(os.path.dirname(file["filename"]), root)
        for row in (rows[folder], rows["all"]):
            for what in ("lines", "branches"):
                row[what] += file["summary"][what]["count"]
                row[what + " executed"] += file["summary"][what]["covered"]
    print("| folder | lines | executed | % | branches | executed | % |")
    print("|---|--:|--:|--:|--:|--:|--:|")
    for folder in sorted(rows, key=lambda name: (name == "all", name)):
        cells = [folder]
        for what in ("lines", "branches"):
            count, executed = rows[folder][what], rows[folder][what + " executed"]
            cells += [count, executed, f"{100 * executed / count:.2f}" if count else "-"]
        print("| " + " | ".join(str(cell) for cell in cells) + " |")


def uncovered(file, root):
    name = os.path.relpath(file["filename"], root)
    with open(file["filename"], encoding="utf-8") as source:
        lines = source.read().split("\n")
    places = [(line, 0, "not executed: " + lines[line - 1].strip()) for line in uncovered_lines(file["segments"])]
    # A template has one entry for each type it was made for.
    taken = collections.defaultdict(lambda: [0, 0])
    for line, column, last_line, last_column, true, false, *_ in file["branches"]:
        counts = taken[line, column, last_line, last_column]
        counts[0] += true
        counts[1] += false
    for (line, column, last_line, last_column), counts in taken.items():
        if "if constexpr" in lines[line - 1] or all(counts):
            continue
        outcome = "never evaluated" if not any(counts) else "never true" if not counts[0] else "never false"
        text = lines[line - 1][column - 1 : last_column - 1 if line == last_line else None]
        places.append((line, column, f"{outcome}: {text}"))
    return [f"{name}:{line}: {text}" for line, _, text in sorted(places)]


def uncovered_lines(segments):
    """The lines whose largest count is 0. A count holds from where it stands up to the next one."""
    on_line = collections.defaultdict(list)
    for segment in segments:
        on_line[segment[0]].append(segment)
    before = None
    for line in range(segments[0][0], segments[-1][0] + 1):
        here = on_line.get(line, [])
        counts = [count for _, _, count, has_count, is_begin, is_gap in here if has_count and is_begin and not is_gap]
        is_skipped = here and not here[0][3] and here[0][4]
        if before is not None and before[3]:
            counts.append(before[2])
        if counts and not is_skipped and max(counts) == 0:
            yield line
        if here:
            before = here[-1]


main()
