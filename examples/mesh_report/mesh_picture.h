#pragma once

/// \file
/// A picture of a mesh before and after its positions were merged.

#include "sectrix/mesh/mesh.h"

#include <optional>
#include <string>
#include <vector>

namespace example {

/// The corners of a face that a mesh does not hold, as it has no three of them.
using OtherFace = std::vector<qel::Sectrix::Position>;

/// Both meshes side by side as an SVG document, nothing where they have too many triangles to show. Each triangle
/// is shaded by its direction; lines are the edges that no second triangle shares, or at which the surface bends.
/// \param others  drawn in broken lines beside `mesh`.
std::optional<std::string> DrawMeshes(qel::Sectrix::Mesh const& mesh, qel::Sectrix::Mesh const& merged,
                                      std::vector<OtherFace> const& others, std::string const& title);

} // namespace example
