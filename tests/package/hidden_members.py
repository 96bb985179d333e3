"""Which members of the public classes a host cannot call, by the mangled names that they are exported under.

The compiler knows: it is asked for the debug information of the umbrella header, which has the access of every member.
"""

import re
import subprocess
import tempfile
from pathlib import Path

ENTRY = re.compile(r"^ <([0-9a-f]+)><[0-9a-f]+>: Abbrev Number: \d+ \((\w+)\)")
ATTRIBUTE = re.compile(r"^\s+<[0-9a-f]+>\s+(DW_AT_\w+)\s*:\s*(?:\(.*?\): )?(.*)$")
CLASSES = ("DW_TAG_class_type", "DW_TAG_structure_type", "DW_TAG_union_type")
PUBLIC = "1"


def entries(text):
    """Each entry of the debug information: how deep it lies, its tag, its attributes."""
    entry = None
    for line in text.splitlines():
        if begin := ENTRY.match(line):
            if entry:
                yield entry
            entry = (int(begin[1], 16), begin[2], {})
        elif entry and (attribute := ATTRIBUTE.match(line)):
            entry[2][attribute[1]] = attribute[2].strip()
    if entry:
        yield entry


def hidden_in(text):
    """The mangled names of members that are not public, or that belong to a class that is not."""
    hidden = set()
    around = []  # (tag, hidden) of the entries around this one
    for depth, tag, attributes in entries(text):
        del around[depth:]
        parent_tag, is_hidden = around[-1] if around else ("", False)
        if parent_tag in CLASSES:
            usual = "3 (private)" if parent_tag == "DW_TAG_class_type" else "1 (public)"
            is_hidden = is_hidden or attributes.get("DW_AT_accessibility", usual).split()[0] != PUBLIC
        name = attributes.get("DW_AT_linkage_name", "")
        if is_hidden and name:
            hidden.add(name)
        around += [("", is_hidden)] * (depth - len(around)) + [(tag, is_hidden)]
    return hidden


def debug_information(compiler, sources, header):
    with tempfile.TemporaryDirectory() as directory:
        source = Path(directory, "api.cpp")
        source.write_text(f'#include "{header}"\n', encoding="utf-8")
        compiled = Path(directory, "api.o")
        complete = ["-g", "-fno-eliminate-unused-debug-types", "-femit-class-debug-always"]
        subprocess.run(
            [compiler, "-std=c++20", f"-I{sources}", *complete, "-c", str(source), "-o", str(compiled)], check=True
        )
        command = ["readelf", "--debug-dump=info", str(compiled)]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def variants(name):
    """Constructors and destructors are declared once and exported in several variants."""
    return {name} | {re.sub(r"(C|D)4(I.*|E.*)$", rf"\g<1>{digit}\2", name) for digit in "0123"}


def hidden_members(compiler, sources, header="JOBXCLSDLL.h"):
    return {each for name in hidden_in(debug_information(compiler, sources, header)) for each in variants(name)}


def check_itself():
    """What counts as hidden, in a class and in one inside it; a struct's members are public unless it says otherwise."""
    text = """
 <0><b>: Abbrev Number: 1 (DW_TAG_compile_unit)
 <1><10>: Abbrev Number: 2 (DW_TAG_class_type)
    <11>   DW_AT_name        : Pad
 <2><20>: Abbrev Number: 3 (DW_TAG_subprogram)
    <21>   DW_AT_linkage_name: (indirect string, offset: 0x1): _ZN3Pad4ShowEv
    <22>   DW_AT_accessibility: 1\t(public)
 <2><30>: Abbrev Number: 3 (DW_TAG_subprogram)
    <31>   DW_AT_linkage_name: (indirect string, offset: 0x2): _ZN3PadC4Ev
 <2><40>: Abbrev Number: 4 (DW_TAG_structure_type)
 <3><50>: Abbrev Number: 3 (DW_TAG_subprogram)
    <51>   DW_AT_linkage_name: (indirect string, offset: 0x3): _ZN3Pad5Extra4FillEv
 <1><60>: Abbrev Number: 4 (DW_TAG_structure_type)
 <2><70>: Abbrev Number: 3 (DW_TAG_subprogram)
    <71>   DW_AT_linkage_name: (indirect string, offset: 0x4): _ZN4Line4ShowEv
 <2><80>: Abbrev Number: 3 (DW_TAG_subprogram)
    <81>   DW_AT_linkage_name: (indirect string, offset: 0x5): _ZN4Line4HideEv
    <82>   DW_AT_accessibility: 2\t(protected)
"""
    assert hidden_in(text) == {"_ZN3PadC4Ev", "_ZN3Pad5Extra4FillEv", "_ZN4Line4HideEv"}, hidden_in(text)
    assert "_ZN3PadC1Ev" in variants("_ZN3PadC4Ev")
