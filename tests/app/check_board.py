#!/usr/bin/env python3
"""Compare what `jobx info` says about a board with counts of its files: check_board.py JOBX JOB STEP [JOB STEP ...]

The counts are made here, line by line, without the library. Exit status 77 when none of the jobs is there.
"""

import json
import math
import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

COPPER = ("SIGNAL", "POWER_GROUND", "MIXED")
DRILL_WORDS = ("plated", "non_plated", "via")  # the options of ".drill" in their order


def blocks_of(path, kind):
    """The blocks of that kind in a file of KEY=VALUE lines, in order."""
    blocks, inside = [], None
    for line in path.read_text(encoding="latin-1").splitlines():
        line = line.strip()
        if line == kind + " {":
            inside = {}
        elif line == "}" and inside is not None:
            blocks.append(inside)
            inside = None
        elif inside is not None and "=" in line:
            key, value = line.split("=", 1)
            inside[key] = value
    return blocks


def attribute(path, name):
    """The number of an attribute of an attribute list, None if it is missing or 0."""
    if path.exists():
        for line in path.read_text(encoding="latin-1").splitlines():
            key, _, value = line.partition("=")
            if key.strip() == name and value.strip() and float(value) > 0:
                return float(value)
    return None


def factor_of(lines):
    """Millimetres of one unit of a file."""
    for line in lines:
        if line in ("UNITS=MM", "U MM"):
            return 1.0
    return 25.4


class Layer:
    """The lines of a features file and its tables."""

    def __init__(self, path):
        self.lines = path.read_text(encoding="latin-1").splitlines() if path.exists() else []
        self.factor = factor_of(self.lines)
        self.symbols, self.names = {}, {}
        for line in self.lines:
            for table, mark in ((self.symbols, "$"), (self.names, "@")):
                if line.startswith(mark):
                    number, name = line[1:].split()[:2]
                    table[int(number)] = name

    def size(self, number):
        found = re.fullmatch(r"[rs](\d+(?:\.\d+)?)", self.symbols.get(number, ""))
        return float(found[1]) / 1000 * self.factor if found and float(found[1]) > 0 else None

    def records(self):
        """Letter, symbol number and attributes by name of lines, pads and arcs."""
        place = {"L": 5, "P": 3, "A": 7}
        for line in self.lines:
            fields, _, tail = line.partition(";")
            words = fields.split()
            if words and words[0] in place:
                pairs = [item.partition("=") for item in tail.split(";")[0].strip().split(",") if item.strip()]
                yield words[0], int(words[place[words[0]]]), {
                    self.names.get(int(name), ""): value for name, _, value in pairs
                }


def expected_drills(step, rows, depth):
    holes = slots = 0
    sizes, kinds, layers = Counter(), Counter(), []
    for row in rows:
        if row["TYPE"] != "DRILL" or row["CONTEXT"] != "BOARD":
            continue
        layer = Layer(step / "layers" / row["NAME"].lower() / "features")
        count = Counter()
        for letter, symbol, attributes in layer.records():
            count[letter == "P"] += 1
            sizes[round(layer.size(symbol), 6)] += 1
            kinds[DRILL_WORDS[int(attributes[".drill"])]] += 1
        ends = [row.get("START_NAME", ""), row.get("END_NAME", "")]
        at = sorted(depth.index(end) for end in ends) if any(ends) else [0, len(depth) - 1]
        outer = (at[0] == 0) + (at[1] == len(depth) - 1)
        span = ("buried", "blind", "through")[outer]
        layers.append((row["NAME"], *ends, span, count[True], count[False]))
        holes += count[True]
        slots += count[False]
    return holes, slots, sizes, kinds, layers


def expected_sides(step, rows, copper):
    """Components and pins by kind for top and bottom."""
    pins = []
    for line in (step / "eda" / "data").read_text(encoding="latin-1").splitlines():
        if line.startswith("PKG "):
            pins.append([])
        elif line.startswith("PIN "):
            pins[-1].append(line.split()[2])
    sides = {"top": Counter(), "bottom": Counter()}
    first_copper = min(int(row["ROW"]) for row in copper)
    for row in rows:
        path = step / "layers" / row["NAME"].lower() / "components"
        if row["TYPE"] != "COMPONENT" or not path.exists():
            continue
        side = sides["top" if int(row["ROW"]) < first_copper else "bottom"]
        package = None
        for line in path.read_text(encoding="latin-1").splitlines():
            if line.startswith("CMP "):
                side["components"] += 1
                package = pins[int(line.split()[1])]
            elif line.startswith("TOP "):
                side[package[int(line.split()[1])]] += 1
    return sides


def arc(start, end, centre, clockwise):
    """Points along an arc, close enough for a micron."""
    radius = math.dist(start, centre)
    first, last = (math.atan2(at[1] - centre[1], at[0] - centre[0]) for at in (start, end))
    turn = (first - last if clockwise else last - first) % math.tau or math.tau
    angles = (first + (-turn if clockwise else turn) * i / 7200 for i in range(7201))
    return [(centre[0] + radius * math.cos(angle), centre[1] + radius * math.sin(angle)) for angle in angles]


