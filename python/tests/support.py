"""What the tests share: sample documents, and documents of any number of sections."""

from __future__ import annotations

import json
import pathlib

SOURCE = pathlib.Path(__file__).resolve().parents[2]
DATA = SOURCE / "examples" / "data"
PIER = DATA / "haunched-box-pier.json"
MIDSPAN = DATA / "haunched-box-midspan.json"


def box(name: str, x: float, width: float) -> tuple[list[object], list[object]]:
    """The corners of a box, named after it, and those of its cell."""
    outer = [[x, 0.0], [x + width, 0.0], [x + width, 3.0], [x, 3.0]]
    inner: list[object] = [[x + 1, 1.0], [x + width - 1, 1.0], [x + width - 1, 2.0], [x + 1, 2.0]]
    return [{"name": f"{name}{place}", "coordinates": point} for place, point in enumerate(outer)], inner


def boxes(count: int, width: float = 6.0) -> str:
    """A document of so many boxes with a cell, called box 0 onward."""
    positions: list[object] = []
    sections = []
    for place in range(count):
        outer, inner = box(f"é{place}-", 10.0 * place, width)
        first = len(positions)
        positions += [*outer, *inner]
        loops = [[list(range(first, first + 4)), True], [list(range(first + 4, first + 8)), False]]
        sections.append({"assemblyPartName": f"box {place}", "loops": loops})
    return json.dumps({"Outlines": [positions, sections]})


def comb(teeth: int) -> str:
    """A document of one section that takes long to cut: a comb with a hole in each tooth."""
    outline: list[list[float]] = [[0, 0], [2 * teeth, 0]]
    for tooth in reversed(range(teeth)):
        outline += [[2 * tooth + 1.5, 1], [2 * tooth + 1.4, 9 + tooth % 3], [2 * tooth + 0.6, 9], [2 * tooth + 0.5, 1]]
    holes = []
    for tooth in range(teeth):
        holes.append([[2 * tooth + 0.8, 3], [2 * tooth + 1.2, 3], [2 * tooth + 1, 4]])
    positions = outline + [point for hole in holes for point in hole]
    loops: list[object] = [[list(range(len(outline))), True]]
    for place in range(teeth):
        first = len(outline) + 3 * place
        loops.append([[first, first + 1, first + 2], False])
    return json.dumps({"Outlines": [positions, [{"loops": loops}]]})
