"""Cuts and measures all documents of a folder on a Dask cluster, and writes a table with a row for each section.

    corpus_on_dask.py FOLDER TABLE.csv                             # a cluster of two processes on this machine
    corpus_on_dask.py FOLDER TABLE.csv --scheduler tcp://HOST:8786 # any other; its machines see the folder too

A document that fails is a row with the reason. The work of a worker that is lost is done by another one.
"""

from __future__ import annotations

import argparse
import csv
import pathlib
from collections.abc import Iterable

import sectrix
from distributed import Client, LocalCluster


COLUMNS = ("document", "section", "convex loops", "area", "inertia", "error")
#: A section, or a document that failed. Plain values, which any worker can send.
Row = tuple[str, str, int, float, float, str]


def rows_of(document: str) -> list[Row]:
    """The rows of one document. Runs on a worker."""
    try:
        sections = sectrix.read(document, strict=True)
        sections.cut()
        return [
            (document, each.name, len(each.convex_loops), each.properties.area, each.properties.ix, "")
            for each in sections
        ]
    except (OSError, ValueError) as error:
        return [(document, "", 0, 0.0, 0.0, str(error).splitlines()[0])]


def measure(client: Client, documents: Iterable[str]) -> list[Row]:
    """The rows of all documents, in their order."""
    futures = client.map(rows_of, list(documents), pure=False, retries=2)
    return [row for rows in client.gather(futures) for row in rows]


def write_table(rows: Iterable[Row], path: str) -> None:
    """Writes the rows as comma-separated values under a line of names."""
    with open(path, "w", newline="", encoding="utf-8") as file:
        table = csv.writer(file)
        table.writerow(COLUMNS)
        table.writerows(rows)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("table")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="that of a cluster that runs already")
    parser.add_argument("--workers", type=int, default=2, help="processes of a cluster on this machine")
    options = parser.parse_args()
    documents = sorted(str(path.resolve()) for path in options.folder.glob("*.json"))
    cluster = options.scheduler or LocalCluster(
        n_workers=options.workers, threads_per_worker=1, dashboard_address=None
    )
    with Client(cluster) as client:
        rows = measure(client, documents)
    if not options.scheduler:
        cluster.close()
    write_table(rows, options.table)
    failed = sum(bool(row[-1]) for row in rows)
    print(f"{len(documents)} documents, {len(rows) - failed} sections, {failed} documents failed")


if __name__ == "__main__":
    main()
