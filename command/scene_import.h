#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/mesh/mesh.h"

#include <string>
#include <vector>

/// \file
/// Model files of many formats to meshes, by Assimp.

namespace qel::SectrixCommand {

/// A mesh of a model file.
struct ImportedMesh {
    Sectrix::Mesh m_mesh;
    /// The corners of faces that are no triangles, which the mesh does not hold.
    std::vector<std::vector<Vec<3, double>>> m_otherFaces;
};

/// The meshes of a model, each under the transform.
///
/// The matrices of nodes are not applied: coordinates are those that stand in the file.
///
/// \param name  of the file, or "-" for standard input. Its ending tells the format; without one its beginning does.
/// \throws std::runtime_error with the reason where it cannot be read or is no model.
std::vector<ImportedMesh> ImportMeshes(std::string const& name, Mat<4, double> const& transform);

} // namespace qel::SectrixCommand
