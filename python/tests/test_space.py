"""Solids, meshes, extrusions, and the model database."""

from __future__ import annotations

import pathlib
import pickle
import sqlite3

import numpy as np
import pytest
import sectrix
from support import DATA, MIDSPAN, PIER, boxes


def girder(count: int = 7) -> sectrix.Solid:
    pier, midspan = sectrix.read(PIER), sectrix.read(MIDSPAN)
    placements = sectrix.placements_along_line((0, 0, 0), (0, 30, 0), count)
    return sectrix.sweep((sectrix.blend(pier, midspan, i / (count - 1))[0], at) for i, at in enumerate(placements))


def test_sweeps_closed_solids() -> None:
    box = sectrix.loads(boxes(1))[0]
    solid = sectrix.sweep([(box, sectrix.placement((0, 0, 0), (0, 1, 0))), (box, sectrix.placement((0, 8, 0), (0, 1, 0)))])
    assert solid.is_closed and solid.volume == pytest.approx(8 * box.properties.area)
    rim = box.properties.outer_perimeter + box.properties.inner_perimeter
    assert solid.area == pytest.approx(8 * rim + 2 * box.properties.area)
    assert solid.triangles.max() == len(solid.points) - 1
    a, b, c = (solid.points[solid.triangles[:, corner]] for corner in range(3))
    assert np.einsum("ij,ij->i", a, np.cross(b, c)).sum() / 6 == pytest.approx(solid.volume)
    assert pickle.loads(pickle.dumps(girder())).points.tobytes() == girder().points.tobytes()


def test_stations_without_a_solid_say_why() -> None:
    box = sectrix.loads(boxes(1))[0]
    other = sectrix.read(PIER)[0]
    first, second = sectrix.placements_along_line((0, 0, 0), (0, 9, 0), 2)
    for stations, code, place in (
        ([], "too-few-stations", None),
        ([(box, first), (other, second)], "other-number-of-loops", 1),
        ([(box, first), (box, first)], "stations-not-in-order", 1),
    ):
        with pytest.raises(sectrix.SweepError) as caught:
            sectrix.sweep(stations)
        assert caught.value.findings[0].code == code
        assert place is None or place in [finding.section for finding in caught.value.findings]
    for stations in ([(box, np.eye(3))], [(box, "nowhere")]):
        with pytest.raises(ValueError):
            sectrix.sweep(stations)
    with pytest.raises(ValueError, match="3 numbers"):
        sectrix.placement((0, 0), (0, 1, 0))


def test_placements_stand_across_the_way() -> None:
    angles = np.linspace(0, 1, 5)
    arc = np.column_stack([50 * np.cos(angles), 50 * np.sin(angles), 0 * angles])
    placements = sectrix.placements_along_curve(arc, twists=[0.1])
    assert placements.shape == (5, 4, 4) and placements[:, 3, :3].tolist() == arc.tolist()
    for angle, matrix in zip(angles[1:], placements[1:]):
        assert matrix[2, :3] == pytest.approx([np.sin(angle), -np.cos(angle), 0]) and matrix[1, 2] == pytest.approx(1)
    assert placements[0, 0, 2] == pytest.approx(np.sin(0.1))
    assert sectrix.placements_along_line((0, 0, 0), (1, 0, 0), 1).shape == (0, 4, 4)


@pytest.mark.parametrize("suffix", ["stl", "ply", "obj", "vtu"])
def test_writes_files_that_read_as_the_same_solid(suffix: str, tmp_path: pathlib.Path) -> None:
    solid = girder()
    solid.write(tmp_path / f"träger.{suffix}")
    mesh = sectrix.Mesh.read(tmp_path / f"träger.{suffix}")
    assert len(mesh.triangles) == len(solid.triangles) and mesh.name == f"träger.{suffix}"
    assert mesh.points[mesh.triangles] == pytest.approx(solid.points[solid.triangles], abs=1e-5)


def test_meshes_merge_near_points() -> None:
    points = [[0, 0, 0], [0.00005, 0, 0], [1, 0, 0], [0, 1, 0], [9, 9, 9]]
    move = [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 5, 1]]
    mesh = sectrix.Mesh(points, [[0, 2, 3], [1, 3, 2]], transform=move, key="k", name="Lager €")
    assert mesh.bounding_box == ((0, 0, 5), (9, 9, 14)) and mesh.transform.tolist() == move
    merged = mesh.merged()
    assert merged.points.tolist() == [[0, 0, 5], [1, 0, 5], [0, 1, 5]] and merged.triangles.tolist() == [[0, 1, 2], [0, 2, 1]]
    assert (merged.key, merged.name) == ("k", "Lager €") and "3 points" in repr(merged)
    assert sectrix.Mesh([], []).bounding_box is None and sectrix.Mesh([], []).triangles.shape == (0, 3)
    for corners in ([[0, 1, 5]], [[-1, 0, 1]], [[0.0, 1, 2]], [0, 1]):
        with pytest.raises((TypeError, ValueError)):
            sectrix.Mesh(points, corners)


def test_reads_parts_made_of_polylines() -> None:
    part = sectrix.Extrusion.read(DATA / "girder.json")
    assert part.sections and part.sections[0].profiles[0].shape[1] == 3
    short = sectrix.Extrusion.read('{ "Sections": [{ "Exterior": false, "Profiles": [{ "Points": [[1, 2]] }] }] }')
    assert not short.sections[0].exterior and short.sections[0].profiles[0].tolist() == [[1, 2, np.inf]]
    plane = sectrix.EndPlane.read(DATA / "girder-start.json")
    assert (plane.is_start, plane.origin, plane.skew) == (True, (0, 0, 0.9), 20) and plane.normal[1] == 0.342020143
    for kind in (sectrix.Extrusion, sectrix.EndPlane):
        with pytest.raises(sectrix.DocumentError, match="text-no-json"):
            kind.read("{")


def test_pulls_what_a_model_stores(tmp_path: pathlib.Path) -> None:
    for schema in ("direct", "definitions"):
        with sqlite3.connect(tmp_path / f"{schema}.db") as database:
            database.executescript((DATA / f"model-{schema}.sql").read_text())
    direct, definitions = tmp_path / "direct.db", tmp_path / "definitions.db"
    text = sectrix.pull_acis(definitions, "{1D0C3B5E-6A0F-4C39-8B3C-0A4D5E6F7081}")
    assert text.startswith(b"400 85 1 0")
    parent = "{7C1E5A52-0D5B-4B0A-9E55-3D1B0F6A2C11}"
    assert sectrix.pull_acis(direct, parent_class="Pier", parent_guid=parent) == text
    assert sectrix.pull_mesh(direct, id=1) == sectrix.pull_mesh(
        definitions, guid="{3F2E5D70-8C21-4E5B-8D5E-2C6F708192A3}"
    ) != b""
    assert sectrix.pull_mesh(direct, id=99) == b"" == sectrix.pull_acis(definitions, "none")
    with pytest.raises(FileNotFoundError):
        sectrix.pull_mesh(tmp_path / "none.db", id=1)
    with pytest.raises(sectrix.DatabaseError, match="not a database") as caught:
        sectrix.pull_mesh(PIER, id=1)
    assert caught.value.file == str(PIER) and pickle.loads(pickle.dumps(caught.value)).reason == caught.value.reason
