"""Sets of sections, their loops as arrays, and the sets between two others."""

from __future__ import annotations

import operator
import os
from collections.abc import Iterator, Mapping, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, overload

import numpy as np
import numpy.typing as npt

from . import _core
from ._findings import DocumentError, Finding, FindingsError, Source, findings_in, text_of

if TYPE_CHECKING:
    from matplotlib.axes import Axes

Points = npt.NDArray[np.float64]
Indices = npt.NDArray[np.int64]
Flags = npt.NDArray[np.bool_]


class IncompatibleSections(FindingsError):
    """Two sets between which there is none. Places in a finding are those in the first."""


@dataclass(frozen=True)
class SectionProperties:
    """Area, moments and what follows from them, of one section of one material, uncracked.

    In the unit of the positions, its square, and so on. A number that a section does not have is not a number.
    """

    #: Holes taken off.
    area: float
    #: The length of the outline.
    outer_perimeter: float
    #: The length of all holes together.
    inner_perimeter: float
    #: About the x axis of the coordinates: the integral of y.
    first_moment_x: float
    #: About the y axis of the coordinates: the integral of x.
    first_moment_y: float
    #: In the coordinates of the positions.
    centroid: tuple[float, float]
    #: About the horizontal axis through the centroid: the integral of y squared.
    ix: float
    #: About the vertical axis through the centroid: the integral of x squared.
    iy: float
    #: About these axes: the integral of x times y.
    ixy: float
    #: The greatest second moment about an axis through the centroid.
    i1: float
    #: The least one.
    i2: float
    #: The direction of the axis of the greatest, in radians counter-clockwise from x.
    angle: float
    #: From the centroid up to the highest point.
    top: float
    #: From the centroid down to the lowest point.
    bottom: float
    #: From the centroid to the point furthest left.
    left: float
    #: From the centroid to the point furthest right.
    right: float
    #: `ix` over `top`.
    section_modulus_top: float
    #: `ix` over `bottom`.
    section_modulus_bottom: float
    #: `iy` over `left`.
    section_modulus_left: float
    #: `iy` over `right`.
    section_modulus_right: float
    #: The radius of gyration about the horizontal axis.
    radius_x: float
    #: The radius of gyration about the vertical axis.
    radius_y: float


