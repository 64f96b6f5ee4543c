#include "section_report/mismatch.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>

namespace example {
namespace {

using qel::Sectrix::CrossSection;
using qel::Sectrix::CrossSections;
using qel::Sectrix::Loop;

std::set<std::string> NamesIn(std::vector<Loop> const& loops) {
    std::set<std::string> names;
    for (auto const& loop : loops)
        for (auto const& vertex : loop.Vertices()) {
            bool found = false;
            auto const index = static_cast<std::uint64_t>(vertex.Index());
            auto const& name = loop.Positions().GetPosition(index, found).Name();
            if (!name.empty())
                names.insert(name);
        }
    return names;
}

/// The names that the others lack; a few of them when there are many.
std::string Missing(std::set<std::string> const& names, std::set<std::string> const& others) {
    constexpr std::size_t kMost = 4;
    std::vector<std::string> missing;
    std::set_difference(names.begin(), names.end(), others.begin(), others.end(), std::back_inserter(missing));
    std::string text;
    for (std::size_t i = 0; i < std::min(kMost, missing.size()); ++i)
        text += (i > 0 ? ", " : "") + missing[i];
    return missing.size() > kMost ? text + " and " + std::to_string(missing.size() - kMost) + " more" : text;
}

/// Rows on two sections that are no partners, one at the least.
void AddDifferences(Table& table, std::string const& title, CrossSection const& one, CrossSection const& other) {
    auto const before = table.m_rows.size();
    auto const compare = [&](char const* what, std::uint64_t count, std::uint64_t otherCount) {
        if (count != otherCount)
            table.m_rows.push_back({title + ": " + what, std::to_string(count), std::to_string(otherCount)});
    };
    compare("interior loops", one.InteriorLoops().size(), other.InteriorLoops().size());
    compare("vertices of the exterior loop", one.ExteriorLoop().Vertices().size(),
            other.ExteriorLoop().Vertices().size());
    compare("named positions", one.GetNamedPositionCount(), other.GetNamedPositionCount());
    auto const compareNames = [&](char const* where, std::vector<Loop> const& loops,
                                  std::vector<Loop> const& others) {
        auto const names = NamesIn(loops);
        auto const otherNames = NamesIn(others);
        if (names != otherNames)
            table.m_rows.push_back({title + ": names missing in the " + where, Missing(otherNames, names),
                                    Missing(names, otherNames)});
    };
    compareNames("exterior loop", {one.ExteriorLoop()}, {other.ExteriorLoop()});
    compareNames("interior loops", one.InteriorLoops(), other.InteriorLoops());
    if (table.m_rows.size() == before)
        table.m_rows.push_back({title + ": order of vertices or names", "its own", "another"});
}

} // namespace

Table Mismatches(CrossSections const& first, std::string const& firstName, CrossSections const& second,
                 std::string const& secondName) {
    Table table{{"what differs", firstName, secondName}, {}};
    auto const& sections = first.Items();
    if (sections.size() != second.Items().size())
        table.m_rows.push_back(
            {"sections", std::to_string(sections.size()), std::to_string(second.Items().size())});
    for (std::size_t i = 0; i < std::min(sections.size(), second.Items().size()); ++i) {
        bool found = false;
        second.GetCompatibleSection(sections[i], i, false, found);
        if (!found)
            AddDifferences(table, "section " + std::to_string(i + 1), sections[i], second.Items()[i]);
    }
    return table;
}

} // namespace example
