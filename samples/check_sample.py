#!/usr/bin/env python3
"""Read a sample job back and check that its files agree with each other; print what is in it.

Usage: check_sample.py [directory]     (default: the folder `blinker` beside this script)

Written for what make_sample.py writes, not for jobs in general. It shares no code with that script. Exit status 1
and one line per finding when something is wrong.
"""

import math
import re
import subprocess
import sys
from pathlib import Path

CLEARANCE = 0.006  # between the copper of different nets
TOLERANCE = 2e-6  # of coordinates printed with six decimals
FINDINGS = []


def check(condition, message):
    if not condition:
        FINDINGS.append(message)


class Feature:
    def __init__(self, line):
        fixed, _, tail = line.partition(";")
        self.line, self.kind, self.fields, self.contours = line, fixed[0], fixed.split()[1:], []
        self.attributes = dict((item.split("=") + [""])[:2] for item in tail.split(",") if item)
        self.symbol, self.resize, self.orientation = None, 0.0, ["0"]
        f = self.fields
        if self.kind == "P":
            if f[2] == "-1":
                self.resize = float(f[4])
                f = f[:2] + [f[3]] + f[5:]
            self.orientation = f[5:]
        if self.kind in "LAP":
            count = {"L": 4, "A": 6, "P": 2}[self.kind]
            self.points = [(float(f[i]), float(f[i + 1])) for i in range(0, count, 2)]
            self.symbol, self.polarity = int(f[count]), f[count + 1]
        elif self.kind in "TB":
            self.points, self.polarity = [(float(f[0]), float(f[1]))], f[3 if self.kind == "T" else 4]
        else:
            self.polarity = f[0]


class Layer:
    """A features file with its symbol names put into the features."""

    def __init__(self, text):
        self.features, symbols, names = [], {}, {}
        for line in text.splitlines():
            key = line.split(" ")[0]
            if key.startswith("$"):
                symbols[int(key[1:])] = line.split(" ", 1)[1]
            elif key.startswith("@"):
                names[key[1:]] = line.split(" ", 1)[1]
            elif key in ("L", "P", "A", "T", "B", "S"):
                self.features.append(Feature(line))
            elif key in ("OB", "OS", "OC"):
                self.outline(key, line.split()[1:])
        for feature in self.features:
            if feature.symbol is not None:
                feature.symbol = symbols[feature.symbol]
            feature.attributes = {names[number]: value for number, value in feature.attributes.items()}
        self.symbols = set(symbols.values())

    def outline(self, key, f):
        contours = self.features[-1].contours
        if key == "OB":
            contours.append((f[2], [(float(f[0]), float(f[1]))]))
        elif key == "OS":
            contours[-1][1].append((float(f[0]), float(f[1])))
        else:
            points = contours[-1][1]
            points += arc_points(points[-1], (float(f[0]), float(f[1])), (float(f[2]), float(f[3])), f[4] == "Y")

    def count(self):
        return {kind: sum(f.kind == kind for f in self.features) for kind in "LPATBS"}


def arc_points(start, end, centre, clockwise):
    """Points along an arc, without its start; equal ends are a full circle."""
    radius = math.dist(start, centre)
    check(abs(radius - math.dist(end, centre)) < 2 * TOLERANCE, f"arc {start} {end} {centre}: two radii")
    a, b = (math.atan2(p[1] - centre[1], p[0] - centre[0]) for p in (start, end))
    sweep = (a - b if clockwise else b - a) % (2 * math.pi) or 2 * math.pi
    steps = max(4, math.ceil(sweep / math.radians(4)))
    sign = -1 if clockwise else 1
    points = [(centre[0] + radius * math.cos(a + sign * sweep * i / steps),
               centre[1] + radius * math.sin(a + sign * sweep * i / steps)) for i in range(1, steps)]
    return points + [end]


# ---- shapes: (polylines, radius around them, polygon or nothing) ----


def place(points, orientation, at):
    code = int(orientation[0])
    angle = math.radians(float(orientation[1]) if code > 7 else 90 * (code % 4))
    sign = -1 if code in (4, 5, 6, 7, 9) else 1
    c, s = math.cos(angle), math.sin(angle)
    return [(at[0] + sign * (x * c + y * s), at[1] - x * s + y * c) for x, y in points]


def numbers_of(symbol):
    return [int(v) / 1000 for v in re.findall(r"\d+", symbol)]


