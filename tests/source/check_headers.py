#!/usr/bin/env python3
"""Check the comments of headers: check_headers.py DIRECTORY

A label ("Units:", "Ownership:", "Results:", "Threads:") begins its comment line, and the lines below it that belong to it
are indented. Members are called by name. "Threads:" stands only where a class differs from the rule in docs/hosts.md.
"""

import re
import sys
from pathlib import Path

LABEL = r"(?:Units|Ownership|Results|Threads):"
COMMENT = re.compile(r"^\s*//(?P<text>.*)$")
RUN_IN = re.compile(rf"\S.*\b{LABEL}")
BY_NUMBER = re.compile(r"\bmembers? \d")
# The rule about threads: use different objects at once, share none without a lock.
REPEATS_RULE = re.compile(
    r"^Threads:\s+(.*\b(sharing|caller's lock|different \w+ may be [\w, ]+ at once[.;]?$)|(one \w+ on )?one thread at a time[.;]?$)",
    re.IGNORECASE,
)


def blocks(text):
    """Each run of comment lines that stand alone, with the number of its first line."""
    block, first = [], 0
    for number, line in enumerate(text.splitlines() + [""], 1):
        if comment := COMMENT.match(line):
            first = first if block else number
            block.append(comment["text"])
        elif block:
            yield first, block
            block = []


def paragraphs(block):
    """The lines of each label joined, with the offset of its first line."""
    joined = []
    for offset, line in enumerate(block):
        if joined and line.startswith("    "):
            joined[-1][1] += " " + line.strip()
        else:
            joined.append([offset, line.strip()])
    return joined


def complaints(text):
    for first, block in blocks(text):
        for offset, line in enumerate(block):
            if RUN_IN.search(line):
                yield first + offset, "a label stands inside a line"
        previous_labelled = False
        for offset, paragraph in paragraphs(block):
            labelled = re.match(LABEL, paragraph) is not None
            if BY_NUMBER.search(paragraph):
                yield first + offset, "calls members by number"
            if REPEATS_RULE.search(paragraph):
                yield first + offset, "repeats the rule about threads"
            if previous_labelled and not labelled and paragraph[:1].islower():
                yield first + offset, "continues a label without its indentation"
            previous_labelled = labelled


def check_itself():
    """What must be refused, and what must not."""
    faults = {
        "// A step. Units:     each file's own.\n": "a label stands inside a line",
        "// Results:   1, or 0; the header's\n// is kept.\n": "continues a label without its indentation",
        "// Ownership: owns its members 3 to 8.\n": "calls members by number",
        "// Ownership: owns its\n//            members 3 to 8.\n": "calls members by number",
        "// Threads:   different steps may be used at once; sharing one needs\n//            the caller's lock.\n": (
            "repeats the rule about threads"
        ),
        "// Threads:   different steps may be read and used at once.\n": "repeats the rule about threads",
        "// Threads:   one thread at a time.\n": "repeats the rule about threads",
    }
    for text, fault in faults.items():
        assert [message for _, message in complaints(text)] == [fault], text
    sound = (
        "// A step.\n// Units:     each file's own.\n//            Always.\n// Threads:   one thread calls.\n"
        "// Hosts rely on it.\nclass Step; // owner: the job\n\n"
        "// Threads:   different texts may be used at once, also when one was copied from the other.\nclass Text;\n"
    )
    assert not list(complaints(sound))


def main(directory):
    check_itself()
    headers = sorted(Path(directory).rglob("*.h"))
    labels = failures = 0
    for header in headers:
        text = header.read_text(encoding="utf-8")
        labels += len(re.findall(rf"^// {LABEL}", text, re.MULTILINE))
        for line, message in complaints(text):
            print(f"{header}:{line}: {message}")
            failures += 1
    print(f"{len(headers)} headers, {labels} labels")
    return 1 if failures or not labels else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
