#include "sectrix/mesh/mesh.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <algorithm>
#include <utility>

namespace qel::Sectrix {

Mesh::Mesh(wchar_t const* key, wchar_t const* name) : m_key(key), m_name(name) {}

Mesh::Mesh(Mesh&& other) noexcept {
    *this = std::move(other);
}

Mesh& Mesh::operator=(Mesh const& other) {
    if (this != &other)
        *this = Mesh(other);
    return *this;
}

Mesh& Mesh::operator=(Mesh&& other) noexcept {
    m_key = std::exchange(other.m_key, {});
    m_name = std::exchange(other.m_name, {});
    m_positions = std::exchange(other.m_positions, {});
    m_indices = std::exchange(other.m_indices, {});
    m_transform = other.m_transform;
    return *this;
}

bool Mesh::BoundingBox(Position& min, Position& max) const {
    if (m_positions.empty())
        return false;
    Position low = m_positions.front();
    Position high = low;
    for (auto const& position : m_positions) {
        // Of two values that do not compare, these take their first argument: what is not a number moves in.
        low.SetX(std::min(position.X(), low.X()));
        low.SetY(std::min(position.Y(), low.Y()));
        low.SetZ(std::min(position.Z(), low.Z()));
        high.SetX(std::max(position.X(), high.X()));
        high.SetY(std::max(position.Y(), high.Y()));
        high.SetZ(std::max(position.Z(), high.Z()));
    }
    min = low;
    max = high;
    return true;
}

} // namespace qel::Sectrix
