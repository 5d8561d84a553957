#!/usr/bin/env python3
"""Writes house.dxf, the floor plan of a small house on a sheet, in millimetres.

    python3 make_house.py [house.dxf]

It writes the same bytes every time. The house's south-west corner is (0, 0).
"""

import math
import sys
from pathlib import Path

# Layers: name, nearest colour index, colour, line type.
LAYERS = [
    ("0", 7, 0x2B343D, "Continuous"),
    ("SHEET", 250, 0x2B343D, "Continuous"),
    ("GARDEN", 84, 0x86A173, "Continuous"),
    ("FLOORS", 254, 0xD5DDE1, "Continuous"),
    ("AXES", 33, 0xC79A74, "AXIS"),
    ("ROOF", 9, 0x9AA3AB, "OVERHEAD"),
    ("FURNITURE", 8, 0x89929A, "Continuous"),
    ("WATER", 153, 0x6C96AE, "Continuous"),
    ("DOORS", 8, 0x5C666F, "Continuous"),
    ("WINDOWS", 153, 0x4A7391, "Continuous"),
    ("WALLS", 250, 0x37424D, "Continuous"),
    ("DIMENSIONS", 16, 0x9A4F32, "Continuous"),
    ("ROOMS", 250, 0x222B34, "Continuous"),
    ("NOTES", 251, 0x4C5761, "Continuous"),
    ("REVIEW", -6, 0xE000E0, "Continuous"),  # off
]
LINE_TYPES = [
    ("Continuous", "", []),
    ("AXIS", "____ _ ____ _", [600, -120, 60, -120]),
    ("OVERHEAD", "__ __ __", [250, -120]),
]
STYLES = [("Standard", "DejaVuSans.ttf"), ("SANS", "DejaVuSans.ttf"),
          ("SERIF", "DejaVuSerif.ttf"), ("MONO", "DejaVuSansMono.ttf")]

WHITE, INK, ACCENT, GREY = 0xFFFFFF, 0x222B34, 0x9A4F32, 0x6C7781
CUSHION, WOOD, PORCELAIN = 0xF4F1EC, 0xEFE6DA, 0xF2F7FA
LAWN, LEAVES, STONE, POND = 0xF0F4EA, 0xDEE9D2, 0xF3EDE3, 0xD8E6EE
LEFT, CENTER, RIGHT = 0, 1, 2
QUARTER = math.tan(math.pi / 8)  # the bulge of a quarter of a circle


class Handles:
    """Every object of a file has a number of its own."""
    last = 0x100

    @classmethod
    def next(cls):
        cls.last += 1
        return f"{cls.last:X}"


def pairs(*codes_and_values):
    """Group codes and values, one after the other, as lines."""
    lines = []
    for code, value in zip(codes_and_values[::2], codes_and_values[1::2]):
        if isinstance(value, float):
            value = f"{value:.9f}".rstrip("0").rstrip(".")
            value = "0" if value == "-0" else value
        lines += [str(code), str(value)]
    return lines


def at(code, x, y):
    return (code, float(x), code + 10, float(y), code + 20, 0.0)


def turned(points, degrees, x=0.0, y=0.0):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return [(x + c * px - s * py, y + s * px + c * py) for px, py in points]


def box(x0, y0, x1, y1):
    return [(x0, y0), (x1, y0), (x1, y1), (x0, y1)]


def rounded(x0, y0, x1, y1, r):
    """Corners and bulges of a box with round corners."""
    return [(x0 + r, y0, 0), (x1 - r, y0, QUARTER), (x1, y0 + r, 0), (x1, y1 - r, QUARTER),
            (x1 - r, y1, 0), (x0 + r, y1, QUARTER), (x0, y1 - r, 0), (x0, y0 + r, QUARTER)]


