#pragma once

#include "sectrix_tools/solids/sweeping/placed_ring.h"
#include "sectrix_tools/solids/triangle_mesh.h"

/// \file
/// Whether stations stand one behind the other.

namespace qel::SectrixTools::Solids {

/// On which side of one outline another lies: 1 in front, as seen by someone whom the first runs around
/// counter-clockwise, -1 behind, 0 where the other is not wholly on one side or the first has no plane.
int SideOf(TriangleMesh const& mesh, PlacedRing const& outline, PlacedRing const& other);

/// 1 where the sections turn their front the way from `lower` to `upper`, -1 where they turn their back, 0 where
/// the two stations do not lie one behind the other.
int Direction(TriangleMesh const& mesh, PlacedStation const& lower, PlacedStation const& upper);

} // namespace qel::SectrixTools::Solids
