#include "scene_export.h"

#include "output_files.h"

#include <assimp/Exporter.hpp>
#include <assimp/material.h>
#include <assimp/mesh.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <set>
#include <stdexcept>

namespace qel::SectrixCommand {
namespace {

using SectrixTools::TriangleMesh;

/// The formats that are meant where an ending has several. Assimp's own reader refuses the binary FBX that it
/// writes.
constexpr char const* kPreferred[] = {"glb2", "gltf2", "stlb", "plyb", "fbxa"};

bool IsPreferred(char const* id) {
    return std::find(std::begin(kPreferred), std::end(kPreferred), std::string(id)) != std::end(kPreferred);
}

/// True for an ending whose files have y upward, by rule or because Assimp writes so into their heads.
bool IsYUpward(std::string const& ending) {
    constexpr char const* kEndings[] = {"dae", "fbx", "glb", "gltf", "x3d"};
    return std::find(std::begin(kEndings), std::end(kEndings), ending) != std::end(kEndings);
}

/// False for PBRT: Assimp's exporter of it reads memory that is not its own, and writes to another path.
bool IsWritten(aiExportFormatDesc const& format) {
    return std::string("pbrt") != format.fileExtension;
}

/// The format of an ending; null where there is none.
aiExportFormatDesc const* FindFormat(Assimp::Exporter const& exporter, std::string const& ending) {
    aiExportFormatDesc const* found = nullptr;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i) {
        aiExportFormatDesc const* const format = exporter.GetExportFormatDescription(i);
        if (IsWritten(*format) && ending == format->fileExtension && (!found || IsPreferred(format->id)))
            found = format;
    }
    return found;
}

aiVector3D Vertex(Vec<3, double> const& point) {
    return {static_cast<ai_real>(point[0]), static_cast<ai_real>(point[1]), static_cast<ai_real>(point[2])};
}

/// The mesh with corners of its own for each triangle.
TriangleMesh Apart(TriangleMesh const& mesh) {
    TriangleMesh apart;
    for (std::uint32_t const corner : mesh.m_triangles) {
        apart.m_triangles.push_back(static_cast<std::uint32_t>(apart.m_points.size()));
        apart.m_points.push_back(mesh.m_points[corner]);
    }
    return apart;
}

/// The normals of triangles, for a mesh with corners of its own for each.
void AddFlatNormals(aiMesh& mesh) {
    mesh.mNormals = new aiVector3D[mesh.mNumVertices];
    for (unsigned i = 0; i + 2 < mesh.mNumVertices; i += 3) {
        auto const* const corner = mesh.mVertices + i;
        auto const normal = ((corner[1] - corner[0]) ^ (corner[2] - corner[0])).NormalizeSafe();
        std::fill_n(mesh.mNormals + i, 3, normal);
    }
}

/// Made by new, as Assimp deletes it.
std::unique_ptr<aiMesh> MeshOf(NamedMesh const& source) {
    auto const& [points, triangles] = source.m_mesh;
    auto mesh = std::make_unique<aiMesh>();
    mesh->mName = source.m_name;
    mesh->mPrimitiveTypes = aiPrimitiveType_TRIANGLE;
    mesh->mVertices = new aiVector3D[points.size()];
    mesh->mNumVertices = static_cast<unsigned>(points.size());
    std::transform(points.begin(), points.end(), mesh->mVertices, Vertex);
    mesh->mFaces = new aiFace[triangles.size() / 3];
    mesh->mNumFaces = static_cast<unsigned>(triangles.size() / 3);
    for (unsigned face = 0; face < mesh->mNumFaces; ++face) {
        mesh->mFaces[face].mIndices = new unsigned[3];
        mesh->mFaces[face].mNumIndices = 3;
        std::copy_n(triangles.begin() + 3 * static_cast<std::ptrdiff_t>(face), 3, mesh->mFaces[face].mIndices);
    }
    return mesh;
}

/// A node of its own for a mesh, since some formats, such as 3MF, write no mesh of the root.
void AddNode(aiNode& root, std::string const& name, unsigned mesh) {
    auto node = std::make_unique<aiNode>(name);
    node->mMeshes = new unsigned[1]{mesh};
    node->mNumMeshes = 1;
    aiNode* child = node.release();
    root.addChildren(1, &child);
}

std::unique_ptr<aiScene> SceneOf(std::vector<NamedMesh> const& meshes, bool hasFlatNormals) {
    auto const count = static_cast<unsigned>(meshes.size());
    auto scene = std::make_unique<aiScene>();
    scene->mMaterials = new aiMaterial* [1] { new aiMaterial };
    scene->mNumMaterials = 1;
    aiColor4D const concrete(0.75f, 0.74f, 0.71f, 1);
    scene->mMaterials[0]->AddProperty(&concrete, 1, AI_MATKEY_COLOR_DIFFUSE);
    scene->mRootNode = new aiNode("sectrix");
    scene->mMeshes = new aiMesh*[count]();
    scene->mNumMeshes = count;
    for (unsigned i = 0; i < count; ++i) {
        auto const& [name, mesh] = meshes[i];
        scene->mMeshes[i] = MeshOf(hasFlatNormals ? NamedMesh{name, Apart(mesh)} : meshes[i]).release();
        if (hasFlatNormals)
            AddFlatNormals(*scene->mMeshes[i]);
        AddNode(*scene->mRootNode, name, i);
    }
    return scene;
}

} // namespace

std::vector<std::string> ExportEndings() {
    Assimp::Exporter const exporter;
    std::set<std::string> endings;
    for (std::size_t i = 0; i < exporter.GetExportFormatCount(); ++i)
        if (auto const& format = *exporter.GetExportFormatDescription(i); IsWritten(format))
            endings.insert(format.fileExtension);
    return {endings.begin(), endings.end()};
}

void ExportMeshes(std::vector<NamedMesh> const& meshes, std::string const& path) {
    std::string ending = PathOf(path).extension().u8string();
    ending.erase(0, 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return std::tolower(letter); });
    Assimp::Exporter exporter;
    aiExportFormatDesc const* const format = FindFormat(exporter, ending);
    if (!format)
        throw std::runtime_error(path + ": no format that can be written has this ending");
    // STL has a normal for each triangle, and Assimp would take the mean of those around its corners.
    auto const scene = SceneOf(meshes, ending == "stl");
    if (IsYUpward(ending)) // at the nodes of the meshes, since some exporters pass over that of the root
        for (unsigned i = 0; i < scene->mRootNode->mNumChildren; ++i)
            scene->mRootNode->mChildren[i]->mTransformation =
                aiMatrix4x4(1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1);
    if (exporter.Export(scene.get(), format->id, path) == AI_SUCCESS)
        return;
    std::string const reason = exporter.GetErrorString(); // some exporters give none
    throw std::runtime_error(path + (reason.empty() ? ": cannot be written" : ": " + reason));
}

} // namespace qel::SectrixCommand
