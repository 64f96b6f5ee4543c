#include "scene_import.h"

#include "output_files.h"
#include "streams.h"

#include "sectrix/foundation/text_conversion.h"

#include <assimp/Importer.hpp>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <filesystem>
#include <stdexcept>

namespace qel::SectrixCommand {
namespace {

using Sectrix::Position;

std::vector<std::vector<Vec<3, double>>> OtherFaces(aiMesh const& source, Sectrix::Matrix const& matrix) {
    std::vector<std::vector<Vec<3, double>>> faces;
    for (unsigned i = 0; i < source.mNumFaces; ++i) {
        aiFace const& face = source.mFaces[i];
        if (face.mNumIndices == 3)
            continue;
        auto& corners = faces.emplace_back();
        for (unsigned corner = 0; corner < face.mNumIndices; ++corner)
            if (face.mIndices[corner] < source.mNumVertices) {
                aiVector3D const& vertex = source.mVertices[face.mIndices[corner]];
                Position const position(vertex.x, vertex.y, vertex.z, matrix);
                corners.push_back({position.X(), position.Y(), position.Z()});
            }
    }
    return faces;
}

/// The importer keeps the scene; null where it is no model.
aiScene const* ReadScene(Assimp::Importer& importer, std::string const& name) {
    std::error_code error;
    if (std::filesystem::is_regular_file(PathOf(name), error)) // by its path, since glTF refers to files beside it
        return importer.ReadFile(name, 0);
    std::string const content = ReadInput(name);
    return importer.ReadFileFromMemory(content.data(), content.size(), 0);
}

} // namespace

std::vector<ImportedMesh> ImportMeshes(std::string const& name, Mat<4, double> const& transform) {
    Assimp::Importer importer;
    aiScene const* const scene = ReadScene(importer, name);
    if (!scene)
        throw std::runtime_error(std::string("cannot be imported: ") + importer.GetErrorString());
    Sectrix::Matrix const matrix{transform.m_elements.data()};
    std::vector<ImportedMesh> meshes;
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        aiMesh const& source = *scene->mMeshes[i];
        Sectrix::Mesh mesh(L"", Sectrix::Utf8ToW(source.mName.C_Str()).c_str());
        mesh.fromOBJ(&source, matrix);
        meshes.push_back({std::move(mesh), OtherFaces(source, matrix)});
    }
    return meshes;
}

} // namespace qel::SectrixCommand
