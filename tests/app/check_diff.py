#!/usr/bin/env python3
"""Change copies of a job with text tools and see that `jobx diff` tells just that change: check_diff.py JOBX JOB STEP...

Each JOB is followed by the name of its step with components. Each change is compared alone; with a memory checker in the
program, all at once. Jobs that are not there are skipped; exit status 77 when none is.
"""

import json
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

INCH = 25.4
LENGTH_ATTRIBUTES = {
    *(".board_thickness", ".layer_dielectric", ".thickness_over_cu", ".thickness_over_sm", ".et_adjacency"),
    *(".drc_max_height", ".drc_min_height", ".fill_dx", ".fill_dy", ".image_dx", ".image_dy", ".text_line_width"),
    *(".text_x_size", ".text_y_size", ".impedance_test_width"),
    *(".comp_height", ".comp_height_max"),
    *(".se_coupon_dist", ".se_coupon_max_size", ".se_coupon_min_size", ".se_coupon_slot_length"),
}


def lines_of(path):
    return path.read_text(encoding="latin-1").splitlines()


def write(path, lines):
    path.write_text("\n".join(lines) + "\n", encoding="latin-1")


def is_in_inches(path):
    return not any(line in ("UNITS=MM", "U MM") for line in lines_of(path))


def number(value):
    """As an exporter writes it."""
    return f"{value:.9f}".rstrip("0").rstrip(".") or "0"


class Copy:
    """A copy of a job to change."""

    def __init__(self, source, step, directory):
        self.root = Path(directory) / "job"
        shutil.copytree(source, self.root)
        self.step = self.root / "steps" / step.lower()
        self.eda = self.step / "eda" / "data"

    def edit(self, path, old, new):
        """Replaces the first match of a pattern that spans one line."""
        text = path.read_text(encoding="latin-1")
        changed, count = re.subn(old, new, text, count=1, flags=re.MULTILINE)
        assert count == 1, f"{path} has no {old}"
        path.write_text(changed, encoding="latin-1")

    def components(self):
        return sorted(self.step.glob("layers/*/components"))

    def layer_with(self, pattern, name="*", last=False):
        """The first or last features file with such a line."""
        for path in sorted(self.step.glob(f"layers/{name}/features"), reverse=last):
            if re.search(pattern, path.read_text(encoding="latin-1"), re.MULTILINE):
                return path
        raise AssertionError(f"no features file has {pattern}")


class Diff:
    """The answer of jobx diff."""

    def __init__(self, program, a, b, *options):
        run = [program, "diff", str(a), str(b), "--messages", "none", *options]
        result = subprocess.run([*run, "--json"], check=False, stdout=subprocess.PIPE)
        self.document = json.loads(result.stdout)
        self.text = json.dumps(self.document["groups"], indent=1)[:4000]  # for people, when a check fails
        assert result.returncode == (1 if self.document["differences"] else 0)

    def kinds(self):
        """What differs: kind, field and number, sorted."""
        return sorted((group["kind"], group["field"], group["count"]) for group in self.document["groups"])

    def step(self, name):
        return next(step for step in self.document["changes"]["steps"] if step["step"] == name)


def renumbered_features(path):
    """Symbols and attribute tables in the opposite order."""
    lines = lines_of(path)
    counts = {mark: sum(line.startswith(mark) for line in lines) for mark in "$@&"}
    place = {"L": 5, "P": 3, "A": 7}

    def turned(mark, value):
        return str(counts[mark] - 1 - int(value))

    def tail(text):
        """Options and numbers are not in a table; texts are, but here no attribute is known to have texts."""
        items = [item.partition("=") for item in text.split(",")]
        return ",".join(turned("@", name.strip()) + sep + value for name, sep, value in items)

    changed = []
    for line in lines:
        fields, semicolon, rest = line.partition(";")
        words = fields.split(" ")
        if line[:1] in ("$", "@"):
            found = re.match(r"(.)(\d+)(.*)", line)
            line = found[1] + turned(found[1], found[2]) + found[3]
        elif words[0] in place:
            at = place[words[0]] + (words[3] == "-1")  # a resized pad has its factor behind the symbol
            words[at] = turned("$", words[at])
            line = " ".join(words) + semicolon + (tail(rest) if rest.strip() and counts["@"] else rest)
        elif words[0] in ("S", "T", "B") and rest.strip() and counts["@"]:
            line = fields + semicolon + tail(rest)
        changed.append(line)
    write(path, changed)