class Shapes:
    """Entities, those of the drawing or of a block."""

    def __init__(self):
        self.lines = []

    def entity(self, kind, layer, color, *rest):
        look = (62, 7, 420, color) if color is not None else ()
        self.lines += pairs(0, kind, 5, Handles.next(), 100, "AcDbEntity", 8, layer, *look, *rest)

    def line(self, layer, x0, y0, x1, y1, color=None):
        self.entity("LINE", layer, color, 100, "AcDbLine", *at(10, x0, y0), *at(11, x1, y1))

    def polyline(self, layer, corners, closed=True, color=None):
        """Corners are (x, y) or (x, y, bulge)."""
        self.entity("LWPOLYLINE", layer, color, 100, "AcDbPolyline", 90, len(corners),
                    70, int(closed), *corner_pairs(corners))

    def arc(self, layer, x, y, r, start, end, color=None):
        self.entity("ARC", layer, color, 100, "AcDbCircle", *at(10, x, y), 40, float(r),
                    100, "AcDbArc", 50, float(start), 51, float(end))

    def circle(self, layer, x, y, r, color=None):
        self.entity("CIRCLE", layer, color, 100, "AcDbCircle", *at(10, x, y), 40, float(r))

    def ellipse(self, layer, x, y, rx, ry, turn=0, start=0.0, end=2 * math.pi, color=None):
        [(mx, my)] = turned([(rx, 0)], turn)
        self.entity("ELLIPSE", layer, color, 100, "AcDbEllipse", *at(10, x, y), *at(11, mx, my),
                    40, ry / rx, 41, start, 42, end)

    def spline(self, layer, control, color=None):
        knots = clamped_knots(control)
        self.entity("SPLINE", layer, color, 100, "AcDbSpline", 70, 8, 71, 3, 72, len(knots),
                    73, len(control), 74, 0, *(v for k in knots for v in (40, k)),
                    *(v for p in control for v in at(10, *p)))

    def hatch(self, layer, loops, color, pattern=()):
        """Loops of `polyline_loop` and the like; without a pattern of (degrees,
        distance) solid."""
        body = [v for loop in loops for v in (*loop, 97, 0)]
        lines = [v for degrees, distance in pattern for v in hatch_line(degrees, distance)]
        if pattern:
            lines = [52, 0.0, 41, 1.0, 77, 0, 78, len(pattern), *lines]
        self.entity("HATCH", layer, color, 100, "AcDbHatch", *at(10, 0, 0), 210, 0.0, 220, 0.0,
                    230, 1.0, 2, "USER" if pattern else "SOLID", 70, int(not pattern), 71, 0,
                    91, len(loops), *body, 75, 0, 76, 0 if pattern else 1, *lines, 98, 0)

    def fill(self, layer, color, *loops):
        self.hatch(layer, [polyline_loop(loop) for loop in loops], color)

    def plate(self, corners, color, layer="0"):
        """An area with an outline of its layer's colour."""
        self.fill(layer, color, corners)
        self.polyline(layer, corners)

    def disc(self, x, y, rx, ry, color, turn=0, layer="0"):
        self.hatch(layer, [ellipse_loop(x, y, rx, ry, turn)], color)
        if rx == ry:
            self.circle(layer, x, y, rx)
        else:
            self.ellipse(layer, x, y, rx, ry, turn)

    def solid(self, layer, a, b, c, color=None):
        self.entity("SOLID", layer, color, 100, "AcDbTrace", *at(10, *a), *at(11, *b),
                    *at(12, *c), *at(13, *c))

    def text(self, layer, style, height, x, y, string, align=LEFT, turn=0, color=None,
             middle=False):
        self.entity("TEXT", layer, color, 100, "AcDbText",
                    *text_pairs(style, height, x, y, string, align, turn),
                    100, "AcDbText", 73, 2 if middle else 0)

    def mtext(self, layer, style, height, x, y, width, string, spacing=1.0, color=None):
        self.entity("MTEXT", layer, color, 100, "AcDbMText", *at(10, x, y), 40, float(height),
                    41, float(width), 71, 1, 72, 5, 1, string, 7, style, 73, 1, 44, spacing)

    def insert(self, layer, block, x, y, sx=1.0, sy=None, turn=0, attributes=()):
        """Attributes are (tag, style, height, x, y, string)."""
        follow = (66, 1) if attributes else ()
        self.entity("INSERT", layer, None, 100, "AcDbBlockReference", *follow, 2, block,
                    *at(10, x, y), 41, float(sx), 42, float(sx if sy is None else sy), 43, 1.0,
                    50, float(turn))
        for tag, style, height, ax, ay, string in attributes:
            self.entity("ATTRIB", layer, None, 100, "AcDbText",
                        *text_pairs(style, height, ax, ay, string, LEFT, 0),
                        100, "AcDbAttribute", 2, tag, 70, 0)
        if attributes:
            self.entity("SEQEND", layer, None)


def corner_pairs(corners):
    return [v for x, y, *bulge in corners
            for v in (10, float(x), 20, float(y), *((42, float(bulge[0])) if bulge else ()))]


def text_pairs(style, height, x, y, string, align, turn):
    second = () if align == LEFT else (72, align, *at(11, x, y))
    return (*at(10, x, y), 40, float(height), 1, string, 50, float(turn), 7, style, *second)


def clamped_knots(control):
    inner = len(control) - 3
    return [0.0] * 4 + [float(k) for k in range(1, inner)] + [float(inner)] * 4


def polyline_loop(corners):
    has_bulges = int(any(len(corner) > 2 for corner in corners))
    return [92, 3, 72, has_bulges, 73, 1, 93, len(corners), *corner_pairs(corners)]


def ellipse_loop(x, y, rx, ry, turn):
    [(mx, my)] = turned([(rx, 0)], turn)
    return [92, 1, 93, 1, 72, 3, 10, float(x), 20, float(y), 11, mx, 21, my, 40, ry / rx,
            50, 0.0, 51, 360.0, 73, 1]


def spline_edge(control):
    knots = clamped_knots(control)
    return [72, 4, 94, 3, 73, 0, 74, 0, 95, len(knots), 96, len(control),
            *(v for k in knots for v in (40, k)),
            *(v for x, y in control for v in (10, float(x), 20, float(y)))]


