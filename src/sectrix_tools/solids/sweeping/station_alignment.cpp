#include "sectrix_tools/solids/sweeping/station_alignment.h"

#include "sectrix_tools/solids/sweeping/ring_finding.h"

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

/// The hole of `other` that answers to the one at `place`: the one there if it does, else the first one by its
/// names that no other has taken. The match at the place tells why there is none.
Match FindHole(Loop const& hole, CrossSection const& other, std::size_t place, std::vector<bool>& taken,
               AlignedLoop& found) {
    auto const& holes = other.InteriorLoops();
    Match atPlace = Match::OtherNames;
    if (!taken[place]) {
        found.m_loop = place + 1;
        atPlace = Compare(hole, holes[place], found.m_vertex);
    }
    Match match = atPlace;
    for (std::size_t i = 0; i < holes.size() && match != Match::ByNames && match != Match::ByPlace; ++i) {
        std::size_t vertex = 0;
        if (taken[i] || Compare(hole, holes[i], vertex) != Match::ByNames)
            continue;
        found = {i + 1, vertex};
        match = Match::ByNames;
    }
    if (match == Match::ByNames || match == Match::ByPlace)
        taken[found.m_loop - 1] = true;
    return match == Match::ByNames ? match : atPlace;
}

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
    std::vector<bool> taken(holes);
    for (std::size_t loop = 0; loop <= holes; ++loop) {
        Match const match = loop == 0 ? Compare(first.ExteriorLoop(), other.ExteriorLoop(), aligned[0].m_vertex)
                                      : FindHole(LoopOf(first, loop), other, loop - 1, taken, aligned[loop]);
        if (match == Match::ByNames || match == Match::ByPlace)
            continue;
        findings.push_back(Mismatch(match, loop));
        return {};
    }
    return aligned;
}

} // namespace qel::SectrixTools::Solids
