#!/usr/bin/env python3
"""Writes the sample models and extrusion documents: pier.stl, bearing.obj, girder.json and its end planes.

Argument: the folder, unless it is the one of this script, where the output is committed.
"""

import json
import math
import pathlib
import re
import struct
import sys

FOLDER = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent


def quad(a, b, c, d):
    return [(a, b, c), (a, c, d)]


def grid(corner, u, v, size):
    """A flat parallelogram as squares of about `size`."""
    length = lambda w: math.sqrt(sum(x * x for x in w))
    m, n = (max(1, round(length(w) / size)) for w in (u, v))
    at = lambda i, k: tuple(corner[axis] + u[axis] * i / m + v[axis] * k / n for axis in range(3))
    return [t for i in range(m) for k in range(n) for t in quad(at(i, k), at(i + 1, k), at(i + 1, k + 1), at(i, k + 1))]


def prism(outline, y0, y1, size):
    """A convex outline of (x, z), counter-clockwise with x to the right and z upward, drawn out along y."""
    triangles = []
    for (xa, za), (xb, zb) in zip(outline, outline[1:] + outline[:1]):
        triangles += grid((xa, y0, za), (0, y1 - y0, 0), (xb - xa, 0, zb - za), size)
    (x0, z0), rest = outline[0], outline[1:]
    for (xa, za), (xb, zb) in zip(rest, rest[1:]):
        triangles += [((x0, y0, z0), (xa, y0, za), (xb, y0, zb)), ((x0, y1, z0), (xb, y1, zb), (xa, y1, za))]
    return triangles


def box(x0, x1, y0, y1, z0, z1, size):
    dx, dy, dz = (x1 - x0, 0, 0), (0, y1 - y0, 0), (0, 0, z1 - z0)
    return (grid((x0, y0, z0), dy, dx, size) + grid((x0, y0, z1), dx, dy, size) + grid((x0, y0, z0), dx, dz, size)
            + grid((x0, y1, z0), dz, dx, size) + grid((x0, y0, z0), dz, dy, size) + grid((x1, y0, z0), dy, dz, size))


def column(x, y, radius, z0, z1, levels):
    """Open below and above. Its circle does not quite close, as tessellators leave it: a seam of 0.06 mm is left."""
    seam = 0.06 / radius
    angles = [2 * math.pi * i / 24 for i in range(24)] + [2 * math.pi - seam, 2 * math.pi]
    at = lambda angle, level: (x + radius * math.cos(angle), y + radius * math.sin(angle),
                               z0 + (z1 - z0) * level / levels)
    return [t for a, b in zip(angles, angles[1:]) for level in range(levels)
            for t in quad(at(a, level), at(b, level), at(b, level + 1), at(a, level + 1))]


def write_stl(name, triangles):
    """Binary: each triangle with corners of its own."""
    data = b"a two-column pier, millimetres".ljust(80) + struct.pack("<I", len(triangles))
    for triangle in triangles:
        data += struct.pack("<12fH", 0, 0, 0, *(x for corner in triangle for x in corner), 0)
    (FOLDER / name).write_bytes(data)


def pier():
    cap = [(-5500, 8300), (-3900, 7500), (3900, 7500), (5500, 8300), (5500, 9100), (-5500, 9100)]
    solids = box(-4600, 4600, -2100, 2100, 0, 1500, 700)
    for x in (-2600, 2600):
        solids += column(x, 0, 750, 1500, 7500, 8)
    solids += prism(cap, -900, 900, 600)
    for i in range(6):
        x = -4500 + 1800 * i
        solids += box(x - 350, x + 350, -350, 350, 9100, 9330, 350)
    return solids