def reversed_nets(copy):
    """The nets of the EDA data in the opposite order, and the toeprints that refer to them."""
    head, nets, foot = [], [], []
    for line in lines_of(copy.eda):
        if line.startswith("NET "):
            nets.append([line])
        elif line.startswith("PKG ") or foot:
            foot.append(line)
        elif nets and (line.startswith(("SNT", "FID", "PRP"))):
            nets[-1].append(line)
        elif not nets:
            head.append(line)
    write(copy.eda, head + [line for net in reversed(nets) for line in net] + foot)
    for path in copy.components():
        changed = []
        for line in lines_of(path):
            words = line.split(" ")
            if words[0] == "TOP":
                words[6] = str(len(nets) - 1 - int(words[6]))
            changed.append(" ".join(words))
        write(path, changed)


def turned_layers(copy):
    """The layer names of the EDA data in the opposite order."""
    changed, count = [], 0
    for line in lines_of(copy.eda):
        words = line.split(" ")
        if words[0] == "LYR":
            words = [words[0], *reversed([word for word in words[1:] if word])]
            count = len(words) - 1
        elif words[0] == "FID":
            words[2] = str(count - 1 - int(words[2]))
        changed.append(" ".join(words))
    write(copy.eda, changed)


def renumbered(copy):
    for path in copy.root.glob("steps/*/layers/*/features"):
        renumbered_features(path)
    reversed_nets(copy)
    turned_layers(copy)


def split_net(copy):
    """The last pin of the net with the most pins goes to a net of its own; returns component and net, and how many
    features the pin has."""
    lines = lines_of(copy.eda)
    first_package = next(i for i, line in enumerate(lines) if line.startswith("PKG "))
    starts = [i for i in range(first_package) if lines[i].startswith("NET ")]
    name = {i: lines[i].split()[1] for i in starts}

    def pins(i):
        end = next((k for k in [*starts, first_package] if k > i), first_package)
        return [k for k in range(i, end) if lines[k].startswith("SNT TOP ")]

    most = max((i for i in starts if name[i] != "$NONE$"), key=lambda i: len(pins(i)))
    at = pins(most)[-1]
    end = at + 1
    while lines[end].startswith("FID"):
        end += 1
    pin, features = lines[at], lines[at + 1 : end]
    net = starts.index(most)
    subnet = sum(line.startswith("SNT") for line in lines[most:at])
    kept = lines[:at] + lines[end:]
    first_package -= end - at
    write(copy.eda, kept[:first_package] + ["NET SPLIT_OFF", pin, *features] + kept[first_package:])
    for path in copy.components():
        changed, told = [], None
        for line in lines_of(path):
            words = line.split(" ")
            if words[0] == "CMP":
                designator = words[6]
            if words[0] == "TOP" and int(words[6]) == net and int(words[7]) == subnet:
                words[6:8] = [str(len(starts)), "0"]
                told = designator
            changed.append(" ".join(words))
        if told is not None:
            write(path, changed)
            return (told, name[most]), len(features)
    raise AssertionError("no toeprint is on that subnet")


def metric_symbol(name):
    """A name of round, square, rectangular, oval and donut symbols in microns."""
    found = re.fullmatch(r"((?:r|s|rect|oval|tri|oct|di|el|donut_r|donut_s|hex_l)[\d.]+(?:x[\d.]+)*(?:x[rc][\d.]+)?)(.*)", name)
    if found:  # behind a radius: which corners
        return re.sub(r"\d+(\.\d+)?", lambda size: number(float(size[0]) * INCH), found[1]) + found[2]
    found = re.fullmatch(r"(thr)([\d.]+)x([\d.]+)x(\d+x\d+)x([\d.]+)", name)
    if found:  # an angle and a number of spokes between the lengths
        outer, inner, gap = (number(float(found[i]) * INCH) for i in (2, 3, 5))
        return f"thr{outer}x{inner}x{found[4]}x{gap}"
    assert not re.search(r"\d", name), f"{name} is not known here"
    return name


def metric_line(words, counts):
    """The words of a record with that many coordinates and lengths at its beginning."""
    for i in range(1, 1 + counts):
        words[i] = number(float(words[i]) * INCH)
    return " ".join(words)


