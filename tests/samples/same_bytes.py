"""Write the sample job into a temporary directory and compare it with the committed one, byte for byte.

Usage: same_bytes.py SAMPLES_DIRECTORY
"""

import subprocess
import sys
import tempfile
from pathlib import Path

UNPACKED = Path("symbols/mount_ring/features")  # left beside its compressed form by programs that read the job


def files(top):
    found = {path.relative_to(top): path.read_bytes() for path in top.rglob("*") if path.is_file()}
    found.pop(UNPACKED, None)
    return found


samples = Path(sys.argv[1])
with tempfile.TemporaryDirectory() as directory:
    written = Path(directory) / "job"
    subprocess.run([sys.executable, samples / "make_sample.py", written], check=True)
    new, old = files(written), files(samples / "blinker")
different = sorted(str(name) for name in new.keys() | old.keys() if new.get(name) != old.get(name))
print(f"{len(new)} files written, {len(old)} committed, {len(different)} different", *different, sep="\n")
sys.exit(1 if different or not new else 0)
