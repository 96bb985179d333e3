#!/usr/bin/env python3
"""Compare the includes of src/ and app/ with the order of the folders: check_includes.py ROOT MAP

The map is a text with one block that begins with ```order. Each of its lines names one room: a folder, or patterns of
files that are a room of their own inside a folder. A room includes itself and the rooms below it, so nothing can include
in a circle. The program includes the umbrella header and the lists of fields only.
"""

import re
import sys
from fnmatch import fnmatch
from pathlib import Path, PurePosixPath

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
UMBRELLA = "src/JOBXCLSDLL.h"
PUBLIC = (UMBRELLA, "src/JOBXCLSDLL_fields.h")


def read_order(text):
    """The rooms from the top, each a list of patterns."""
    blocks = re.findall(r"^```order\n(.*?)^```", text, re.MULTILINE | re.DOTALL)
    assert len(blocks) == 1, f"{len(blocks)} blocks with an order"
    return [line.split() for line in blocks[0].splitlines()]


def room_of(file, rooms):
    """The room of a file: one whose pattern names it, else that of its very folder; None without any."""
    for by_name in (True, False):
        for number, patterns in enumerate(rooms):
            if any(fnmatch(file, p) if by_name else str(PurePosixPath(file).parent) == p for p in patterns):
                return number
    return None


def included(file, text, files):
    """The project's files that a file includes, found as the compiler does: beside it, in src/, in app/."""
    folders = (str(PurePosixPath(file).parent), "src", "app")
    for name in INCLUDE.findall(text):
        yield next((path for folder in folders if (path := f"{folder}/{name}") in files), None), name


def complaints(sources, rooms):
    """`sources` has the text of each file by its path."""
    used = set()
    for file, text in sorted(sources.items()):
        room = room_of(file, rooms)
        if room is None:
            yield f"{file}: its folder is not in the order"
            continue
        used.add(room)
        for target, name in included(file, text, sources):
            if target is None:
                yield f"{file}: there is no {name}"
            elif file.startswith("app/") and target.startswith("src/") and target not in PUBLIC:
                yield f"{file}: includes {name}, but the program sees {' and '.join(PUBLIC)} only"
            elif (below := room_of(target, rooms)) is not None and below < room:
                yield f"{file}: includes {name}, of a room above its own"
    for number, patterns in enumerate(rooms):
        if number not in used:
            yield f"nothing is in {' '.join(patterns)}"


def check_itself():
    """What must be refused, and what must not."""
    rooms = read_order("```order\napp\nsrc\nsrc/eda\nsrc/layer\nsrc/eda/Part*\n```\n")
    sound = {
        "app/main.cpp": '#include "main.h"\n#include "JOBXCLSDLL.h"\n#include <map>\n',
        "app/main.h": "",
        UMBRELLA: '#include "eda/Net.h"\n',
        "src/eda/Net.h": '#include "layer/Pad.h"\n',
        "src/eda/PartName.h": "",
        "src/layer/Pad.h": '#include "eda/PartName.h"\n',
    }
    assert not list(complaints(sound, rooms)), list(complaints(sound, rooms))
    faults = {
        "src/layer/Pad.h": '#include "eda/Net.h"\n',
        "src/eda/PartName.h": '#include "layer/Pad.h"\n',
        "app/main.h": '#include "layer/Pad.h"\n',
        "src/layer/Lost.h": '#include "layer/Nowhere.h"\n',
        "src/new/File.h": "",
    }
    for file, text in faults.items():
        assert len(list(complaints({**sound, file: text}, rooms))) == 1, file
    assert len(list(complaints(sound, rooms + [["src/gone"]]))) == 1


def main(root, order):
    check_itself()
    rooms = read_order(Path(order).read_text(encoding="utf-8"))
    files = [file for folder in ("app", "src") for file in Path(root, folder).rglob("*") if file.suffix in (".h", ".cpp")]
    sources = {file.relative_to(root).as_posix(): file.read_text(encoding="utf-8") for file in files}
    found = list(complaints(sources, rooms))
    print("\n".join(found + [f"{len(sources)} files in {len(rooms)} rooms"]))
    return 1 if found or not sources else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
