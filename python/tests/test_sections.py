"""Reading, asking, changing, blending, writing."""

from __future__ import annotations

import io
import pathlib
import pickle

import numpy as np
import pytest
import sectrix
from support import DATA, MIDSPAN, PIER, boxes


def shoelace(points: np.ndarray) -> float:
    x, y = points.T
    return float(np.sum(x * np.roll(y, -1) - np.roll(x, -1) * y)) / 2


def test_reads_from_every_kind_of_source(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "prüfung 桥.json"
    path.write_text(boxes(2), encoding="utf-8")
    with path.open() as text, path.open("rb") as binary:
        sources = [path, str(path), boxes(2), boxes(2).encode(), "\ufeff " + boxes(2), text, binary, io.StringIO(boxes(2))]
        for source in sources:
            assert sectrix.read(source, scale=0.5).positions.tolist()[1] == [3.0, 0.0]
    with pytest.raises(FileNotFoundError):
        sectrix.read(tmp_path / "none.json")


def test_is_a_sequence_with_names() -> None:
    sections = sectrix.loads(boxes(3))
    assert len(sections) == 3 and [section.name for section in sections] == ["box 0", "box 1", "box 2"]
    assert sections["box 1"] == sections[1] == sections[-2] and sections[1] != sections[2]
    assert "box 2" in sections and "box 3" not in sections and sections[0] in sections
    assert sections[0] not in sectrix.loads(boxes(3))
    assert [section.name for section in sections[::-2]] == ["box 2", "box 0"]
    assert len({*sections, *sections}) == 3
    for key, error in ((3, IndexError), (-4, IndexError), ("box 3", KeyError), (1.5, TypeError)):
        with pytest.raises(error):
            sections[key]  # type: ignore[call-overload]
    assert sections[1].names[0] == ["é1-0", "é1-1", "é1-2", "é1-3"] and sections[1].names[1] == [""] * 4


def test_cuts_a_section_into_loops_of_its_area() -> None:
    sections = sectrix.read(DATA / "box-girder-three-cells.json")
    section = sections[0]
    before = sections.positions
    assert len(section.added_points) == 0
    assert sum(map(shoelace, section.convex_loops)) == pytest.approx(section.properties.area, rel=1e-12)
    boundary = shoelace(section.outline) + sum(map(shoelace, section.holes))
    assert boundary == pytest.approx(section.properties.area, rel=1e-12)
    assert sections.positions[: len(before)].tolist() == before.tolist()
    assert sections.positions[len(before) :].tolist() == section.added_points.tolist()
    for points, indices, flags in zip(section.convex_loops, section.convex_loop_indices, section.edge_on_outline):
        assert points.tolist() == sections.positions[indices].tolist() and len(flags) == len(points)
    # Each edge of the outline is in one loop, whole or in parts.
    arriving = np.concatenate(section.convex_loops) - np.concatenate([np.roll(loop, 1, 0) for loop in section.convex_loops])
    on_outline = np.hypot(*arriving[np.concatenate(section.edge_on_outline)].T).sum()
    assert on_outline == pytest.approx(section.properties.outer_perimeter + section.properties.inner_perimeter)


def test_arrays_are_copies() -> None:
    sections = sectrix.loads(boxes(1))
    for array in (sections.positions, sections[0].outline, sections[0].convex_loops[0], sections[0].loop_indices[0]):
        array[:] = 7
    assert sections.positions.tolist()[1] == [6.0, 0.0] == sections[0].outline.tolist()[1]


def test_empty_sets_and_sections_without_extent() -> None:
    sections = sectrix.loads("{}")
    assert len(sections) == 0 and list(sections) == [] and sections.positions.shape == (0, 2)
    assert sections.parameters == {} and sections.cut() == 0 and pickle.loads(pickle.dumps(sections)).names == []
    flat = sectrix.loads('{ "Outlines": [[[0, 0], [0, 0], [0, 0]], [[[[0, 1, 2], true]]]] }')[0]
    assert flat.properties.area == 0 and np.isnan(flat.properties.ix)


def test_moves_positions_and_cuts_anew() -> None:
    sections = sectrix.loads(boxes(2))
    count = len(sections[1].convex_loops)
    sections.transform([[0, 1, 0], [-1, 0, 0], [5, 7, 1]])
    assert sections[0].outline.tolist() == [[5, 7], [5, 13], [2, 13], [2, 7]] and sections["box 1"].names[0][0] == "é1-0"
    assert len(sections[1].convex_loops) == count
    sections.normalize_vertical()
    assert sections.positions[:, 1].min() == 0 and len(sections[1].convex_loops) == count
    for matrix in (np.eye(4), [1, 2], "no matrix"):
        with pytest.raises(ValueError):
            sections.transform(matrix)


def test_pickles_bit_for_bit() -> None:
    sections = sectrix.loads(boxes(20), scale=1 / 3)
    sections.transform(np.array([[0.1, 0.7, 0], [-0.7, 0.1, 0], [1e-9, 1e9, 1]]))
    sections.cut()
    again = pickle.loads(pickle.dumps(sections))
    assert again.positions.tobytes() == sections.positions[: len(again.positions)].tobytes()
    assert again.names == sections.names and again.cut() == sections.cut()
    assert pickle.dumps(again) == pickle.dumps(sections)
    assert sectrix.dumps(sectrix.loads(sectrix.dumps(sections))) == sectrix.dumps(sections)
    assert pickle.loads(pickle.dumps(sections[7])).outline.tobytes() == sections[7].outline.tobytes()
    with pytest.raises(ValueError, match="not finite"):
        pickle.dumps(sectrix.loads('{ "Outlines": [[[1e308, 0], [1, 1], [0, 1]]] }', scale=10))


def test_writes_what_it_reads(tmp_path: pathlib.Path) -> None:
    sections = sectrix.loads('{ "Outlines": [[[0, 0], [4, 0], [4, 2]]], "Params": { "höhe": 2.5 } }')
    sectrix.write(sections, tmp_path / "out.json")
    again = sectrix.read(tmp_path / "out.json", strict=True)
    assert again.parameters == {"höhe": 2.5} and again.positions.tolist() == sections.positions.tolist()


def test_blends_what_is_built_alike() -> None:
    pier, midspan = sectrix.read(PIER), sectrix.read(MIDSPAN)
    half = sectrix.blend(pier, midspan, 0.5)
    ends = pier[0].properties.bottom + pier[0].properties.top, midspan[0].properties.bottom + midspan[0].properties.top
    assert half[0].properties.bottom + half[0].properties.top == pytest.approx(sum(ends) / 2)
    assert sectrix.blend(pier, pier, 0.3).positions == pytest.approx(pier.positions)
    with pytest.raises(sectrix.IncompatibleSections) as caught:
        sectrix.blend(pier, sectrix.loads(boxes(1)), 0.5)
    assert caught.value.findings and str(caught.value.findings[0]) in str(caught.value)


def test_tells_what_is_wrong_as_the_command_does() -> None:
    path = DATA / "bad-elements.json"
    findings = sectrix.check(path)
    assert str(findings[0]).startswith(f"{path}:5:7: error: ") and str(findings[0]).endswith(" [no-coordinates]")
    assert (findings[0].pointer, findings[0].point, findings[0].section) == ("/Outlines/0/1", None, None)
    crossing = sectrix.check('{ "Outlines": [[[0, 0], [4, 4], [4, 0], [0, 4]]] }', scale=0.5)
    assert [finding.point for finding in crossing if finding.code == "edges-cross"] == [(1.0, 1.0)]
    assert sectrix.check(PIER) == [] and sectrix.check('{ "Sections": [] }', kind="extrusion")[0].severity == "warning"
    assert "\\u001b" in str(sectrix.Finding("error", "code", "a \x1b[2J b"))
    with pytest.raises(ValueError):
        sectrix.check(PIER, kind="solid")  # type: ignore[arg-type]


def test_documents_that_are_none_say_where() -> None:
    with pytest.raises(sectrix.DocumentError) as caught:
        sectrix.read(io.BytesIO(b'{ "Outlines":\n [[0, 0] '))
    assert (caught.value.file, caught.value.line) == ("", 2) and "[text-no-json]" in str(caught.value)
    for broken in ("{ \x00", b"\xff\xfe{", b"[" * 100000, b"{} {}", b'{ "a": 1e999 }'):
        with pytest.raises(sectrix.DocumentError):
            sectrix.loads(broken)
    with pytest.raises(sectrix.DocumentError) as caught:
        sectrix.read(DATA / "bad-elements.json", strict=True)
    assert pickle.loads(pickle.dumps(caught.value)).findings == caught.value.findings
    assert len(str(caught.value).splitlines()) == 11 or len(caught.value.findings) <= 10


def test_shows_itself() -> None:
    section = sectrix.read(PIER)[0]
    assert section._repr_svg_().startswith("<svg") and "Pont &lt;1&gt;" in sectrix.to_svg(section, title="Pont <1>")
    assert sectrix.to_svg(section, convex_loops=False) != section._repr_svg_()
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    axes = section.plot(color="red")
    assert len(axes.patches) == len(section.convex_loops) and len(axes.lines) == 1 + len(section.holes)
    assert axes.lines[0].get_color() == "red"