def line_edge(a, b):
    return [72, 1, 10, float(a[0]), 20, float(a[1]), 11, float(b[0]), 21, float(b[1])]


def hatch_line(degrees, distance):
    [(dx, dy)] = turned([(0, distance)], degrees)
    return (53, float(degrees), 43, 0.0, 44, 0.0, 45, dx, 46, dy, 79, 0)


drawing = Shapes()
blocks = {}


def block(name):
    blocks[name] = Shapes()
    return blocks[name]


# ---- Blocks. What they have in layer 0 is in the layer of the insert. ----

def make_openings():
    door = block("DOOR")  # 900 wide along x from its hinge, open along y
    door.plate(box(0, 0, 45, 900), WHITE)
    door.arc("0", 0, 0, 900, 0, 90)
    window = block("WINDOW")  # 1000 by 360
    window.plate(box(0, 0, 1000, 360), WHITE)
    window.line("0", 0, 140, 1000, 140)
    window.line("0", 0, 200, 1000, 200)


def make_seats():
    chair = block("CHAIR")  # seen by who sits on it, at its middle
    chair.plate(rounded(-220, -220, 220, 220, 70), CUSHION)
    chair.plate(rounded(-230, -265, 230, -200, 30), WHITE)
    table = block("DINING")
    places = [(-520, 1), (0, 1), (520, 1), (-520, -1), (0, -1), (520, -1)]
    for x, side in places:
        table.insert("0", "CHAIR", x, side * 620, turn=180 if side > 0 else 0)
    table.insert("0", "CHAIR", -1180, 0, turn=-90)
    table.insert("0", "CHAIR", 1180, 0, turn=90)
    table.disc(0, 0, 1120, 520, WOOD)
    sofa = block("SOFA")
    sofa.plate(rounded(-1150, -450, 1150, 450, 110), WHITE)
    for x in (-960, -320, 320):
        sofa.plate(rounded(x, -210, x + 640, 430, 80), CUSHION)
    armchair = block("ARMCHAIR")
    armchair.plate(rounded(-430, -420, 430, 420, 130), WHITE)
    armchair.plate(rounded(-280, -250, 280, 370, 90), CUSHION)


def make_bedroom():
    night = block("NIGHT TABLE")
    night.plate(box(-240, -210, 240, 210), WOOD)
    night.disc(0, 0, 110, 110, WHITE)
    bed = block("BED")  # its head at the top
    for x in (-1180, 1180):
        bed.insert("0", "NIGHT TABLE", x, 790)
    bed.plate(rounded(-900, -1000, 900, 1000, 60), WHITE)
    for x in (-450, 450):
        bed.plate(rounded(x - 360, 480, x + 360, 920, 120), CUSHION)
    bed.plate([(900, 330, 0), (-900, 330, 0), (-900, -940, QUARTER), (-840, -1000, 0),
               (840, -1000, QUARTER), (900, -940, 0)], CUSHION)
    bed.polyline("0", [(900, 330), (250, 330), (900, -150)], closed=False)
    wardrobe = block("WARDROBE")  # 1000 by 600
    wardrobe.plate(box(0, 0, 1000, 600), WHITE)
    wardrobe.line("0", 0, 300, 1000, 300)
    for i, lean in enumerate((4, -9, 12, -3, 8, -12, 5)):
        [a, b] = turned([(0, -210), (0, 210)], lean, 120 + 126 * i, 300)
        wardrobe.line("0", *a, *b)


def make_kitchen_and_bath():
    stove = block("STOVE")
    stove.plate(rounded(-290, -250, 290, 250, 40), WHITE)
    for x, y, r in ((-140, 115, 95), (140, 115, 75), (-140, -115, 75), (140, -115, 95)):
        stove.circle("0", x, y, r)
        stove.circle("0", x, y, r - 30)
    sink = block("SINK")
    sink.plate(rounded(-420, -230, 420, 230, 40), PORCELAIN)
    sink.polyline("0", rounded(-370, -180, 40, 180, 80))
    for y in range(-150, 160, 60):
        sink.line("0", 110, y, 380, y)
    sink.circle("0", -165, 0, 30)
    tub = block("TUB")  # 1700 by 750
    tub.plate(box(0, 0, 1700, 750), WHITE)
    tub.plate(rounded(80, 80, 1620, 670, 295), PORCELAIN)
    tub.circle("0", 350, 375, 35)
    basin = block("BASIN")  # on a wall along x
    basin.plate([(-320, 0), (320, 0), (320, 300, 0.35), (-320, 300)], WHITE)
    basin.disc(0, 235, 215, 140, PORCELAIN)
    basin.circle("0", 0, 60, 28)
    toilet = block("TOILET")
    toilet.plate(rounded(-190, 0, 190, 170, 30), WHITE)
    toilet.disc(0, 400, 185, 245, PORCELAIN)
    toilet.ellipse("0", 0, 390, 125, 175)