def length_numbers(path):
    """The numbers that a file's table of attribute names gives to lengths."""
    found = [re.match(r"@(\d+) (\S+)", line) for line in lines_of(path)]
    return {each[1] for each in found if each and each[2] in LENGTH_ATTRIBUTES}


def metric_tail(text, lengths):
    """The attributes behind the semicolon of a record."""
    items = [item.partition("=") for item in text.split(",")]
    return ",".join(
        name + sep + (number(float(value) * INCH) if value.strip() and name.strip() in lengths else value)
        for name, sep, value in items
    )


def metric_features(path):
    lengths = length_numbers(path)
    changed = []
    for line in lines_of(path):
        fields, semicolon, rest = line.partition(";")
        if not line.startswith("#"):
            rest = metric_tail(rest, lengths)
        words = fields.split(" ")
        counts = {"L": 4, "A": 6, "P": 2, "OB": 2, "OS": 2, "OC": 4}.get(words[0])
        if line.startswith("$"):
            line = words[0] + " " + metric_symbol(words[1])
        elif counts:
            if words[0] == "P" and words[3] == "-1":
                words[5] = number(float(words[5]) * INCH)
            line = metric_line(words, counts) + semicolon + rest
        elif words[0] == "S":
            line = fields + semicolon + rest
        elif words[0] in ("T", "B"):
            turned = int(words[5 if words[0] == "T" else 6] in ("8", "9"))  # an angle follows
            sizes = (6, 7) if words[0] == "T" else (8, 9)
            for i in (1, 2, sizes[0] + turned, sizes[1] + turned):
                words[i] = number(float(words[i]) * INCH)
            line = " ".join(words) + semicolon + rest
        changed.append({"U INCH": "U MM", "UNITS=INCH": "UNITS=MM"}.get(line, line))
    write(path, changed)


def metric_eda(path):
    counts = {"CR": 3, "SQ": 3, "RC": 4, "OB": 2, "OS": 2, "OC": 4}
    changed = []
    for line in lines_of(path):
        words = line.split(" ")
        if words[0] == "HDR":
            line += "\nUNITS=MM"
        elif words[0] == "PKG":
            line = " ".join(words[:2] + [number(float(word) * INCH) for word in words[2:7]] + words[7:])
        elif words[0] == "PIN":
            line = " ".join(words[:3] + [number(float(word) * INCH) for word in words[3:6]] + words[6:])
        elif words[:3] == ["SNT", "PLN", "S"]:
            words[4] = number(float(words[4]) * INCH)
            line = " ".join(words)
        elif words[0] in counts:
            line = metric_line(words, counts[words[0]])
        changed.append(line)
    write(path, changed)


def metric_components(path):
    lengths = length_numbers(path)
    changed = ["UNITS=MM"]
    for line in lines_of(path):
        words = line.split(" ")
        if words[0] in ("CMP", "TOP"):
            words[2:4] = [number(float(word) * INCH) for word in words[2:4]]
            fields, semicolon, rest = " ".join(words).partition(";")
            line = fields + semicolon + metric_tail(rest, lengths)
        if not line.startswith("UNITS="):
            changed.append(line)
    write(path, changed)


def metric_keys(path, keys):
    changed = []
    for line in lines_of(path):
        key, equals, value = line.partition("=")
        if key.strip() in keys and value.strip():
            line = key + equals + number(float(value) * INCH)
        changed.append({"UNITS=INCH": "UNITS=MM"}.get(line, line))
    write(path, changed)


def metric_netlist(path):
    changed = []
    for line in lines_of(path):
        words = line.split(" ")
        if re.match(r"\d+ [-\d.]+ [-\d.]+ [-\d.]+ [TBDI]", line):
            round_point = float(words[1]) != 0
            count = 3 if round_point else 5
            for i in [k for k in range(1, count + 2) if re.fullmatch(r"-?\d+(\.\d+)?", words[k])]:
                words[i] = number(float(words[i]) * INCH)
            line = " ".join(words)
        changed.append("UNITS=MM" if line.startswith("UNITS") else line)
        if line.startswith("H "):
            changed.append("UNITS=MM")
    write(path, changed)


