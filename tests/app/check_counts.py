#!/usr/bin/env python3
"""Count what is in the files of jobs and in what `jobx json` prints of them: check_counts.py JOBX [--in FOLDER] JOB...

The files are counted here line by line, without the library: for each file its records by keyword, flags, other
attributes, unique numbers, table entries, keys and unit. Both counts must agree in every number. A JOB that does
not exist is left out; with none left, the exit status is 77. The environment variable JOBX_REAL_JOBS replaces FOLDER.
"""

import copy
import gzip
import json
import os
import subprocess
import sys
from collections import Counter
from pathlib import Path

UNITS = {"MM": "mm", "M": "mm", "INCH": "inch", "I": "inch"}
FEATURES = ("L", "P", "A", "T", "B", "S")
ELEMENTS = ("OB", "OS", "OC", "OE")
OUTLINES = ("RC", "CR", "SQ", "CT", "CE") + ELEMENTS
KNOWN_KEYS = {
    "info": "JOB_NAME ODB_VERSION_MAJOR ODB_VERSION_MINOR ODB_SOURCE CREATION_DATE SAVE_DATE SAVE_APP SAVE_USER UNITS",
    "matrix": "",
    "STEP": "COL NAME ID",
    "LAYER": "ROW CONTEXT TYPE NAME POLARITY START_NAME END_NAME OLD_NAME ADD_TYPE COLOR ID",
    "stephdr": "UNITS X_DATUM Y_DATUM X_ORIGIN Y_ORIGIN ID AFFECTING_BOM AFFECTING_BOM_CHANGED "
    "TOP_ACTIVE BOTTOM_ACTIVE RIGHT_ACTIVE LEFT_ACTIVE ONLINE_DRC_NAME ONLINE_DRC_MODE ONLINE_DRC_STAT ONLINE_DRC_TIME "
    "ONLINE_DRC_BEEP_VOL ONLINE_DRC_BEEP_TONE ONLINE_NET_MODE ONLINE_NET_STAT ONLINE_NET_TIME ONLINE_NET_BEEP_VOL "
    "ONLINE_NET_BEEP_TONE",
    "STEP-REPEAT": "NAME X Y DX DY NX NY ANGLE MIRROR FLIP ID",
    "tools": "UNITS THICKNESS USER_PARAMS",
    "TOOLS": "NUM TYPE TYPE2 MIN_TOL MAX_TOL BIT FINISH_SIZE DRILL_SIZE ID",
}


def lines_of(path):
    data = path.read_bytes()
    if data[:2] == b"\x1f\x8b":
        data = gzip.decompress(data)
    elif data[:2] == b"\x1f\x9d":
        data = subprocess.run(["gzip", "-dc"], input=data, stdout=subprocess.PIPE, check=True).stdout
    return [line.strip() for line in data.decode("latin-1").split("\n")]


def add_tail(counts, keyword, line):
    """What stands behind the first semicolon of a record, outside of a text in quotes."""
    at = line.find(";", max(line.rfind("'"), 0))
    if at < 0:
        return
    attributes, *further = line[at + 1 :].split(";")
    for item in filter(None, attributes.split(",")):
        counts[keyword, "flags" if "=" not in item else "attributes"] += 1
    counts[keyword, "ids"] += sum(part.startswith("ID=") for part in further)


def unit_of(line):
    """The unit that a line names: UNITS=MM, or U MM."""
    if line.upper().startswith("UNITS="):
        return UNITS.get(line[6:].strip().upper())
    words = line.split()
    return UNITS.get(words[1].upper()) if len(words) == 2 and words[0] == "U" else None


def count_records(lines, job_unit, keywords, counts):
    counts["unit"] = next(filter(None, map(unit_of, lines)), job_unit)
    for line in lines:
        table = line[1:] if line.startswith(("#@", "#&")) else line
        if table[:1] in ("$", "@", "&") and table[1:2].isdigit():
            counts[table[0]] += 1
        word = line.split(" ")[0]
        if word in keywords:
            counts[word] += 1
            add_tail(counts, word, line)


def count_features(lines, job_unit, counts):
    count_records(lines, job_unit, FEATURES + ELEMENTS, counts)
    counts["id"] = next((int(line[3:]) for line in lines if line.startswith("ID=")), None)


