"""What Python costs beside C++, two threads beside one, and two workers of a cluster beside one.

    ratios.py CUT_IN_CPP [--cluster]    # the program that the build makes; with PYTHONPATH set to the package

Ends with status 1 where cutting costs more than 1.3 times C++, or two threads take more than 0.6 of the time of one.
"""

from __future__ import annotations

import argparse
import pathlib
import subprocess
import sys
import tempfile
import threading
import time
from collections.abc import Callable

import sectrix

HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parent / "tests"), str(HERE.parent / "examples")]
from support import boxes, comb  # noqa: E402

TURNS = 7


def seconds(work: Callable[[], object]) -> float:
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def beside_cpp(program: str) -> float:
    """Prints what 10,000 sections cost, and returns the ratio of cutting."""
    with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
        file.write(boxes(10_000))
        file.flush()
        # By turns, so that what else the machine does falls on both.
        reading, cutting, loops, cpp_reading, cpp_cutting = ([] for _ in range(5))
        for _ in range(TURNS):
            printed = subprocess.run([program, file.name, "1"], check=True, capture_output=True, text=True).stdout
            cpp_reading.append(float(printed.split()[0]))
            cpp_cutting.append(float(printed.split()[1]))
            text = pathlib.Path(file.name).read_bytes()
            start = time.perf_counter()
            sections = sectrix.loads(text)
            reading.append(time.perf_counter() - start)
            cutting.append(seconds(sections.cut))
            loops.append(seconds(lambda: [section.convex_loops for section in sections]))
    print(f"10,000 sections, least of {TURNS}, in ms: C++ reads in {1e3 * min(cpp_reading):.1f}, "
          f"cuts in {1e3 * min(cpp_cutting):.1f}")
    print(f"  Python reads in {1e3 * min(reading):.1f}, cuts in {1e3 * min(cutting):.1f}, "
          f"and takes all loops as arrays in {1e3 * min(loops):.1f}")
    return min(cutting) / min(cpp_cutting)


def two_beside_one(name: str, work: Callable[[int], object]) -> float:
    """Prints and returns the time of two threads with one work each, over that of one thread with both."""

    def both() -> None:
        threads = [threading.Thread(target=work, args=(number,)) for number in range(2)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    one, two = [], []
    for _ in range(TURNS):
        one.append(seconds(lambda: (work(0), work(1))))
        two.append(seconds(both))
    print(f"{name}: two threads take {min(two) / min(one):.2f} of the {1e3 * min(one):.0f} ms of one")
    return min(two) / min(one)


def threads() -> float:
    """The worst ratio of what runs without the interpreter's lock."""
    large, many, wide = comb(2500), boxes(6000), boxes(6000, width=9.0)
    pairs = [(sectrix.loads(many), sectrix.loads(wide)) for _ in range(2)]
    ends = sectrix.placements_along_line((0, 0, 0), (0, 9, 0), 2)
    tunnels = [sectrix.loads(comb(1500))[0] for _ in range(2)]
    return max(
        two_beside_one("reading", lambda _: sectrix.loads(many)),
        two_beside_one("cutting", lambda _: sectrix.loads(large).cut()),
        two_beside_one("blending", lambda number: [sectrix.blend(*pairs[number], 0.5) for _ in range(8)]),
        two_beside_one("sweeping", lambda number: sectrix.sweep((tunnels[number], end) for end in ends)),
    )


def cluster() -> None:
    """Prints the time of a folder of documents on one worker and on two."""
    import corpus_on_dask
    import distributed

    with tempfile.TemporaryDirectory() as folder:
        for place in range(200):
            pathlib.Path(folder, f"{place:03}.json").write_text(comb(600 + place))
        documents = sorted(map(str, pathlib.Path(folder).iterdir()))
        for workers in (1, 2):
            with distributed.LocalCluster(n_workers=workers, threads_per_worker=1, dashboard_address=None) as local:
                with distributed.Client(local) as client:
                    corpus_on_dask.measure(client, documents[:4])
                    took = min(seconds(lambda: corpus_on_dask.measure(client, documents)) for _ in range(3))
            print(f"{len(documents)} documents on a cluster of {workers}: {took:.2f} s")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--cluster", action="store_true")
    options = parser.parse_args()
    cutting = beside_cpp(options.program)
    print(f"  cutting from Python costs {cutting:.2f} times C++")
    worst = threads()
    if options.cluster:
        cluster()
    return int(cutting > 1.3 or worst > 0.6)


if __name__ == "__main__":
    sys.exit(main())