def metric(copy):
    """Everything of a job in inches in millimetres."""
    for packed in copy.root.glob("symbols/*/features.Z"):
        packed.with_suffix("").write_bytes(subprocess.run(["gzip", "-dc", packed], check=True, stdout=subprocess.PIPE).stdout)
        packed.unlink()
    for pattern in ("steps/*/layers/*/features", "steps/*/profile", "symbols/*/features"):
        for path in copy.root.glob(pattern):
            metric_features(path)
    for path in copy.root.glob("steps/*/eda/data"):
        metric_eda(path)
    for path in copy.components():
        metric_components(path)
    for path in copy.root.glob("steps/*/netlists/*/netlist"):
        metric_netlist(path)
    for path in copy.root.glob("steps/*/stephdr"):
        metric_keys(path, {"X", "Y", "DX", "DY", "X_DATUM", "Y_DATUM", "X_ORIGIN", "Y_ORIGIN"})
        path.write_text("UNITS=MM\n" + path.read_text(encoding="latin-1"), encoding="latin-1")
    for path in copy.root.glob("steps/*/layers/*/tools"):
        metric_keys(path, {"THICKNESS", "MIN_TOL", "MAX_TOL", "FINISH_SIZE", "DRILL_SIZE"})
    for path in copy.root.glob("**/attrlist"):
        metric_keys(path, LENGTH_ATTRIBUTES)
        path.write_text("UNITS=MM\n" + path.read_text(encoding="latin-1"), encoding="latin-1")


# Each change of a copy returns the groups that diff must have for it, and a check of the summary or None.


def thickness(copy):
    copy.edit(copy.root / "misc/attrlist", r"^(\.board_thickness *=).*", r"\1 0.063")
    return [("attribute", "value", 1)], None


def copper_weight(copy):
    path = next(p for p in sorted(copy.step.glob("layers/*/attrlist")) if ".copper_weight" in p.read_text())
    copy.edit(path, r"^(\.copper_weight *=).*", r"\1 7")
    return [("attribute", "value", 1)], None


def package_outline(copy):
    copy.edit(copy.eda, r"^((?:RC|CR|SQ|OS) \S+) \S+", r"\1 -9.5")
    return [("outline", "shape", 1)], None


def pad(copy):
    path = copy.layer_with(r"^P [-\d.]+ ", "*top*")
    line = next(line for line in lines_of(path) if line.startswith("P "))
    words = line.split(" ")
    words[1] = number(float(words[1]) + 0.01)
    copy.edit(path, "^" + re.escape(line) + "$", " ".join(words))
    way = 0.01 * (INCH if is_in_inches(path) else 1)

    def check(step):
        (layer,) = [layer for layer in step["layers"] if layer["layer"] == path.parent.name]
        assert (layer["added"], layer["removed"], layer["moved"]) == (0, 0, 1), layer
        assert abs(layer["movedBy"][0] - way) < 1e-6 and layer["movedBy"][1] == 0, layer

    return [("feature P", "place", 1)], check


def attribute_flag(copy):
    """One more attribute without a value at one line or pad."""
    path = copy.layer_with(r"^[LP] ", "*bot*")
    lines = lines_of(path)
    table = [i for i, line in enumerate(lines) if line.startswith("@")]
    at = next(i for i, line in enumerate(lines) if line.startswith(("L ", "P ")))
    fields, _, attributes = lines[at].partition(";")
    lines[at] = f"{fields};{attributes},{len(table)}" if attributes.strip() else f"{fields.rstrip()} ;{len(table)}"
    lines.insert(table[-1] + 1 if table else at, f"@{len(table)} .rout_flag_of_a_test")
    write(path, lines)
    return [("attribute", "", 1)], None


def attributes(copy):
    """All attributes of one pad."""
    path = copy.layer_with(r"^P [^;]*;\S", last=True)
    text = path.read_text(encoding="latin-1")
    count = len(re.search(r"^P [^;\n]*;(\S.*)$", text, re.MULTILINE)[1].split(","))
    copy.edit(path, r"^(P [^;\n]*);\S.*$", r"\1")
    return [("attribute", "", count)], None


def drill_size(copy):
    """The first symbol of a drill layer, and so each hole with it."""
    path = next(p for p in sorted(copy.step.glob("layers/*/features")) if "drill" in p.parent.name)
    lines = lines_of(path)
    symbol = next(line.split(" ")[0][1:] for line in lines if line.startswith("$"))
    holes = sum(line.startswith("P ") and line.split(" ")[3] == symbol for line in lines)
    slots = sum(line.startswith("L ") and line.split(" ")[5] == symbol for line in lines)
    copy.edit(path, rf"^\${symbol} r\S+", f"${symbol} r77")

    def check(step):
        assert len(step["drills"]) == 2, step["drills"]
        for drill in step["drills"]:
            assert abs(drill["a"] - drill["b"]) == holes + slots, drill
        (layer,) = [layer for layer in step["layers"] if layer["layer"] == path.parent.name]
        assert (layer["added"], layer["removed"]) == (holes + slots, holes + slots), layer

    return [(f"feature {kind}", "", n) for kind, n in (("P", holes), ("L", slots)) if n for _ in "ab"], check