def shapes(feature, library):
    """The shapes of a feature; a standard symbol neither round nor rectangular counts as a disc around it."""
    if feature.kind == "L":
        return [(feature.points, numbers_of(feature.symbol)[0] / 2, None)]
    if feature.kind == "A":
        start, end, centre = feature.points
        path = [start] + arc_points(start, end, centre, feature.fields[-1] == "Y")
        return [(path, numbers_of(feature.symbol)[0] / 2, None)]
    if feature.kind == "S":
        return [(points, 0.0, points) for letter, points in feature.contours if letter == "I"]
    if feature.kind == "T":
        return [(stroke, width / 2, None) for stroke, width in text_strokes(feature, library)]
    if feature.kind == "B":
        return []
    at, name = feature.points[0], re.match(r"[a-z_]*", feature.symbol)[0]
    sizes, grow = numbers_of(feature.symbol), feature.resize / 1000
    if name in ("s", "rect", "oval"):
        w, h = (v + grow for v in (sizes * 2)[:2])
        if name == "oval":
            r = min(w, h) / 2
            ends = [(-(w / 2 - r), -(h / 2 - r)), (w / 2 - r, h / 2 - r)]
            return [(place(ends, feature.orientation, at), r, None)]
        corners = [(-w / 2, -h / 2), (-w / 2, h / 2), (w / 2, h / 2), (w / 2, -h / 2), (-w / 2, -h / 2)]
        corners = place(corners, feature.orientation, at)
        return [(corners, 0.0, corners)]
    if feature.symbol in library["symbols"]:
        parts = [shape for part in library["symbols"][feature.symbol].features for shape in shapes(part, library)]
        parts = [(place(path, feature.orientation, at), radius, polygon) for path, radius, polygon in parts]
        return [(path, radius, polygon and path) for path, radius, polygon in parts]
    return [([at, at], (sizes[0] + grow) / 2, None)]


def text_strokes(feature, library):
    """(points, width) of every stroke of a text."""
    rest = feature.line.split("'")
    f = rest[0].split()[4:]
    orientation = f[1:3] if int(f[1]) > 7 else f[1:2]
    xsize, ysize, factor = (float(v) for v in f[1 + len(orientation):])
    out = []
    for i, letter in enumerate(rest[1]):
        for stroke in library["strokes"].get(letter, []):
            points = [((x + 0.1) / library["x"] * xsize + i * xsize, (y + 0.1) / library["y"] * ysize) for x, y in stroke]
            out.append((place(points, orientation, feature.points[0]), factor * 0.012))
    return out


def point_segment(p, a, b):
    dx, dy = b[0] - a[0], b[1] - a[1]
    length = dx * dx + dy * dy
    t = 0 if length == 0 else max(0, min(1, ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / length))
    return math.hypot(p[0] - a[0] - t * dx, p[1] - a[1] - t * dy)


def segment_distance(a, b, c, d):
    def side(p, q, r):
        return (q[0] - p[0]) * (r[1] - p[1]) - (q[1] - p[1]) * (r[0] - p[0])

    if side(a, b, c) * side(a, b, d) < 0 and side(c, d, a) * side(c, d, b) < 0:
        return 0.0
    return min(point_segment(a, c, d), point_segment(b, c, d), point_segment(c, a, b), point_segment(d, a, b))


def inside(polygon, p):
    odd = False
    for a, b in zip(polygon, polygon[1:]):
        if (a[1] > p[1]) != (b[1] > p[1]) and p[0] < a[0] + (p[1] - a[1]) * (b[0] - a[0]) / (b[1] - a[1]):
            odd = not odd
    return odd


def gap(one, two):
    """Distance between two shapes, not above 0 when they touch; infinity when they are far apart."""
    (path, r, polygon), (path2, r2, polygon2) = one, two
    for axis in (0, 1):
        low, high = min(p[axis] for p in path) - r, max(p[axis] for p in path) + r
        low2, high2 = min(p[axis] for p in path2) - r2, max(p[axis] for p in path2) + r2
        if low > high2 + 0.05 or low2 > high + 0.05:
            return math.inf
    if polygon and inside(polygon, path2[0]) or polygon2 and inside(polygon2, path[0]):
        return -1.0
    best = min(segment_distance(a, b, c, d) for a, b in zip(path, path[1:]) for c, d in zip(path2, path2[1:]))
    return best - r - r2


def feature_gap(one, two):
    return min((gap(a, b) for a in one for b in two), default=math.inf)


