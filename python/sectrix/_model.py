"""Meshes, parts made of polylines, and the model database."""

from __future__ import annotations

import os
from dataclasses import dataclass, field
from typing import Any

import numpy as np
import numpy.typing as npt

from . import _core
from ._findings import DocumentError, Source, findings_in, text_of


class DatabaseError(RuntimeError):
    """What the database says of a file that cannot be read, or that has no such table."""

    def __init__(self, file: str, reason: str) -> None:
        super().__init__(file, reason)
        #: The file.
        self.file = file
        #: The reason in SQLite's words.
        self.reason = reason

    def __str__(self) -> str:
        return f"{self.file}: {self.reason}"


class Mesh:
    """Triangles over a list of points, which does not change.

    The points go through 32 bits, as imported models have them, and are mapped by `transform`, 4 by 4: a point is the row
    (x, y, z, 1) times the matrix.
    """

    __slots__ = ("_core",)

    def __init__(
        self,
        points: npt.ArrayLike,
        triangles: npt.ArrayLike,
        *,
        transform: npt.ArrayLike | None = None,
        key: str = "",
        name: str = "",
    ) -> None:
        rows = _rows_of_three(np.asarray(points, dtype=np.float32), "points")
        corners = _rows_of_three(np.asarray(triangles), "triangles")
        if corners.size and corners.dtype.kind not in "iu":
            raise TypeError(f"the corners of triangles are integers, not {corners.dtype}")
        if corners.size and not (0 <= corners.min() and corners.max() < len(rows)):
            raise ValueError(f"a triangle has a corner that is none of the {len(rows)} points")
        matrix = np.eye(4) if transform is None else np.asarray(transform, dtype=np.float64)
        if matrix.shape != (4, 4):
            raise ValueError(f"a transform has 4 rows of 4 numbers, not the shape {matrix.shape}")
        self._core = _core.Mesh(rows, corners.astype(np.uint32), matrix.ravel().tolist(), key, name)

    @staticmethod
    def read(path: str | os.PathLike[str], *, transform: npt.ArrayLike | None = None) -> Mesh:
        """The triangles of a file, such as .stl or .obj. Needs the package meshio; other faces are passed over."""
        import meshio

        file = meshio.read(path)
        blocks = [cells.data for cells in file.cells if cells.type == "triangle"]
        triangles = np.vstack(blocks) if blocks else np.empty((0, 3), np.int64)
        return Mesh(file.points, triangles, transform=transform, name=os.path.basename(os.fspath(path)))

    @property
    def key(self) -> str:
        """What identifies the mesh."""
        return self._core.key()

    @property
    def name(self) -> str:
        """The name to show."""
        return self._core.name()

    @property
    def points(self) -> npt.NDArray[np.float64]:
        """The points, n by 3, with the transform applied."""
        return self._core.positions()

    @property
    def triangles(self) -> npt.NDArray[np.int64]:
        """Places in the points, m by 3, wound as they were given."""
        return self._core.indices().reshape(-1, 3)

    @property
    def transform(self) -> npt.NDArray[np.float64]:
        """What the points were mapped by. Not to be applied again."""
        return self._core.transform()

    @property
    def bounding_box(self) -> tuple[tuple[float, float, float], tuple[float, float, float]] | None:
        """The least and the greatest coordinates; None without points."""
        return self._core.bounding_box()

    def merged(self) -> Mesh:
        """A copy in which points closer than 0.0001 are one, the first of them, and unused ones are gone."""
        mesh = Mesh.__new__(Mesh)
        mesh._core = self._core.merged()
        return mesh

    def __repr__(self) -> str:
        return f"<sectrix.Mesh {self.name!r}: {len(self.points)} points, {len(self.triangles)} triangles>"


@dataclass(frozen=True, eq=False)
class ExtrudedSection:
    """The profiles of one section of a part."""

    #: True for an outline, False for a hole.
    exterior: bool = True
    #: Polylines in space, n by 3 each. A coordinate that was not given is infinite.
    profiles: list[npt.NDArray[np.float64]] = field(default_factory=list)


@dataclass(frozen=True, eq=False)
class Extrusion:
    """A part as a list of sections in space."""

    #: The name of the assembly part.
    name: str = ""
    #: In the order of the document.
    sections: list[ExtrudedSection] = field(default_factory=list)

    @staticmethod
    def read(source: Source) -> Extrusion:
        """The part in a path, an open file, or a text. Raises `DocumentError` for what is no JSON."""
        text, file = text_of(source)
        read = _core.read_extrusion(text)
        if read is None:
            raise DocumentError(findings_in(text, file, 1.0, "extrusion"))
        name, sections = read
        return Extrusion(name, [ExtrudedSection(exterior, profiles) for exterior, profiles in sections])


@dataclass(frozen=True)
class EndPlane:
    """One end of a sweep."""

    #: True for the start, False for the end.
    is_start: bool
    #: A point of the plane. A coordinate that was not given is infinite.
    origin: tuple[float, float, float]
    #: A direction, as it was read.
    normal: tuple[float, float, float]
    #: The skew, as it was read.
    skew: float

    @staticmethod
    def read(source: Source) -> EndPlane:
        """The plane in a path, an open file, or a text. Raises `DocumentError` for what is no JSON."""
        text, file = text_of(source)
        read = _core.read_end_plane(text)
        if read is None:
            raise DocumentError(findings_in(text, file, 1.0, "extrusion"))
        return EndPlane(*read)


def pull_acis(
    path: str | os.PathLike[str], guid: str = "", *, parent_class: str = "", parent_guid: str = "", index: int = 0
) -> bytes:
    """The text of a piece of ACIS geometry that a model database stores; empty where there is none.

    The schema of the file decides what counts: `guid` of the definition, or else class and GUID of the parent with the
    index. Raises `DatabaseError` where the database cannot be read.
    """
    file = _existing(path)
    try:
        return _core.pull_acis(os.fsencode(file), guid, parent_class, parent_guid, index)
    except _core.DatabaseError as error:
        raise DatabaseError(file, str(error)) from None


def pull_mesh(path: str | os.PathLike[str], *, id: int = -1, guid: str = "") -> bytes:
    """The bytes of a mesh that a model database stores; empty where there are none.

    The schema of the file decides what counts: `guid` of the definition, or else the row id. Raises `DatabaseError` where
    the database cannot be read.
    """
    file = _existing(path)
    try:
        return _core.pull_mesh(os.fsencode(file), id, guid)
    except _core.DatabaseError as error:
        raise DatabaseError(file, str(error)) from None


def _existing(path: str | os.PathLike[str]) -> str:
    os.stat(path)  # raises what Python raises for a file that is not there
    return os.fspath(path)


def _rows_of_three(array: npt.NDArray[Any], what: str) -> npt.NDArray[Any]:
    if array.size == 0:
        return array.reshape(0, 3)
    if array.ndim != 2 or array.shape[1] != 3:
        raise ValueError(f"{what} are n by 3, not of the shape {array.shape}")
    return array
