#include "support/meshes.h"
#include "support/plain_merging.h"
#include "support/result.h"
#include "target.h"

using namespace qel;
using namespace qel::Sectrix;

namespace fuzz {

namespace {

std::string MeshText(Mesh const& mesh) {
    std::string text = "mesh\n";
    for (auto const& position : mesh.Positions())
        text += Text(position);
    for (auto const index : mesh.Indices())
        text += std::to_string(index) + ' ';
    Position min, max;
    if (mesh.BoundingBox(min, max))
        text += Text(min) + Text(max);
    return text + '\n';
}

/// Positions that are mostly close to a lattice, some of them closer to each other than what is merged.
std::vector<Position> ReadPositions(Input& input) {
    std::vector<Position> positions(static_cast<std::size_t>(input.Below(400)));
    double const steps[] = {1.0, 0.0001, 0.00003, 0x1p-13};
    double const step = steps[input.Below(4)];
    input.ReadScale();
    for (auto& position : positions) {
        position.SetX(input.Coordinate() * step);
        position.SetY(input.Coordinate() * step);
        position.SetZ(input.Coordinate() * step);
    }
    return positions;
}

/// After two imports under one matrix, every vertex and each triangle must be there twice.
void CheckImport(Mesh const& mesh, std::vector<aiVector3D> const& vertices,
                 std::vector<std::vector<unsigned>> const& faces, Mat<4, double> const& matrix) {
    auto position = mesh.Positions().begin();
    auto index = mesh.Indices().begin();
    Require(mesh.Positions().size() == 2 * vertices.size(), "as many positions");
    for (int import = 0; import < 2; ++import) {
        for (auto const& [x, y, z] : vertices)
            Require(Text(*position++) == Text(Position(x, y, z, Matrix{matrix.m_elements.data()})), "a position");
        for (auto const& face : faces)
            for (std::size_t i = 0; i < face.size() && face.size() == 3; ++i)
                Require(index != mesh.Indices().end() && *index++ == std::int64_t{face[i]}, "a corner");
    }
    Require(index == mesh.Indices().end(), "no more corners");
}

Mesh Import(Input& input) {
    std::vector<aiVector3D> vertices(static_cast<std::size_t>(input.Below(40)));
    for (auto& vertex : vertices) {
        auto const coordinate = [&input] {
            double const value = input.Coordinate();
            return static_cast<ai_real>(std::abs(value) > 1e38 ? std::copysign(INFINITY, value) : value);
        };
        vertex = {coordinate(), coordinate(), coordinate()};
    }
    std::vector<std::vector<unsigned>> faces(static_cast<std::size_t>(input.Below(40)));
    for (auto& face : faces) {
        face.resize(static_cast<std::size_t>(input.Below(16) ? 3 : input.Below(6)));
        for (auto& corner : face)
            corner = input.Below(16) ? static_cast<unsigned>(input.Byte()) : 0xFFFFFFFFu;
    }
    aiMesh source;
    meshes::Fill(source, vertices, faces);
    Mat<4, double> matrix;
    for (int edits = input.Below(4); edits > 0; --edits)
        matrix[static_cast<std::size_t>(input.Below(16))] = input.Coordinate();
    Mesh mesh(L"key", L"name");
    mesh.fromOBJ(&source, Matrix{matrix.m_elements.data()});
    mesh.fromOBJ(&source, Matrix{mesh.Transform().m_elements.data()});
    CheckImport(mesh, vertices, faces, matrix);
    return mesh;
}

} // namespace

std::string RunMesh(std::string const& bytes) {
    Input input(bytes);
    auto const positions = ReadPositions(input);
    plain::Indices indices(static_cast<std::size_t>(input.Below(600)));
    for (auto& index : indices) {
        index = input.Below(static_cast<int>(positions.size()) + 2);
        if (input.Below(32) == 31)
            index += std::int64_t{1} << (31 + input.Below(32));
    }
    auto const mesh = meshes::MakeMesh(positions, indices);
    Require(plain::Merging().Agrees(mesh), "merging as the twin does");
    auto const imported = Import(input);
    Require(plain::Merging().Agrees(imported), "merging what is imported as the twin does");
    return MeshText(Mesh(mesh, true)) + MeshText(imported) + MeshText(Mesh(imported, true));
}

} // namespace fuzz
