"""The code of docs/python.md runs and prints what stands there, and the types of package and examples hold."""

from __future__ import annotations

import contextlib
import io
import os
import pathlib
import re
import subprocess
import sys

import pytest
from support import DATA, MIDSPAN, PIER, SOURCE

EXAMPLES = SOURCE / "python" / "examples"


def blocks(page: str, language: str) -> str:
    return "".join(re.findall(rf"^```{language}\n(.*?)^```", page, re.DOTALL | re.MULTILINE))


def test_the_code_of_the_page(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> None:
    page = (SOURCE / "docs" / "python.md").read_text(encoding="utf-8")
    for path in DATA.iterdir():
        (tmp_path / path.name).symlink_to(path)
    monkeypatch.chdir(tmp_path)
    printed = io.StringIO()
    with contextlib.redirect_stdout(printed):
        exec(compile(blocks(page, "python"), "docs/python.md", "exec"), {"__name__": "page"})
    assert printed.getvalue() == blocks(page, "text") != ""


def test_the_girder_along_a_span(tmp_path: pathlib.Path) -> None:
    picture, solid = tmp_path / "girder.svg", tmp_path / "girder.stl"
    done = subprocess.run(
        [sys.executable, EXAMPLES / "girder_along_span.py", PIER, MIDSPAN, picture, solid],
        check=True, capture_output=True, text=True, cwd=tmp_path, env={**os.environ, "MPLCONFIGDIR": str(tmp_path)},
    )
    triangles = int.from_bytes(solid.read_bytes()[80:84], "little")
    assert done.stdout.startswith(f"{triangles} triangles, ") and "second moment" in picture.read_text(encoding="utf-8")


def test_types(tmp_path: pathlib.Path) -> None:
    done = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--cache-dir", tmp_path, "python/sectrix", "python/examples"],
        cwd=SOURCE, capture_output=True, text=True,
    )
    assert done.returncode == 0, done.stdout
    wrong = tmp_path / "wrong.py"
    wrong.write_text("import sectrix\nsectrix.read('a').names + 1\nsectrix.sweep(1)\n")
    done = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--cache-dir", tmp_path, wrong],
        env={**os.environ, "MYPYPATH": str(SOURCE / "python")}, capture_output=True, text=True, cwd=tmp_path,
    )
    assert done.stdout.count(": error:") == 2, done.stdout
