#include "sectrix/sections/cross_section.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

namespace qel::Sectrix {

CrossSection::CrossSection() : m_positions(&m_emptyPositions) {}

CrossSection::CrossSection(CSPositions& pool, bool fill) : m_exteriorLoop(pool, fill), m_positions(&pool) {}

CrossSection::CrossSection(CrossSection const& other, CSPositions& pool)
    : m_assemblyPartName(other.m_assemblyPartName), m_exteriorLoop(other.m_exteriorLoop, pool), m_positions(&pool) {
    auto const rebind = [&pool](std::vector<Loop> const& loops, std::vector<Loop>& copies) {
        copies.reserve(loops.size());
        for (auto const& loop : loops)
            copies.emplace_back(loop, pool);
    };
    rebind(other.m_interiorLoops, m_interiorLoops);
    rebind(other.ConvexLoops(), m_convexLoops);
    m_addedVertices = other.m_addedVertices;
}

CrossSection& CrossSection::operator=(CrossSection const& other) {
    m_exteriorLoop = other.m_exteriorLoop;
    m_interiorLoops = other.m_interiorLoops;
    m_convexLoops = other.m_convexLoops;
    return *this;
}

qel::BBox<2, double> CrossSection::BBox() const {
    auto box = m_exteriorLoop.BBox();
    for (auto const& loop : m_interiorLoops)
        box.Widen(loop.BBox());
    return box;
}

std::uint64_t CrossSection::GetNamedPositionCount() const {
    std::uint64_t count = m_exteriorLoop.GetNamedPositionCount();
    for (auto const& loop : m_interiorLoops)
        count += loop.GetNamedPositionCount();
    return count;
}

Loop& CrossSection::AddInteriorLoop() {
    return m_interiorLoops.emplace_back(*m_positions, false);
}

Loop& CrossSection::AddConvexLoop() const {
    return m_convexLoops.emplace_back(*m_positions, false);
}

int CrossSection::Modulo(int value, int size) const {
    int const rest = value % size;
    return rest < 0 ? rest + size : rest;
}

void CrossSection::Rebind(CSPositions const& from, CSPositions& to) {
    if (m_positions == &from)
        m_positions = &to;
    m_exteriorLoop.Rebind(from, to);
    for (auto& loop : m_interiorLoops)
        loop.Rebind(from, to);
    for (auto& loop : m_convexLoops)
        loop.Rebind(from, to);
}

} // namespace qel::Sectrix