def make_plants():
    tree = block("TREE")  # of radius 1000
    crown = [(*p, 0.62) for i in range(14) for p in turned([(930, 0)], i * 360 / 14)]
    tree.plate(crown, LEAVES)
    for i in range(14):
        start = (25.7 * i + 40) % 360
        tree.arc("0", 0, 0, 420 + 170 * (i % 3), start, (start + 34) % 360)
    tree.disc(0, 0, 70, 70, 0x86A173)
    plant = block("PLANT")  # in a pot
    for i in range(8):
        [tip, a, b] = turned([(300, 0), (130, 75), (130, -75)], 45 * i + 10)
        plant.plate([(0, 0), a, tip, b], LEAVES)
    plant.disc(0, 0, 70, 70, WHITE)


def make_signs():
    north = block("NORTH")
    north.circle("0", 0, 0, 620)
    north.solid("0", (0, 900), (-270, -480), (0, -300))
    north.polyline("0", [(0, 900), (270, -480), (0, -300)])
    north.text("0", "SERIF", 330, 0, 1010, "N", CENTER)
    bubble = block("AXIS MARK")
    bubble.circle("0", 0, 0, 270)
    title = block("TITLE")  # the fields at the foot of the sheet
    title.polyline("0", box(0, 0, 5900, 3000))
    for y in (1000, 2000):
        title.line("0", 0, y, 5900, y)
    title.line("0", 2950, 0, 2950, 2000)
    for x, y, name in ((200, 2700, "DRAWING"), (200, 1700, "SCALE"), (3150, 1700, "DATE"),
                       (200, 700, "DRAWN WITH"), (3150, 700, "SHEET")):
        title.text("0", "SANS", 120, x, y, name, color=GREY)


# ---- The house ----

WALLS = [(0, 0, 14000, 360), (0, 9240, 14000, 9600), (0, 0, 360, 9600), (13640, 0, 14000, 9600),
         (360, 5000, 13640, 5240), (4000, 5240, 4120, 9240), (7600, 360, 7720, 5000),
         (7600, 6440, 7720, 9240), (7600, 6440, 10320, 6560), (10200, 5240, 10320, 9240)]
# x, y, width, turned by a quarter
WINDOWS = [(1200, 0, 3000, 0), (5200, 0, 1500, 0), (9600, 0, 2200, 0), (1200, 9240, 1800, 0),
           (8500, 9240, 1000, 0), (11000, 9240, 2000, 0), (360, 6600, 1400, 90),
           (360, 1800, 1600, 90), (14000, 1600, 1800, 90), (14000, 6600, 1400, 90)]
# the gap in the wall; where the hinge is, scales and turn of the door in it
DOORS = [((4650, 9240, 5650, 9600), 4650, 9240, 1000 / 900, -1000 / 900, 0),
         ((4700, 5000, 5600, 5240), 4700, 5000, 1, -1, 0),
         ((4000, 5600, 4120, 6500), 4000, 5600, 1, 1, 90),
         ((8500, 5000, 9400, 5240), 9400, 5000, 1, 1, 180),
         ((9100, 6440, 9900, 6560), 9900, 6560, -800 / 900, 800 / 900, 0),
         ((10200, 5400, 10320, 6300), 10320, 5400, 1, -1, 90)]
PASSAGES = [(1400, 5000, 2800, 5240)]
# name, boxes, where it is written, height of the name
ROOMS = [("Living", [(360, 360, 7600, 5000)], 3130, 4330, 320),
         ("Bedroom", [(7720, 360, 13640, 5000)], 11700, 2760, 320),
         ("Kitchen", [(360, 5240, 4000, 9240)], 2480, 7160, 300),
         ("Hall", [(4120, 5240, 7600, 9240), (7600, 5240, 10200, 6440)], 5400, 6960, 300),
         ("Bath", [(7720, 6560, 10200, 9240)], 9110, 7960, 260),
         ("Study", [(10320, 5240, 13640, 9240)], 12060, 6960, 300)]
WET = ("Kitchen", "Bath")


def area(room):
    return sum((x1 - x0) * (y1 - y0) for x0, y0, x1, y1 in room[1]) / 1e6


def window_gap(x, y, width, turn):
    return (x - 360, y, x, y + width) if turn else (x, y, x + width, y + 360)


def wall_outlines():
    """The outlines of all walls together, less the gaps, left of their way."""
    gaps = [door[0] for door in DOORS] + [window_gap(*w) for w in WINDOWS] + PASSAGES
    xs = sorted({x for r in WALLS + gaps for x in (r[0], r[2])})
    ys = sorted({y for r in WALLS + gaps for y in (r[1], r[3])})

    def is_wall(i, j):
        if not (0 <= i < len(xs) - 1 and 0 <= j < len(ys) - 1):
            return False
        x, y = (xs[i] + xs[i + 1]) / 2, (ys[j] + ys[j + 1]) / 2
        covers = lambda r: r[0] < x < r[2] and r[1] < y < r[3]
        return any(map(covers, WALLS)) and not any(map(covers, gaps))

    sides = {}  # from a corner to the next
    for i in range(len(xs)):
        for j in range(len(ys)):
            if not is_wall(i, j):
                continue
            around = [((i, j), (i + 1, j), (i, j - 1)), ((i + 1, j), (i + 1, j + 1), (i + 1, j)),
                      ((i + 1, j + 1), (i, j + 1), (i, j + 1)), ((i, j + 1), (i, j), (i - 1, j))]
            sides.update((start, end) for start, end, beyond in around if not is_wall(*beyond))
    while sides:
        start, corner = sides.popitem()
        loop = [start]
        while corner != start:
            loop.append(corner)
            corner = sides.pop(corner)
        neighbours = zip(loop[-1:] + loop, loop, loop[1:] + loop[:1])
        yield [(xs[i], ys[j]) for (i0, j0), (i, j), (i1, j1) in neighbours
               if not (i0 == i == i1 or j0 == j == j1)]


