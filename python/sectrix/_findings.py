"""What is wrong in documents and sets, and the errors that carry it."""

from __future__ import annotations

import os
import re
from collections.abc import Iterable
from dataclasses import dataclass
from typing import IO, Literal, Union

from . import _core

#: A path, an open file, or the text of a document, which begins with a brace or a bracket.
Source = Union[str, bytes, "os.PathLike[str]", IO[str], IO[bytes]]

#: Control characters of ASCII and Latin-1, line separators, and marks of writing direction.
_OBEYED = re.compile("[\x00-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]")


@dataclass(frozen=True)
class Finding:
    """One thing that is wrong, or hardly meant, and where.

    As text it is the line that the command prints. Places count from 0 and are None where none is meant; line and column
    count from 1, the column in bytes, and are 0 where there is no text.
    """

    #: "error" where reading drops or alters something, or the section cannot be what was meant; else "warning".
    severity: str
    #: The stable name of the kind of fault, such as "index-out-of-range".
    code: str
    #: The fault in words.
    message: str
    #: The element of the document as a JSON Pointer.
    pointer: str = ""
    line: int = 0
    column: int = 0
    #: The place of the section in its set; in a sweep, that of the station.
    section: int | None = None
    #: 0 for the outline, 1 onward for the holes.
    loop: int | None = None
    #: The place in the loop.
    vertex: int | None = None
    #: Where in the plane.
    point: tuple[float, float] | None = None
    #: The file; empty where there is none.
    file: str = ""

    def __str__(self) -> str:
        place = f"{self.file}:" if self.file else ""
        if self.line > 0:
            place += f"{self.line}:{self.column}:"
        return _printable(f"{place} {self.severity}: {self.message} [{self.code}]".lstrip())


class FindingsError(ValueError):
    """An error with its reasons. As text it is a line for each of the first ten."""

    def __init__(self, findings: Iterable[Finding]) -> None:
        #: Why, errors before warnings.
        self.findings = sorted(findings, key=lambda finding: finding.severity != "error")
        super().__init__(self.findings)

    def __str__(self) -> str:
        lines = [str(finding) for finding in self.findings[:10]]
        more = len(self.findings) - len(lines)
        return "\n".join(lines + ([f"and {more} more"] if more else []))


class DocumentError(FindingsError):
    """A text that is no document, or in strict reading one that is not read as it stands."""

    @property
    def file(self) -> str:
        """The file, empty where there is none."""
        return self.findings[0].file

    @property
    def line(self) -> int:
        """The line of the first finding, counted from 1; 0 for one on the geometry."""
        return self.findings[0].line

    @property
    def column(self) -> int:
        """The column of the first finding in bytes, counted from 1; 0 for one on the geometry."""
        return self.findings[0].column


def check(source: Source, scale: float = 1.0, *, kind: Literal["sections", "extrusion"] = "sections") -> list[Finding]:
    """All that reading passes over in a document, and for sections what is wrong with their geometry.

    Empty for a document that is read as it stands and makes sense. Tolerances are those of the unit that `scale` leads
    to. The kind "extrusion" is also that of an end plane.
    """
    text, file = text_of(source)
    return findings_in(text, file, scale, kind)


def findings_in(text: bytes, file: str, scale: float, kind: str = "sections") -> list[Finding]:
    """What `check` says of the text of this file."""
    if kind not in ("sections", "extrusion"):
        raise ValueError(f"there is no kind {kind!r} of documents")
    found = _core.check_extrusion(text) if kind == "extrusion" else _core.check_sections(text, scale)
    return [Finding(*fields, file) for fields in found]


def text_of(source: Source) -> tuple[bytes, str]:
    """The text that a source stands for, and the name of its file, empty where there is none."""
    if isinstance(source, (str, bytes)):
        text = source.encode() if isinstance(source, str) else source
        if text.lstrip(b"\xef\xbb\xbf \t\r\n")[:1] in (b"{", b"["):
            return text, ""
    if isinstance(source, (str, bytes, os.PathLike)):
        with open(source, "rb") as file:
            return file.read(), os.fsdecode(source)
    content = source.read()
    return content.encode() if isinstance(content, str) else content, str(getattr(source, "name", ""))


def _printable(line: str) -> str:
    """The line without what a terminal would obey."""
    return _OBEYED.sub(lambda found: f"\\u{ord(found[0]):04x}", line.replace("\t", " "))
