#include "sectrix/sections/blending/partner_search.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace qel::Sectrix {

namespace {

/// Finds the first place of a name in a loop.
///
/// A small loop is walked each time. A large one is walked for the first name, which mostly decides whether there
/// is a second; then the names are sorted once, since a walk for every name would cost the square of the size.
class NamePlaces {
public:
    explicit NamePlaces(Loop const& loop) : m_loop(loop) {}

    int Find(std::string const& name) {
        bool const isFirst = !std::exchange(m_isAsked, true);
        if (isFirst || m_loop.Vertices().size() < kLeastSortedSize)
            return m_loop.NamedPositionIndex(name);
        if (m_sorted.empty())
            Sort();
        auto const entry = std::lower_bound(m_sorted.begin(), m_sorted.end(), Entry{name, 0});
        return entry != m_sorted.end() && entry->first == name ? entry->second : -1;
    }

private:
    /// A name and a place where it stands; the first place of a name comes first.
    using Entry = std::pair<std::string_view, int>;

    void Sort() {
        m_sorted.reserve(m_loop.Vertices().size());
        for (std::size_t place = 0; place < m_loop.Vertices().size(); ++place)
            if (auto const* name = FindName(m_loop, place))
                m_sorted.emplace_back(*name, static_cast<int>(place));
        std::sort(m_sorted.begin(), m_sorted.end());
    }

    /// Below this the walks are over before the names are sorted.
    static std::size_t const kLeastSortedSize = 48;

    Loop const& m_loop;
    bool m_isAsked = false;
    std::vector<Entry> m_sorted;
};

} // namespace

int Loop::GetOtherShift(Loop const& other, bool& ok) const {
    ok = GetNamedPositionCount() == other.GetNamedPositionCount();
    if (!ok)
        return 0;
    NamePlaces otherPlaces(other);
    auto const size = static_cast<std::int64_t>(m_vertices.size());
    std::optional<int> shift;
    for (std::int64_t place = 0; place < size; ++place) {
        auto const* position = m_positions->Find(m_vertices[static_cast<std::size_t>(place)].Index());
        if (position && position->Name().empty())
            continue;
        auto const otherPlace = position ? otherPlaces.Find(position->Name()) : -1;
        auto const difference = static_cast<int>((size - otherPlace + place) % size);
        ok = otherPlace >= 0 && shift.value_or(difference) == difference;
        if (!ok)
            break;
        shift = difference;
    }
    return shift.value_or(0);
}

bool Loop::IsCompatible(Loop const& other) const {
    if (m_vertices.size() != other.m_vertices.size())
        return false;
    if (!HaveNames(*m_positions, *other.m_positions))
        return m_vertices == other.m_vertices;
    bool ok = false;
    GetOtherShift(other, ok);
    return ok;
}

Loop const& CrossSection::GetCompatibleInteriorLoop(Loop const& loop, std::uint64_t place, bool& found) const {
    auto const* partner = FindPartner(m_interiorLoops, place, HaveNames(*m_positions, loop.Positions()),
                                      [&loop](Loop const& candidate) { return loop.IsCompatible(candidate); });
    found = partner != nullptr;
    return found ? *partner : loop;
}

bool CrossSection::IsCompatible(CrossSection const& other, bool convex) const {
    return AreCompatible(*this, other, convex, nullptr);
}

bool AreCompatible(CrossSection const& first, CrossSection const& second, bool convex,
                   std::vector<Loop const*>* partners) {
    if (HaveNames(first.Positions(), second.Positions()) &&
        first.GetNamedPositionCount() != second.GetNamedPositionCount())
        return false;
    if (convex) {
        // Built in this order, which the indices of the positions that are added depend on.
        auto const& firstLoops = first.ConvexLoops();
        auto const& secondLoops = second.ConvexLoops();
        return std::equal(firstLoops.begin(), firstLoops.end(), secondLoops.begin(), secondLoops.end(),
                          [](Loop const& one, Loop const& another) { return one.IsCompatible(another); });
    }
    if (first.InteriorLoops().size() != second.InteriorLoops().size() ||
        !first.ExteriorLoop().IsCompatible(second.ExteriorLoop()))
        return false;
    LoopSearch search(first);
    for (std::size_t place = 0; place < second.InteriorLoops().size(); ++place) {
        auto const* partner = search.Find(second.InteriorLoops()[place], place);
        if (!partner)
            return false;
        if (partners)
            partners->push_back(partner);
    }
    return true;
}

CrossSection const& CrossSections::GetCompatibleSection(CrossSection const& section, std::uint64_t place,
                                                        bool convex, bool& found) const {
    auto const* partner =
        FindPartner(m_items, place, HaveNames(m_positions, section.Positions()),
                    [&](CrossSection const& candidate) { return section.IsCompatible(candidate, convex); });
    found = partner != nullptr;
    return found ? *partner : section;
}

bool CrossSections::IsCompatible(CrossSections const& other, bool convex) const {
    return PairSections(*this, other, convex).has_value();
}

} // namespace qel::Sectrix
