#!/usr/bin/env python3
"""Writes the sample documents of sections. README.md says where their dimensions come from.

All loops run counter-clockwise, holes too. Argument: the folder, unless it is the one of this script, where the output
is committed.
"""

import json
import math
import pathlib
import sys

FOLDER = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent


class Document:
    """A pool of positions, and sections that refer to it by index. Equal positions are entered once."""

    def __init__(self, **params):
        self.positions = []
        self.names = {}
        self.indices = {}
        self.sections = []
        self.params = params

    def loop(self, points, names=None):
        """The indices of points; `names` maps a place in the loop to the name of its position."""
        indices = []
        for x, y in points:
            key = (round(x, 6) + 0.0, round(y, 6) + 0.0)
            if key not in self.indices:
                self.indices[key] = len(self.positions)
                self.positions.append(key)
            indices.append(self.indices[key])
        for place, name in (names or {}).items():
            self.names[indices[place]] = name
        return indices

    def section(self, name, outline, *holes):
        self.sections.append((name, outline, holes))

    def write(self, file):
        lines = []
        for index, (x, y) in enumerate(self.positions):
            point = f"[{number(x)}, {number(y)}]"
            name = self.names.get(index)
            lines.append(f'{{ "name": {json.dumps(name)}, "coordinates": {point} }}' if name else point)
        sections = []
        for name, outline, holes in self.sections:
            loops = [f"[{json.dumps(loop)}, {flag}]"
                     for loop, flag in [(outline, "true")] + [(hole, "false") for hole in holes]]
            sections.append(f'{{\n        "assemblyPartName": {json.dumps(name)},\n        "loops": [\n'
                            f'          {(","+chr(10)+"          ").join(loops)}\n        ]\n      }}')
        text = '{\n  "Outlines": [\n    [\n      ' + ",\n      ".join(lines) + "\n    ],\n    [\n      "
        text += ",\n      ".join(sections) + "\n    ]\n  ]"
        if self.params:
            text += ',\n  "Params": ' + json.dumps(self.params)
        (FOLDER / file).write_text(text + "\n}\n", encoding="utf-8")


def number(value):
    return repr(int(value)) if value == int(value) else repr(value)


def arc(centre, radius, start, end, edges):
    """Points on an arc, both ends included, angles in degrees."""
    return [(centre[0] + radius * math.cos(math.radians(start + (end - start) * i / edges)),
             centre[1] + radius * math.sin(math.radians(start + (end - start) * i / edges)))
            for i in range(edges + 1)]


def circle(centre, radius, edges):
    return arc(centre, radius, 0, 360, edges)[:-1]


def mirrored(right):
    """A symmetric outline from its right half, which goes from the bottom up."""
    return right + [(-x, y) for x, y in reversed(right) if x != 0]


def octagon(left, bottom, right, top, chamfer):
    """A rectangle with its corners cut off at 45 degrees."""
    c = chamfer
    return [(left + c, bottom), (right - c, bottom), (right, bottom + c), (right, top - c),
            (right - c, top), (left + c, top), (left, top - c), (left, bottom + c)]


BT72_RIGHT = [(13, 0), (13, 6), (3, 10.5), (3, 64.5), (5, 66.5), (21, 68.5), (21, 72)]


def i_girders():
    doc = Document(DepthTypeIV=54, DepthBT72=72)
    corners = {0: "BottomRight", -1: "BottomLeft"}
    four = mirrored([(13, 0), (13, 8), (4, 17), (4, 40), (10, 46), (10, 54)])
    doc.section("AASHTO Type IV", doc.loop(four, {**corners, 5: "TopRight", 6: "TopLeft"}))
    bulb = [(x + 100, y) for x, y in mirrored(BT72_RIGHT)]
    doc.section("PCI BT-72", doc.loop(bulb, {**corners, 6: "TopRight", 7: "TopLeft"}))
    doc.write("i-girders-inches.json")


def box_beam():
    doc = Document(Width=48, Depth=39)
    outline = doc.loop([(0, 0), (48, 0), (48, 39), (0, 39)],
                       {0: "BottomLeft", 1: "BottomRight", 2: "TopRight", 3: "TopLeft"})
    doc.section("Box beam BIII-48", outline, doc.loop(octagon(5, 5.5, 43, 33.5, 3)))
    doc.write("box-beam-inches.json")


