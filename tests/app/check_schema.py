#!/usr/bin/env python3
"""Validate what `jobx json` prints for a job against the schema: check_schema.py JOBX SCHEMA JOB [OPTION...]

Exit status 77 when this machine has no validator. The job is copied first, because reading may unpack files in it.
"""

import copy
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


def schemas_in(schema):
    """Every schema below this one, itself included."""
    if isinstance(schema, list):
        for item in schema:
            yield from schemas_in(item)
    elif isinstance(schema, dict):
        yield schema
        for key, value in schema.items():
            for child in value.values() if key in ("properties", "$defs") else [value]:
                yield from schemas_in(child)


def objects_in(value):
    """Every JSON object in a document."""
    if isinstance(value, list):
        for item in value:
            yield from objects_in(item)
    elif isinstance(value, dict):
        yield value
        for item in value.values():
            yield from objects_in(item)


OPTIONAL = {"A features file": {"features"}}  # which --no-features leaves out


def check_closed(schema, is_legacy):
    """Each object schema lists its members, needs them all but those and allows no others."""
    closed = 0
    for part in schemas_in(schema):
        if part.get("type") != "object":
            continue
        closed += 1
        assert part["additionalProperties"] is False, part
        optional = set() if is_legacy else OPTIONAL.get(part.get("description"), set())
        assert set(part["properties"]) - set(part["required"]) == optional, part
    assert closed > 30, closed
    return closed


def check_rejects(validator, document):
    """The validator finds an unknown and a missing member wherever they are."""
    for changed in (
        document,
        document["steps"][0]["profile"]["features"][0],
        document["steps"][0]["layers"][0],
        document["steps"][0]["eda"]["nets"][0],
    ):
        changed["unknown"] = 1
        assert not validator.is_valid(document), changed
        del changed["unknown"]
    name = document["steps"][0].pop("name")
    assert not validator.is_valid(document)
    document["steps"][0]["name"] = name
    point = document["steps"][0]["header"]["datum"]
    point[0] = "infinite"
    assert not validator.is_valid(document)
    point[0] = "-inf"
    assert validator.is_valid(document)


def main():
    program, schema_path, job, *options = sys.argv[1:]
    schema = json.loads(Path(schema_path).read_text(encoding="utf-8"))
    Draft202012Validator.check_schema(schema)
    closed = check_closed(schema, "--legacy" in options)
    validator = Draft202012Validator(schema)
    with tempfile.TemporaryDirectory() as directory:
        place = Path(directory) / "job"
        shutil.copytree(job, place)
        command = [program, "json", str(place), "--sysattr", str(place / "misc" / "sysattr"), *options]
        document = json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)
    errors = sorted(validator.iter_errors(document), key=lambda error: list(map(str, error.path)))
    for error in errors[:10]:
        print("/".join(map(str, error.path)), error.message[:200])
    assert not errors
    check_rejects(validator, copy.deepcopy(document))
    print(f"{closed} object schemas; {sum(1 for _ in objects_in(document))} objects are valid")


if __name__ == "__main__":
    main()
