#pragma once

#include "sectrix_tools/solids/sweeping/placed_ring.h"
#include "sectrix_tools/solids/triangle_mesh.h"

/// \file
/// The sides between two stations.

namespace qel::SectrixTools::Solids {

/// Adds the triangles between the rings of two stations, from each edge to the one that answers to it. They face
/// outward where the section, as its loops run, turns its front the way it goes from `lower` to `upper`.
///
/// Of two ways to go on, the one with the shorter new edge is taken.
void AddSides(TriangleMesh& mesh, PlacedStation const& lower, PlacedStation const& upper);

} // namespace qel::SectrixTools::Solids
