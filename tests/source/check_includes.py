#!/usr/bin/env python3
"""Compare the includes of src/ and app/ with the order of the folders: check_includes.py ROOT MAP

The map is a text with one block that begins with ```order. Each of its lines names one folder. A folder includes itself and
the folders below it, so none can include in a circle. The program includes the umbrella header and the lists of fields only.
"""

import re
import sys
from pathlib import Path, PurePosixPath

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
UMBRELLA = "src/JOBXCLSDLL.h"
PUBLIC = (UMBRELLA, "src/JOBXCLSDLL_fields.h")


def read_order(text):
    """The folders from the top."""
    blocks = re.findall(r"^```order\n(.*?)^```", text, re.MULTILINE | re.DOTALL)
    assert len(blocks) == 1, f"{len(blocks)} blocks with an order"
    return blocks[0].splitlines()


def place_of(file, folders):
    """The place of a file's folder in the order; None without any."""
    folder = str(PurePosixPath(file).parent)
    return folders.index(folder) if folder in folders else None


def included(file, text, files):
    """The project's files that a file includes, found as the compiler does: beside it, in src/, in app/."""
    folders = (str(PurePosixPath(file).parent), "src", "app")
    for name in INCLUDE.findall(text):
        yield next((path for folder in folders if (path := f"{folder}/{name}") in files), None), name


def complaints(sources, folders):
    """`sources` has the text of each file by its path."""
    used = set()
    for file, text in sorted(sources.items()):
        place = place_of(file, folders)
        if place is None:
            yield f"{file}: its folder is not in the order"
            continue
        used.add(place)
        for target, name in included(file, text, sources):
            if target is None:
                yield f"{file}: there is no {name}"
            elif file.startswith("app/") and target.startswith("src/") and target not in PUBLIC:
                yield f"{file}: includes {name}, but the program sees {' and '.join(PUBLIC)} only"
            elif (below := place_of(target, folders)) is not None and below < place:
                yield f"{file}: includes {name}, of a folder above its own"
    for place, folder in enumerate(folders):
        if place not in used:
            yield f"nothing is in {folder}"


def check_itself():
    """What must be refused, and what must not."""
    folders = read_order("```order\napp\nsrc\nsrc/eda\nsrc/layer\nsrc/eda/parts\n```\n")
    sound = {
        "app/main.cpp": '#include "main.h"\n#include "JOBXCLSDLL.h"\n#include <map>\n',
        "app/main.h": "",
        UMBRELLA: '#include "eda/Net.h"\n',
        "src/eda/Net.h": '#include "layer/Pad.h"\n',
        "src/eda/parts/Name.h": "",
        "src/layer/Pad.h": '#include "eda/parts/Name.h"\n',
    }
    assert not list(complaints(sound, folders)), list(complaints(sound, folders))
    faults = {
        "src/layer/Pad.h": '#include "eda/Net.h"\n',
        "src/eda/parts/Name.h": '#include "layer/Pad.h"\n',
        "app/main.h": '#include "layer/Pad.h"\n',
        "src/layer/Lost.h": '#include "layer/Nowhere.h"\n',
        "src/new/File.h": "",
    }
    for file, text in faults.items():
        assert len(list(complaints({**sound, file: text}, folders))) == 1, file
    assert len(list(complaints(sound, [*folders, "src/gone"]))) == 1


def main(root, order):
    check_itself()
    folders = read_order(Path(order).read_text(encoding="utf-8"))
    files = [file for top in ("app", "src") for file in Path(root, top).rglob("*") if file.suffix in (".h", ".cpp")]
    sources = {file.relative_to(root).as_posix(): file.read_text(encoding="utf-8") for file in files}
    found = list(complaints(sources, folders))
    print("\n".join(found + [f"{len(sources)} files in {len(folders)} folders"]))
    return 1 if found or not sources else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