def single_cell():
    doc = Document(Width=12, Depth=2.8, Crossfall=0.025)
    right = [(2.9, 0), (3.4, 2.25), (6, 2.45), (6, 2.65)]
    outline = doc.loop([(-2.9, 0)] + right + [(0, 2.8), (-6, 2.65), (-6, 2.45), (-3.4, 2.25)],
                       {0: "SoffitLeft", 1: "SoffitRight", 2: "WebTopRight", 3: "TipRight", 4: "DeckRight",
                        5: "Crown", 6: "DeckLeft", 7: "TipLeft", 8: "WebTopLeft"})
    cell = mirrored([(2.15, 0.24), (2.57, 0.44), (2.93, 2.1), (1.9, 2.5), (0, 2.55)])
    doc.section("Single-cell box girder", outline,
                doc.loop(cell, {0: "CellBottomRight", 8: "CellBottomLeft", 3: "CellTopRight", 5: "CellTopLeft"}))
    doc.write("box-girder-single-cell.json")


def three_cells():
    doc = Document(Width=14.4, Depth=2.0, Cells=3)
    outline = doc.loop([(-5.2, 0), (5.2, 0), (5.7, 1.65), (7.2, 1.8), (7.2, 2), (-7.2, 2), (-7.2, 1.8), (-5.7, 1.65)],
                       {0: "SoffitLeft", 1: "SoffitRight", 2: "WebTopRight", 3: "TipRight", 4: "DeckRight",
                        5: "DeckLeft", 6: "TipLeft", 7: "WebTopLeft"})
    inner = doc.loop(octagon(-1.6, 0.16, 1.6, 1.78, 0.1), {4: "Cell2TopRight", 5: "Cell2TopLeft"})
    # The sides of the outer cells follow the inclined outer webs, which are 0.3 m thick.
    right = [(2.0, 0.16), (4.83, 0.16), (4.99, 0.3), (5.38, 1.6), (5.2, 1.78), (2.0, 1.78), (1.9, 1.68), (1.9, 0.26)]
    left = [(-x, y) for x, y in reversed(right)]
    doc.section("Three-cell box girder", outline, doc.loop(left, {3: "Cell1TopLeft", 6: "Cell1BottomLeft"}), inner,
                doc.loop(right, {1: "Cell3BottomRight", 4: "Cell3TopRight"}))
    doc.write("box-girder-three-cells.json")


def t_girder_deck():
    doc = Document(Width=612, Girders=6, Spacing=108, Slab=8, Haunch=0.5)
    bottom, top = 72.5, 80.5
    for girder in range(6):
        x = 108 * girder - 270
        low = -306 if girder == 0 else x - 54
        high = 306 if girder == 5 else x + 54
        half = BT72_RIGHT[:-1] + [(21, bottom)]
        right = [(x + dx, y) for dx, y in half]
        left = [(x - dx, y) for dx, y in reversed(half)]
        outline = doc.loop(right + [(high, bottom), (high, top), (low, top), (low, bottom)] + left,
                           {0: f"Girder{girder + 1}BottomRight", len(half) * 2 + 3: f"Girder{girder + 1}BottomLeft"})
        if girder == 0:
            doc.names[doc.indices[(low, top)]] = "DeckLeft"
        if girder == 5:
            doc.names[doc.indices[(high, top)]] = "DeckRight"
        doc.section(f"T-girder {girder + 1}", outline)
    doc.write("t-girder-deck-inches.json")


def horseshoe(r, offset, edges):
    """The standard horseshoe of crown radius r, its sides and invert of radius 2r, all moved out by `offset`.

    Starts at the lower right corner; `edges` are those of a side, the crown and the invert.
    """
    side = 2 * r + offset
    # The corner lies on the circles about (-r, 0) and (0, r), so at equal distance from both: on y = -x.
    x = (-r + math.sqrt(2 * side * side - r * r)) / 2
    low = math.degrees(math.atan2(-x, x + r))
    sides, crown, invert = edges
    right = arc((-r, 0), side, low, 0, sides)
    top = arc((0, 0), r + offset, 0, 180, crown)
    left = [(-px, py) for px, py in reversed(right)]
    half = math.degrees(math.atan2(x, r + x))
    bottom = arc((0, r), side, -90 - half, -90 + half, invert)
    return right[:-1] + top + left[1:] + bottom[1:-1]


def tunnel():
    doc = Document(CrownRadius=4.5, Lining=0.45)
    r, t = 4.5, 0.45
    outer, inner = (24, 72, 48), (18, 64, 36)

    def names(prefix, edges):
        sides, crown, invert = edges
        return {0: prefix + "InvertRight", sides: prefix + "SpringRight", sides + crown // 2: prefix + "Crown",
                sides + crown: prefix + "SpringLeft", 2 * sides + crown: prefix + "InvertLeft"}

    def duct(angle):
        a = math.radians(angle)
        return doc.loop(circle(((2 * r + t / 2) * math.sin(a), r - (2 * r + t / 2) * math.cos(a)), 0.11, 16))

    doc.section("Horseshoe lining", doc.loop(horseshoe(r, t, outer), names("Outer", outer)),
                doc.loop(horseshoe(r, 0, inner), names("Inner", inner)), duct(-11), duct(11))
    doc.write("tunnel-horseshoe.json")