def count_components(lines, job_unit, counts):
    count_records(lines, job_unit, ("CMP", "TOP", "PRP"), counts)


def count_eda(lines, job_unit, counts):
    count_records(lines, job_unit, ("NET", "SNT", "FID", "PKG", "PIN", "FGR", "PRP"), counts)
    counts["LYR"] = sum(len(line.split()) - 1 for line in lines if line.startswith("LYR "))
    place = ""
    for line in lines:
        word = line.split(" ")[0]
        place = word if word in ("PKG", "PIN") else place
        if word in OUTLINES:
            counts[place, word] += 1
            add_tail(counts, (place, "outline"), line)


def count_netlist(lines, job_unit, counts):
    count_records(lines, job_unit, (), counts)
    for line in lines:
        if line[:1].isdigit() or line.startswith("-"):
            counts["points"] += 1
            add_tail(counts, "points", line)


def count_attributes(lines, job_unit, counts):
    counts["unit"] = next(filter(None, map(unit_of, lines)), job_unit)
    counts["names"] = [
        line.split("=")[0].strip() for line in lines if "=" in line and line[0] != "#" and unit_of(line) is None
    ]


def count_keys(kind, lines, job_unit, counts):
    """Blocks, unique numbers, and keys without a member of their own."""
    if kind in ("info", "stephdr", "tools"):
        counts["unit"] = next(filter(None, map(unit_of, lines)), job_unit)
    block = kind
    for line in lines:
        name, equals, value = (part.strip() for part in line.partition("="))
        if line.endswith("{"):
            block = line[:-1].strip()
            counts[block] += 1
        elif line.startswith("}"):
            block = kind
        elif equals and name == "ID":
            counts[block, "ids"] += 1
        elif equals and name not in KNOWN_KEYS[block].split():
            counts[block, "keys", name, value] += 1


def count_font(lines, _, counts):
    # A font that names no unit is in inches, whatever the unit of the job.
    count_records(lines, "inch", ("LINE",), counts)
    counts["CHAR"] = sum(line.startswith("CHAR") for line in lines)


def count_shorts(lines, _, counts):
    counts["shorts"] = [line for line in lines if line and line[0] != "#"]


COUNTERS = {
    "features": count_features,
    "profile": count_features,
    "components": count_components,
    "data": count_eda,
    "netlist": count_netlist,
    "attrlist": count_attributes,
    "standard": count_font,
    "shortf": count_shorts,
    "info": lambda *arguments: count_keys("info", *arguments),
    "matrix": lambda *arguments: count_keys("matrix", *arguments),
    "stephdr": lambda *arguments: count_keys("stephdr", *arguments),
    "tools": lambda *arguments: count_keys("tools", *arguments),
}


def present(counts):
    return {key: value for key, value in counts.items() if value not in (0, None, [])}


def counts_of_files(job):
    """By path in lower case; the files that nothing counts under ""."""
    found = {"": []}
    info = job / "misc" / "info"
    job_unit = (next(filter(None, map(unit_of, lines_of(info))), None) if info.exists() else None) or "inch"
    for below in sorted(path.relative_to(job).as_posix() for path in job.rglob("*") if path.is_file()):
        path = job / below
        plain = below.lower().removesuffix(".z").removesuffix(".gz")
        name = plain.rsplit("/", maxsplit=1)[-1]
        if name in COUNTERS:
            counts = Counter()
            COUNTERS[name](lines_of(path), job_unit, counts)
            found[plain] = present(counts)
        elif not (plain.startswith("misc/") and (name == "userattr" or name.startswith("sysattr"))):
            found[""].append((below, path.stat().st_size))
    return found


def add_attributes(counts, keyword, attributes):
    for attribute in attributes:
        is_flag = attribute["value"] is True
        assert is_flag == (attribute["kind"] == "flag")
        counts[keyword, "flags" if is_flag else "attributes"] += 1


def add_record(counts, keyword, record, attributes="attributes"):
    counts[keyword] += 1
    add_attributes(counts, keyword, record[attributes])
    counts[keyword, "ids"] += record["id"] is not None


def add_tables(counts, record):
    for mark, texts in (("$", "symbolNames"), ("@", "attributeNames"), ("&", "attributeTexts")):
        counts[mark] += len(record.get(texts, ()))


