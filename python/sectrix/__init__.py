"""Section geometry of bridges and tunnels.

    >>> import sectrix
    >>> sections = sectrix.loads('{ "Outlines": [[[0, 0], [4, 0], [4, 2], [0, 2]]] }')
    >>> len(sections), sections[0].outline.tolist()
    (1, [[0.0, 0.0], [4.0, 0.0], [4.0, 2.0], [0.0, 2.0]])
"""

from ._sections import DocumentError, IncompatibleSections, Section, Sections, blend, dumps, loads, read, to_svg, write

__all__ = [
    "DocumentError",
    "IncompatibleSections",
    "Section",
    "Sections",
    "blend",
    "dumps",
    "loads",
    "read",
    "to_svg",
    "write",
]