def draw_floors():
    drawing.fill("FLOORS", WHITE, box(0, 0, 14000, 9600))
    for room in ROOMS:
        if room[0] in WET:
            loops = [polyline_loop(box(*part)) for part in room[1]]
            drawing.hatch("FLOORS", loops, 0xE9EEF1, [(0, 300), (90, 300)])
    drawing.plate(box(4350, 9600, 5950, 10500), STONE, "FLOORS")
    drawing.polyline("ROOF", box(-500, -500, 14500, 10100))


def draw_walls():
    for outline in wall_outlines():
        drawing.fill("WALLS", 0x4A5661, outline)
        drawing.polyline("WALLS", outline)
    for x, y, width, turn in WINDOWS:
        drawing.insert("WINDOWS", "WINDOW", x, y, width / 1000, 1, turn)
    for _, x, y, sx, sy, turn in DOORS:
        drawing.insert("DOORS", "DOOR", x, y, sx, sy, turn)


def draw_stairs():
    x0, x1, y0, tread = 6640, 7600, 6560, 268
    for i in range(11):
        drawing.line("FURNITURE", x0, y0 + i * tread, x1, y0 + i * tread)
    drawing.line("FURNITURE", x0, y0, x0, y0 + 10 * tread)
    middle, end = (x0 + x1) / 2, y0 + 9.4 * tread
    drawing.circle("DOORS", middle, y0 + tread / 2, 45)
    drawing.line("DOORS", middle, y0 + tread / 2 + 45, middle, end)
    drawing.polyline("DOORS", [(middle - 110, end - 190), (middle, end), (middle + 110, end - 190)],
                     closed=False)
    drawing.text("NOTES", "SANS", 130, middle, y0 - 240, "10 up", CENTER)


def draw_furniture():
    def put(name, x, y, turn=0, sx=1, sy=None, layer="FURNITURE"):
        drawing.insert(layer, name, x, y, sx, sy, turn)

    drawing.plate(box(5050, 900, 7150, 3500), 0xFAF8F5, "FURNITURE")  # a carpet
    drawing.polyline("FURNITURE", box(5130, 980, 7070, 3420), color=0xD9D3CA)
    put("DINING", 1950, 2700)
    put("SOFA", 7080, 2200, 90)
    put("ARMCHAIR", 5420, 3480, 201)
    put("ARMCHAIR", 5300, 1080, -28)
    drawing.disc(6020, 2250, 420, 420, WOOD, layer="FURNITURE")
    put("PLANT", 7200, 4600)
    put("PLANT", 760, 4600, 20, 1.1)
    put("BED", 8770, 2150, 90)
    put("WARDROBE", 9950, 4390, sx=3.5, sy=1)
    put("ARMCHAIR", 12950, 1050, 37)
    put("PLANT", 8080, 4640, 12, 0.9)
    drawing.plate([(360, 9240), (360, 5900), (960, 5900), (960, 8640), (4000, 8640), (4000, 9240)],
                  0xFBFAF8, "FURNITURE")
    put("SINK", 2100, 8950, layer="WATER")
    put("STOVE", 660, 7300, 90)
    drawing.plate(box(3380, 8640, 4000, 9240), WHITE, "FURNITURE")
    drawing.line("FURNITURE", 3380, 8640, 4000, 9240)
    drawing.plate(box(4120, 7050, 4470, 8050), WOOD, "FURNITURE")
    put("TUB", 8470, 7540, 90, layer="WATER")
    put("BASIN", 10200, 7750, 90, layer="WATER")
    put("TOILET", 10200, 8650, 90, layer="WATER")
    drawing.plate(box(11150, 8430, 12950, 9180), WOOD, "FURNITURE")
    drawing.plate(turned(box(-260, -180, 260, 180), -8, 12300, 8840), WHITE, "FURNITURE")
    put("CHAIR", 12080, 8180, 17)
    put("PLANT", 13280, 8880, 5)
    drawing.plate(box(11500, 5240, 13640, 5560), WHITE, "FURNITURE")
    for i in range(1, 8):
        drawing.line("FURNITURE", 11500 + 267.5 * i, 5240, 11500 + 267.5 * i, 5560)


