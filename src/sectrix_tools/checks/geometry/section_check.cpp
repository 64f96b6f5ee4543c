#include "sectrix_tools/checks/geometry/section_check.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/checks/geometry/contacts.h"
#include "sectrix_tools/checks/geometry/corner_points.h"
#include "sectrix_tools/checks/geometry/finding_list.h"
#include "sectrix_tools/checks/geometry/loop_nesting.h"
#include "sectrix_tools/checks/geometry/orientation.h"
#include "sectrix_tools/checks/geometry/tolerances.h"

#include <algorithm>
#include <cmath>

namespace qel::SectrixTools::Geometry {

namespace {

/// So many places where edges meet are looked for in a section. A section in good order has none, and nobody reads
/// more.
constexpr std::size_t kMostContacts = 10000;
/// Coordinates beyond this are not computed with, since their products overflow.
constexpr double kMostCoordinate = 1e100;
/// Of the square of its size, the area below which a loop counts as having none: what rounding leaves of nothing.
constexpr double kLeastArea = 1e-12;
/// By how much of the outline's area the areas of the convex loops may differ from that of the section.
constexpr double kAreaTolerance = 1e-9;

std::string LoopName(int loop) {
    return loop == 0 ? "the outline" : "hole " + std::to_string(loop);
}

class SectionCheck {
public:
    SectionCheck(Sectrix::CrossSection const& section, int place) : m_section(section), m_findings(place) {}

    Findings Run(TrialCut& trial) {
        ReadLoop(m_section.ExteriorLoop(), 0);
        for (std::size_t i = 0; i < m_section.InteriorLoops().size(); ++i)
            ReadLoop(m_section.InteriorLoops()[i], static_cast<int>(i) + 1);
        CheckSpikes();
        bool const isComplete = CheckContacts();
        CheckOrientations();
        CheckTolerances(m_boundary, m_findings);
        if (isComplete)
            CheckNesting();
        if (isComplete && !m_findings.HasErrors())
            CheckCutting(trial);
        return m_findings.Take();
    }

private:
    /// Puts the loop into the boundary, or nothing in its place where it cannot be looked at.
    void ReadLoop(Sectrix::Loop const& loop, int number) {
        std::vector<Corner> corners;
        bool isUsable = true;
        int const size = static_cast<int>(loop.Vertices().size());
        for (int vertex = 0; vertex < size; ++vertex) {
            auto const point = PointOf(loop, loop.Vertices()[static_cast<std::size_t>(vertex)]);
            if (!point)
                AddNotInPool(loop, {number, vertex});
            else if (CheckCoordinates(*point, {number, vertex}))
                corners.push_back({*point, number, vertex});
            else
                isUsable = false;
        }
        if (isUsable && corners.size() < 3) {
            m_findings.Add(Severity::Error, "loop-too-short",
                           LoopName(number) + " has " + std::to_string(corners.size()) +
                               " vertices; a loop has at least three",
                           {number, -1});
            isUsable = false;
        }
        if (isUsable)
            isUsable = JoinRepeated(corners, number);
        m_boundary.AddLoop(isUsable ? corners : std::vector<Corner>{});
    }

    void AddNotInPool(Sectrix::Loop const& loop, SectionPlace const& place) {
        auto const index = loop.Vertices()[static_cast<std::size_t>(place.m_vertex)].Index();
        m_findings.Add(Severity::Error, "index-out-of-range",
                       "index " + std::to_string(index) + " is out of range: there are " +
                           std::to_string(loop.Positions().Count()) + " positions",
                       place);
    }

    /// True when the point can be computed with.
    bool CheckCoordinates(Point const& point, SectionPlace const& place) {
        double const size = std::max(std::abs(point.x), std::abs(point.y));
        if (!std::isfinite(point.x) || !std::isfinite(point.y))
            m_findings.Add(Severity::Error, "coordinate-not-finite", "a coordinate of this vertex is not finite",
                           place, point);
        else if (size > kMostCoordinate)
            m_findings.Add(Severity::Error, "coordinate-too-large",
                           "the coordinates " + PointText(point) + " are too large to be computed with", place,
                           point);
        else
            return true;
        return false;
    }