def add_keys(counts, block, record):
    counts[block, "ids"] += record.get("id") is not None
    for key in record["furtherKeys"]:
        counts[block, "keys", key["name"], key["value"]] += 1


def features_in(layer):
    counts = Counter(unit=layer["unit"])
    counts["id"] = layer["id"]
    add_tables(counts, layer)
    for feature in layer["features"]:
        add_record(counts, feature["type"], feature, "properties")
        for contour in feature.get("contours", ()):
            for element in contour:
                counts[element["kind"]] += 1
    return counts


def components_in(file):
    counts = Counter(unit=file["unit"])
    add_tables(counts, file)
    for component in file["components"]:
        add_record(counts, "CMP", component)
        counts["PRP"] += len(component["properties"])
        for toeprint in component["toeprints"]:
            add_record(counts, "TOP", toeprint)
    return counts


def eda_in(eda):
    counts = Counter(unit=eda["unit"], LYR=len(eda["layerNames"]))
    add_tables(counts, eda)
    for net in eda["nets"]:
        add_record(counts, "NET", net)
        for subnet in net["subnets"]:
            add_record(counts, "SNT", subnet)
            counts["FID"] += len(subnet["objects"])
    for group in eda["featureGroups"]:
        add_record(counts, "FGR", group)
        counts["FID"] += len(group["objects"])
    for package in eda["packages"]:
        add_record(counts, "PKG", package)
        for place, records in (("PKG", [package]), ("PIN", package["pins"])):
            for record in records:
                if place == "PIN":
                    add_record(counts, "PIN", record)
                for outline in record["outlines"]:
                    add_record(counts, (place, "outline"), outline)
                    counts[place, "outline"] -= 1
                    counts[place, outline["keyword"]] += 1
    counts["PRP"] += len(eda["properties"])
    for owner in eda["nets"] + eda["packages"] + eda["featureGroups"]:
        counts["PRP"] += len(owner["properties"])
    return counts


def netlist_in(netlist):
    counts = Counter(unit=netlist["unit"])
    for net in netlist["nets"]:
        add_record(counts, "$", net)
    for point in netlist["points"] + [point for net in netlist["nets"] for point in net["points"]]:
        add_record(counts, "points", point)
    return counts


def attributes_in(attribute_list):
    return {
        "unit": attribute_list["unit"],
        "names": [attribute["name"] for attribute in attribute_list["attributes"]],
    }


def font_in(font):
    counts = Counter(unit=font["unit"], CHAR=len(font["characters"]))
    counts["LINE"] = sum(len(character["strokes"]) for character in font["characters"])
    return counts


def keys_in(kind, owner, blocks):
    """`blocks` has the records of each kind of block."""
    counts = Counter()
    if "unit" in owner:
        counts["unit"] = owner["unit"]
    add_keys(counts, kind, owner)
    for block, records in blocks.items():
        counts[block] += len(records)
        for record in records:
            add_keys(counts, block, record)
    return counts


def owners_in(document):
    """The path of the folder and the object of everything that may have a file "attrlist"."""
    yield "misc", document["misc"]
    for symbol in document["symbols"]:
        yield "symbols/" + symbol["path"].rsplit("/", maxsplit=1)[-1], symbol["layer"]
    for step in document["steps"]:
        folder = "steps/" + step["name"]
        yield folder, step
        for layer in step["layers"]:
            yield f"{folder}/layers/{layer['name']}", layer
        for file in step["components"]:
            yield f"{folder}/layers/{file['layerName']}", file


def files_of_step(step):
    folder = "steps/" + step["name"]
    yield folder + "/profile", features_in(step["profile"])
    yield folder + "/stephdr", keys_in("stephdr", step["header"], {"STEP-REPEAT": step["header"]["stepRepeats"]})
    yield folder + "/eda/data", eda_in(step["eda"])
    yield folder + "/eda/shortf", {"shorts": step["shorts"]}
    for netlist in [step["netlist"]] + step["furtherNetlists"]:
        yield f"{folder}/netlists/{netlist['name']}/netlist", netlist_in(netlist)
    for layer in step["layers"]:
        yield f"{folder}/layers/{layer['name']}/features", features_in(layer)
        yield f"{folder}/layers/{layer['name']}/tools", keys_in("tools", layer["tools"], {"TOOLS": layer["tools"]["tools"]})
    for file in step["components"]:
        yield f"{folder}/layers/{file['layerName']}/components", components_in(file)


