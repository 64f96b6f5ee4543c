#pragma once

#include "sectrix/mesh/mesh.h"
#include "support/shapes.h"

#include <algorithm>
#include <assimp/mesh.h>
#include <cmath>
#include <cstdint>
#include <vector>

/// \file
/// Meshes for tests and measurements. Same seed, same mesh.

namespace meshes {

using Positions = std::vector<qel::Sectrix::Position>;
using Indices = std::vector<std::int64_t>;

inline qel::Sectrix::Position At(double x, double y = 0, double z = 0) {
    qel::Sectrix::Position position;
    position.SetX(x);
    position.SetY(y);
    position.SetZ(z);
    return position;
}

/// A mesh with any lists, also those that no import makes.
inline qel::Sectrix::Mesh MakeMesh(Positions const& positions, Indices const& indices) {
    qel::Sectrix::Mesh mesh(L"key", L"name");
    const_cast<Positions&>(mesh.Positions()) = positions;
    const_cast<Indices&>(mesh.Indices()) = indices;
    return mesh;
}

/// Gives an empty `aiMesh` vertices and faces, in arrays that it frees.
/// \param faces  the corners of each.
inline void Fill(aiMesh& target, std::vector<aiVector3D> const& vertices,
                 std::vector<std::vector<unsigned>> const& faces) {
    target.mNumVertices = static_cast<unsigned>(vertices.size());
    target.mVertices = new aiVector3D[vertices.size()];
    std::copy(vertices.begin(), vertices.end(), target.mVertices);
    target.mNumFaces = static_cast<unsigned>(faces.size());
    target.mFaces = new aiFace[faces.size()];
    for (std::size_t i = 0; i < faces.size(); ++i) {
        target.mFaces[i].mNumIndices = static_cast<unsigned>(faces[i].size());
        target.mFaces[i].mIndices = new unsigned[faces[i].size()];
        std::copy(faces[i].begin(), faces[i].end(), target.mFaces[i].mIndices);
    }
}

/// A box of points in rows along the axes; flat where an axis has one only.
struct Lattice {
    double base[3] = {0, 0, 0};
    /// At least the distance to the next double is taken.
    double step[3] = {1, 1, 1};
    int extent[3] = {1, 1, 1};
    /// One coordinate in so many is infinite or not a number instead; 0 for none.
    int oddities = 0;

    /// The coordinate on an axis of a random point.
    double Coordinate(shapes::Random& random, int axis) const {
        double const specials[] = {INFINITY, -INFINITY, INFINITY, -INFINITY, NAN};
        if (oddities > 0 && shapes::Below(random, oddities) == 0)
            return specials[shapes::Below(random, 5)];
        double const spacing = std::nextafter(base[axis], INFINITY) - base[axis];
        return base[axis] + std::max(step[axis], spacing) * shapes::Below(random, extent[axis]);
    }

    Positions Points(shapes::Random& random, int count) const {
        Positions positions;
        for (; count > 0; --count)
            positions.push_back(At(Coordinate(random, 0), Coordinate(random, 1), Coordinate(random, 2)));
        return positions;
    }
};

} // namespace meshes