def value(copy):
    copy.edit(copy.components()[-1], r"^(PRP VALUE|PRP Value) .*", r"\1 'new'")

    def check(step):
        told = step["components"]["otherProperty"]
        assert len(told) == 1 and re.fullmatch(r"\S+ (VALUE|Value) .* -> new", told[0]), told

    return [("property", "value", 1)], check


def component(copy):
    path = copy.components()[-1]
    line = next(line for line in lines_of(path) if line.startswith("CMP "))
    words = line.split(" ")
    words[2] = number(float(words[2]) + 0.5)
    words[4] = number((float(words[4]) + 90) % 360)
    copy.edit(path, "^" + re.escape(line) + "$", " ".join(words))

    def check(step):
        components = step["components"]
        assert components["moved"] == [words[6]] and components["rotated"] == [words[6]], components

    return [("component", "rotation", 1), ("component", "x", 1)], check


def net(copy):
    (designator, name), features = split_net(copy)

    def check(step):
        nets = step["nets"]
        assert nets["added"] == ["SPLIT_OFF"] and nets["removed"] == [], nets
        assert len(nets["pinsOnOtherNet"]) == 1, nets
        moved = re.escape(designator) + r"\.\S+ from " + re.escape(name) + " to SPLIT_OFF"
        assert re.fullmatch(moved, nets["pinsOnOtherNet"][0]), nets

    told = [("net", "", 1), ("subnet", "", 1), ("toeprint", "net", 1)]
    return told + [("net", "features that the other has not", 1)] * (features > 0), check


def carried(copy):
    (copy.root / "notes.bin").write_bytes(b"\x00\x01")
    return [("file", "", 1)], None


class Checks:
    def __init__(self, program, source, step):
        self.program, self.source, self.step = program, source, step
        self.done = 0

    def compare(self, change, *options):
        """The difference between the job and a copy with this change, and what it returned."""
        with tempfile.TemporaryDirectory() as directory:
            copy = Copy(self.source, self.step, directory)
            told = change(copy)
            diff = Diff(self.program, self.source, copy.root, *options)
        self.done += 1
        return diff, told

    def tells(self, change):
        diff, (groups, check) = self.compare(change)
        assert diff.kinds() == sorted(groups), (groups, diff.text)
        if check:
            check(diff.step(self.step))

    def says_nothing(self, change, *options):
        diff, _ = self.compare(change, *options)
        assert diff.document["differences"] == 0, diff.text

    def all(self, changes, are_equal):
        self.says_nothing(lambda copy: None)
        for change in are_equal:
            self.says_nothing(change)
        self.says_nothing(pad, "--only", "components,nets,matrix")
        for change in changes:
            self.tells(change)
        print(f"{self.source.name}: {len(changes)} changes are told as they are, in {self.done} comparisons")


ALL = [package_outline, pad, attribute_flag, attributes, drill_size, value, component, net, carried]
OF_JOB = {  # as far as the job has what is changed; and what makes no difference
    "flat_hierarchy": (ALL, [renumbered]),
    "beagleboneblack": ([thickness, copper_weight, net], [renumbered, metric]),
}


def is_memory_checked(program):
    """Such a program is slow: it gets one change of a real job."""
    text = Path(program).read_bytes()
    return b"__asan_init" in text or b"__tsan_init" in text


def main():
    program, *jobs = sys.argv[1:]
    checked = 0
    for job, step in zip(jobs[::2], jobs[1::2], strict=True):
        source = Path(job)
        if source.is_dir():
            changes, are_equal = OF_JOB.get(source.name, ([thickness, copper_weight, *ALL], [renumbered, metric]))
            if source.name in OF_JOB and is_memory_checked(program):
                changes, are_equal = changes[-1:], []
            Checks(program, source, step).all(changes, are_equal)
            checked += 1
        else:
            print(f"SKIPPED: {job} is not there")
    sys.exit(0 if checked else 77)


if __name__ == "__main__":
    main()