def plane_copper(layer, p):
    """Whether the surface of a plane layer has copper there, after all its negative pads."""
    copper = False
    for feature in layer.features:
        if feature.kind == "S":
            copper = copper or sum(inside(points, p) for _, points in feature.contours) % 2 == 1
        elif feature.kind == "P" and feature.polarity == "N":
            dx, dy = p[0] - feature.points[0][0], p[1] - feature.points[0][1]
            sizes = numbers_of(feature.symbol)
            erased = math.hypot(dx, dy) < sizes[0] / 2
            if feature.symbol.startswith("thr"):  # spokes at 45 degrees and every quarter turn from there
                spoke = min(abs(dx + dy), abs(dx - dy)) / math.sqrt(2) < sizes[4] / 2
                erased = erased and math.hypot(dx, dy) > sizes[1] / 2 and not spoke
            copper = copper and not erased
    return copper


def ring(at, radius):
    return [(at[0] + radius * math.cos(a / 36 * math.pi), at[1] + radius * math.sin(a / 36 * math.pi)) for a in range(72)]


def unpacked(path):
    if path.suffix != ".Z":
        return path.read_text()
    return subprocess.run(["uncompress", "-c"], input=path.read_bytes(), stdout=subprocess.PIPE, check=True).stdout.decode()