def draw_room_names():
    for name, _, x, y, height in ROOMS:
        drawing.text("ROOMS", "SANS", height, x, y, name, CENTER)
    for room in ROOMS:
        drawing.text("NOTES", "MONO", 165, room[2], room[3] - 370, f"{area(room):.2f} m²", CENTER)


# ---- The garden ----

TERRACE = [(500, 0), (500, -700), (2400, -2600), (8700, -2600), (8700, 0)]
PATH = [(8700, -1500), (10700, -1450), (11800, -3350), (15200, -3500), (16400, -600),
        (15800, 2600), (17600, 4500), (19600, 4500)]


def offset(points, distance):
    """Points to the left of a line through points."""
    moved = []
    for i, (x, y) in enumerate(points):
        (ax, ay), (bx, by) = points[max(0, i - 1)], points[min(len(points) - 1, i + 1)]
        length = math.hypot(bx - ax, by - ay)
        moved.append((x - (by - ay) / length * distance, y + (bx - ax) / length * distance))
    return moved


def draw_garden():
    drawing.fill("GARDEN", LAWN, [
        (-3800, -3900, 0), (18800, -3900, QUARTER), (19600, -3100, 0), (19600, 10900, QUARTER),
        (18800, 11700, 0), (16400, 11700, QUARTER), (14000, 9300, 0), (13900, 100, 0),
        (100, 100, 0), (100, -300, 0), (-2600, -300, QUARTER), (-4600, -2300, 0),
        (-4600, -3100, QUARTER)])
    left, right = offset(PATH, 480), offset(PATH, -480)
    back = right[::-1]
    loop = [92, 1, 93, 4, *spline_edge(left), *line_edge(left[-1], back[0]), *spline_edge(back),
            *line_edge(back[-1], left[0])]
    drawing.hatch("GARDEN", [loop], STONE)
    for side in (left, right):
        drawing.spline("GARDEN", side, color=0xC9B99E)
    drawing.fill("GARDEN", STONE, TERRACE)
    drawing.hatch("GARDEN", [polyline_loop(TERRACE)], 0xDCD1BF, [(0, 600), (90, 600)])
    drawing.polyline("GARDEN", TERRACE, color=0xB9A88B)
    drawing.disc(13500, -1300, 1250, 620, POND, -8, "WATER")
    drawing.ellipse("WATER", 13500, -1300, 950, 430, -8, 0.5, 2.4, color=0xA9C6D6)
    drawing.ellipse("WATER", 13500, -1300, 700, 280, -8, 3.4, 5.6, color=0xA9C6D6)
    for x, y, scale, turn in ((-2950, -2450, 1.25, 0), (-1150, -3100, 0.62, 20),
                              (18100, -2350, 1.3, 11), (18750, -350, 0.7, 33),
                              (17000, 9250, 2, 5), (15450, 6250, 0.75, 27),
                              (18700, 6250, 0.62, 14)):
        drawing.insert("GARDEN", "TREE", x, y, scale, scale, turn)
    drawing.insert("DOORS", "DOOR", 19600, 4020, 960 / 900, 960 / 900, 90)
    drawing.text("NOTES", "SERIF", 250, 5600, -1560, "Terrace", CENTER)
    drawing.text("NOTES", "SERIF", 200, 13500, -1390, "Pond", CENTER, -8, 0x4A7391)
    drawing.text("NOTES", "SERIF", 250, 17700, 1600, "Garden", CENTER, 62, 0x5F7C4D)


# ---- Axes and dimensions ----

def draw_axes():
    for x, name in zip((180, 4060, 7660, 10260, 13820), "ABCDE"):
        drawing.line("AXES", x, -250, x, 11860)
        drawing.insert("DIMENSIONS", "AXIS MARK", x, 12130)
        drawing.text("DIMENSIONS", "SANS", 210, x, 12130, name, CENTER, middle=True)
    for y, name in zip((180, 5120, 9420), "123"):
        drawing.line("AXES", -2930, y, 14250, y)
        drawing.insert("DIMENSIONS", "AXIS MARK", -3200, y)
        drawing.text("DIMENSIONS", "SANS", 210, -3200, y, name, CENTER, middle=True)


def dimension(a, b, distance, shift=0.0, gap=150):
    """Of two points, on a line at a distance to the left of the way from a to b;
    its text is shifted along it."""
    name = f"*D{sum(key.startswith('*D') for key in blocks) + 1}"
    shapes = block(name)
    length = math.hypot(b[0] - a[0], b[1] - a[1])
    turn = math.degrees(math.atan2(b[1] - a[1], b[0] - a[0]))
    side = math.copysign(1, distance)

    def place(*points):
        return turned(points, turn, *a)

    for x in (0, length):
        p, q = place((x, side * gap), (x, distance + side * 120))
        shapes.line("DIMENSIONS", *p, *q, color=0xD3B3A3)
    p, q = place((0, distance), (length, distance))
    shapes.line("DIMENSIONS", *p, *q)
    for x, way in ((0, 1), (length, -1)):
        shapes.solid("DIMENSIONS", *place((x, distance), (x + way * 210, distance + 42),
                                          (x + way * 210, distance - 42)))
    is_reversed = not -90 < turn <= 90
    above = -90 if is_reversed else 90
    [middle] = place((length / 2 + shift, distance + above))
    shapes.text("DIMENSIONS", "SANS", 180, *middle, f"{length / 1000:.2f}", CENTER,
                turn + 180 if is_reversed else turn)
    [line] = place((length, distance))
    drawing.entity("DIMENSION", "DIMENSIONS", None, 100, "AcDbDimension", 2, name,
                   *at(10, *line), *at(11, *middle), 70, 33, 3, "STANDARD",
                   100, "AcDbAlignedDimension", *at(13, *a), *at(14, *b))