    /// Keeps the first of corners in a row at one point; true when three are left.
    bool JoinRepeated(std::vector<Corner>& corners, int number) {
        auto const addRepeated = [this](Corner const& corner) {
            m_findings.Add(Severity::Warning, "edge-without-length",
                           "this vertex is at " + PointText(corner.m_point) + " like the one before it",
                           {corner.m_loop, corner.m_vertex}, corner.m_point);
        };
        std::vector<Corner> kept;
        for (auto const& corner : corners)
            if (kept.empty() || kept.back().m_point != corner.m_point)
                kept.push_back(corner);
            else
                addRepeated(corner);
        while (kept.size() > 1 && kept.back().m_point == kept.front().m_point) {
            addRepeated(kept.front());
            kept.pop_back();
        }
        corners = std::move(kept);
        if (corners.size() < 3)
            AddNoArea(number);
        return corners.size() >= 3;
    }

    void AddNoArea(int number) {
        m_findings.Add(Severity::Error, "loop-without-area", LoopName(number) + " has no area", {number, -1});
    }

    void CheckSpikes() {
        for (std::size_t corner = 0; corner < m_boundary.CornerCount(); ++corner) {
            auto const &before = m_boundary.PointAt(m_boundary.Previous(corner)), &tip = m_boundary.PointAt(corner);
            if (AreSameRay(tip, before, m_boundary.EdgeEnd(corner)))
                m_findings.Add(Severity::Warning, "spike",
                               LoopName(m_boundary.At(corner).m_loop) + " turns back on itself at " +
                                   PointText(tip),
                               PlaceOf(corner), tip);
        }
    }

    SectionPlace PlaceOf(std::size_t corner) const {
        return {m_boundary.At(corner).m_loop, m_boundary.At(corner).m_vertex};
    }

    /// False when there were more contacts than are looked for.
    bool CheckContacts() {
        auto const [contacts, isComplete] = FindContacts(m_boundary, kMostContacts);
        for (auto const& contact : contacts)
            if (m_boundary.At(contact.m_first).m_loop == m_boundary.At(contact.m_second).m_loop)
                AddOwnContact(contact);
            else
                AddContact(contact);
        if (!isComplete)
            m_findings.Add(
                Severity::Warning, "search-stopped",
                "edges meet in too many places: the search for more, and for holes outside of the outline, "
                "was stopped",
                {});
        return isComplete;
    }

    std::string EdgeText(std::size_t edge) const {
        return "the edge from " + PointText(m_boundary.PointAt(edge)) + " to " +
               PointText(m_boundary.EdgeEnd(edge));
    }

    /// Of a loop with itself.
    void AddOwnContact(Contact const& contact) {
        auto const loop = m_boundary.At(contact.m_first).m_loop;
        auto const where = " at " + PointText(contact.m_point);
        auto const add = [&](Severity severity, char const* code, std::string const& message) {
            m_findings.Add(severity, code, message, PlaceOf(contact.m_first), contact.m_point);
        };
        auto const other = EdgeText(contact.m_second) + where;
        switch (contact.m_kind) {
        case ContactKind::Cross:
            m_crossing.emplace(loop, loop);
            return add(Severity::Error, "edges-cross", LoopName(loop) + " crosses itself: here, and " + other);
        case ContactKind::TouchEdge:
            return add(Severity::Warning, "edges-touch", LoopName(loop) + " touches itself: here, and " + other);
        case ContactKind::TouchCorner:
            return add(Severity::Warning, "point-repeated",
                       LoopName(loop) + " passes through this point twice: here, and " + other);
        case ContactKind::RunBack:
            return add(Severity::Warning, "edges-run-back",
                       LoopName(loop) + " runs back along itself: here, and " + other);
        case ContactKind::RunAlong:
            return add(Severity::Error, "edges-overlap",
                       LoopName(loop) + " runs twice along the same line: here, and " + other);
        }
    }

