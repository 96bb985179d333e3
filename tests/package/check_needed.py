#!/usr/bin/env python3
"""Check which shared libraries a library loads: check_needed.py LIBRARY

Allowed are the C++ standard library, the OpenMP runtime and what those stand on. Exit status 77 where readelf is missing.
"""

import re
import shutil
import subprocess
import sys

ALLOWED = re.compile(
    r"^(libstdc\+\+|libc\+\+|libc\+\+abi|libgomp|libomp|libgcc_s|libunwind|libc|libm|libpthread|ld-linux[\w-]*|ld-musl[\w-]*)"
    r"\.so(\.\d+)*$"
)


def main(library):
    if shutil.which("readelf") is None:
        print("SKIPPED: readelf is missing")
        return 77
    output = subprocess.run(["readelf", "-d", library], check=True, capture_output=True, text=True).stdout
    needed = re.findall(r"\(NEEDED\).*\[(.*)\]", output)
    print("needed: " + " ".join(needed))
    if not any(re.match(r"lib(stdc|c)\+\+\.", name) for name in needed):
        print("the C++ standard library is not among them")
        return 1
    others = [name for name in needed if not ALLOWED.match(name)]
    for name in others:
        print(f"may not be needed: {name}")
    return 1 if others else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
