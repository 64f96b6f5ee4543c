#include "sectrix/sections/blending/loop_alignment.h"

#include <string_view>
#include <utility>

namespace qel::Sectrix {

namespace {

/// Finds the first place of a name in a loop.
///
/// A small loop is walked for each name. The names of a large one are sorted, since a walk for each would cost the
/// square of the size; but not before the second name is asked for, which mostly means that the loops line up.
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
            if (auto const* name = NameAt(m_loop, place))
                m_sorted.emplace_back(*name, static_cast<int>(place));
        std::sort(m_sorted.begin(), m_sorted.end());
    }

    /// Below this the walks are over before the names are sorted.
    static std::size_t const kLeastSortedSize = 48;

    Loop const& m_loop;
    bool m_isAsked = false;
    std::vector<Entry> m_sorted;
};

/// The shift of `loop` against another of the same size that has the good shift `opposite` against it.
///
/// Both have the same names in the same cycle, each once. So the shift is the opposite one wherever the walk
/// through `loop` comes to a name; at an index that is not in the pool it ends before.
int Reversed(Loop const& loop, int opposite) {
    for (auto const& vertex : loop.Vertices()) {
        bool found = false;
        auto const& position = loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        if (!found || opposite == 0)
            return 0;
        if (!position.Name().empty())
            return static_cast<int>(loop.Vertices().size()) - opposite;
    }
    return 0;
}

std::optional<int> ShiftByName(Loop const& loop, Loop const& other) {
    bool ok = loop.Vertices().size() == other.Vertices().size();
    int const shift = ok ? loop.GetOtherShift(other, ok) : 0;
    return ok ? std::optional(shift) : std::nullopt;
}

std::optional<int> ShiftByIndex(Loop const& loop, Loop const& other) {
    return loop.Vertices() == other.Vertices() ? std::optional(BlendShift(loop, other)) : std::nullopt;
}

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
    return HaveNames(*m_positions, *other.m_positions) ? ShiftByName(*this, other).has_value()
                                                       : m_vertices == other.m_vertices;
}

int BlendShift(Loop const& first, Loop const& second) {
    bool ok = false; // a failed alignment still gives the best shift there is
    return std::max(first.GetOtherShift(second, ok), 0);
}

std::optional<int> ShiftOfCompatible(Loop const& first, Loop const& second) {
    return HaveNames(first.Positions(), second.Positions()) ? ShiftByName(first, second)
                                                            : ShiftByIndex(first, second);
}

std::optional<int> ShiftOfPartner(Loop const& first, Loop const& second) {
    if (!HaveNames(first.Positions(), second.Positions()))
        return ShiftByIndex(first, second);
    auto const opposite = ShiftByName(second, first);
    return opposite ? std::optional(Reversed(first, *opposite)) : std::nullopt;
}

} // namespace qel::Sectrix
