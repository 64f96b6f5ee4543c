"""Closed solids through sections, and where the sections stand."""

from __future__ import annotations

import os
from collections.abc import Iterable
from dataclasses import dataclass

import numpy as np
import numpy.typing as npt

from . import _core
from ._findings import Finding, FindingsError
from ._sections import Section

Vector = Iterable[float]
_UP = (0.0, 0.0, 1.0)


class SweepError(FindingsError):
    """Stations through which there is no solid. The `section` of a finding is the place of the station."""


@dataclass(frozen=True, eq=False)
class Solid:
    """A closed solid of triangles."""

    #: Each once, n by 3.
    points: npt.NDArray[np.float64]
    #: Places in the points, m by 3, counter-clockwise as seen from outside.
    triangles: npt.NDArray[np.uint32]
    #: What the triangles enclose.
    volume: float
    #: The area of the surface.
    area: float
    #: True when every edge is shared by two triangles, as it is with what `sweep` makes.
    is_closed: bool

    def write(self, path: str | os.PathLike[str]) -> None:
        """Writes a file in the format that its suffix names, such as .stl, .ply, .obj or .vtu.

        Needs the package meshio, which raises for a suffix that it does not know.
        """
        import meshio

        file = os.fspath(path)
        options = {"binary": True} if file.lower().endswith(".stl") else {}
        meshio.Mesh(self.points, [("triangle", self.triangles.astype(np.int64))]).write(file, **options)


def sweep(stations: Iterable[tuple[Section, npt.ArrayLike]]) -> Solid:
    """The solid through two or more sections of one structure, straight from each to the next.

    A station is a section and its placement, 4 by 4: the point (x, y) of the section comes to the row (x, y, 0, 1) times
    the placement. Vertices correspond by their names, or else place by place. The first and the last section are cut.
    Raises `SweepError` where there is no solid.
    """
    placed = [(section._set, section._place, _placement_elements(placement)) for section, placement in stations]
    points, triangles, volume, area, is_closed, found = _core.sweep(placed)
    if found:
        raise SweepError(Finding(*fields) for fields in found)
    return Solid(points, triangles, volume, area, is_closed)


def placement(origin: Vector, direction: Vector, up: Vector = _UP, twist: float = 0.0) -> npt.NDArray[np.float64]:
    """The placement, 4 by 4, of a section that stands across a direction.

    Someone who looks along the direction sees the section as it is drawn. `twist` turns it counter-clockwise in its plane,
    in radians.
    """
    matrices = _core.placement(_vector(origin), _vector(direction), _vector(up), twist)
    return matrices.reshape(4, 4)


def placements_along_line(start: Vector, end: Vector, count: int, up: Vector = _UP) -> npt.NDArray[np.float64]:
    """Placements at equal distances from start to end, across the line, n by 4 by 4. None for a count below 2."""
    return _core.placements_along_line(_vector(start), _vector(end), max(count, 0), _vector(up))


def placements_along_curve(
    points: npt.ArrayLike, up: Vector = _UP, twists: Iterable[float] = ()
) -> npt.NDArray[np.float64]:
    """Placements at the points of a curve (n by 3), across the curve, n by 4 by 4. None for fewer than two points.

    The twist, in radians, at each point; 0 for those beyond its end.
    """
    return _core.placements_along_curve(
        [_vector(point) for point in np.asarray(points, dtype=np.float64)], _vector(up), list(twists)
    )


def _placement_elements(matrix: npt.ArrayLike) -> list[float]:
    elements = np.asarray(matrix, dtype=np.float64)
    if elements.shape != (4, 4):
        raise ValueError(f"a placement has 4 rows of 4 numbers, not the shape {elements.shape}")
    return [float(element) for element in elements.ravel()]


def _vector(numbers: Vector) -> list[float]:
    vector = [float(number) for number in numbers]
    if len(vector) != 3:
        raise ValueError(f"a point in space has 3 numbers, not {len(vector)}")
    return vector