def draw_dimensions():
    xs, ys = (180, 4060, 7660, 10260, 13820), (180, 5120, 9420)
    for x0, x1 in zip(xs, xs[1:]):
        dimension((x0, 9600), (x1, 9600), 1250, gap=1000)
    dimension((0, 9600), (14000, 9600), 1850, gap=1100)
    for y0, y1 in zip(ys, ys[1:]):
        dimension((0, y0), (0, y1), 1350, gap=1100)
    dimension((0, 0), (0, 9600), 2050, shift=-1200, gap=1200)
    dimension(TERRACE[1], TERRACE[2], -650)


# ---- The sheet ----

SHEET = (-5600, -4900, 26400, 13100)
COLUMN, EDGE = 20000, 25900


def draw_sheet():
    drawing.plate(box(*SHEET), WHITE, "SHEET")
    inner = (-5100, -4400, EDGE, 12600)
    drawing.fill("SHEET", INK, box(*inner), box(inner[0] + 45, inner[1] + 45, EDGE - 45, 12555))
    drawing.line("SHEET", COLUMN, -4400, COLUMN, 12600)


def draw_heading():
    x = COLUMN + 400
    drawing.text("SHEET", "SERIF", 490, x, 11500, "Linden House")
    drawing.text("SHEET", "SANS", 400, EDGE - 400, 10660, "בית התרזה", RIGHT, color=ACCENT)
    drawing.text("NOTES", "SANS", 210, x, 10700, "Ground floor")
    drawing.line("SHEET", x, 10250, EDGE - 400, 10250)


def draw_room_table():
    x, y = COLUMN + 400, 9750
    drawing.text("SHEET", "SANS", 180, x, y, "ROOMS", color=ACCENT)
    total = sum(map(area, ROOMS))
    rows = [("NOTES", room[0], area(room)) for room in ROOMS] + [("ROOMS", "Total", total)]
    for layer, name, size in rows:
        y -= 400
        drawing.text(layer, "SANS", 185, x, y, name)
        drawing.text(layer, "MONO", 175, EDGE - 400, y, f"{size:.2f} m²", RIGHT)
        if name != "Total":
            drawing.line("NOTES", x, y - 115, EDGE - 400, y - 115, color=0xDDE1E4)


