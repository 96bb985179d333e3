#!/usr/bin/env python3
"""Compare what a shared library exports with the list of what it may: check_symbols.py LIBRARY LIST

The list has what a host can call: members that are not public are exported too, because inline functions of the headers
call them, but they may change. $CXX (g++) says which those are.

With --renew the list is replaced, for a person to read what changed.
With --only-names nothing is compared; only names of the standard library are refused, in whatever build.
Exit status 77 where nm or readelf is missing.
"""

import difflib
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # nothing is left beside the sources
from hidden_members import check_itself as check_hidden_members
from hidden_members import hidden_members

SOURCES = Path(__file__).resolve().parents[2] / "src"

# The standard library's templates and what belongs to them; not our functions that take one of its classes.
FOREIGN = re.compile(
    r"^(guard variable for |vtable for |VTT for |typeinfo for |typeinfo name for |construction vtable for )?"
    r"(std|__gnu_cxx|__cxxabiv1|__gnu_parallel)::"
)
FOREIGN_WITH_RESULT = re.compile(r"^[^()]* (std|__gnu_cxx)::[^()]*\(")


def exported(library):
    """The mangled names that the library exports, each once."""
    command = ["nm", "--dynamic", "--defined-only", library]
    lines = subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()
    return {line.split()[-1] for line in lines if line.strip()}


def demangled(names):
    """The names as people read them, each once, in the order of their bytes."""
    text = "".join(name + "\n" for name in names)
    return sorted(set(subprocess.run(["c++filt"], input=text, check=True, capture_output=True, text=True).stdout.splitlines()))


def foreign(names):
    return [name for name in names if FOREIGN.match(name) or FOREIGN_WITH_RESULT.match(name)]


def check(names, wanted_file):
    """The complaints: what leaks out, then what was added and removed."""
    complaints = [f"belongs to the standard library: {name}" for name in foreign(names)]
    if wanted_file is not None:
        wanted = wanted_file.read_text(encoding="utf-8").splitlines()
        changes = difflib.unified_diff(wanted, names, str(wanted_file), "exported now", n=0, lineterm="")
        complaints += [line for line in changes if not line.startswith("@@")]
    return complaints


def check_itself():
    """What this test must refuse, so that it cannot pass for the wrong reason."""
    leaks = [
        "std::_Hashtable<CJOBXlayer*>::_M_rehash(unsigned long)",
        "std::__detail::_Hash_node_base* std::_Hashtable<CJOBXlayer*>::_M_insert<int>(int)",
        "guard variable for std::thing()::that",
        "vtable for std::exception",
    ]
    ours = ["CString::CString(std::basic_string_view<char, std::char_traits<char> >)", "typeinfo for CException*"]
    assert foreign(leaks + ours) == leaks


def main(arguments):
    options = [argument for argument in arguments if argument.startswith("--")]
    library, wanted = [argument for argument in arguments if not argument.startswith("--")]
    if shutil.which("nm") is None or shutil.which("readelf") is None:
        print("SKIPPED: nm or readelf is missing")
        return 77
    check_itself()
    check_hidden_members()
    every = exported(library)
    hidden = set() if "--only-names" in options else hidden_members(os.environ.get("CXX", "g++"), SOURCES)
    names = demangled(every - hidden)
    if not names:
        print(f"{library} exports nothing")
        return 1
    if "--renew" in options:
        Path(wanted).write_text("".join(name + "\n" for name in names), encoding="utf-8")
    complaints = check(names, None if "--only-names" in options else Path(wanted))
    if complaints:
        print("\n".join(complaints))
        print("The boundary of the library has changed. If that is meant, read the lines above and renew the list:")
        print(f"  python3 {sys.argv[0]} --renew {library} {wanted}")
        return 1
    print(f"{len(names)} names, and {len(every & hidden)} of members that are not public")
    if "--only-names" in options:
        print("SKIPPED: not compared with the list; this compiler's instances may differ")
        return 77
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