def pier_cap():
    doc = Document(Length=558, DepthAtStem=132, DepthAtEnd=60)
    outline = doc.loop([(-93, 0), (93, 0), (279, 72), (279, 132), (-279, 132), (-279, 72)],
                       {0: "StemLeft", 1: "StemRight", 3: "TopRight", 4: "TopLeft"})
    holes = [circle((x, 108), 9, 24) for x in (-210, -70, 70, 210)] + [circle((0, 48), 18, 32)]
    doc.section("Hammerhead pier cap", outline, *[doc.loop(hole) for hole in holes])
    doc.write("pier-cap-inches.json")


def voided_slab():
    doc = Document(Width=360, Depth=15, Voids=20, VoidDiameter=8)
    outline = doc.loop([(0, 0), (360, 0), (360, 15), (0, 15)],
                       {0: "BottomLeft", 1: "BottomRight", 2: "TopRight", 3: "TopLeft"})
    voids = [doc.loop(circle((36 * beam + x, 7.5), 4, 16)) for beam in range(10) for x in (10.5, 25.5)]
    doc.section("Voided slab, ten SII-36", outline, *voids)
    doc.write("voided-slab-inches.json")


def culvert():
    doc = Document(Span=3000, Rise=2400)
    outline = doc.loop([(0, 0), (6900, 0), (6900, 3000), (0, 3000)],
                       {0: "BaseLeft", 1: "BaseRight", 2: "RoofRight", 3: "RoofLeft"})
    cells = [doc.loop(octagon(left, 300, left + 3000, 2700, 150)) for left in (300, 3600)]
    doc.section("Twin box culvert", outline, *cells)
    doc.write("culvert-millimetres.json")


def turned(loop, start):
    """The same loop, begun at another place."""
    return loop[start:] + loop[:start]


def haunched(file, depth, bottom, web, start=0, cells=2, lost=None, **params):
    """A two-cell box girder below a deck that stays; `start` turns its loops and, unless 0, reorders its cells.

    With one cell it is the left one. `lost` is a corner of the outline without its name.
    """
    doc = Document(Depth=depth, BottomSlab=bottom, Web=web, **params)

    def web_face(y):  # of the outer web, inclined 1 in 10 below the cantilever
        return 4.4 - 0.1 * (-0.75 - y)

    right = [(web_face(-depth), -depth), (4.4, -0.75), (7.8, -0.445), (7.8, -0.195), (0, 0)]
    outline = mirrored(right)
    names = [name + "Right" for name in ("Soffit", "WebTop", "Tip", "Deck")]
    names += ["Crown"] + [name.replace("Right", "Left") for name in reversed(names)]
    corners = list(zip(outline, [None if name == lost else name for name in names]))
    floor = -depth + bottom
    cell = [((web / 2, floor), "BottomInner"), ((web_face(floor) - web, floor), "BottomOuter"),
            ((4.4 - web, -0.75), "TopOuter"), ((3.2, -0.42), "FilletOuter"), ((0.9, -0.3), "FilletInner"),
            ((web / 2, -0.55), "TopInner")]
    right_cell = [(point, "CellRight" + name) for point, name in cell]
    left_cell = [((-x, y), "CellLeft" + name) for (x, y), name in reversed(cell)]

    def loop(named):
        named = turned(named, start)
        return doc.loop([point for point, _ in named],
                        {place: name for place, (_, name) in enumerate(named) if name})

    holes = [left_cell, right_cell][:cells]
    loops = [loop(named) for named in ([corners] + holes if start == 0 else holes[::-1] + [corners])]
    doc.section("Haunched box girder", *(loops if start == 0 else [loops[-1]] + loops[:-1]))
    doc.write(file)


def haunched_box_girders():
    haunched("haunched-box-pier.json", 6.0, 0.8, 0.5, Station=0, PierWidth=3)
    haunched("haunched-box-midspan.json", 2.6, 0.25, 0.38, start=4, Station=57.5)
    haunched("haunched-box-one-cell.json", 2.6, 0.25, 0.38, start=2, cells=1, lost="TipRight", Station=57.5)


if __name__ == "__main__":
    for make in (i_girders, box_beam, single_cell, three_cells, t_girder_deck, tunnel, pier_cap, voided_slab, culvert,
                 haunched_box_girders):
        make()