def expected_size(path):
    """Width and height of a profile in millimetres, from its islands."""
    lines = path.read_text(encoding="latin-1").splitlines()
    points, is_island = [], False
    for words in map(str.split, lines):
        if words[:1] == ["OB"]:
            is_island = words[3] == "I"
        if not is_island or words[:1] not in (["OB"], ["OS"], ["OC"]):
            continue
        numbers = [float(word) for word in words[1:5] if word not in "IHYN"]
        if words[0] == "OC":
            points += arc(points[-1], numbers[:2], numbers[2:4], words[5] == "Y")
        points.append(tuple(numbers[:2]))
    factor = factor_of(lines)
    return [(max(each[i] for each in points) - min(each[i] for each in points)) * factor for i in (0, 1)]


def near(a, b):
    return abs(a - b) < 1e-9


def check_drills(drills, step, rows, depth):
    holes, slots, sizes, kinds, layers = expected_drills(step, rows, depth)
    assert (drills["holes"], drills["slots"]) == (holes, slots)
    assert {each["diameter"]: each["count"] for each in drills["sizes"]} == dict(sizes)
    assert [drills[key] for key in ("vias", "plated", "nonPlated")] == [
        kinds[word] for word in ("via", "plated", "non_plated")
    ]
    keys = ("layer", "start", "end", "span", "holes", "slots")
    assert [tuple(each[key] for key in keys) for each in drills["layers"]] == layers
    return [f"{holes} holes", f"{kinds['via']} vias", f"{len(sizes)} sizes, smallest {min(sizes):.3f}".rstrip("0")]


def check_copper(board, step, copper):
    """The words that the screen must have."""
    thinnest = None
    for row, said in zip(copper, board["copperLayers"], strict=True):
        folder = step / "layers" / row["NAME"].lower()
        assert (said["name"], said["weight"]) == (row["NAME"], attribute(folder / "attrlist", ".copper_weight"))
        layer = Layer(folder / "features")
        for letter, symbol, _ in layer.records():
            size = layer.size(symbol)
            if letter in "LA" and size and (thinnest is None or size < thinnest[0] - 1e-12):
                thinnest = (size, row["NAME"])
    assert near(board["smallestLine"]["width"], thinnest[0]) and board["smallestLine"]["layer"] == thinnest[1]
    return [f"{len(copper)} layers: ", f" on {thinnest[1]}"]


def check_sides(board, step, rows, copper):
    words = []
    for side, counts in expected_sides(step, rows, copper).items():
        keys = {"components": "components", "smdPins": "S", "throughHolePins": "T"}
        assert {key: board[side][key] for key in keys} == {key: counts[name] for key, name in keys.items()}, side
        if counts["components"]:
            words.append(f"{side.capitalize():<12}{counts['components']} component")
    return words


def check_nets(board, step):
    nets = pins = 0
    name = None
    for line in (step / "eda" / "data").read_text(encoding="latin-1").splitlines():
        if line.startswith("NET "):
            name = line.split()[1]
            nets += name != "$NONE$"
        elif line.startswith("SNT TOP ") and name != "$NONE$":
            pins += 1
    assert (board["nets"], board["netPins"]) == (nets, pins)
    return [f"{nets} nets, {pins} pins"]


def check_job(program, job, step_name):
    rows = blocks_of(job / "matrix" / "matrix", "LAYER")
    copper = [row for row in rows if row["TYPE"] in COPPER and row["CONTEXT"] == "BOARD"]
    step = job / "steps" / step_name.lower()
    run = [program, "info", str(job), "--quiet"]
    document = json.loads(subprocess.run([*run, "--json"], check=True, stdout=subprocess.PIPE).stdout)
    board = document["board"]
    assert board["step"] == step_name and board["unit"] == "mm"
    size = expected_size(step / "profile")
    assert all(abs(a - b) < 1e-3 for a, b in zip(board["size"], size, strict=True))
    thickness = attribute(job / "misc" / "attrlist", ".board_thickness")
    if thickness is None:
        assert board["thickness"] is None
    else:
        assert near(board["thickness"], thickness * 25.4)
    words = [f"{size[0]:.3f}".rstrip("0").rstrip(".") + " x "]
    words += check_copper(board, step, copper)
    words += check_sides(board, step, rows, copper)
    words += check_nets(board, step)
    words += check_drills(board["drills"], step, rows, [row["NAME"] for row in copper])
    for panel in document["panels"]:
        repeats = Counter()
        for entry in blocks_of(job / "steps" / panel["step"].lower() / "stephdr", "STEP-REPEAT"):
            repeats[entry["NAME"]] += int(entry["NX"]) * int(entry["NY"])
        assert {each["step"]: each["copies"] for each in panel["repeats"]} == dict(repeats)
        words += [f"{name} {count} times" for name, count in repeats.items() if count > 1]
    assert document["reading"]["errors"] == 0
    screen = subprocess.run(run, check=True, stdout=subprocess.PIPE, text=True).stdout
    for word in words:
        assert word in screen, word
    lines = screen.splitlines()
    assert len(lines) <= 24 and max(map(len, lines)) <= 80, "more than one screen"
    print(f"{job.name}: {len(words)} figures of the screen and all of the document agree")


def main():
    program, *jobs = sys.argv[1:]
    checked = 0
    for job, step in zip(jobs[::2], jobs[1::2], strict=True):
        if Path(job).is_dir():
            check_job(program, Path(job), step)
            checked += 1
        else:
            print(f"SKIPPED: {job} is not there")
    sys.exit(0 if checked else 77)


if __name__ == "__main__":
    main()
