#!/usr/bin/env python3
"""Write the sample job `blinker`: a four-layer board with six LEDs, and its panel.

Usage: make_sample.py [directory]     (default: the folder `blinker` beside this script)

The board is described once, as components, traces, vias and planes; every file of the job follows from
that. Dates are fixed and nothing is random, so that two runs write the same bytes. All lengths are inches,
symbol sizes mils; angles turn clockwise, as in the job, except where a name says `ccw`.

Needs `compress` (Debian package ncompress) for the one symbol that is stored compressed.
"""

import math
import re
import shutil
import subprocess
import sys
from pathlib import Path

DATE = "20260105.090000"
WIDTH, HEIGHT, CORNER = 1.6, 1.0, 0.1
SLOT = (1.53, 0.345, 0.655, 0.05)  # centre x, lower and upper centre y, width
MOUNTS = [(0.12, 0.12), (1.48, 0.12), (0.12, 0.88), (1.48, 0.88)]
FIDUCIALS = [(0.75, 0.1), (0.98, 0.9)]
COPPER = ["top", "gnd", "pwr", "bot"]
VIA_DRILL, VIA_PAD, VIA_ANTIPAD = 12, 24, 44

# name, context, type, start, end; in build order
MATRIX_LAYERS = [
    ("comp_+_top", "BOARD", "COMPONENT", "", ""),
    ("sst", "BOARD", "SILK_SCREEN", "", ""),
    ("spt", "BOARD", "SOLDER_PASTE", "", ""),
    ("smt", "BOARD", "SOLDER_MASK", "", ""),
    ("top", "BOARD", "SIGNAL", "", ""),
    ("diel_1", "BOARD", "DIELECTRIC", "", ""),
    ("gnd", "BOARD", "POWER_GROUND", "", ""),
    ("diel_2", "BOARD", "DIELECTRIC", "", ""),
    ("pwr", "BOARD", "POWER_GROUND", "", ""),
    ("diel_3", "BOARD", "DIELECTRIC", "", ""),
    ("bot", "BOARD", "SIGNAL", "", ""),
    ("smb", "BOARD", "SOLDER_MASK", "", ""),
    ("spb", "BOARD", "SOLDER_PASTE", "", ""),
    ("ssb", "BOARD", "SILK_SCREEN", "", ""),
    ("comp_+_bot", "BOARD", "COMPONENT", "", ""),
    ("drill", "BOARD", "DRILL", "TOP", "BOT"),
    ("rout", "BOARD", "ROUT", "TOP", "BOT"),
    ("notes", "MISC", "DOCUMENT", "", ""),
]

# Layers that eda/data refers to, in the order of its LYR line, with the kind letter of their FID records.
EDA_LAYERS = {"top": "C", "gnd": "C", "pwr": "C", "bot": "C", "drill": "H", "smt": "L", "smb": "L", "spt": "L",
              "spb": "L"}

# Strokes of our own on a grid of 5 x 7 points, given as two digits: column 0 to 4, row 0 to 6.
GLYPHS = {
    "!": "26 22|20 20", '"': "15 16|35 36", "#": "10 16|30 36|02 42|04 44", "%": "00 46|15 15|31 31",
    "(": "36 24 22 30", ")": "16 24 22 10", "*": "11 35|31 15|03 43", "+": "13 33|22 24", ",": "21 10",
    "-": "13 33", ".": "20 20", "/": "00 46", ":": "21 21|24 24", "<": "45 03 41", "=": "12 32|14 34",
    ">": "05 43 01", "?": "05 16 36 45 44 22|20 20", "_": "00 40",
    "0": "10 30 41 45 36 16 05 01 10|01 45", "1": "05 26 20|00 40", "2": "05 16 36 45 44 00 40",
    "3": "05 16 36 45 44 33 42 41 30 10 01|13 33", "4": "30 36 02 42", "5": "46 06 03 33 42 41 30 10 01",
    "6": "45 36 16 05 01 10 30 41 42 33 13 02", "7": "06 46 10",
    "8": "13 04 05 16 36 45 44 33 13 02 01 10 30 41 42 33", "9": "01 10 30 41 45 36 16 05 04 13 33 44",
    "A": "00 04 26 44 40|02 42", "B": "00 06 36 45 44 33 03|33 42 41 30 00", "C": "45 36 16 05 01 10 30 41",
    "D": "00 06 26 44 42 20 00", "E": "46 06 00 40|03 33", "F": "46 06 00|03 33",
    "G": "45 36 16 05 01 10 30 41 43 23", "H": "00 06|40 46|03 43", "I": "10 30|16 36|20 26",
    "J": "01 10 20 31 36", "K": "00 06|46 02|13 40", "L": "06 00 40", "M": "00 06 23 46 40", "N": "00 06 40 46",
    "O": "10 30 41 45 36 16 05 01 10", "P": "00 06 36 45 44 33 03", "Q": "10 30 41 45 36 16 05 01 10|22 40",
    "R": "00 06 36 45 44 33 03|23 40", "S": "45 36 16 05 04 13 33 42 41 30 10 01", "T": "06 46|20 26",
    "U": "06 01 10 30 41 46", "V": "06 20 46", "W": "06 10 23 30 46", "X": "00 46|06 40", "Y": "06 23 46|23 20",
    "Z": "06 46 00 40",
}


def num(value):
    """A number without needless digits: 0.5, not 0.500000; 0, not -0."""
    text = f"{value:.6f}".rstrip("0").rstrip(".")
    return "0" if text == "-0" else text


def nums(*values):
    return " ".join(num(v) for v in values)


def turn(x, y, angle, mirrored=False):
    """The point turned clockwise, then reflected in the y axis when mirrored."""
    a = math.radians(angle)
    tx, ty = x * math.cos(a) + y * math.sin(a), -x * math.sin(a) + y * math.cos(a)
    return (-tx if mirrored else tx), ty


def polar(centre, radius, ccw):
    a = math.radians(ccw)
    return round(centre[0] + radius * math.cos(a), 6), round(centre[1] + radius * math.sin(a), 6)


