"""Reads a girder, blends it along a span, plots area and inertia against the station, and saves the solid.

    girder_along_span.py PIER MIDSPAN PICTURE.svg SOLID.stl
"""

from __future__ import annotations

import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "sectrix", "svg.fonttype": "none", "font.size": 9})

import matplotlib.pyplot as pyplot
import numpy as np
import sectrix

SPAN = 60.0


def main(pier_path: str, midspan_path: str, picture: str, solid_path: str) -> None:
    pier, midspan = sectrix.read(pier_path), sectrix.read(midspan_path)

    # From pier to pier, level at midspan: the soffit is a parabola.
    stations = np.linspace(0.0, SPAN, 25)
    ratios = 1 - (2 * stations / SPAN - 1) ** 2
    sections = [sectrix.blend(pier, midspan, ratio)[0] for ratio in ratios]
    properties = [section.properties for section in sections]

    figure, (left, above, below) = pyplot.subplots(1, 3, figsize=(9.6, 2.7), layout="constrained")
    sections[0].plot(left)
    sections[len(sections) // 2].plot(left, convex_loops=False, color="tab:red")
    left.set_title("at the pier, and at midspan in red")
    for axes, title, values in (
        (above, "area in m²", [each.area for each in properties]),
        (below, "second moment in m⁴", [each.ix for each in properties]),
    ):
        axes.plot(stations, values, ".-")
        axes.set(title=title, xlabel="station in m", ylim=(0, None))
        axes.grid(alpha=0.3)
    figure.savefig(picture, metadata={"Date": None})

    placements = sectrix.placements_along_line((0, 0, 0), (0, SPAN, 0), len(sections))
    solid = sectrix.sweep(zip(sections, placements))
    solid.write(solid_path)
    print(f"{len(solid.triangles)} triangles, {solid.volume:.1f} m³ of concrete")


if __name__ == "__main__":
    main(*sys.argv[1:])