class Section:
    """One section of a set: an outline with holes.

    It keeps its set alive. Arrays are copies: what is done to them does not reach the section.
    """

    __slots__ = ("_set", "_place")

    def __init__(self, core: _core.SectionSet, place: int) -> None:
        self._set = core
        self._place = place

    @property
    def name(self) -> str:
        """The name of the assembly part, empty where it has none."""
        return self._set.section_names()[self._place]

    @property
    def outline(self) -> Points:
        """The points of the exterior loop, counter-clockwise, n by 2."""
        return self._boundary()[0][0]

    @property
    def holes(self) -> list[Points]:
        """The points of each interior loop, clockwise, n by 2."""
        return [points for points, _, _, _ in self._boundary()[1:]]

    @property
    def loop_indices(self) -> list[Indices]:
        """For each loop, the exterior one first, the places of its points in the positions of the set."""
        return [indices for _, indices, _, _ in self._boundary()]

    @property
    def names(self) -> list[list[str]]:
        """For each loop, the exterior one first, the names of its points; empty for a point without one."""
        return [names for _, _, _, names in self._boundary()]

    @property
    def convex_loops(self) -> list[Points]:
        """The points of loops that together cover the section, counter-clockwise and convex as far as cutting got.

        Cut at the first demand, and kept.
        """
        return [points for points, _, _, _ in self._set.convex_loops(self._place)]

    @property
    def convex_loop_indices(self) -> list[Indices]:
        """For each convex loop, the places of its points in the positions of the set."""
        return [indices for _, indices, _, _ in self._set.convex_loops(self._place)]

    @property
    def edge_on_outline(self) -> list[Flags]:
        """For each convex loop, point by point, whether the edge that arrives there lies on the outline or a hole.

        False for an edge that a bridge or a cut has made.
        """
        return [flags for _, _, flags, _ in self._set.convex_loops(self._place)]

    @property
    def added_points(self) -> Points:
        """The feet of bridges to holes that are new points, n by 2. None before the section has been cut."""
        return self._set.positions()[self._set.added_vertices(self._place)]

    @property
    def properties(self) -> SectionProperties:
        """Area, centroid, moments and so on, from outline and holes. Nothing is cut."""
        return SectionProperties(**self._set.properties(self._place))

    def plot(self, axes: Axes | None = None, *, convex_loops: bool = True, **line: Any) -> Axes:
        """Draws the section with matplotlib and returns the axes.

        `line` goes to the lines of outline and holes.
        """
        import matplotlib.pyplot as pyplot

        drawn = pyplot.gca() if axes is None else axes
        if convex_loops:
            for points in self.convex_loops:
                drawn.fill(points[:, 0], points[:, 1], alpha=0.35, linewidth=0.5, edgecolor="gray")
        for points in [self.outline, *self.holes]:
            closed = np.vstack([points, points[:1]])
            drawn.plot(closed[:, 0], closed[:, 1], **{"color": "black", "linewidth": 1.2, **line})
        drawn.set_aspect("equal")
        return drawn

    def _repr_svg_(self) -> str:
        return to_svg(self)

    def __eq__(self, other: object) -> bool:
        """True for the same section of the same set."""
        return isinstance(other, Section) and self._set is other._set and self._place == other._place

    def __hash__(self) -> int:
        return hash((id(self._set), self._place))

    def __reduce__(self) -> tuple[Any, ...]:
        return _restore_section, (Sections(self._set), self._place)

    def __repr__(self) -> str:
        loops = self._boundary()
        return f"<sectrix.Section {self.name!r}: {len(loops[0][0])} points, {len(loops) - 1} holes>"

    def _boundary(self) -> list[_core.LoopData]:
        return self._set.boundary_loops(self._place)


class Sections(Sequence[Section]):
    """A set of sections over one list of positions, in the order of its document.

    By index, by slice, or by the name of a section, of which the first counts. Safe to use from several threads.
    """

    def __init__(self, core: _core.SectionSet) -> None:
        self._core = core

    def __len__(self) -> int:
        return len(self._core.section_names())

    @overload
    def __getitem__(self, key: int | str) -> Section: ...
    @overload
    def __getitem__(self, key: slice) -> list[Section]: ...
    def __getitem__(self, key: int | str | slice) -> Section | list[Section]:
        count = len(self)
        if isinstance(key, slice):
            return [Section(self._core, place) for place in range(*key.indices(count))]
        if isinstance(key, str):
            names = self._core.section_names()
            if key not in names:
                raise KeyError(key)
            return Section(self._core, names.index(key))
        place = operator.index(key)
        if not -count <= place < count:
            raise IndexError(f"there are {count} sections, and none at {place}")
        return Section(self._core, place % count)

    def __iter__(self) -> Iterator[Section]:
        return (Section(self._core, place) for place in range(len(self)))

    def __contains__(self, item: object) -> bool:
        """True for the name of a section, and for a section of this very set."""
        if isinstance(item, str):
            return item in self._core.section_names()
        return isinstance(item, Section) and item._set is self._core

    @property
    def names(self) -> list[str]:
        """The name of each section, empty for one without a name."""
        return self._core.section_names()

    @property
    def positions(self) -> Points:
        """All positions, n by 2, also those that no loop uses; behind them the feet of bridges in what was cut."""
        return self._core.positions()

    @property
    def position_names(self) -> list[str]:
        """The name of each position, empty for one without."""
        return self._core.position_names()

    @property
    def parameters(self) -> dict[str, float]:
        """The parameters of the document. A copy."""
        return self._core.parameters()

    def cut(self) -> int:
        """Cuts all sections that are not cut yet, and returns the number of convex loops. Other threads run meanwhile."""
        return self._core.cut()

    def normalize_vertical(self) -> None:
        """Shifts all positions so that the lowest one has y = 0. What was cut is cut anew when it is asked for."""
        self._core.normalize_vertical()

    def transform(self, matrix: npt.ArrayLike) -> None:
        """Maps all positions by a 3 by 3 matrix. What was cut is cut anew when it is asked for.

        A point is a row (x, y, 1) that is multiplied with the matrix and divided by the third number that comes out; so
        the last row moves.
        """
        elements = np.asarray(matrix, dtype=np.float64)
        if elements.shape != (3, 3):
            raise ValueError(f"a matrix has 3 rows of 3 numbers, not the shape {elements.shape}")
        self._core.transform(elements.ravel().tolist())

    def __repr__(self) -> str:
        names = ", ".join(map(repr, self.names[:4])) + (", ..." if len(self) > 4 else "")
        return f"<sectrix.Sections: {names or 'none'}>"

    def __reduce__(self) -> tuple[Any, tuple[bytes]]:
        return _restore, (_document(self),)


