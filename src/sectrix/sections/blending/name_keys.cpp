#include "sectrix/sections/blending/name_keys.h"
#include "sectrix/sections/blending/loop_alignment.h"

#include <functional>

namespace qel::Sectrix {

namespace {

/// Scatters two numbers over the 64 bits of one.
std::uint64_t Mix(std::uint64_t first, std::uint64_t second) {
    std::uint64_t mixed = first * 0x9e3779b97f4a7c15u + second;
    mixed = (mixed ^ (mixed >> 32)) * 0xd6e8feb86659fd93u;
    return mixed ^ (mixed >> 32);
}

} // namespace

bool HaveNames(std::vector<Loop> const& loops) {
    return std::all_of(loops.begin(), loops.end(),
                       [](Loop const& loop) { return loop.Positions().NamedCount() >= 1; });
}

/// Lining up means the same cycle of names with the same steps between them. So the key is a sum over the named
/// vertices, of the name, the steps to the next and its name: it is the same wherever the cycle is entered.
std::uint64_t KeyOf(Loop const& loop) {
    struct Named {
        std::uint64_t m_place = 0;
        std::uint64_t m_name = 0;
    };
    std::optional<Named> first;
    Named last;
    auto const size = loop.Vertices().size();
    std::uint64_t sum = 0;
    for (std::size_t place = 0; place < size; ++place) {
        auto const* name = NameAt(loop, place);
        if (!name)
            continue;
        Named const named{place, std::hash<std::string>{}(*name)};
        if (first)
            sum += Mix(last.m_name + named.m_place - last.m_place, named.m_name);
        else
            first = named;
        last = named;
    }
    if (first)
        sum += Mix(last.m_name + size + first->m_place - last.m_place, first->m_name);
    return Mix(size, sum);
}

bool SectionKey::Set(CrossSection const& section, bool convex, std::uint64_t count) {
    auto const& loops = convex ? section.ConvexLoops() : section.InteriorLoops();
    m_outline = Mix(count, loops.size());
    m_holes.clear();
    if (!HaveNames(loops) || section.ExteriorLoop().Positions().NamedCount() < 1)
        return false;
    for (auto const& loop : loops)
        if (convex)
            m_outline = Mix(m_outline, KeyOf(loop));
        else
            m_holes.push_back(KeyOf(loop));
    if (!convex)
        m_outline = Mix(m_outline, KeyOf(section.ExteriorLoop()));
    std::sort(m_holes.begin(), m_holes.end());
    m_holes.erase(std::unique(m_holes.begin(), m_holes.end()), m_holes.end());
    return true;
}

std::uint64_t SectionKey::Whole() const {
    std::uint64_t key = m_outline;
    for (auto const hole : m_holes)
        key = Mix(key, hole);
    return key;
}

bool SectionKey::HasMoreThan(SectionKey const& other) const {
    return other.m_outline == m_outline && other.m_holes.size() < m_holes.size() &&
           std::includes(m_holes.begin(), m_holes.end(), other.m_holes.begin(), other.m_holes.end());
}

} // namespace qel::Sectrix