def orientation(angle, mirrored=False):
    """The orientation code: 0 to 3 for quarter turns, 4 more when mirrored; 8 or 9 with an angle otherwise."""
    angle %= 360
    if angle % 90 == 0:
        return str(int(angle // 90) + (4 if mirrored else 0))
    return f"{9 if mirrored else 8} {num(angle)}"


# ---- contours: (letter, start point, elements); an element is ("S", x, y) or ("C", x, y, cx, cy, clockwise) ----


def circle(cx, cy, radius, hole):
    return "H" if hole else "I", (cx + radius, cy), [("C", cx + radius, cy, cx, cy, "N" if hole else "Y")]


def polygon(points):
    """An island; its points run clockwise."""
    return "I", points[0], [("S", *p) for p in points[1:] + points[:1]]


def rounded_rect(x0, y0, x1, y1, r):
    return "I", (x0, y0 + r), [
        ("S", x0, y1 - r), ("C", x0 + r, y1, x0 + r, y1 - r, "Y"), ("S", x1 - r, y1),
        ("C", x1, y1 - r, x1 - r, y1 - r, "Y"), ("S", x1, y0 + r), ("C", x1 - r, y0, x1 - r, y0 + r, "Y"),
        ("S", x0 + r, y0), ("C", x0, y0 + r, x0 + r, y0 + r, "Y")]


def slot_hole(grow=0.0):
    x, low, high, width = SLOT
    r = width / 2 + grow
    return "H", (x + r, low), [
        ("S", x + r, high), ("C", x - r, high, x, high, "N"), ("S", x - r, low), ("C", x + r, low, x, low, "N")]


def thermal_holes(cx, cy, inner, outer, spoke):
    """Four ring pieces around a pad; what stays between them are the spokes, along the axes."""
    holes = []
    half_in, half_out = (math.degrees(math.asin(spoke / 2 / r)) for r in (inner, outer))
    for quarter in (0, 90, 180, 270):
        a, b = polar((cx, cy), outer, quarter + half_out), polar((cx, cy), outer, quarter + 90 - half_out)
        c, d = polar((cx, cy), inner, quarter + 90 - half_in), polar((cx, cy), inner, quarter + half_in)
        holes.append(("H", a, [("C", *b, cx, cy, "N"), ("S", *c), ("C", *d, cx, cy, "Y"), ("S", *a)]))
    return holes


class FeatureFile:
    """One features file: its tables and its records, in file order."""

    def __init__(self):
        self.symbols, self.attributes, self.texts = {}, {}, {}
        self.lines, self.count = [], 0

    def symbol(self, name):
        return self.symbols.setdefault(name, len(self.symbols))

    def tail(self, attributes):
        """Flags (True) stand alone, numbers are written as they are, texts through the text table."""
        items = []
        for name, value in (attributes or {}).items():
            number = self.attributes.setdefault(name, len(self.attributes))
            if value is True:
                items.append(str(number))
            elif isinstance(value, str):
                items.append(f"{number}={self.texts.setdefault(value, len(self.texts))}")
            else:
                items.append(f"{number}={num(value)}")
        return ";" + ",".join(items) if items else ""

    def add(self, line, attributes=None):
        """Append a record; the result is its feature number."""
        self.lines.append(line + self.tail(attributes))
        self.count += 1
        return self.count - 1

    def line(self, a, b, symbol, attributes=None):
        return self.add(f"L {nums(*a, *b)} {self.symbol(symbol)} P 0", attributes)

    def lines_through(self, points, symbol, attributes=None):
        return [self.line(a, b, symbol, attributes) for a, b in zip(points, points[1:])]

    def pad(self, at, symbol, attributes=None, polarity="P", angle=0, mirrored=False, resize=None):
        """A pad; with a resize, the symbol grown by so many mils."""
        number = self.symbol(symbol)
        shape = number if resize is None else f"-1 {number} {num(resize)}"
        return self.add(f"P {nums(*at)} {shape} {polarity} 0 {orientation(angle, mirrored)}", attributes)

    def arc(self, a, b, centre, symbol, attributes=None, clockwise=True):
        return self.add(f"A {nums(*a, *b, *centre)} {self.symbol(symbol)} P 0 {'Y' if clockwise else 'N'}", attributes)

    def text(self, at, text, size, angle=0, mirrored=False, polarity="P", stroke=6, attributes=None):
        """A text whose first character has its lower left corner there; the stroke is in mils."""
        assert all(c == " " or c in GLYPHS for c in text), text
        return self.add(f"T {nums(*at)} standard {polarity} {orientation(angle, mirrored)} {nums(size, size)} "
                        f"{num(stroke / 12)} '{text}' 1", attributes)

    def barcode(self, at, text, element, height, mirrored=False):
        return self.add(f"B {nums(*at)} UPC39 standard P {orientation(0, mirrored)} E {nums(element, height)} "
                        f"N N N Y B '{text}'")

    def surface(self, contours, attributes=None):
        index = self.add("S P 0", attributes)
        for letter, start, elements in contours:
            self.lines.append(f"OB {nums(*start)} {letter}")
            for element in elements:
                if element[0] == "S":
                    self.lines.append(f"OS {nums(*element[1:])}")
                else:
                    self.lines.append(f"OC {nums(*element[1:5])} {element[5]}")
            self.lines.append("OE")
        self.lines.append("SE")
        return index

    def render(self):
        out = ["#", "#Units", "#", "U INCH", ""]
        for title, sign, table in (("Feature symbol names", "$", self.symbols),
                                   ("Feature attribute names", "@", self.attributes),
                                   ("Feature attribute text strings", "&", self.texts)):
            if table:
                out += ["#", f"#{title}", "#"] + [f"{sign}{i} {name}" for name, i in table.items()] + [""]
        out += ["#", "#Layer features", "#"] + self.lines
        return "\n".join(out) + "\n"


class Pin:
    def __init__(self, name, x, y, symbol, shape, hole=0):
        """`shape` is the outline line of the pin; a hole (mils) makes it a through-hole pin."""
        self.name, self.x, self.y, self.symbol, self.shape, self.hole = name, x, y, symbol, shape, hole


class Package:
    def __init__(self, number, name, pitch, box, outline, pins):
        self.number, self.name, self.pitch, self.box, self.outline, self.pins = number, name, pitch, box, outline, pins


class Net:
    def __init__(self, number, name):
        self.number, self.name, self.subnets, self.points = number, name, [], []

    def subnet(self, header):
        """A new subnet; what is returned is its list of (layer, feature number)."""
        self.subnets.append((header, []))
        return self.subnets[-1][1]


def rect_outline(cx, cy, w, h):
    return f"RC {nums(cx - w / 2, cy - h / 2, w, h)}"


def two_pads(number, name, pitch, symbol, w, h, body, outline, names=("1", "2")):
    pins = [Pin(n, x, 0, symbol, rect_outline(x, 0, w, h)) for n, x in zip(names, (-pitch / 2, pitch / 2))]
    half_x, half_y = max(pitch + w, body[0]) / 2, max(h, body[1]) / 2
    return Package(number, name, pitch, (-half_x, -half_y, half_x, half_y), outline, pins)


def make_packages():
    places = [(-0.106, 0.15 - 0.05 * i) for i in range(7)] + [(0.106, -0.15 + 0.05 * i) for i in range(7)]
    soic = [Pin(str(i + 1), x, y, "oval60x24" if i else "rect60x24", rect_outline(x, y, 0.06, 0.024))
            for i, (x, y) in enumerate(places)]
    header = [Pin("1", 0, 0.15, "s62", f"SQ {nums(0, 0.15, 0.031)}", 40)]
    header += [Pin(str(i + 1), 0, 0.15 - 0.1 * i, "r62", f"CR {nums(0, 0.15 - 0.1 * i, 0.031)}", 40)
               for i in range(1, 4)]
    resonator = [Pin(str(i + 1), x, 0, "rect16x60", rect_outline(x, 0, 0.016, 0.06))
                 for i, x in enumerate((-0.047, 0, 0.047))]
    tantalum = ["CT", "OB -0.063 0.0315 I", "OS 0.063 0.0315", "OS 0.063 -0.0315", "OS -0.048 -0.0315",
                "OS -0.063 -0.0165", "OS -0.063 0.0315", "OE", "CE"]
    led = ["CT", "OB -0.04 0.025 I", "OS 0.04 0.025", "OS 0.04 0.01", "OC 0.04 -0.01 0.04 0 N", "OS 0.04 -0.025",
           "OS -0.04 -0.025", "OS -0.04 0.025", "OE", "CE"]
    chip = (0.063, 0.031)
    return [
        Package(0, "SOIC14", 0.05, (-0.136, -0.172, 0.136, 0.172), [rect_outline(0, 0, 0.154, 0.344)], soic),
        Package(1, "HDR1X4", 0.1, (-0.05, -0.2, 0.05, 0.2), [rect_outline(0, 0, 0.1, 0.4)], header),
        two_pads(2, "RES0603", 0.063, "rect32x34", 0.032, 0.034, chip, [rect_outline(0, 0, *chip)]),
        two_pads(3, "CAP0603", 0.063, "rect32x34", 0.032, 0.034, chip, [rect_outline(0, 0, *chip)]),
        two_pads(4, "CAPT3216", 0.11, "rect50x60", 0.05, 0.06, (0.126, 0.063), tantalum),
        two_pads(5, "LED0805", 0.082, "rect40x50xr8", 0.04, 0.05, (0.08, 0.05), led, ("A", "K")),
        Package(6, "RESON3P", 0.047, (-0.063, -0.03, 0.063, 0.03), [rect_outline(0, 0, 0.126, 0.051)], resonator),
        two_pads(7, "TACT2P", 0.22, "rect50x60xc8x13", 0.05, 0.06, (0.17, 0.14),
                 [rect_outline(0, 0, 0.17, 0.14), "CR 0 0 0.045"]),
    ]


SOIC, HEADER, RES, CAP, TANTAL, LED, RESON, TACT = range(8)
LED_CENTRE = (0.62, 0.475)
LED_ANGLES = [31.25, 18.75, 6.25, -6.25, -18.75, -31.25]  # counter-clockwise, LED 1 first
RESISTOR_RADIUS, LED_RADIUS = 0.44, 0.7


class Part:
    def __init__(self, side, ref, package, part, x, y, rotation, nets, properties, height):
        self.side, self.ref, self.package, self.part = side, ref, package, part
        self.x, self.y, self.rotation, self.mirrored = x, y, rotation, side == "D"
        self.nets, self.properties, self.height = nets, properties, height
        self.tops = []  # of each pin: place, net number, subnet number, name

    def place(self, dx, dy):
        """Where a point of the package comes to lie on the board."""
        tx, ty = turn(dx, dy, self.rotation, self.mirrored)
        return round(self.x + tx, 6), round(self.y + ty, 6)


def make_parts():
    leds = [f"LED{i}" for i in range(1, 7)]
    u1 = ["VCC", "XT1", "XT2", "RST", "BTN", "OUT", "$NONE$"] + leds[::-1] + ["GND"]
    parts = [
        Part("T", "U1", SOIC, "MCU14-BLK", 0.62, 0.5, 0, u1, {"VALUE": "8 BIT, 14 PINS"}, 0.069),
        Part("T", "J1", HEADER, "HDR-1X4-2.54", 0.14, 0.5, 0, ["VCC", "GND", "RST", "OUT"], {"VALUE": "HEADER"}, 0.335),
        Part("T", "C1", CAP, "CAP-100N-0603", 0.5455, 0.76, 0, ["VCC", "GND"], {"VALUE": "100N"}, 0.032),
        Part("T", "C2", TANTAL, "CAP-10U-3216", 0.36, 0.86, 0, ["VCC", "GND"],
             {"VALUE": "10U 10V", "ALT_SYMBOLS": "CAP-22U-3216"}, 0.063),
        Part("T", "Y1", RESON, "RESON-8M", 0.38, 0.575, 90, ["XT1", "GND", "XT2"], {"VALUE": "8 MHZ"}, 0.04),
        Part("T", "SW1", TACT, "TACT-6X6", 0.36, 0.19, 0, ["BTN", "GND"], {"VALUE": "RATE"}, 0.17),
    ]
    for i, ccw in enumerate(LED_ANGLES):
        parts.append(Part("T", f"R{i + 1}", RES, "RES-470R-0603", *polar(LED_CENTRE, RESISTOR_RADIUS, ccw), -ccw % 360,
                          [leds[i], f"A{i + 1}"], {"VALUE": "470R"}, 0.02))
    for i, ccw in enumerate(LED_ANGLES):
        colour = "GREEN" if i % 2 else "RED"
        parts.append(Part("T", f"D{i + 1}", LED, f"LED-{colour}-0805", *polar(LED_CENTRE, LED_RADIUS, ccw), -ccw % 360,
                          [f"A{i + 1}", "GND"], {"VALUE": colour}, 0.043))
    return parts + [
        Part("D", "C3", CAP, "CAP-100N-0603", 0.62, 0.6, 180, ["VCC", "GND"], {"VALUE": "100N"}, 0.032),
        Part("D", "R7", RES, "RES-10K-0603", 0.26, 0.6, 270, ["RST", "VCC"], {"VALUE": "10K"}, 0.02),
        Part("D", "R8", RES, "RES-10K-0603", 0.35, 0.25, 135, ["BTN", "VCC"], {"VALUE": "10K"}, 0.02),
    ]


CATHODE_RADIUS = LED_RADIUS + 0.041
VIAS = [("GND", at) for at in [(0.32, 0.575), (0.6515, 0.66), (0.63, 0.76), (0.53, 0.19), (0.48, 0.86)]]
VIAS += [("GND", polar(LED_CENTRE, CATHODE_RADIUS, (a + b) / 2)) for a, b in zip(LED_ANGLES, LED_ANGLES[1:])]
VIAS += [("VCC", at) for at in [(0.5885, 0.66), (0.26, 0.7), (0.4, 0.27)]]
VIAS += [("RST", (0.26, 0.5)), ("BTN", (0.44, 0.45)), ("BTN", (0.25, 0.26))]


def symbol_size(symbol):
    """The letters of a symbol name, its width and height in mils, and what follows them."""
    head, width, height, rest = re.fullmatch(r"([a-z]+)(\d+)(?:x(\d+))?(.*)", symbol).groups()
    return head, int(width), int(height) if height else None, rest


def grown(symbol, by):
    """The symbol name with its sizes grown by so many mils, corners kept."""
    head, width, height, rest = symbol_size(symbol)
    return f"{head}{width + by}" + (f"x{height + by}" if height else "") + rest


def pad_box(symbol, rotation):
    """Width and height of the pad's bounding box on the board."""
    _, w, h, _ = symbol_size(symbol)
    s, c = abs(math.sin(math.radians(rotation))), abs(math.cos(math.radians(rotation)))
    return (w * c + h * s) / 1000, (w * s + h * c) / 1000


class Board:
    """The step `pcb`, built in the order in which its layers must hold their records."""

    def __init__(self):
        self.packages, self.parts = make_packages(), make_parts()
        self.pins = {(part.ref, pin.name): part.place(pin.x, pin.y)
                     for part in self.parts for pin in self.packages[part.package].pins}
        self.layers = {row[0]: FeatureFile() for row in MATRIX_LAYERS if row[2] != "COMPONENT"}
        names = ["$NONE$", "GND", "VCC", "RST", "OUT", "BTN", "XT1", "XT2"]
        names += [f"LED{i}" for i in range(1, 7)] + [f"A{i}" for i in range(1, 7)]
        self.nets = {name: Net(i, name) for i, name in enumerate(names)}
        self.planes()
        self.place_parts()
        self.place_vias()
        self.route()
        self.copper_extras()
        self.drill_and_rout()
        self.silk_top()
        self.silk_bottom()
        self.notes()

    def side(self, side):
        return [part for part in self.parts if part.side == side]

    def header_pins(self):
        """(net, place) of every plated pin hole."""
        for part in self.parts:
            for pin, net in zip(self.packages[part.package].pins, part.nets):
                if pin.hole:
                    yield net, self.pins[part.ref, pin.name]

    def planes(self):
        """GND is one surface with holes; PWR a surface out of which negative pads cut the clearances."""
        outline = rounded_rect(0.02, 0.02, WIDTH - 0.02, HEIGHT - 0.02, CORNER - 0.02)
        holes = [slot_hole(0.012)] + [circle(*at, 0.065, True) for at in MOUNTS]
        for net, at in self.header_pins():
            holes += thermal_holes(*at, 0.033, 0.047, 0.012) if net == "GND" else [circle(*at, 0.041, True)]
        holes += [circle(*at, VIA_ANTIPAD / 2000, True) for net, at in VIAS if net != "GND"]
        gnd, pwr = self.layers["gnd"], self.layers["pwr"]
        self.nets["GND"].subnet("PLN S E 0").append(("gnd", gnd.surface([outline] + holes)))
        gnd.text((0.84, 0.45), "L2 GND", 0.06, polarity="N", stroke=10)

        self.nets["VCC"].subnet("PLN S C 0").append(("pwr", pwr.surface([outline, slot_hole(0.012)])))
        for at in MOUNTS:
            pwr.pad(at, "r130", polarity="N")
        for net, at in self.header_pins():
            pwr.pad(at, "thr94x66x45x4x12" if net == "VCC" else "r82", polarity="N")
        for net, at in VIAS:
            if net != "VCC":
                pwr.pad(at, f"r{VIA_ANTIPAD}", polarity="N")
        pwr.text((0.84, 0.45), "L3 VCC", 0.06, polarity="N", stroke=10)

        board = rounded_rect(0, 0, WIDTH, HEIGHT, CORNER)
        for name in ("diel_1", "diel_2", "diel_3"):
            self.layers[name].surface([board, slot_hole()])

    def place_parts(self):
        for side, eda_side in (("T", "T"), ("D", "B")):
            for number, part in enumerate(self.side(side)):
                for i, (pin, name) in enumerate(zip(self.packages[part.package].pins, part.nets)):
                    net, at = self.nets[name], self.pins[part.ref, pin.name]
                    part.tops.append((at, net.number, len(net.subnets), pin.name))
                    fids = net.subnet(f"TOP {eda_side} {number} {i}")
                    if pin.hole:
                        self.through_pin(pin, at, net, fids)
                    else:
                        self.surface_pin(pin, at, part, net, fids)

    def through_pin(self, pin, at, net, fids):
        """Inner layers have round pads, whatever the outer ones look like."""
        attributes = {".pad_usage": 0, ".geometry": f"PIN{pin.symbol.upper()}-{pin.hole}"}
        inner = f"r{pin.symbol[1:]}"
        fids.append(("drill", self.layers["drill"].pad(at, f"r{pin.hole}", {".drill": 0})))
        for name in COPPER:
            symbol = pin.symbol if name in ("top", "bot") else inner
            fids.append((name, self.layers[name].pad(at, symbol, attributes)))
        fids.append(("smt", self.layers["smt"].pad(at, grown(pin.symbol, 4))))
        fids.append(("smb", self.layers["smb"].pad(at, pin.symbol, resize=4)))
        net.points.append(f"{num(pin.hole / 2000)} {nums(*at)} B e e staggered 0 0 0")

    def surface_pin(self, pin, at, part, net, fids):
        """The top names the grown mask symbol and shrinks the paste; the bottom grows the mask."""
        copper, mask, paste = ("bot", "smb", "spb") if part.mirrored else ("top", "smt", "spt")
        turned = {"angle": part.rotation, "mirrored": part.mirrored}
        fids.append((copper, self.layers[copper].pad(at, pin.symbol, {".smd": True, ".pad_usage": 0}, **turned)))
        if part.mirrored:
            fids.append((mask, self.layers[mask].pad(at, pin.symbol, resize=4, **turned)))
            fids.append((paste, self.layers[paste].pad(at, pin.symbol, **turned)))
        else:
            fids.append((mask, self.layers[mask].pad(at, grown(pin.symbol, 4), **turned)))
            fids.append((paste, self.layers[paste].pad(at, pin.symbol, resize=-4, **turned)))
        net.points.append(f"0 {nums(*at)} {part.side} {nums(*pad_box(pin.symbol, part.rotation))} e e staggered 0 0 0")

    def place_vias(self):
        attributes = {".pad_usage": 1, ".geometry": f"VIA{VIA_PAD}-{VIA_DRILL}"}
        for name, at in VIAS:
            fids = self.nets[name].subnet("VIA")
            fids.append(("drill", self.layers["drill"].pad(at, f"r{VIA_DRILL}", {".drill": 2})))
            fids += [(layer, self.layers[layer].pad(at, f"r{VIA_PAD}", attributes)) for layer in COPPER]
            self.nets[name].points.append(f"{num(VIA_DRILL / 2000)} {nums(*at)} B e c staggered 0 0 0 v")

    def trace(self, net, layer, points, width=8, attributes=None):
        fids = self.nets[net].subnet("TRC")
        fids += [(layer, i) for i in self.layers[layer].lines_through(points, f"r{width}", attributes)]

    def route(self):
        top, pins = self.layers["top"], self.pins
        # The supply comes in at J1, spreads over a small pour and goes down to its plane.
        pour = ("I", (0.1, 0.62), [
            ("S", 0.1, 0.69), ("C", 0.12, 0.71, 0.12, 0.69, "Y"), ("S", 0.19, 0.71), ("S", 0.265, 0.785),
            ("S", 0.265, 0.89), ("C", 0.28, 0.905, 0.28, 0.89, "Y"), ("S", 0.33, 0.905),
            ("C", 0.345, 0.89, 0.33, 0.89, "Y"), ("S", 0.345, 0.79), ("S", 0.29, 0.735), ("S", 0.29, 0.67),
            ("S", 0.23, 0.61), ("S", 0.11, 0.61), ("C", 0.1, 0.62, 0.11, 0.62, "Y")])
        self.nets["VCC"].subnet("PLN S R 0").append(("top", top.surface([pour])))
        self.trace("VCC", "top", [pins["U1", "1"], (0.5785, 0.65), (0.5885, 0.66)], 12)
        self.trace("VCC", "top", [pins["U1", "1"], pins["C1", "1"]], 12)
        self.trace("VCC", "bot", [(0.5885, 0.66), pins["C3", "1"]], 12)
        self.trace("VCC", "bot", [pins["R7", "2"], (0.26, 0.7)], 12)
        self.trace("VCC", "bot", [pins["R8", "2"], (0.4, 0.255452), (0.4, 0.27)], 12)
        self.trace("GND", "top", [pins["U1", "14"], (0.6615, 0.65), (0.6515, 0.66)], 12)
        self.trace("GND", "top", [pins["C1", "2"], (0.63, 0.76)], 12)
        self.trace("GND", "top", [pins["Y1", "2"], (0.32, 0.575)], 12)
        self.trace("GND", "top", [pins["SW1", "2"], (0.53, 0.19)], 12)
        self.trace("GND", "top", [pins["C2", "2"], (0.48, 0.86)], 12)
        self.trace("GND", "bot", [(0.6515, 0.66), pins["C3", "2"]], 12)
        self.trace("RST", "top", [pins["U1", "4"], (0.26, 0.5), (0.21, 0.45), pins["J1", "3"]])
        self.trace("RST", "bot", [(0.26, 0.5), pins["R7", "1"]])
        self.trace("OUT", "top", [pins["U1", "6"], (0.38, 0.4), (0.33, 0.35), pins["J1", "4"]])
        self.trace("BTN", "top", [pins["U1", "5"], (0.44, 0.45)])
        self.trace("BTN", "bot", [(0.44, 0.45), (0.25, 0.26)])
        self.trace("BTN", "bot", [(0.25, 0.26), (0.315452, 0.26), pins["R8", "1"]])
        self.trace("BTN", "top", [(0.25, 0.26), pins["SW1", "1"]])
        for name, pin, to, bend in (("XT1", "2", "1", 0.022), ("XT2", "3", "3", -0.022)):
            start, end = pins["U1", pin], pins["Y1", to]
            path = [start, (0.48, start[1]), (0.48 - abs(bend), start[1] + bend), end]
            self.trace(name, "top", path, attributes={".critical_net": True})
        for i in range(1, 7):
            start = pins["U1", str(14 - i)]
            self.trace(f"LED{i}", "top", [start, (0.78, start[1]), pins[f"R{i}", "1"]])
            self.trace(f"A{i}", "top", [pins[f"R{i}", "2"], pins[f"D{i}", "A"]])
        # The cathodes are joined by arcs that run through the vias between them.
        fids = self.nets["GND"].subnet("TRC")
        for i in range(1, 6):
            fids.append(("top", top.arc(pins[f"D{i}", "K"], pins[f"D{i + 1}", "K"], LED_CENTRE, "r12")))

    def copper_extras(self):
        """What belongs to no net: rings, fiducials, copper balance, texts; and their mask openings."""
        for copper, mask in (("top", "smt"), ("bot", "smb")):
            for at in MOUNTS:
                self.layers[copper].pad(at, "mount_ring", mirrored=copper == "bot")
                self.layers[mask].pad(at, "r190")
            for at in FIDUCIALS:
                self.layers[copper].pad(at, "r40", {".pad_usage": 3})
                self.layers[copper].pad(at, "donut_r100x84")
                self.layers[mask].pad(at, "r80")
        squares = []
        for row in range(3):
            for column in range(6):
                x, y = 0.9 + 0.05 * column, 0.7 + 0.05 * row
                squares.append(polygon([(x, y), (x, y + 0.03), (x + 0.03, y + 0.03), (x + 0.03, y)]))
                if (row + column) % 2:
                    squares.append(circle(x + 0.015, y + 0.015, 0.008, True))
        self.layers["bot"].surface(squares, {".pattern_fill": True})
        self.layers["top"].text((0.56, 0.9), "BLINKER", 0.05, stroke=7)
        self.layers["bot"].text((0.9, 0.06), "L4", 0.05, mirrored=True, stroke=7)

    def drill_and_rout(self):
        """Holes that are not plated, and the rout path: two runs with a tab between them, and the slot."""
        drill, rout = self.layers["drill"], self.layers["rout"]
        for at in MOUNTS:
            drill.pad(at, "r86", {".drill": 1})
        for y in (-0.005, HEIGHT + 0.005):
            for i in range(5):
                drill.pad((0.76 + 0.02 * i, y), "r10", {".drill": 1})
        o = 0.047
        r, chain = CORNER + o, {".rout_chain": 1, ".comp": 1}
        left, right, low, high = -o, WIDTH + o, -o, HEIGHT + o
        rout.line((0.73, low), (left + r, low), "r94", chain)
        rout.arc((left + r, low), (left, low + r), (left + r, low + r), "r94", chain)
        rout.line((left, low + r), (left, high - r), "r94", chain)
        rout.arc((left, high - r), (left + r, high), (left + r, high - r), "r94", chain)
        rout.line((left + r, high), (0.73, high), "r94", chain)
        chain = {".rout_chain": 2, ".comp": 1}
        rout.line((0.87, high), (right - r, high), "r94", chain)
        rout.arc((right - r, high), (right, high - r), (right - r, high - r), "r94", chain)
        rout.line((right, high - r), (right, low + r), "r94", chain)
        rout.arc((right, low + r), (right - r, low), (right - r, low + r), "r94", chain)
        rout.line((right - r, low), (0.87, low), "r94", chain)
        x, slot_low, slot_high, width = SLOT
        rout.line((x, slot_low), (x, slot_high), f"r{num(width * 1000)}", {".rout_chain": 3, ".comp": 0})

    def silk_part(self, layer, part):
        """The marks around one component, turned as it is placed."""
        mark, at, package = {".nomenclature": True}, part.place, part.package

        def strokes(*points):
            layer.lines_through([at(*p) for p in points], "r5", mark)

        def rails(x, y):
            strokes((-x, y), (x, y))
            strokes((-x, -y), (x, -y))

        if package in (RES, CAP):
            rails(0.01, 0.025)
        elif package == LED:
            layer.pad((part.x, part.y), "led_mark", mark, angle=part.rotation)
        elif package == TANTAL:
            rails(0.075, 0.04)
        elif package == RESON:
            rails(0.063, 0.038)
        elif package == TACT:
            strokes((-0.076, -0.07), (-0.076, 0.07), (0.076, 0.07), (0.076, -0.07), (-0.076, -0.07))
            layer.arc(at(0.045, 0), at(0.045, 0), at(0, 0), "r5", mark)
        elif package == HEADER:
            strokes((-0.05, -0.2), (-0.05, 0.2), (0.05, 0.2), (0.05, -0.2), (-0.05, -0.2))
            strokes((-0.05, 0.1), (0.05, 0.1))
        elif package == SOIC:
            strokes((-0.02, 0.172), (-0.064, 0.172), (-0.064, -0.172), (0.064, -0.172), (0.064, 0.172), (0.02, 0.172))
            layer.arc(at(0.02, 0.172), at(-0.02, 0.172), at(0, 0.172), "r5", mark)
            layer.pad(at(-0.042, 0.118), "donut_r24x14", mark)

    def silk_top(self):
        layer, mark = self.layers["sst"], {".nomenclature": True}
        for part in self.side("T"):
            self.silk_part(layer, part)
        texts = [("U1", 0.583, 0.455, 0.05), ("J1", 0.107, 0.72, 0.045), ("C1", 0.52, 0.8, 0.04),
                 ("C2", 0.335, 0.915, 0.04), ("+", 0.232, 0.84, 0.045), ("Y1", 0.36, 0.66, 0.035),
                 ("SW1", 0.307, 0.07, 0.04), ("VCC", 0.203, 0.636, 0.032), ("GND", 0.203, 0.536, 0.032),
                 ("RST", 0.203, 0.455, 0.032), ("OUT", 0.203, 0.357, 0.032)]
        for text, x, y, size in texts:
            layer.text((x, y), text, size, attributes=mark)
        # References of the fan stand radially in the gaps, each below its part.
        for letter, radius, size in (("R", RESISTOR_RADIUS, 0.03), ("D", LED_RADIUS - 0.03, 0.04)):
            for i, ccw in enumerate(LED_ANGLES):
                x, y = polar(LED_CENTRE, radius - size * 5 / 6, ccw - 6.25)
                dx, dy = turn(0, -size / 2, -(ccw - 6.25))
                layer.text((x + dx, y + dy), f"{letter}{i + 1}", size, angle=-(ccw - 6.25), stroke=5, attributes=mark)
        layer.text((1.48, 0.29), "BLINKER", 0.064, angle=270, stroke=8)
        # Letters cut out of a filled box: a surface and a negative text over it.
        layer.surface([rounded_rect(0.82, 0.045, 1.07, 0.125, 0.02)])
        layer.text((0.835, 0.063), "REV A", 0.046, polarity="N", stroke=7)

    def silk_bottom(self):
        layer, mark = self.layers["ssb"], {".nomenclature": True}
        for part in self.side("D"):
            self.silk_part(layer, part)
        for text, x, y, size in [("R7", 0.345, 0.625, 0.035), ("R8", 0.335, 0.18, 0.035), ("C3", 0.65, 0.535, 0.035)]:
            layer.text((x, y), text, size, mirrored=True, attributes=mark)
        layer.text((1.36, 0.58), "BLINKER A1", 0.064, mirrored=True, stroke=8)
        layer.barcode((1.36, 0.4), "BLK-A1", 0.005, 0.12, mirrored=True)
        layer.line((1.36, 0.555), (0.76, 0.555), "r8")

    def notes(self):
        layer = self.layers["notes"]
        r, w, h = CORNER, WIDTH, HEIGHT
        for a, b in (((r, 0), (w - r, 0)), ((w, r), (w, h - r)), ((w - r, h), (r, h)), ((0, h - r), (0, r))):
            layer.line(a, b, "r6")
        for a, b, c in (((r, 0), (0, r), (r, r)), ((0, h - r), (r, h), (r, h - r)),
                        ((w - r, h), (w, h - r), (w - r, h - r)), ((w, r), (w - r, 0), (w - r, r))):
            layer.arc(a, b, c, "r6")
        for x, y in MOUNTS:
            layer.arc((x + 0.043, y), (x + 0.043, y), (x, y), "r6", clockwise=False)
            layer.line((x - 0.06, y), (x + 0.06, y), "r3")
            layer.line((x, y - 0.06), (x, y + 0.06), "r3")
        for a, b in (((0, -0.03), (0, -0.2)), ((w, -0.03), (w, -0.2)), ((-0.03, 0), (-0.2, 0)), ((-0.03, h), (-0.2, h)),
                     ((0, -0.16), (w, -0.16)), ((-0.16, 0), (-0.16, h))):
            layer.line(a, b, "r4")
        for at, angle in (((0.02, -0.16), 270), ((w - 0.02, -0.16), 90), ((-0.16, 0.02), 180), ((-0.16, h - 0.02), 0)):
            layer.pad(at, "tri30x40", angle=angle)
        layer.text((0.68, -0.145), "1.600", 0.06)
        layer.text((-0.175, 0.38), "1.000", 0.06, angle=270)
        table = ["NOTES", "1. FOUR LAYERS, 0.062 THICK, INCH.", "2. ALL VIAS TENTED ON BOTH SIDES.",
                 f"3. HOLES: {len(VIAS)} X 0.012 VIA, {len(list(self.header_pins()))} X 0.040 PLATED,",
                 f"   {len(MOUNTS)} X 0.086 AND 10 X 0.010 NOT PLATED.", "4. BREAK OFF AT THE TABS, TOP AND BOTTOM."]
        for i, text in enumerate(table):
            layer.text((0, -0.35 - 0.09 * i), text, 0.05)


# ---- the other files ----


def block(name, pairs):
    return f"{name} {{\n" + "".join(f"    {key}={value}\n" for key, value in pairs) + "}\n\n"


def make_matrix():
    out = block("STEP", [("COL", 1), ("NAME", "PCB")]) + block("STEP", [("COL", 2), ("NAME", "PANEL")])
    for row, (name, context, kind, start, end) in enumerate(MATRIX_LAYERS, 1):
        out += block("LAYER", [("ROW", row), ("CONTEXT", context), ("TYPE", kind), ("NAME", name.upper()),
                               ("POLARITY", "POSITIVE"), ("START_NAME", start), ("END_NAME", end), ("OLD_NAME", ""),
                               ("ADD_TYPE", ""), ("COLOR", 0)])
    return out


def make_font():
    out = ["XSIZE  0.302000", "YSIZE  0.302000", "OFFSET 0.000000", ""]
    for name in sorted(GLYPHS):
        out += ["", f"CHAR {name}"]
        for run in GLYPHS[name].split("|"):
            points = [(-0.1 + 0.05 * int(p[0]), -0.1 + 0.05 * int(p[1])) for p in run.split()]
            out += [f"LINE {a[0]:.6f} {a[1]:.6f} {b[0]:.6f} {b[1]:.6f} P R 0.012000" for a, b in zip(points, points[1:])]
        out.append("ECHAR")
    return "\n".join(out).replace("-0.000000", "0.000000") + "\n"


def make_eda(board):
    numbers = {name: i for i, name in enumerate(EDA_LAYERS)}
    out = ["# 05 Jan 2026 09:00 AM", "#", "HDR blinker sample board", "LYR " + " ".join(EDA_LAYERS), "#", "#", "#"]
    for net in board.nets.values():
        out += [f"# NET {net.number}", f"NET {net.name}"]
        for header, fids in net.subnets:
            out.append(f"SNT {header}")
            out += [f"FID {EDA_LAYERS[layer]} {numbers[layer]} {index}" for layer, index in fids]
        out.append("#")
    for package in board.packages:
        out += [f"# PKG {package.number}", f"PKG {package.name} {nums(package.pitch, *package.box)}"]
        out += package.outline + [f"PRP PACKAGE_NAME '{package.name}'"]
        for pin in package.pins:
            kind = "T" if pin.hole else "S"
            out += [f"PIN {pin.name} {kind} {nums(pin.x, pin.y, pin.hole / 1000)} E {kind}", pin.shape]
        out.append("#")
    return "\n".join(out) + "\n"


def make_components_file(board, side):
    flag = "M" if side == "D" else "N"
    out = ["UNITS=INCH", "#", "#Component attribute names", "#", "@0 .comp_height", "@1 .comp_mount_type",
           "@2 .comp_variant_list", "#", "#Component attribute text strings", "#", "&0 STANDARD"]
    for i, part in enumerate(board.side(side)):
        mount = 2 if part.package == HEADER else 1
        tail = f"0={num(part.height)},1={mount}" + (",2=0" if part.package == LED else "")
        out += ["", f"# CMP {i}",
                f"CMP {part.package} {nums(part.x, part.y, part.rotation)} {flag} {part.ref} {part.part} ;{tail}"]
        out += [f"PRP {name} '{value}'" for name, value in [("PART_NAME", part.part), *part.properties.items()]]
        for pin, (at, net, subnet, name) in enumerate(part.tops):
            out.append(f"TOP {pin} {nums(*at, part.rotation)} {flag} {net} {subnet} {name}")
    return "\n".join(out) + "\n"


def make_netlist(board):
    out = ["H optimize n staggered n"] + [f"${net.number} {net.name}" for net in board.nets.values()]
    out += ["#", "#Netlist points", "#"]
    out += [f"{net.number} {point}" for net in board.nets.values() for point in net.points]
    return "\n".join(out) + "\n"


def make_tools():
    """Sizes in mils."""
    out = "UNITS=INCH\nTHICKNESS=0\nUSER_PARAMS=\n\n"
    for number, (kind, size) in enumerate((("VIA", 12), ("PLATED", 40), ("NON_PLATED", 86), ("NON_PLATED", 10)), 1):
        out += block("TOOLS", [("NUM", number), ("TYPE", kind), ("TYPE2", "STANDARD"), ("MIN_TOL", 3), ("MAX_TOL", 3),
                               ("BIT", ""), ("FINISH_SIZE", size), ("DRILL_SIZE", size)])
    return out


def make_stephdr(repeats=()):
    out = "X_DATUM=0\nY_DATUM=0\nX_ORIGIN=0\nY_ORIGIN=0\n\n"
    for x, y, dx, dy, nx, ny, angle in repeats:
        out += block("STEP-REPEAT", [("NAME", "PCB"), ("X", num(x)), ("Y", num(y)), ("DX", num(dx)), ("DY", num(dy)),
                                     ("NX", nx), ("NY", ny), ("ANGLE", angle), ("MIRROR", "NO"), ("FLIP", "NO")])
    return out + ("TOP_ACTIVE=0\nBOTTOM_ACTIVE=0\nRIGHT_ACTIVE=0\nLEFT_ACTIVE=0\n"
                  "ONLINE_DRC_NAME=\nONLINE_DRC_MODE=DISABLED\nONLINE_DRC_STAT=GREEN\nONLINE_DRC_TIME=0\n"
                  "ONLINE_DRC_BEEP_VOL=2\nONLINE_DRC_BEEP_TONE=500\nONLINE_NET_MODE=DISABLED\n"
                  "ONLINE_NET_STAT=GREEN\nONLINE_NET_TIME=0\nONLINE_NET_BEEP_VOL=2\nONLINE_NET_BEEP_TONE=1000\n"
                  "AFFECTING_BOM=\nAFFECTING_BOM_CHANGED=0\n")


def make_sysattr():
    """The definitions of the attributes that the job uses."""
    options = [(".pad_usage", "Use_of_the_pad", "toeprint;via;g_fiducial;l_fiducial;tooling_hole"),
               (".drill", "Drill_type", "plated;non_plated;via"), (".comp", "Side_of_the_bit", "none;left;right"),
               (".comp_mount_type", "Mount_type", "other;smt;thmt;pressfit")]
    out = ""
    for name, prompt, values in options:
        out += f"OPTION {{\n    NAME = {name}\n    PROMPT = {prompt}\n    OPTIONS = {values}\n}}\n\n"
    others = [("BOOLEAN", ".smd"), ("BOOLEAN", ".nomenclature"), ("BOOLEAN", ".critical_net"),
              ("BOOLEAN", ".pattern_fill"), ("TEXT", ".geometry"), ("TEXT", ".comp_variant_list"),
              ("INTEGER", ".rout_chain"), ("REAL", ".comp_height")]
    for kind, name in others:
        out += f"{kind} {{\n    NAME = {name}\n}}\n\n"
    return out


def make_led_mark():
    """Silk of one LED, anode left: two rails, the cathode bar and a diode between the pads."""
    file = FeatureFile()
    for y in (-0.036, 0.036):
        file.line((-0.066, y), (0.0705, y), "r5")
    file.line((0.0705, -0.036), (0.0705, 0.036), "r6")
    file.surface([polygon([(-0.012, -0.014), (-0.012, 0.014), (0.01, 0)])])
    file.line((0.012, -0.013), (0.012, 0.013), "r4")
    return file


def make_mount_ring():
    """Copper around a mounting hole: a ring, spokes outwards and a dot at the end of each."""
    file = FeatureFile()
    file.surface([circle(0, 0, 0.07, False), circle(0, 0, 0.053, True)])
    for i in range(8):
        file.line(polar((0, 0), 0.062, 45 * i), polar((0, 0), 0.08, 45 * i), "r8")
        file.pad(polar((0, 0), 0.08, 45 * i), "r14")
    return file


def compressed(data):
    """The bytes as `compress` stores them, tested by unpacking them again."""
    packed = subprocess.run(["compress", "-c", "-f"], input=data, stdout=subprocess.PIPE, check=True).stdout
    back = subprocess.run(["uncompress", "-c"], input=packed, stdout=subprocess.PIPE, check=True).stdout
    assert packed[:2] == b"\x1f\x9d" and back == data
    return packed


PANEL = (5.3, 2.95)
PANEL_REPEATS = [(0.4, 0.4, 1.75, 1.15, 2, 2, 0), (3.9, 2.275, 0, 0, 1, 1, 90)]


def make_panel():
    """The panel's own features; the boards in it come from the step-repeat blocks."""
    w, h = PANEL
    layers = {name: FeatureFile() for name in ("sst", "smt", "top", "bot", "smb", "drill", "rout", "notes")}
    for copper, mask in (("top", "smt"), ("bot", "smb")):
        for at in ((0.2, 0.2), (w - 0.2, 0.2), (0.2, h - 0.2)):
            layers[copper].pad(at, "r40", {".pad_usage": 2})
            layers[copper].pad(at, "donut_s160x120")
            layers[mask].pad(at, "s120")
        for y in (0.12, h - 0.12):
            for i in range(28):
                layers[copper].pad((0.6 + 0.15 * i, y), "di90x90" if i % 2 else "s60", {".pattern_fill": True})
    layers["top"].text((0.5, 0.2), "BLINKER PANEL", 0.1, stroke=12)
    layers["bot"].text((1.9, 0.2), "BLINKER PANEL", 0.1, mirrored=True, stroke=12)
    layers["sst"].text((0.5, h - 0.33), "PANEL 2 X 2 + 1", 0.1, stroke=12)
    layers["sst"].line((0.5, h - 0.37), (w - 0.5, h - 0.37), "r10")
    for at in ((0.2, 0.45), (w - 0.2, 0.45), (0.2, h - 0.45), (w - 0.2, h - 0.45)):
        layers["drill"].pad(at, "r125", {".drill": 1, ".pad_usage": 4})
    corners = [(-0.047, -0.047), (-0.047, h + 0.047), (w + 0.047, h + 0.047), (w + 0.047, -0.047), (-0.047, -0.047)]
    layers["rout"].lines_through(corners, "r94", {".rout_chain": 9, ".comp": 1})
    corners = [(0, 0), (0, h), (w, h), (w, 0), (0, 0)]
    layers["notes"].lines_through(corners, "r10")
    layers["notes"].text((0, -0.2), "5.300 X 2.950, FIVE BOARDS", 0.1, stroke=12)
    return layers


def make_job():
    """Every file of the job: path below the job directory, and its bytes."""
    board, panel = Board(), make_panel()
    profile, panel_profile = FeatureFile(), FeatureFile()
    profile.surface([rounded_rect(0, 0, WIDTH, HEIGHT, CORNER), slot_hole()])
    w, h = PANEL
    panel_profile.surface([polygon([(0, 0), (0, h), (w, h), (w, 0)])])
    layer_attributes = {
        "top": ".copper_weight = 1\n", "gnd": ".copper_weight = 0.5\n", "pwr": ".copper_weight = 0.5\n",
        "bot": ".copper_weight = 1\n", "diel_1": ".layer_dielectric = 0.008\n",
        "diel_2": ".layer_dielectric = 0.04\n", "diel_3": ".layer_dielectric = 0.008\n",
        "notes": ".comment = dimensions and notes\n"}
    files = {
        "matrix/matrix": make_matrix(),
        "fonts/standard": make_font(),
        "misc/info": (f"JOB_NAME=blinker\nODB_VERSION_MAJOR=7\nODB_VERSION_MINOR=0\nODB_SOURCE=sample script\n"
                      f"CREATION_DATE={DATE}\nSAVE_DATE={DATE}\nSAVE_APP=make_sample 1\nSAVE_USER=sample\n"),
        "misc/attrlist": ".customer = \n.comment = sample job\n.board_thickness = 0.062\n",
        "misc/sysattr": make_sysattr(),
        "symbols/led_mark/features": make_led_mark().render(),
        "symbols/mount_ring/features.Z": make_mount_ring().render(),
        "steps/pcb/attrlist": ".comment = one board\n.out_name = blinker\n",
        "steps/pcb/profile": profile.render(),
        "steps/pcb/stephdr": make_stephdr(),
        "steps/pcb/eda/data": make_eda(board),
        "steps/pcb/netlists/cadnet/netlist": make_netlist(board),
        "steps/pcb/layers/comp_+_top/components": make_components_file(board, "T"),
        "steps/pcb/layers/comp_+_bot/components": make_components_file(board, "D"),
        "steps/pcb/layers/comp_+_top/attrlist": ".comment = \n",
        "steps/pcb/layers/comp_+_bot/attrlist": ".comment = \n",
        "steps/pcb/layers/drill/tools": make_tools(),
        "steps/panel/attrlist": ".comment = five boards\n",
        "steps/panel/profile": panel_profile.render(),
        "steps/panel/stephdr": make_stephdr(PANEL_REPEATS),
    }
    for step, layers in (("pcb", board.layers), ("panel", panel)):
        for name, layer in layers.items():
            files[f"steps/{step}/layers/{name}/features"] = layer.render()
            files[f"steps/{step}/layers/{name}/attrlist"] = layer_attributes.get(name, ".comment = \n")
    data = {name: text.encode("ascii") for name, text in files.items()}
    crlf = "steps/pcb/layers/ssb/features"  # one file with the other line end
    data[crlf] = data[crlf].replace(b"\n", b"\r\n")
    packed = "symbols/mount_ring/features.Z"
    data[packed] = compressed(data[packed])
    return data


def main():
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent / "blinker"
    files = make_job()
    if target.exists():
        if not (target / "matrix" / "matrix").is_file():
            sys.exit(f"{target} is no job: not replaced")
        shutil.rmtree(target)
    for name, data in files.items():
        path = target / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
    print(f"{target}: {len(files)} files, {sum(map(len, files.values()))} bytes")


if __name__ == "__main__":
    main()
