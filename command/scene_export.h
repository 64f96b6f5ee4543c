#pragma once

#include "sectrix_tools/solids/triangle_mesh.h"

#include <string>
#include <vector>

/// \file
/// Solids to files of many formats, by Assimp.

namespace qel::SectrixCommand {

/// A solid under a name.
struct NamedMesh {
    std::string m_name;
    SectrixTools::TriangleMesh m_mesh;
};

/// The endings of file names that can be written, without the dot, in order of the alphabet.
std::vector<std::string> ExportEndings();

/// Writes meshes into one file, in the format that its ending names: of several with one ending the binary one, as
/// for STL and glTF, but for FBX. Coordinates become single precision. z is upward, and turned to y where that is
/// the format's rule, as in glTF, Collada, FBX and X3D.
///
/// \throws std::runtime_error with the path and the reason, as for an ending that nobody knows.
void ExportMeshes(std::vector<NamedMesh> const& meshes, std::string const& path);

} // namespace qel::SectrixCommand
