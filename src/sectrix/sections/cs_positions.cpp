#include "sectrix/sections/cs_positions.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <utility>

namespace qel::Sectrix {

CSPosition::CSPosition(Vec<2, double> const& position) : m_position(position) {}

CSPosition::CSPosition(std::string const& name, Vec<2, double> const& position)
    : m_position(position), m_name(name) {}

CSPosition::CSPosition(CSPosition&& other) noexcept
    : m_position(other.m_position), m_name(std::exchange(other.m_name, {})) {}

CSPosition& CSPosition::operator=(CSPosition&& other) noexcept {
    m_position = other.m_position;
    m_name = std::exchange(other.m_name, {});
    return *this;
}

CSPositions::CSPositions(CSPositions&& other) noexcept
    : m_positions(std::exchange(other.m_positions, {})), m_nameIndex(std::exchange(other.m_nameIndex, {})) {}

CSPositions& CSPositions::operator=(CSPositions const& other) {
    if (this != &other)
        *this = CSPositions(other);
    return *this;
}

CSPositions& CSPositions::operator=(CSPositions&& other) noexcept {
    m_positions = std::exchange(other.m_positions, {});
    m_nameIndex = std::exchange(other.m_nameIndex, {});
    return *this;
}

int CSPositions::AddPosition(Vec<2, double> const& position) {
    m_positions.emplace_back(position);
    return Count() - 1;
}

int CSPositions::AddPosition(std::string const& name, Vec<2, double> const& position) {
    auto named = m_nameIndex.end();
    return AddPosition(name, position, named);
}

int CSPositions::AddPosition(std::string const& name, Vec<2, double> const& position, NameIndex::iterator& named) {
    m_positions.emplace_back(name, position);
    auto const& added = m_positions.back().Name(); // `name` may have stood in the list, which may have moved
    if (!added.empty())
        named = m_nameIndex.insert_or_assign(named, added, m_positions.size() - 1);
    return Count() - 1;
}

CSPosition const& CSPositions::GetPosition(std::string const& name, bool& found) const {
    auto const entry = m_nameIndex.find(name);
    found = entry != m_nameIndex.end() && entry->second < m_positions.size();
    return found ? m_positions[entry->second] : m_invalidPosition;
}

CSPosition& CSPositions::GetPosition(std::string const& name, bool& found) {
    return const_cast<CSPosition&>(std::as_const(*this).GetPosition(name, found));
}

CSPosition& CSPositions::GetPosition(std::uint64_t index, bool& found) {
    return const_cast<CSPosition&>(std::as_const(*this).GetPosition(index, found));
}

void CSPositions::RemovePosition(std::uint64_t index) {
    if (index >= m_positions.size())
        return;
    auto const position = m_positions.begin() + static_cast<std::ptrdiff_t>(index);
    m_nameIndex.erase(position->Name());
    m_positions.erase(position);
}

void CSPositions::Reserve(std::uint64_t count) {
    m_positions.reserve(count);
}

qel::BBox<2, double> CSPositions::BBox() const {
    qel::BBox<2, double> box;
    for (auto const& position : m_positions)
        box.Widen(position.Position());
    return box;
}

void CSPositions::Transform(Mat<3, double> const& matrix) {
    for (auto& position : m_positions) {
        auto const [x, y] = position.Position().m_elements;
        double const w = x * matrix[2] + y * matrix[5] + matrix[8];
        position.Position() = {(x * matrix[0] + y * matrix[3] + matrix[6]) / w,
                               (x * matrix[1] + y * matrix[4] + matrix[7]) / w};
    }
}

void CSPositions::SetPositions(CSPositions const& other) {
    *this = other;
}

} // namespace qel::Sectrix