def write_bearing():
    """A laminated bearing between plates, metres: some faces are quads, and the anchor bolts are lines."""
    lines, count = ["# laminated bearing between plates, metres"], 0

    def block(name, half, z0, z1, quads):
        nonlocal count
        lines.append(f"# {name}")
        for z in (z0, z1):
            lines.extend(f"v {x * half} {y * half} {z}" for x, y in ((-1, -1), (1, -1), (1, 1), (-1, 1)))
        sides = [(i, (i + 1) % 4, (i + 1) % 4 + 4, i + 4) for i in range(4)] + [(3, 2, 1, 0), (4, 5, 6, 7)]
        for i, face in enumerate(sides):
            a, b, c, d = (corner + count + 1 for corner in face)
            lines.extend([f"f {a} {b} {c} {d}"] if i in quads else [f"f {a} {b} {c}", f"f {a} {c} {d}"])
        count += 8

    block("masonry plate, its upper and lower face as quads", 0.36, 0.0, 0.04, (4, 5))
    z = 0.04
    for layer in range(4):
        block("elastomer", 0.24, z, z + 0.022, ())
        z += 0.022
        if layer < 3:
            block("steel shim", 0.25, z, z + 0.004, ())
            z += 0.004
    block("sole plate, one side as a quad", 0.30, z, z + 0.05, (1,))
    lines.append("# anchor bolts")
    for x in (-0.31, 0.31):
        for y in (-0.31, 0.31):
            lines += [f"v {x} {y} -0.15", f"v {x} {y} 0.09", f"l {count + 1} {count + 2}"]
            count += 2
    (FOLDER / "bearing.obj").write_text("\n".join(lines) + "\n")


LENGTH, START_SKEW, END_SKEW = 12.0, 20.0, -12.0  # metres, degrees


def placed(s, y, z):
    """A point of the girder at the fraction s of its length: skewed towards its ends, cambered between them."""
    skew = (1 - s) * math.tan(math.radians(START_SKEW)) + s * math.tan(math.radians(END_SKEW))
    return [round(v, 6) for v in (LENGTH * s + y * skew, y, z + 0.06 * 4 * s * (1 - s))]


def girder():
    def outline(web):  # inches, one half; a bulb-tee with the web as thick as asked for
        half = [(13, 0), (13, 6), (web, 10.5 - (web - 3) * 0.45), (web, 64.5), (max(5, web), 66.5), (21, 68.5), (21, 72)]
        return [(y * 0.0254, z * 0.0254) for y, z in half + [(-y, z) for y, z in reversed(half)]]

    exterior = [(0, 10), (0.1, 10), (0.15, 3), (0.5, 3), (0.85, 3), (0.9, 10), (1, 10)]
    duct = lambda s: [(0.06 * math.cos(a), 0.3 + 3.2 * (s - 0.5) ** 2 + 0.06 * math.sin(a))
                      for a in (2 * math.pi * i / 12 for i in range(12))]
    profiles = lambda stations: [{"Points": [placed(s, y, z) for y, z in points]} for s, points in stations]
    return {
        "assemblyPartName": "Bulb-tee girder with end blocks",
        "Sections": [
            {"Exterior": True, "Profiles": profiles((s, outline(web)) for s, web in exterior)},
            {"Exterior": False, "Profiles": profiles((i / 8, duct(i / 8)) for i in range(9))},
        ],
    }


def end_plane(start):
    skew = START_SKEW if start else END_SKEW
    angle = math.radians(skew)
    outward = -1 if start else 1
    normal = [outward * math.cos(angle), -outward * math.sin(angle), 0]
    return {"Start": start, "Origin": placed(0 if start else 1, 0, 0.9), "Normal": [round(v, 9) for v in normal],
            "Skew": skew}


def write_json(name, document):
    number = r"\s+([-\d.e]+)"
    text = re.sub(rf"\[{number},{number},{number}\s+\]", r"[\1, \2, \3]", json.dumps(document, indent=2))
    (FOLDER / name).write_text(text + "\n")


if __name__ == "__main__":
    write_stl("pier.stl", pier())
    write_bearing()
    write_json("girder.json", girder())
    write_json("girder-start.json", end_plane(True))
    write_json("girder-end.json", end_plane(False))
