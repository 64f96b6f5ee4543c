"""Section geometry of bridges and tunnels.

    >>> import sectrix
    >>> sections = sectrix.loads('{ "Outlines": [[[0, 0], [4, 0], [4, 2], [0, 2]]] }')
    >>> len(sections), sections[0].properties.area
    (1, 8.0)
"""

from ._findings import DocumentError, Finding, FindingsError, check
from ._model import DatabaseError, EndPlane, ExtrudedSection, Extrusion, Mesh, pull_acis, pull_mesh
from ._sections import (
    IncompatibleSections,
    Section,
    SectionProperties,
    Sections,
    blend,
    dumps,
    loads,
    read,
    to_svg,
    write,
)
from ._solids import Solid, SweepError, placement, placements_along_curve, placements_along_line, sweep

__all__ = [
    "DatabaseError",
    "DocumentError",
    "EndPlane",
    "ExtrudedSection",
    "Extrusion",
    "Finding",
    "FindingsError",
    "IncompatibleSections",
    "Mesh",
    "Section",
    "SectionProperties",
    "Sections",
    "Solid",
    "SweepError",
    "blend",
    "check",
    "dumps",
    "loads",
    "placement",
    "placements_along_curve",
    "placements_along_line",
    "pull_acis",
    "pull_mesh",
    "read",
    "sweep",
    "to_svg",
    "write",
]
