#include "mesh_report/mesh_report.h"

#include "common/markup.h"
#include "mesh_report/mesh_picture.h"
#include "mesh_report/position_text.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/mesh/mesh.h"

#include <assimp/Importer.hpp>
#include <assimp/mesh.h>
#include <assimp/scene.h>
#include <chrono>
#include <optional>
#include <stdexcept>

namespace example {
namespace {

using qel::Sectrix::Matrix;
using qel::Sectrix::Mesh;
using qel::Sectrix::Position;

template <class Work>
double Milliseconds(Work work) {
    auto const begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// Triangles of which two corners are the same position.
std::size_t DegenerateCount(Mesh const& mesh) {
    std::size_t count = 0;
    auto const& corners = mesh.Indices();
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
        count += corners[i] == corners[i + 1] || corners[i + 1] == corners[i + 2] || corners[i + 2] == corners[i];
    return count;
}

std::vector<OtherFace> OtherFaces(aiMesh const& source, Matrix const& matrix) {
    std::vector<OtherFace> faces;
    for (unsigned i = 0; i < source.mNumFaces; ++i) {
        aiFace const& face = source.mFaces[i];
        if (face.mNumIndices == 3)
            continue;
        OtherFace& corners = faces.emplace_back();
        for (unsigned corner = 0; corner < face.mNumIndices; ++corner)
            if (face.mIndices[corner] < source.mNumVertices) {
                aiVector3D const& vertex = source.mVertices[face.mIndices[corner]];
                corners.emplace_back(vertex.x, vertex.y, vertex.z, matrix);
            }
    }
    return faces;
}

Table CountTable(Mesh const& mesh, Mesh const& merged) {
    Table table{{"mesh", "positions", "corners", "triangles", "degenerate"}, {}};
    for (Mesh const* const row : {&mesh, &merged})
        table.m_rows.push_back({row == &mesh ? "as imported" : "merged", std::to_string(row->Positions().size()),
                                std::to_string(row->Indices().size()), std::to_string(row->Indices().size() / 3),
                                std::to_string(DegenerateCount(*row))});
    return table;
}

/// Adds one mesh to the page and returns the same as plain text.
std::string ReportMesh(aiMesh const& source, Matrix const& matrix, std::filesystem::path const& picture,
                       std::string const& title, HtmlPage& page) {
    Mesh mesh(L"", qel::Sectrix::Utf8ToW(source.mName.C_Str()).c_str());
    Position low, high;
    bool hasBox = false;
    double const fill = Milliseconds([&] { mesh.fromOBJ(&source, matrix); });
    double const box = Milliseconds([&] { hasBox = mesh.BoundingBox(low, high); });
    std::optional<Mesh> merged;
    double const merge = Milliseconds([&] { merged.emplace(mesh, true); });

    auto const others = OtherFaces(source, matrix);
    std::vector<std::string> lines;
    if (!mesh.Name().empty())
        lines.push_back("name " + qel::Sectrix::ToUtf8(mesh.Name()));
    lines.push_back(hasBox ? "bounding box " + Text(low) + " to " + Text(high)
                           : "no positions, so no bounding box");
    if (!others.empty())
        lines.push_back(std::to_string(others.size()) + " faces that are no triangles are left out");
    lines.push_back("filled in " + Number(fill, 3) + " ms, bounding box in " + Number(box, 3) + " ms, merged in " +
                    Number(merge, 3) + " ms");
    Table const table = CountTable(mesh, *merged);
    page.AddTable(table);
    if (auto const drawing = DrawMeshes(mesh, *merged, others, title)) {
        WriteFile(picture, *drawing);
        page.Figures({{picture.filename().string(), title, lines, true}});
    } else {
        lines.push_back("too many triangles for a picture");
        for (std::string const& line : lines)
            page.Paragraph(line);
    }
    std::string text = PlainText(table);
    for (std::string const& line : lines)
        text += "  " + line + '\n';
    return text;
}

} // namespace

std::string ReportModel(std::filesystem::path const& file, qel::Mat<4, double> const& transform,
                        std::filesystem::path const& folder, std::string const& stem, HtmlPage& page) {
    std::string const content = ReadFile(file);
    std::string ending = file.extension().string();
    ending.erase(0, 1);
    Assimp::Importer importer;
    aiScene const* scene = nullptr;
    double const import = Milliseconds(
        [&] { scene = importer.ReadFileFromMemory(content.data(), content.size(), 0, ending.c_str()); });
    if (!scene)
        throw std::runtime_error(file.string() + ": cannot be imported: " + importer.GetErrorString());

    std::string const name = file.filename().string();
    std::string const how =
        "imported by Assimp in " + Number(import, 3) + " ms, meshes: " + std::to_string(scene->mNumMeshes);
    page.Heading(name);
    page.Paragraph(how);
    std::string text = name + "\n  " + how + '\n';
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        std::string const number = scene->mNumMeshes > 1 ? ", mesh " + std::to_string(i + 1) : "";
        text +=
            ReportMesh(*scene->mMeshes[i], Matrix{transform.m_elements.data()},
                       folder / (stem + (i > 0 ? "-" + std::to_string(i + 1) : "") + ".svg"), name + number, page);
    }
    return text;
}

} // namespace example