def counts_of_document(document):
    """As counts_of_files; of a part that has no file there may be an entry with nothing but a unit."""
    matrix = document["matrix"]
    found = {"": [(file["path"], file["size"]) for file in document["carriedFiles"]]}
    found["misc/info"] = keys_in("info", document["misc"], {})
    found["matrix/matrix"] = keys_in("matrix", matrix, {"STEP": matrix["steps"], "LAYER": matrix["layers"]})
    found["fonts/standard"] = font_in(document["font"])
    for symbol in document["symbols"]:
        found["symbols/" + symbol["path"].rsplit("/", maxsplit=1)[-1] + "/features"] = features_in(symbol["layer"])
    for step in document["steps"]:
        found.update(files_of_step(step))
    for folder, owner in owners_in(document):
        if owner["attributeList"] is not None:
            found[folder + "/attrlist"] = attributes_in(owner["attributeList"])
    return {path.lower(): present(counts) if path else counts for path, counts in found.items()}


def differences(files, document):
    for path in sorted(set(files) | set(document)):
        in_file = files.get(path)
        in_document = document.get(path)
        if in_file == in_document or (in_file is None and set(in_document) <= {"unit"}):
            continue
        if path == "" or in_file is None or in_document is None:
            yield f"{path or 'files not read'}: {in_file} in the files, {in_document} in the document"
            continue
        for key in sorted(set(in_file) | set(in_document), key=str):
            if in_file.get(key) != in_document.get(key):
                yield f"{path}: {key}: {in_file.get(key)} in the file, {in_document.get(key)} in the document"


def places_in(value, place=()):
    """Each list of records, unit and unique number of the document, by its path without positions."""
    if isinstance(value, dict):
        if value.get("tools") == []:
            return  # of a layer without a file "tools"
        for key, inside in value.items():
            if key in ("unit", "id") and inside is not None:
                yield (*place, key), value, key
            yield from places_in(inside, (*place, key))
    elif isinstance(value, list):
        if value and isinstance(value[0], (dict, list)):
            yield place, value, None
        for inside in value:
            yield from places_in(inside, (*place, "[]"))


# Counted by the job's own reading of definitions or filled by hosts only.
NOT_COUNTED = {("sysAttrs",)}


def check_counting(files, document):
    """One record less, or another unit or number, at any place is a difference."""
    seen = set()
    for place, holder, key in places_in(document):
        if place in seen or place in NOT_COUNTED:
            continue
        seen.add(place)
        if key is None:
            taken = holder.pop()
        else:
            taken = holder[key]
            holder[key] = {"unit": "other", "id": None}[key]
        if not list(differences(files, counts_of_document(document))):
            yield f"a change at {'/'.join(place)} is not seen"
        if key is None:
            holder.append(taken)
        else:
            holder[key] = taken
    if len(seen) < 25:
        yield f"only {len(seen)} places were changed"


def check_job(program, job):
    printed = subprocess.run([program, "json", str(job), "--messages", "none"], stdout=subprocess.PIPE, check=True).stdout
    document = json.loads(printed)
    files = counts_of_files(job)
    found = list(differences(files, counts_of_document(document)))
    if not found and len(printed) < 2_000_000:
        found = list(check_counting(files, copy.deepcopy(document)))
    counted = [value for counts in files.values() if isinstance(counts, dict) for value in counts.values()]
    total = sum(value for value in counted if isinstance(value, int))
    print(f"{job}: {len(files)} files, {total} counted, {len(found)} differences")
    return found


def main(program, *jobs):
    if jobs[0] == "--in":
        folder = Path(os.environ.get("JOBX_REAL_JOBS") or jobs[1])
        jobs = [folder / job for job in jobs[2:]]
    there = [Path(job) for job in jobs if Path(job).is_dir()]
    found = [f"{job}: {line}" for job in there for line in check_job(program, job)]
    print("\n".join(found[:50]))
    if not there:
        return 77
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
