#include "sectrix/sections/blending/loop_alignment.h"

#include <functional>
#include <string_view>
#include <utility>

namespace qel::Sectrix {

namespace {

/// From this size on, names are sorted before they are looked for: below it the walks are over before that is done.
std::size_t const kLeastSortedSize = 48;

/// A name and a place where it stands.
using NamedPlace = std::pair<std::string_view, int>;

/// Ascending; the first place of a name comes first.
std::vector<NamedPlace> SortNames(Loop const& loop) {
    std::vector<NamedPlace> names;
    names.reserve(loop.Vertices().size());
    for (std::size_t place = 0; place < loop.Vertices().size(); ++place)
        if (auto const* name = NameAt(loop, place))
            names.emplace_back(*name, static_cast<int>(place));
    std::sort(names.begin(), names.end());
    return names;
}

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
    auto const size = static_cast<std::int64_t>(m_vertices.size());
    std::optional<int> shift;
    std::vector<NamedPlace> sorted;
    // A walk for each name costs the square of the size. The first name mostly decides whether there is a second.
    auto const findInOther = [&](std::string const& name) {
        if (!shift || other.m_vertices.size() < kLeastSortedSize)
            return other.NamedPositionIndex(name);
        if (sorted.empty())
            sorted = SortNames(other);
        auto const entry = std::lower_bound(sorted.begin(), sorted.end(), NamedPlace{name, 0});
        return entry != sorted.end() && entry->first == name ? entry->second : -1;
    };
    for (std::int64_t place = 0; place < size; ++place) {
        auto const* position = m_positions->Find(m_vertices[static_cast<std::size_t>(place)].Index());
        if (position && position->Name().empty())
            continue;
        auto const otherPlace = position ? findInOther(position->Name()) : -1;
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

std::uint64_t Mix(std::uint64_t first, std::uint64_t second) {
    std::uint64_t mixed = first * 0x9e3779b97f4a7c15u + second;
    mixed = (mixed ^ (mixed >> 32)) * 0xd6e8feb86659fd93u;
    return mixed ^ (mixed >> 32);
}

/// Lining up means the same cycle of names with the same steps between them. So the key is a sum over the named
/// vertices, of the name, the steps to the next and its name: it is the same wherever the cycle is entered.
std::uint64_t KeyOf(Loop const& loop) {
    auto const size = loop.Vertices().size();
    std::uint64_t sum = 0, firstPlace = size, firstName = 0, lastPlace = 0, lastName = 0;
    for (std::size_t place = 0; place < size; ++place) {
        auto const* text = NameAt(loop, place);
        if (!text)
            continue;
        std::uint64_t const name = std::hash<std::string>{}(*text);
        if (firstPlace < size) {
            sum += Mix(lastName + (place - lastPlace), name);
        } else {
            firstPlace = place;
            firstName = name;
        }
        lastPlace = place;
        lastName = name;
    }
    if (firstPlace < size)
        sum += Mix(lastName + (size + firstPlace - lastPlace), firstName);
    return Mix(size, sum);
}

bool HaveKeys(std::vector<Loop> const& loops) {
    return std::all_of(loops.begin(), loops.end(),
                       [](Loop const& loop) { return loop.Positions().NamedCount() >= 1; });
}

} // namespace qel::Sectrix