    /// Of two loops.
    void AddContact(Contact const& contact) {
        auto const first = m_boundary.At(contact.m_first).m_loop, second = m_boundary.At(contact.m_second).m_loop;
        bool const isCross = contact.m_kind == ContactKind::Cross;
        if (isCross)
            m_crossing.emplace(first, second);
        auto const* const code = first == 0 ? (isCross ? "hole-crosses-outline" : "hole-touches-outline")
                                            : (isCross ? "holes-cross" : "holes-touch");
        auto const* const verb = isCross ? " crosses "
                                 : contact.m_kind == ContactKind::RunAlong || contact.m_kind == ContactKind::RunBack
                                     ? " runs along "
                                     : " touches ";
        m_findings.Add(isCross ? Severity::Error : Severity::Warning, code,
                       LoopName(second) + verb + LoopName(first) + " at " + PointText(contact.m_point) + ", " +
                           EdgeText(contact.m_first),
                       PlaceOf(contact.m_second), contact.m_point);
    }

    /// A loop that crosses itself runs both ways.
    void CheckOrientations() {
        for (std::size_t i = 0; i < m_boundary.LoopCount(); ++i) {
            int const loop = static_cast<int>(i);
            if (m_boundary.IsEmpty(i) || m_crossing.count({loop, loop}) > 0)
                continue;
            auto const box = m_boundary.LoopBox(i);
            double const width = box.m_max.x - box.m_min.x, height = box.m_max.y - box.m_min.y;
            double const area = m_boundary.SignedArea(i);
            if (std::abs(area) <= kLeastArea * (width * width + height * height))
                AddNoArea(loop);
            else if (loop == 0 && area < 0.0)
                m_findings.Add(Severity::Error, "outline-clockwise", "the outline runs clockwise", {0, -1});
            else if (loop > 0 && area > 0.0)
                m_findings.Add(Severity::Error, "hole-counter-clockwise",
                               LoopName(loop) + " runs counter-clockwise in the section, and so clockwise in a "
                                                "document, where all loops run counter-clockwise",
                               {loop, -1});
        }
    }

    void CheckNesting() {
        auto const [outside, on, inside] = FindNesting(m_boundary, m_crossing);
        auto const add = [this](char const* code, std::string const& message, std::size_t hole) {
            auto const corner = m_boundary.Begin(hole);
            m_findings.Add(Severity::Error, code, message, {static_cast<int>(hole), -1},
                           m_boundary.PointAt(corner));
        };
        for (auto const hole : outside)
            add("hole-outside", LoopName(static_cast<int>(hole)) + " lies outside of the outline", hole);
        for (auto const hole : on)
            add("hole-on-outline", LoopName(static_cast<int>(hole)) + " lies on the outline all the way round",
                hole);
        for (auto const& [inner, outer] : inside)
            add("hole-inside-hole",
                LoopName(static_cast<int>(inner)) + " lies inside " + LoopName(static_cast<int>(outer)), inner);
    }

    void CheckCutting(TrialCut& trial) {
        auto const [notches, area] = trial.Cut(m_section);
        for (auto const& notch : notches)
            m_findings.Add(Severity::Error, "convex-loop-not-convex",
                           "convex loop " + std::to_string(notch.m_loop) + " is not convex at " +
                               PointText(notch.m_point) + ": cutting could not divide it any further",
                           {}, notch.m_point);
        double const outline = m_boundary.SignedArea(0);
        double net = outline;
        for (std::size_t loop = 1; loop < m_boundary.LoopCount(); ++loop)
            net += m_boundary.SignedArea(loop);
        auto const box = m_boundary.LoopBox(0);
        if (std::abs(area - net) > kAreaTolerance * outline + RoundingOfAreas(box))
            m_findings.Add(Severity::Error, "areas-differ",
                           "the convex loops have an area of " + NumberText(area) +
                               " together, the section one of " + NumberText(net),
                           {});
    }

    Sectrix::CrossSection const& m_section;
    FindingList m_findings;
    Boundary m_boundary;
    /// Pairs of loops that cross, a loop that crosses itself with itself.
    LoopPairs m_crossing;
};

} // namespace

Findings CheckSection(Sectrix::CrossSection const& section, int place, TrialCut& trial) {
    return SectionCheck(section, place).Run(trial);
}

} // namespace qel::SectrixTools::Geometry