class Job:
    def __init__(self, root):
        self.root = root
        font = (root / "fonts/standard").read_text()
        self.library = {"x": float(re.search(r"XSIZE\s+(\S+)", font)[1]), "y": float(re.search(r"YSIZE\s+(\S+)", font)[1])}
        self.library["strokes"] = {}
        for name, body in re.findall(r"CHAR (\S)\n(.*?)ECHAR", font, re.S):
            lines = [[float(v) for v in line.split()[1:5]] for line in body.splitlines()]
            self.library["strokes"][name] = [[(a, b), (c, d)] for a, b, c, d in lines]
        self.matrix = [dict(re.findall(r"(\w+)=(.*)", body))
                       for body in re.findall(r"LAYER \{(.*?)\}", (root / "matrix/matrix").read_text(), re.S)]
        self.library["symbols"] = {path.parent.name: Layer(unpacked(path)) for path in (root / "symbols").glob("*/features*")}
        self.users = set(self.library["symbols"])
        self.steps = {}
        for step in sorted(p for p in (root / "steps").iterdir()):
            self.steps[step.name] = {path.parent.name: Layer(path.read_text())
                                     for path in sorted((step / "layers").glob("*/features"))}
        self.pcb = self.steps["pcb"]
        self.read_eda((root / "steps/pcb/eda/data").read_text())
        self.components = {side: self.read_components((root / f"steps/pcb/layers/comp_+_{name}/components").read_text())
                           for side, name in (("T", "top"), ("B", "bot"))}
        text = (root / "steps/pcb/netlists/cadnet/netlist").read_text()
        self.netlist_names = dict((int(n), name) for n, name in re.findall(r"^\$(\d+) (\S+)", text, re.M))
        self.points = [line.split() for line in re.findall(r"^\d.*", text, re.M)]

    def read_eda(self, text):
        """Nets as lists of (header, [(layer, feature number)]); packages as pin lists."""
        self.nets, self.packages, self.eda_layers = [], [], []
        for line in text.splitlines():
            f = line.split()
            if line.startswith("LYR"):
                self.eda_layers = f[1:]
            elif line.startswith("NET "):
                self.nets.append((f[1], []))
            elif line.startswith("SNT "):
                self.nets[-1][1].append((f[1:], []))
            elif line.startswith("FID "):
                layer = self.eda_layers[int(f[2])]
                kind = {"drill": "H", "top": "C", "gnd": "C", "pwr": "C", "bot": "C"}.get(layer, "L")
                check(f[1] == kind, f"{line}: kind should be {kind}")
                known = int(f[3]) < len(self.pcb[layer].features)
                check(known, f"{line}: no such feature on {layer}")
                if known:
                    self.nets[-1][1][-1][1].append((layer, int(f[3])))
            elif line.startswith("PKG "):
                self.packages.append([])
            elif line.startswith("PIN "):
                self.packages[-1].append((f[1], float(f[3]), float(f[4])))

    @staticmethod
    def read_components(text):
        components = []
        for line in text.splitlines():
            f = line.split()
            if line.startswith("CMP "):
                components.append((f, []))
            elif line.startswith("TOP "):
                components[-1][1].append(f)
        return components

    # ---- checks ----

    def check_names(self):
        board = {row["NAME"].lower() for row in self.matrix}
        for step, layers in self.steps.items():
            check(set(layers) <= board, f"{step}: layers that the matrix does not name")
            for name, layer in layers.items():
                for symbol in layer.symbols - self.users:
                    check(re.fullmatch(r"(r|s|di|tri|rect|oval|thr|donut_[rs])\d[\dxrc]*", symbol), f"{name}: {symbol}?")
        used = set().union(*(layer.symbols for layers in self.steps.values() for layer in layers.values()))
        check(self.users <= used, "a user symbol is never used")
        crlf = [str(p.relative_to(self.root)) for p in self.root.rglob("features") if b"\r" in p.read_bytes()]
        check(crlf == ["steps/pcb/layers/ssb/features"], f"CRLF in {crlf}")
        check(list(self.root.rglob("features.Z")), "no compressed file")

    def check_components(self):
        for side, components in self.components.items():
            for number, (cmp, tops) in enumerate(components):
                x, y, angle = (float(v) for v in cmp[2:5])
                turning = ["9" if side == "B" else "8", angle]
                package = self.packages[int(cmp[1])]
                check(len(tops) == len(package), f"{cmp[6]}: pins")
                for top, (name, px, py) in zip(tops, package):
                    at = (float(top[2]), float(top[3]))
                    placed = place([(px, py)], turning, (x, y))[0]
                    check(math.dist(at, placed) < TOLERANCE, f"{cmp[6]}.{name}: place {at}, should be {placed}")
                    check(top[8] == name, f"{cmp[6]}.{name}: name {top[8]}")
                    header, fids = self.nets[int(top[6])][1][int(top[7])]
                    check(header == ["TOP", side, str(number), top[1]], f"{cmp[6]}.{name}: subnet {header}")
                    outer = "bot" if side == "B" else "top"
                    check({outer, "smb" if side == "B" else "smt"} <= {layer for layer, _ in fids}, f"{cmp[6]}.{name}: pads")
                    for layer, i in fids:
                        pad = self.pcb[layer].features[i]
                        check(math.dist(pad.points[0], at) < TOLERANCE, f"{cmp[6]}.{name}: {layer}")
                        if ".smd" in pad.attributes or layer in ("spt", "spb"):
                            turned = (place([(1, 0)], way, (0, 0))[0] for way in (pad.orientation, turning))
                            flipped = (int(pad.orientation[0]) in (4, 5, 6, 7, 9)) == (side == "B")
                            check(flipped and math.dist(*turned) < TOLERANCE, f"{cmp[6]}.{name}: {layer} orientation")

    def copper(self):
        """Per signal layer: (net name or None, feature, shapes, feature number) of every feature."""
        owner = {}
        for name, subnets in self.nets:
            for header, fids in subnets:
                for layer, i in fids:
                    check((layer, i) not in owner, f"{layer} {i}: in two subnets")
                    owner[layer, i] = name
        return {layer: [(owner.get((layer, i)), f, shapes(f, self.library), i) for i, f in enumerate(self.pcb[layer].features)]
                for layer in ("top", "gnd", "pwr", "bot")}

    def check_copper(self):
        copper = self.copper()
        parent = {}

        def find(key):
            while parent.setdefault(key, key) != key:
                key = parent[key]
            return key

        for layer, items in copper.items():
            plane = layer in ("gnd", "pwr")
            items = [item for item in items if item[1].polarity == "P" and not (plane and item[1].kind == "S")]
            for n, (net, feature, shape, i) in enumerate(items):
                find((net, layer, i))
                for net2, feature2, shape2, j in items[n + 1:]:
                    distance = feature_gap(shape, shape2)
                    if net == net2 and distance <= 0:
                        parent[find((net, layer, i))] = find((net, layer, j))
                    elif net != net2:
                        check(distance >= CLEARANCE, f"{layer}: {net} {feature.line} and {net2} {feature2.line}: {distance}")
                if feature.kind in "LA" and net is not None:
                    for end in feature.points[:2]:
                        joined = any(other is not feature and other_net == net and
                                     min(math.dist(end, p) for p in other.points[:1 if other.kind == "P" else 2]) < TOLERANCE
                                     for other_net, other, _, _ in items if other.kind in "PLA")
                        check(joined, f"{layer}: {net} {feature.line}: loose end {end}")
            if plane:
                self.check_plane(layer, items, copper[layer], parent, find)
        # A plated hole joins what lies around it on all layers.
        for hole in self.pcb["drill"].features:
            if hole.attributes[".drill"] == "1":
                continue
            keys = [(net, layer, i) for layer, items in copper.items() for net, f, _, i in items
                    if f.kind == "P" and f.polarity == "P" and math.dist(f.points[0], hole.points[0]) < TOLERANCE]
            check(len(keys) == 4 and len({k[0] for k in keys}) == 1, f"hole {hole.line}: pads {keys}")
            for key in keys[1:]:
                parent[find(key)] = find(keys[0])
        for name, _ in self.nets:
            groups = {find(key) for key in list(parent) if key[0] == name}
            check(name == "$NONE$" or len(groups) == 1, f"net {name}: in {len(groups)} pieces")

    def check_plane(self, layer, pads, items, parent, find):
        net, _, _, surface = next(item for item in items if item[1].kind == "S")
        find((net, layer, surface))
        for pad_net, feature, _, i in pads:
            radius = numbers_of(feature.symbol)[0] / 2
            if pad_net == net:
                touching = any(plane_copper(self.pcb[layer], p) for p in ring(feature.points[0], radius + 0.008))
                check(touching, f"{layer}: {feature.line} does not reach the plane")
                parent[find((net, layer, i))] = find((net, layer, surface))
            else:
                for grow in (-0.004, 0, CLEARANCE):
                    free = not any(plane_copper(self.pcb[layer], p) for p in ring(feature.points[0], radius + grow))
                    check(free, f"{layer}: {pad_net} {feature.line} too near to the plane")
        for hole in self.pcb["drill"].features:
            if hole.attributes[".drill"] == "1":
                near = ring(hole.points[0], numbers_of(hole.symbol)[0] / 2 + CLEARANCE)
                check(not any(plane_copper(self.pcb[layer], p) for p in near), f"{layer}: copper at hole {hole.line}")

    def check_vias(self):
        holes = {f.points[0] for f in self.pcb["drill"].features if f.attributes[".drill"] == "2"}
        for layer in ("top", "gnd", "pwr", "bot"):
            vias = {f.points[0] for f in self.pcb[layer].features if f.attributes.get(".pad_usage") == "1"}
            check(vias == holes, f"{layer}: vias and holes differ: {vias ^ holes}")

    def check_netlist(self):
        check(self.netlist_names == dict(enumerate(name for name, _ in self.nets)), "netlist: other nets than the EDA data")
        pads = {}
        for name, subnets in self.nets:
            for header, fids in subnets:
                if header[0] in ("TOP", "VIA"):
                    layer, i = next(fid for fid in fids if fid[0] in ("top", "bot"))
                    pads[self.pcb[layer].features[i].points[0]] = name
        points = {(float(f[2]), float(f[3])): self.netlist_names[int(f[0])] for f in self.points}
        check(points == pads and len(points) == len(self.points), "netlist: points and pads differ")

    def check_silk(self):
        """Silk keeps off the mask openings of its side."""
        for silk, mask in (("sst", "smt"), ("ssb", "smb")):
            openings = [shapes(f, self.library) for f in self.pcb[mask].features]
            for feature in self.pcb[silk].features:
                for opening in openings:
                    check(feature_gap(shapes(feature, self.library), opening) > 0, f"{silk}: {feature.line} on an opening")

    def report(self):
        for step, layers in self.steps.items():
            print(f"{step:8}{'L':>5}{'P':>5}{'A':>5}{'T':>5}{'B':>5}{'S':>5}")
            for name, layer in layers.items():
                print(f"  {name:6}" + "".join(f"{n:5}" for n in layer.count().values()))
        print(f"nets {len(self.nets)}, subnets {sum(len(s) for _, s in self.nets)}, packages {len(self.packages)}, "
              f"components {len(self.components['T'])} top {len(self.components['B'])} bottom, "
              f"netlist points {len(self.points)}, characters {len(self.library['strokes'])}")


def main():
    job = Job(Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent / "blinker")
    for part in (job.check_names, job.check_components, job.check_copper, job.check_vias, job.check_netlist, job.check_silk):
        part()
    job.report()
    for finding in FINDINGS:
        print(finding, file=sys.stderr)
    sys.exit(1 if FINDINGS else 0)


if __name__ == "__main__":
    main()
