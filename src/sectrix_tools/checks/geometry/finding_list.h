#pragma once

#include "sectrix_tools/checks/finding.h"
#include "sectrix_tools/checks/geometry/point.h"

#include <cstddef>
#include <map>
#include <string>

/// \file
/// The findings of one section, not more than somebody could read.

namespace qel::SectrixTools::Geometry {

/// As a number stands in a message: up to six digits, with a point, whatever the locale.
std::string NumberText(double value);
/// A point as it stands in a message.
std::string PointText(Point const& point);

/// Where in a section; -1 where no loop or vertex is meant.
struct SectionPlace {
    int m_loop = -1;
    int m_vertex = -1;
};

/// Gathers the findings of one section. Of each code the first `kMostListed` are kept, and the others are counted.
class FindingList {
public:
    explicit FindingList(int section) : m_section(section) {}

    void Add(Severity severity, char const* code, std::string message, SectionPlace const& place);
    void Add(Severity severity, char const* code, std::string message, SectionPlace const& place,
             Point const& point);

    bool HasErrors() const { return m_hasErrors; }

    /// All that were kept, by loop and vertex, then one for each code of which there were more. The list is empty
    /// afterwards.
    Findings Take();

    /// How many findings of one code are kept.
    static std::size_t const kMostListed = 1000;

private:
    int m_section;
    bool m_hasErrors = false;
    Findings m_findings;
    /// How many findings there were of each code.
    std::map<std::string, std::size_t> m_counts;
};

} // namespace qel::SectrixTools::Geometry
