#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/sections/blending/partner_search.h"

#include <algorithm>

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
    bool const takesIndex = first.m_isIndexExact && m_positions.empty() && m_nameIndex.empty();
    if (m_positions.empty())
        Reserve(first.m_positions.size());
    if (takesIndex)
        m_isIndexExact = false; // as it is when memory runs out before the index is taken
    std::size_t nextPlace = 0;
    for (std::size_t index = 0; index < first.m_positions.size(); ++index) {
        auto const& position = first.m_positions[index];
        auto const* partner = second.FindPartner(position, index, nextPlace);
        auto const point = partner ? Blended(position, *partner, ratio) : position.Position();
        if (takesIndex)
            m_positions.emplace_back(position.Name(), point);
        else
            AddPosition(position.Name(), point);
    }
    if (takesIndex) { // what adding name by name would give, several times as fast
        m_nameIndex = first.m_nameIndex;
        m_isIndexExact = true;
    }
}

CSPosition const* CSPositions::FindPartner(CSPosition const& position, std::size_t index,
                                           std::size_t& nextPlace) const {
    auto const& name = position.Name();
    auto const hasName = [&](std::size_t place) {
        return place < m_positions.size() && m_positions[place].Name() == name;
    };
    auto place = name.empty() ? index : nextPlace;
    // Where names are unique, a position of this name is the one that the name index leads to.
    if (!name.empty() && !(m_isIndexExact && hasName(place))) {
        auto const entry = m_nameIndex.find(name);
        if (entry == m_nameIndex.end())
            return nullptr;
        place = entry->second;
    }
    if (!hasName(place))
        return nullptr;
    nextPlace = place + 1;
    return &m_positions[place];
}

Loop::Loop(Loop const& first, Loop const& second, CSPositions& pool, CSPositions const& /*firstPositions*/,
           CSPositions const& /*secondPositions*/, double ratio)
    : m_positions(&pool) {
    Blend(first, second, pool, ratio);
}

void Loop::Blend(Loop const& first, Loop const& second, CSPositions& pool, double ratio) {
    bool ok = false; // a failed alignment still gives the best shift there is
    std::int64_t const shift = std::max(first.GetOtherShift(second, ok), 0);
    auto const secondSize = static_cast<std::int64_t>(second.m_vertices.size());
    auto const count = std::min(first.m_vertices.size(), second.m_vertices.size());
    m_vertices.reserve(count);
    for (std::size_t place = 0; place < count; ++place) {
        auto secondPlace = (static_cast<std::int64_t>(place) - shift) % secondSize;
        if (secondPlace < 0)
            secondPlace += secondSize;
        auto const& vertex = first.m_vertices[place];
        auto const* p = first.m_positions->Find(vertex.Index());
        auto const* q = second.m_positions->Find(second.m_vertices[static_cast<std::size_t>(secondPlace)].Index());
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
    LoopSearch search(first);
    std::vector<Loop const*> partners;
    for (std::size_t place = 0; place < second.m_interiorLoops.size(); ++place)
        partners.push_back(search.Find(second.m_interiorLoops[place], place));
    Blend(first, second, partners.data(), ratio);
}

void CrossSection::Blend(CrossSection const& first, CrossSection const& second, Loop const* const* partners,
                         double ratio) {
    if (first.m_assemblyPartName == second.m_assemblyPartName)
        m_assemblyPartName = first.m_assemblyPartName;
    m_exteriorLoop.Blend(first.m_exteriorLoop, second.m_exteriorLoop, *m_positions, ratio);
    m_interiorLoops.reserve(second.m_interiorLoops.size());
    for (std::size_t place = 0; place < second.m_interiorLoops.size(); ++place)
        if (partners[place])
            AddInteriorLoop().Blend(*partners[place], second.m_interiorLoops[place], *m_positions, ratio);
    m_addedVertices = first.m_addedVertices;
}

CrossSections::CrossSections(CrossSections const& first, CrossSections const& second, double ratio, bool convex) {
    m_items.reserve(first.m_items.size());
    if (auto const pairs = PairSections(first, second, convex)) {
        Blend(first, second, *pairs, ratio, convex);
    } else {
        m_positions.SetPositions(first.m_positions);
        for (auto const& section : first.m_items)
            m_items.emplace_back(section, m_positions);
        m_parameters = first.m_parameters;
    }
    ResetConvexLoops();
}

void CrossSections::Blend(CrossSections const& first, CrossSections const& second, SectionPairs const& pairs,
                          double ratio, bool convex) {
    m_positions.SetPositions(first.m_positions, second.m_positions, ratio);
    auto const* loopPartners = pairs.m_interiorLoops.data();
    for (std::size_t place = 0; place < first.m_items.size(); ++place) {
        auto const& section = first.m_items[place];
        auto const& partner = *pairs.m_sections[place];
        if (convex) {
            m_items.emplace_back(section, partner, m_positions, first.m_positions, second.m_positions, ratio);
        } else {
            m_items.emplace_back(m_positions, false).Blend(section, partner, loopPartners, ratio);
            loopPartners += partner.m_interiorLoops.size();
        }
    }
    for (auto const& [key, value] : first.m_parameters) {
        auto const other = second.m_parameters.find(key);
        if (other != second.m_parameters.end())
            m_parameters.emplace_hint(m_parameters.end(), key, Blended(value, other->second, ratio));
    }
}

} // namespace qel::Sectrix