def draw_legend():
    x, y = COLUMN + 400, 6230
    drawing.text("SHEET", "SANS", 180, x, y, "LEGEND", color=ACCENT)
    for i, name in enumerate(("Wall", "Window", "Axis", "Tiles", "Tree", "Roof edge")):
        drawing.text("NOTES", "SANS", 165, x + 850 + 2700 * (i // 3), y - 520 - 480 * (i % 3), name)
    drawing.fill("WALLS", 0x4A5661, box(x, y - 550, x + 600, y - 350))
    drawing.insert("WINDOWS", "WINDOW", x, y - 1030, 0.6, 200 / 360)
    drawing.line("AXES", x - 20, y - 1400, x + 620, y - 1400)
    tiles = box(x + 2700, y - 580, x + 3300, y - 320)
    drawing.hatch("FLOORS", [polyline_loop(tiles)], 0xD5DDE1, [(0, 130), (90, 130)])
    drawing.polyline("FLOORS", tiles)
    drawing.insert("GARDEN", "TREE", x + 3000, y - 920, 0.2, 0.2, 9)
    drawing.line("ROOF", x + 2700, y - 1400, x + 3300, y - 1400)


def draw_notes():
    x, gap = COLUMN + 400, "\\P{\\H0.35x;\\P}"
    notes = ["Dimensions are in metres, between axes; check them on site before cutting.",
             "Outer walls: brick, 36 cm. Kitchen and bath: tiles of 30 × 30 cm.",
             "{\\fDejaVu Serif|b0|i0;\\c3297178;The old linden in the east stays.}"]
    drawing.text("SHEET", "SANS", 180, x, 4050, "NOTES", color=ACCENT)
    drawing.mtext("NOTES", "SANS", 165, x, 3750, 5100, gap.join(notes))


def draw_scale_and_north():
    x0, y0 = COLUMN + 400, -200
    for i in range(6):
        cell = box(x0 + i * 500, y0, x0 + (i + 1) * 500, y0 + 120)
        if i % 2 == 0:
            drawing.fill("SHEET", INK, cell)
        drawing.polyline("SHEET", cell)
    for metres in range(4):
        drawing.text("NOTES", "MONO", 150, x0 + metres * 1000, y0 + 230,
                     f"{metres} m" if metres == 3 else str(metres), CENTER)
    drawing.insert("SHEET", "NORTH", 24880, -250)


def draw_title_block():
    x, y = COLUMN, -4400
    sheet = ("SHEET_NUMBER", "MONO", 300, x + 3150, y + 200, "A-101")
    drawing.insert("SHEET", "TITLE", x, y, attributes=[sheet])
    for dx, dy, height, string in ((200, 2230, 290, "Floor plan, furnished"),
                                   (200, 1230, 260, "1 : 50"), (3150, 1230, 260, "2026-03-20"),
                                   (200, 230, 260, "displaylist")):
        drawing.text("ROOMS", "SANS", height, x + dx, y + dy, string)


def draw_review():
    """What a layer that is off keeps to itself."""
    drawing.circle("REVIEW", 7000, 4800, 6000)
    drawing.text("REVIEW", "SANS", 900, 7000, 4800, "move this wall?", CENTER, 20)


# ---- The file ----

def table(name, entries):
    lines = pairs(0, "TABLE", 2, name, 5, Handles.next(), 100, "AcDbSymbolTable", 70, len(entries))
    for kind, entry in entries:
        lines += pairs(0, name, 105 if name == "DIMSTYLE" else 5, Handles.next(),
                       100, "AcDbSymbolTableRecord", 100, f"AcDb{kind}TableRecord", *entry)
    return lines + pairs(0, "ENDTAB")


def line_type(name, picture, dashes):
    parts = [v for dash in dashes for v in (49, float(dash), 74, 0)]
    return (2, name, 70, 0, 3, picture, 72, 65, 73, len(dashes),
            40, float(sum(map(abs, dashes))), *parts)


def tables():
    line_types = [("ByBlock", "", []), ("ByLayer", "", []), *LINE_TYPES]
    names = ["*Model_Space", "*Paper_Space", *blocks]
    return [
        *table("LTYPE", [("Linetype", line_type(*entry)) for entry in line_types]),
        *table("LAYER", [("Layer", (2, name, 70, 0, 62, index, 420, color, 6, line))
                         for name, index, color, line in LAYERS]),
        *table("STYLE", [("TextStyle", (2, name, 70, 0, 40, 0.0, 41, 1.0, 50, 0.0, 71, 0,
                                        42, 2.5, 3, file, 4, "")) for name, file in STYLES]),
        *table("APPID", [("RegApp", (2, "ACAD", 70, 0))]),
        *table("DIMSTYLE", [("DimStyle", (2, "STANDARD", 70, 0, 140, 180.0, 41, 210.0))]),
        *table("BLOCK_RECORD", [("Block", (2, name)) for name in names]),
    ]


def block_lines(name, shapes):
    flags = 1 if name.startswith("*D") else 0
    head = (5, Handles.next(), 100, "AcDbEntity", 8, "0")
    return [*pairs(0, "BLOCK", *head, 100, "AcDbBlockBegin", 2, name, 70, flags,
                   *at(10, 0, 0), 3, name, 1, ""),
            *shapes.lines,
            *pairs(0, "ENDBLK", 5, Handles.next(), 100, "AcDbEntity", 8, "0",
                   100, "AcDbBlockEnd")]


def section(name, lines):
    return [*pairs(0, "SECTION", 2, name), *lines, *pairs(0, "ENDSEC")]


def file_lines():
    spaces = [("*Model_Space", Shapes()), ("*Paper_Space", Shapes())]
    body = [*section("TABLES", tables()),
            *section("BLOCKS", [line for name, shapes in [*spaces, *blocks.items()]
                                for line in block_lines(name, shapes)]),
            *section("ENTITIES", drawing.lines),
            *section("OBJECTS", pairs(0, "DICTIONARY", 5, "C", 330, "0", 100, "AcDbDictionary")),
            *pairs(0, "EOF")]
    header = pairs(9, "$ACADVER", 1, "AC1021", 9, "$DWGCODEPAGE", 3, "ANSI_1252",
                   9, "$INSUNITS", 70, 4, 9, "$LTSCALE", 40, 1.0,
                   9, "$EXTMIN", *at(10, *SHEET[:2]), 9, "$EXTMAX", *at(10, *SHEET[2:]),
                   9, "$HANDSEED", 5, Handles.next())
    return [*section("HEADER", header), *body]


def main():
    for make in (make_openings, make_seats, make_bedroom, make_kitchen_and_bath, make_plants,
                 make_signs):
        make()
    for draw in (draw_sheet, draw_garden, draw_floors, draw_axes, draw_furniture, draw_stairs,
                 draw_walls, draw_room_names, draw_dimensions, draw_heading, draw_room_table,
                 draw_legend, draw_notes, draw_scale_and_north, draw_title_block, draw_review):
        draw()
    path = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("house.dxf")
    path.write_text("\n".join(file_lines()) + "\n", encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main()
