#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"
#include "sectrix_tools/solids/triangle_mesh.h"

#include <vector>

/// \file
/// Closed solids through sections.

namespace qel::SectrixTools {

/// A section and where it stands.
struct Station {
    /// Not owned; it and its pool must stay while a call reads them. One section may stand at several stations.
    Sectrix::CrossSection const* m_section = nullptr;
    /// The point (x, y) of the section comes to the row vector (x, y, 0, 1) times the placement, divided by the
    /// fourth component; the third row is not used. See `Placement`.
    Mat<4, double> m_placement;
};

/// A solid, or why there is none.
struct Solid {
    /// Closed, its triangles facing outward; without triangles where there is no solid.
    TriangleMesh m_mesh;
    /// Why there is no solid. The section of a finding is the place of the station.
    Findings m_findings;
};

/// The solid through two or more sections of one structure, straight from each station to the next.
///
/// The caps are the convex loops of the first and the last section, whose building adds to their pools; see
/// `Boundary`. The sides run from ring to ring. The points are those of the sections, station by station, and at
/// the two ends the feet of bridges; each is there once. A four-sided piece of a side, which need not be plane, is
/// parted along its shorter diagonal, so that a symmetric girder gives a symmetric solid. All triangles face
/// outward, whichever way the stations proceed.
///
/// The vertices of two sections correspond by the rule of the blend. Where both loops have names, these tell: loops
/// may start elsewhere and holes stand in another order. Otherwise they correspond place by place.
///
/// There is no solid, and an error says why:
///  - "too-few-stations": fewer than two; "station-without-section": a station without one.
///  - At the two ends every code of `Boundary`. Between them the errors of `CheckGeometry`, but those about convex
///    loops, and "position-used-twice". A section that stands at several stations is looked at once.
///  - "other-number-of-loops", "other-number-of-vertices", "names-do-not-line-up": a section does not correspond to
///    the first.
///  - "placement-not-finite": a point has no finite place in space, or its fourth component is not above 0.
///  - "stations-not-in-order": a section does not lie wholly on one and the same side of its neighbour. They cross,
///    as in a curve that is too tight, coincide, go back, face the other way, or a placement flattens the section;
///    or they turn so far between two stations that the volume is not above 0.
///
/// Nothing raises an exception but for memory that runs out. Whether the solid meets itself further along, as one
/// that goes around in a full circle may, is not looked at.
///
/// Costs n log n of the points, and where holes of many sections stand in another order, the square of their
/// number.
///
/// \param stations  in their order along the structure. Sections between the ends are not cut: they are asked for their
///                  loops only.
SECTRIX_TOOLS_EXPORT Solid Sweep(std::vector<Station> const& stations);

} // namespace qel::SectrixTools
