"""Nothing dangles, whatever goes first, and threads share a set. Run under the address sanitizer too."""

from __future__ import annotations

import gc
import itertools
import threading
import time
from collections.abc import Callable

import numpy as np
import pytest
import sectrix
from support import MIDSPAN, PIER, boxes, comb

ORDERS = list(itertools.permutations(range(5)))


def test_any_order_of_going() -> None:
    for order in ORDERS:
        sections = sectrix.read(PIER)
        section = sections[0]
        loops = section.convex_loops
        blended = sectrix.blend(sections, sections, 0.5)
        outline = blended[0].outline
        kept: list[object] = [sections, section, loops, blended, outline]
        del sections, section, loops, blended, outline
        for place in order:
            kept[place] = None
            gc.collect(0)
            for left in kept:
                if isinstance(left, sectrix.Section):
                    assert left.properties.area > 0 and left.convex_loops
                elif isinstance(left, np.ndarray):
                    assert np.isfinite(left).all()
                elif isinstance(left, list):
                    assert sum(map(len, left)) > 0


def test_solids_and_meshes_outlive_what_they_come_from() -> None:
    def solid() -> sectrix.Solid:
        ends = sectrix.read(PIER)[0], sectrix.read(MIDSPAN)[0]
        return sectrix.sweep(zip(ends, sectrix.placements_along_line((0, 0, 0), (0, 9, 0), 2)))

    swept = solid()
    points = swept.points
    merged = sectrix.Mesh(points, swept.triangles).merged()
    del swept
    gc.collect()
    assert merged.points.shape == points.shape and merged.bounding_box is not None


def test_iterators_and_sections_keep_the_set() -> None:
    walk = iter(sectrix.loads(boxes(3)))
    gc.collect()
    assert [section.name for section in walk] == ["box 0", "box 1", "box 2"]


def test_threads_share_sets() -> None:
    sets = [sectrix.loads(boxes(40)), sectrix.loads(boxes(40, width=9.0))]
    expected = [sectrix.loads(sectrix.dumps(each)).cut() for each in sets]
    failures: list[BaseException] = []

    def work(turn: int) -> None:
        try:
            first, second = sets[turn % 2], sets[1 - turn % 2]
            for place in range(40):
                placed = zip((first[place], second[place]), sectrix.placements_along_line((0, 0, 0), (0, 9, 0), 2))
                assert sectrix.sweep(placed).is_closed
                assert len(sectrix.blend(first, second, 0.5)) == 40
                assert first.cut() == expected[turn % 2]
        except BaseException as error:
            failures.append(error)

    threads = [threading.Thread(target=work, args=(turn,)) for turn in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not failures


LARGE = boxes(12_000)
ENDS = sectrix.placements_along_line((0, 0, 0), (0, 9, 0), 2)
WORKS: dict[str, Callable[[sectrix.Sections], object]] = {
    "reading": lambda _: sectrix.loads(LARGE),
    "checking": lambda _: sectrix.check(comb(3000)),
    "cutting": lambda sections: sections.cut(),
    "blending": lambda sections: sectrix.blend(sections, sections, 0.5),
    "sweeping": lambda _: sectrix.sweep((section, end) for section in [sectrix.loads(comb(2000))[0]] for end in ENDS),
}


@pytest.mark.parametrize("name", WORKS)
def test_others_run_meanwhile(name: str) -> None:
    sections = sectrix.loads(comb(4000) if name == "cutting" else LARGE)
    ends = []

    def work() -> None:
        ends.append(time.perf_counter())
        WORKS[name](sections)
        ends.append(time.perf_counter())

    thread = threading.Thread(target=work)
    thread.start()
    seen = []
    while len(ends) < 2:
        seen.append(time.perf_counter())
        time.sleep(0.0005)
    thread.join()
    # A call that keeps the interpreter's lock leaves a gap as long as itself.
    gaps = np.diff([ends[0], *(at for at in seen if ends[0] < at < ends[1]), ends[1]])
    assert gaps.max() < 0.5 * (ends[1] - ends[0])
