#include "sectrix_tools/solids/sweeping/station_alignment.h"

#include "sectrix_tools/solids/sweeping/ring_finding.h"

#include <cstdint>
#include <map>
#include <string>

namespace qel::SectrixTools::Solids {
namespace {

using Sectrix::CrossSection;
using Sectrix::Loop;

/// How a loop of another section answers to one of the first.
enum class Match { ByNames, ByPlace, OtherNames, OtherSize };

Match Compare(Loop const& first, Loop const& other, std::size_t& vertex) {
    vertex = 0;
    if (first.Vertices().size() != other.Vertices().size())
        return Match::OtherSize;
    if (first.GetNamedPositionCount() == 0 || other.GetNamedPositionCount() == 0)
        return Match::ByPlace;
    bool linesUp = false;
    int const shift = first.GetOtherShift(other, linesUp);
    // Place i of the first is place i - shift of the other.
    int const size = static_cast<int>(first.Vertices().size());
    vertex = static_cast<std::size_t>((size - shift) % size);
    return linesUp ? Match::ByNames : Match::OtherNames;
}

bool Answers(Match match) {
    return match == Match::ByNames || match == Match::ByPlace;
}

std::string const& NameOf(Loop const& loop, Sectrix::Vertex const& vertex) {
    bool found = false;
    return loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found).Name();
}

/// The name of the first vertex that has one; empty where none has.
std::string FirstName(Loop const& loop) {
    for (auto const& vertex : loop.Vertices())
        if (!NameOf(loop, vertex).empty())
            return NameOf(loop, vertex);
    return {};
}

/// The holes of a section, to be given each to one of the first.
class Holes {
public:
    explicit Holes(std::vector<Loop> const& holes) : m_holes(holes), m_taken(holes.size()) {}

    /// Takes the hole that answers to the one at `place` of the first section: the one there if it does, else the
    /// first by its names. Where none does, the match says what is wrong with the one at the place.
    Match Take(Loop const& hole, std::size_t place, AlignedLoop& taken) {
        Match match = Match::OtherNames;
        if (!m_taken[place]) {
            taken.m_loop = place + 1;
            match = Compare(hole, m_holes[place], taken.m_vertex);
        }
        if (!Answers(match) && TakeByNames(hole, taken))
            match = Match::ByNames;
        if (Answers(match))
            m_taken[taken.m_loop - 1] = true;
        return match;
    }

private:
    bool TakeByNames(Loop const& hole, AlignedLoop& taken) {
        if (m_byName.empty())
            ListNames();
        auto const [begin, end] = m_byName.equal_range(FirstName(hole));
        for (auto candidate = begin; candidate != end; ++candidate) {
            std::size_t const place = candidate->second;
            std::size_t vertex = 0;
            if (m_taken[place] || Compare(hole, m_holes[place], vertex) != Match::ByNames)
                continue;
            taken = {place + 1, vertex};
            return true;
        }
        return false;
    }
    void ListNames() {
        for (std::size_t place = 0; place < m_holes.size(); ++place)
            for (auto const& vertex : m_holes[place].Vertices())
                if (!NameOf(m_holes[place], vertex).empty())
                    m_byName.emplace(NameOf(m_holes[place], vertex), place);
    }

    std::vector<Loop> const& m_holes;
    std::vector<bool> m_taken;
    /// From the name of a vertex to the places of the holes that have it; empty while no hole stood elsewhere.
    std::multimap<std::string, std::size_t> m_byName;
};

Finding Mismatch(Match match, std::size_t loop) {
    return match == Match::OtherSize
               ? RingError("other-number-of-vertices", "a loop has not as many vertices as at the first station",
                           loop)
               : RingError("names-do-not-line-up",
                           "the names of a loop do not line up with those at the first station", loop);
}

} // namespace

std::vector<AlignedLoop> AlignStation(CrossSection const& first, CrossSection const& other, Findings& findings) {
    std::size_t const holes = first.InteriorLoops().size();
    if (other.InteriorLoops().size() != holes) {
        findings.push_back(RingError("other-number-of-loops",
                                     "the section has " + std::to_string(other.InteriorLoops().size()) +
                                         " holes and that of the first station " + std::to_string(holes)));
        return {};
    }
    std::vector<AlignedLoop> aligned(holes + 1);
    Holes candidates(other.InteriorLoops());
    for (std::size_t loop = 0; loop <= holes; ++loop) {
        Match const match = loop == 0 ? Compare(first.ExteriorLoop(), other.ExteriorLoop(), aligned[0].m_vertex)
                                      : candidates.Take(LoopOf(first, loop), loop - 1, aligned[loop]);
        if (Answers(match))
            continue;
        findings.push_back(Mismatch(match, loop));
        return {};
    }
    return aligned;
}

} // namespace qel::SectrixTools::Solids
