#include "sectrix/foundation/detail/position_arithmetic.h"
#include "sectrix/mesh/mesh.h"

#include <algorithm>
#include <assimp/mesh.h>

namespace qel::Sectrix {

void Mesh::fromOBJ(aiMesh const* mesh, Matrix const& matrix) {
    // A copy that no write to the lists can reach, so that the loop below need not load it again and again.
    Mat<4, double> transform;
    std::copy_n(matrix.m_elements, transform.m_elements.size(), transform.m_elements.begin());

    m_positions.reserve(m_positions.size() + mesh->mNumVertices);
    for (unsigned i = 0; i < mesh->mNumVertices; ++i) {
        aiVector3D const& vertex = mesh->mVertices[i];
        m_positions.push_back(Transformed(vertex.x, vertex.y, vertex.z, transform.m_elements.data()));
    }

    m_indices.reserve(m_indices.size() + std::size_t{3} * mesh->mNumFaces);
    for (unsigned i = 0; i < mesh->mNumFaces; ++i) {
        aiFace const& face = mesh->mFaces[i];
        if (face.mNumIndices == 3)
            m_indices.insert(m_indices.end(), face.mIndices, face.mIndices + 3);
    }

    m_transform = transform;
}

} // namespace qel::Sectrix
