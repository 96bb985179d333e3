#!/usr/bin/env python3
"""Validate what `jobx panel --json` prints for a job against its schema: check_panel.py JOBX SCHEMA JOB

Exit status 77 when this machine has no validator. The job is copied first, because reading may unpack files in it.
"""

import json
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from jsonschema import Draft202012Validator
except ImportError:
    print("SKIPPED: this Python has no module jsonschema (Debian package python3-jsonschema)")
    sys.exit(77)

# A step between the panel of the job and its boards, at a place that is no number.
NESTED = "STEP-REPEAT {\nNAME=PANEL\nX=1\nY=nan\nDX=0\nDY=0\nNX=1\nNY=1\nANGLE=90\nMIRROR=YES\nFLIP=NO\n}\n"


def main():
    program, schema_path, job = sys.argv[1:]
    schema = json.loads(Path(schema_path).read_text(encoding="utf-8"))
    Draft202012Validator.check_schema(schema)
    record = schema["items"]
    assert sorted(record["required"]) == sorted(record["properties"])
    validator = Draft202012Validator(schema)
    with tempfile.TemporaryDirectory() as directory:
        place = Path(directory) / "job"
        shutil.copytree(job, place)
        step = place / "steps" / "sheet"
        step.mkdir()
        (step / "profile").write_bytes(b"")
        (step / "stephdr").write_text(NESTED, encoding="ascii")
        with (place / "matrix" / "matrix").open("a", encoding="ascii") as matrix:
            matrix.write("STEP {\nCOL=3\nNAME=SHEET\n}\n")
        document = json.loads(
            subprocess.run([program, "panel", str(place), "--json"], check=True, stdout=subprocess.PIPE).stdout
        )
    errors = list(validator.iter_errors(document))
    for error in errors[:10]:
        print("/".join(map(str, error.path)), error.message[:200])
    assert not errors
    assert max(row["level"] for row in document) == 2
    assert any(row["y"] == "nan" for row in document), "the text form of a number was not tried"
    for key, wrong in (("level", 0), ("parent", "1"), ("x", "far"), ("name", None)):
        kept = document[-1][key]
        document[-1][key] = wrong
        assert not validator.is_valid(document), key
        document[-1][key] = kept
    del document[0]["flip"]
    assert not validator.is_valid(document)
    print(f"{len(document)} placements are valid")


if __name__ == "__main__":
    main()
