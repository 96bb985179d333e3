#!/usr/bin/env python3
"""Compare the lists of fields with the classes that they describe: check_fields.py SRC

Each member that everyone may reach stands in the list of its class, and where a class has none, each of its Set functions.
The host's windows are no fields. Each list of the main model is included by JOBXCLSDLL_fields.h.
"""

import re
import sys
from pathlib import Path

DESCRIPTION = re.compile(r"^struct jobx::((?:Compact)?Fields)<(\w+)>\n\{\n(.*?)^\};", re.MULTILINE | re.DOTALL)
CLASS = re.compile(r"^class (?:JOBX_API )?(\w+)[^;{]*\n\{\n(.*?)^\};", re.MULTILINE | re.DOTALL)
MEMBER = re.compile(r"^    [\w:]+(?:<.*>)?[ *&]+(?:const )?(m_\w+)(?: = [^;]*)?;", re.MULTILINE)
SETTER = re.compile(r"^    void (Set\w+)\(", re.MULTILINE)


def reachable(body):
    """The public parts of a class."""
    parts = re.split(r"^(public|protected|private):\n", body, flags=re.MULTILINE)
    return "".join(text for access, text in zip(parts[1::2], parts[2::2]) if access == "public")


def wanted(body):
    """What the list of a class has to name."""
    text = re.sub(r"^    CWnd\*.*\n", "", reachable(body), flags=re.MULTILINE)
    return MEMBER.findall(text) or SETTER.findall(text)


def complaints(headers):
    """`headers` has the text of each header by its path."""
    classes = {name: body for text in headers.values() for name, body in CLASS.findall(text)}
    umbrella = headers.get("JOBXCLSDLL_fields.h", "")
    for path, text in sorted(headers.items()):
        for kind, name, listed in DESCRIPTION.findall(text):
            if kind == "Fields" and f'#include "{path}"' not in umbrella:
                yield f"{path}: not in JOBXCLSDLL_fields.h"
            for member in wanted(classes[name]):
                if not re.search(rf"\b{member}\b", listed):
                    yield f"{path}: {name} has {member}, which is not in its list"


def check_itself():
    """What must be refused, and what must not."""
    sound = {
        "Pin.h": "class JOBX_API Pin : public Base\n{\npublic:\n    void SetAny(int any);\n\n    CWnd* m_pWindow = nullptr;\n"
        "    double m_dHole = 0.0; // of it\n    CArray<int, int> m_arr;\n\nprivate:\n    int m_nOwn = 0;\n};\n"
        "class JOBX_API Pad\n{\npublic:\n    void SetPlace(int place);\n};\n",
        "PinFields.h": "template <>\nstruct jobx::Fields<Pin>\n{\n    Length(&Pin::m_dHole), Numbers(&Pin::m_arr);\n};\n"
        "template <>\nstruct jobx::Fields<Pad>\n{\n    Integer(&Pad::SetPlace);\n};\n",
        "JOBXCLSDLL_fields.h": '#include "PinFields.h"\n',
    }
    assert not list(complaints(sound)), list(complaints(sound))
    for path, old, new in (
        ("PinFields.h", "Length(&Pin::m_dHole), ", ""),
        ("PinFields.h", ", Numbers(&Pin::m_arr)", ""),
        ("PinFields.h", "&Pad::SetPlace", "&Pad::SetPlaces"),
        ("Pin.h", "private:\n", ""),
    ):
        assert old in sound[path]
        assert len(list(complaints({**sound, path: sound[path].replace(old, new)}))) == 1, (path, old)
    assert len(list(complaints({**sound, "JOBXCLSDLL_fields.h": ""}))) == 2


def main(source):
    check_itself()
    root = Path(source)
    headers = {path.relative_to(root).as_posix(): path.read_text(encoding="utf-8") for path in root.rglob("*.h")}
    described = [name for text in headers.values() for _, name, _ in DESCRIPTION.findall(text)]
    found = list(complaints(headers))
    print("\n".join(found + [f"{len(described)} lists"]))
    return 1 if found or len(described) < 60 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
