"""The corpus on a local cluster of two processes, one of which is killed midway; and on a pool of processes."""

from __future__ import annotations

import concurrent.futures
import csv
import multiprocessing
import os
import pathlib
import signal
import subprocess
import sys

import distributed
import pytest
import sectrix
from support import SOURCE, boxes, comb

EXAMPLE = SOURCE / "python" / "examples" / "corpus_on_dask.py"


def write_corpus(folder: pathlib.Path, count: int, text: str) -> list[str]:
    for place in range(count):
        (folder / f"dökument {place:03}.json").write_text(text, encoding="utf-8")
    (folder / "broken.json").write_text('{ "Outlines": [', encoding="utf-8")
    return sorted(map(str, folder.glob("*.json")))


def test_a_folder_from_the_command_line(tmp_path: pathlib.Path) -> None:
    write_corpus(tmp_path, 12, boxes(3))
    table = tmp_path / "table.csv"
    done = subprocess.run(
        [sys.executable, EXAMPLE, tmp_path, table], check=True, capture_output=True, text=True, cwd=tmp_path
    )
    assert done.stdout == "13 documents, 36 sections, 1 documents failed\n"
    with table.open(encoding="utf-8", newline="") as file:
        rows = list(csv.DictReader(file))
    assert [row["section"] for row in rows[1:4]] == ["box 0", "box 1", "box 2"]
    assert {float(row["area"]) for row in rows[1:]} == {14.0} and {row["convex loops"] for row in rows[1:]} == {"5"}
    assert "[text-no-json]" in rows[0]["error"] and rows[0]["document"].endswith("broken.json")


def test_a_killed_worker_loses_nothing(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.syspath_prepend(EXAMPLE.parent)
    import corpus_on_dask as example

    documents = write_corpus(tmp_path, 60, comb(400))
    expected = [row for document in documents for row in example.rows_of(document)]
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            pids = client.run(os.getpid)
            futures = client.map(example.rows_of, documents, pure=False)
            next(iter(distributed.as_completed(futures)))
            victim, pid = next(iter(pids.items()))
            undone = sum(not future.done() for future in futures)
            os.kill(pid, signal.SIGKILL)
            rows = [row for future in futures for row in future.result(timeout=60)]
            left = set(client.scheduler_info()["workers"])
    assert undone > 0 and victim not in left
    assert rows == expected and sum(bool(row[-1]) for row in rows) == 1


def test_sets_go_through_a_pool_of_processes() -> None:
    sets = [sectrix.loads(boxes(count)) for count in range(1, 6)]
    context = multiprocessing.get_context("spawn")
    with concurrent.futures.ProcessPoolExecutor(2, mp_context=context) as pool:
        assert list(pool.map(sectrix.Sections.cut, sets)) == [each.cut() for each in sets]