def read(source: Source, scale: float = 1.0, *, strict: bool = False) -> Sections:
    """The sections of a document, with all coordinates multiplied by `scale`.

    `source` is a path, an open file, or the text itself. What the document has that cannot be used is passed over, as
    `check` tells; where that finds an error, strict reading raises `DocumentError`. Raises that too for what is no JSON,
    and `OSError` where the file cannot be read.
    """
    text, file = text_of(source)
    return _read(text, file, scale, strict)


def loads(text: str | bytes, scale: float = 1.0, *, strict: bool = False) -> Sections:
    """The sections of a document that is given as text."""
    return _read(text if isinstance(text, bytes) else text.encode(), "", scale, strict)


def dumps(sections: Sections) -> str:
    """The text of a document that reads as the same set, with every number to the last bit."""
    return _document(sections).decode()


def write(sections: Sections, target: str | os.PathLike[str]) -> None:
    """Writes the document of a set into a file."""
    document = _document(sections)
    with open(target, "wb") as file:
        file.write(document)


def blend(first: Sections, second: Sections, ratio: float) -> Sections:
    """The set that lies `ratio` of the way from one to another: 0 is the first, 1 the second, beyond them it goes on.

    Loops are aligned by the names of their positions. Raises `IncompatibleSections` where the two are not built alike.
    """
    core = first._core.blend(second._core, ratio)
    if core is None:
        raise IncompatibleSections(Finding(*fields) for fields in first._core.blend_findings(second._core))
    return Sections(core)


def to_svg(
    section: Section,
    *,
    title: str = "",
    subtitle: str = "",
    unit: str = "units",
    width: float = 960.0,
    convex_loops: bool = True,
    feet: bool = True,
    names: bool = True,
    dimensions: bool = True,
    legend: bool = True,
) -> str:
    """The picture of a section as SVG, `width` pixels wide at most; empty for one without a finite extent."""
    return section._set.svg(
        section._place, title or section.name, subtitle, unit, width, convex_loops, feet, names, dimensions, legend
    )


def _document(sections: Sections) -> bytes:
    if not np.isfinite(sections.positions).all() or not np.isfinite(list(sections.parameters.values())).all():
        raise ValueError("a document has no form for numbers that are not finite")
    return sections._core.text()


def _read(text: bytes, file: str, scale: float, strict: bool) -> Sections:
    core = _core.SectionSet.from_text(text, scale)
    if strict or core is None:
        errors = [finding for finding in findings_in(text, file, scale) if finding.severity == "error"]
        if errors or core is None:
            raise DocumentError(errors)
    return Sections(core)


def _restore(document: bytes) -> Sections:
    return loads(document)


def _restore_section(sections: Sections, place: int) -> Section:
    return sections[place]
