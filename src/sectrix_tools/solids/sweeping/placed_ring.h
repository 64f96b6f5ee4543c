#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// \file
/// Rings of a station as points of a mesh.

namespace qel::SectrixTools::Solids {

/// A ring whose points stand one behind the other in the list of a mesh.
struct PlacedRing {
    /// The place of the first point in the list of the mesh.
    std::size_t m_begin = 0;
    /// For each vertex the number of points of the ring before it, and behind them the number of all its points.
    std::vector<std::size_t> m_vertices;

    std::size_t PointCount() const { return m_vertices.back(); }
    std::size_t VertexCount() const { return m_vertices.size() - 1; }
    /// The place in the list of the mesh. \param place  in the ring; the one behind the last is the first.
    std::uint32_t Point(std::size_t place) const {
        return static_cast<std::uint32_t>(m_begin + (place < PointCount() ? place : 0));
    }
};

/// The rings of a station, the outline first.
using PlacedStation = std::vector<PlacedRing>;

} // namespace qel::SectrixTools::Solids
