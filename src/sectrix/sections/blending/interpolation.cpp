#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/sections/blending/loop_alignment.h"
#include "sectrix/sections/blending/set_pairing.h"

#include <algorithm>
#include <cassert>

namespace qel::Sectrix {

namespace {

double Blended(double first, double second, double ratio) {
    return (1.0 - ratio) * first + ratio * second;
}

Vec<2, double> Blended(CSPosition const& first, CSPosition const& second, double ratio) {
    auto const& p = first.Position();
    auto const& q = second.Position();
    return {Blended(p[0], q[0], ratio), Blended(p[1], q[1], ratio)};
}

} // namespace

void CSPositions::SetPositions(CSPositions const& first, CSPositions const& second, double ratio) {
    if (this == &first || this == &second)
        return SetPositions(CSPositions(first), CSPositions(second), ratio);
    auto const start = m_positions.size();
    Append(first);
    for (std::size_t index = 0; index < first.m_positions.size(); ++index)
        MoveToPartner(start + index, index, second, ratio);
}

void CSPositions::Append(CSPositions const& other) {
    assert(this != &other);
    if (m_positions.empty() && m_nameIndex.empty()) {
        *this = other; // several times as fast as adding name by name
        if (IsIndexExact())
            return;
        *this = {};
    }
    m_positions.reserve(m_positions.size() + other.m_positions.size());
    for (auto const& position : other.m_positions)
        AddPosition(position.Name(), position.Position());
}

bool CSPositions::IsIndexExact() const {
    auto const isNamed = [](CSPosition const& position) { return !position.Name().empty(); };
    auto const namedCount = std::count_if(m_positions.begin(), m_positions.end(), isNamed);
    // Backwards, as the entries of a copied index stand in memory.
    return static_cast<std::size_t>(namedCount) == m_nameIndex.size() &&
           std::all_of(m_nameIndex.rbegin(), m_nameIndex.rend(), [this](auto const& entry) {
               return entry.second < m_positions.size() && m_positions[entry.second].Name() == entry.first;
           });
}

void CSPositions::MoveToPartner(std::size_t place, std::size_t index, CSPositions const& second, double ratio) {
    auto& position = m_positions[place];
    bool isFound = false;
    auto const& partner =
        position.Name().empty() ? second.GetPosition(index, isFound) : second.GetPosition(position.Name(), isFound);
    if (isFound && partner.Name() == position.Name())
        position.Position() = Blended(position, partner, ratio);
}

Loop::Loop(Loop const& first, Loop const& second, CSPositions& pool, CSPositions const& /*firstPositions*/,
           CSPositions const& /*secondPositions*/, double ratio)
    : m_positions(&pool) {
    Blend(first, second, BlendShift(first, second), pool, ratio);
}

void Loop::Blend(Loop const& first, Loop const& second, int shift, CSPositions& pool, double ratio) {
    assert(m_vertices.empty() && m_positions == &pool && shift >= 0);
    auto const secondSize = second.m_vertices.size();
    auto const count = std::min(first.m_vertices.size(), secondSize);
    auto const start = count > 0 ? secondSize - static_cast<std::size_t>(shift) % secondSize : 0;
    m_vertices.reserve(count);
    for (std::size_t place = 0; place < count; ++place) {
        auto const& vertex = first.m_vertices[place];
        auto const* p = first.m_positions->Find(vertex.Index());
        auto const* q = second.m_positions->Find(second.m_vertices[(start + place) % secondSize].Index());
        if (!p || !q || !pool.Find(vertex.Index()))
            continue;
        pool.m_positions[static_cast<std::size_t>(vertex.Index())].Position() = Blended(*p, *q, ratio);
        m_vertices.push_back(vertex);
    }
}

CrossSection::CrossSection(CrossSection const& first, CrossSection const& second, CSPositions& pool,
                           CSPositions const& /*firstPositions*/, CSPositions const& /*secondPositions*/,
                           double ratio)
    : m_exteriorLoop(pool, false), m_positions(&pool) {
    Blend(PairLoops(first, second), ratio);
}

void CrossSection::Blend(SectionPair const& pair, double ratio) {
    assert(m_exteriorLoop.m_vertices.empty() && m_interiorLoops.empty());
    auto const& [first, second, shift, holes] = pair;
    if (first->m_assemblyPartName == second->m_assemblyPartName)
        m_assemblyPartName = first->m_assemblyPartName;
    m_exteriorLoop.Blend(first->m_exteriorLoop, second->m_exteriorLoop, shift, *m_positions, ratio);
    m_interiorLoops.reserve(holes.size());
    for (std::size_t place = 0; place < holes.size(); ++place)
        if (auto const* partner = holes[place].m_partner)
            AddInteriorLoop().Blend(*partner, second->m_interiorLoops[place], holes[place].m_shift, *m_positions,
                                    ratio);
    m_addedVertices = first->m_addedVertices;
}

CrossSections::CrossSections(CrossSections const& first, CrossSections const& second, double ratio, bool convex) {
    m_items.reserve(first.m_items.size());
    if (auto const pairs = PairSections(first, second, convex)) {
        m_positions.Append(first.m_positions);
        for (auto const& pair : *pairs)
            m_items.emplace_back(m_positions, false).Blend(pair, ratio);
        MoveUnusedPositions(second.m_positions, ratio);
        for (auto const& [key, value] : first.m_parameters) {
            auto const other = second.m_parameters.find(key);
            if (other != second.m_parameters.end())
                m_parameters.emplace_hint(m_parameters.end(), key, Blended(value, other->second, ratio));
        }
    } else {
        m_positions.SetPositions(first.m_positions);
        for (auto const& section : first.m_items)
            m_items.emplace_back(section, m_positions);
        m_parameters = first.m_parameters;
    }
    ResetConvexLoops();
}

void CrossSections::MoveUnusedPositions(CSPositions const& second, double ratio) {
    std::vector<bool> isUsed(m_positions.m_positions.size());
    auto const mark = [&isUsed](Loop const& loop) {
        for (auto const& vertex : loop.Vertices())
            isUsed[static_cast<std::size_t>(vertex.Index())] = true;
    };
    for (auto const& section : m_items) {
        mark(section.m_exteriorLoop);
        std::for_each(section.m_interiorLoops.begin(), section.m_interiorLoops.end(), mark);
    }
    for (std::size_t index = 0; index < isUsed.size(); ++index)
        if (!isUsed[index])
            m_positions.MoveToPartner(index, index, second, ratio);
}

} // namespace qel::Sectrix
