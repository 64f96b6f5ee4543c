#include "sectrix_tools/checks/geometry/contacts.h"

#include "sectrix_tools/checks/geometry/box_tree.h"
#include "sectrix_tools/checks/geometry/edge_meeting.h"
#include "sectrix_tools/checks/geometry/edge_sweep.h"
#include "sectrix_tools/checks/geometry/orientation.h"
#include "sectrix_tools/checks/geometry/strand.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>

namespace qel::SectrixTools::Geometry {

namespace {

/// Two strands that pass through one point; the one that stands first in the section is the first.
struct Encounter {
    Strand m_first, m_second;
    Point m_point;
};

bool operator<(Encounter const& one, Encounter const& other) {
    return std::tie(one.m_first, one.m_second) < std::tie(other.m_first, other.m_second);
}
bool operator==(Encounter const& one, Encounter const& other) {
    return one.m_first == other.m_first && one.m_second == other.m_second;
}

/// All pairs of strands of a section that meet, each once and in order.
class EncounterSearch {
public:
    EncounterSearch(Boundary const& boundary, std::size_t most) : m_boundary(boundary), m_most(most) {}

    /// False when there are more than a search may find.
    bool Run() {
        std::vector<std::size_t> order(m_boundary.CornerCount());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::sort(order.begin(), order.end(), [this](std::size_t one, std::size_t other) {
            auto const &a = m_boundary.PointAt(one), &b = m_boundary.PointAt(other);
            return a != b ? a < b : one < other;
        });
        auto const swept = SweepEdges(m_boundary, order, m_most);
        MeetCorners(order);
        MeetEdges(swept.m_edges);
        std::sort(m_encounters.begin(), m_encounters.end());
        m_encounters.erase(std::unique(m_encounters.begin(), m_encounters.end()), m_encounters.end());
        return swept.m_isComplete && !IsFull();
    }

    std::vector<Encounter> const& Encounters() const { return m_encounters; }

private:
    bool IsFull() const { return m_encounters.size() >= m_most; }

    void Add(Strand const& one, Strand const& other, Point const& point) {
        if (!IsFull())
            m_encounters.push_back(other < one ? Encounter{other, one, point} : Encounter{one, other, point});
    }

    /// Corners at one point stand side by side in their order.
    void MeetCorners(std::vector<std::size_t> const& order) {
        for (std::size_t i = 0; i < order.size() && !IsFull(); ++i)
            for (std::size_t j = i + 1; j < order.size() && !IsFull(); ++j) {
                if (m_boundary.PointAt(order[i]) != m_boundary.PointAt(order[j]))
                    break;
                Add({order[i], true}, {order[j], true}, m_boundary.PointAt(order[i]));
            }
    }

    /// What these edges, which all others that meet outside their corners meet one of, have in common with any.
    void MeetEdges(std::vector<std::size_t> const& edges) {
        if (edges.empty())
            return;
        std::vector<Box> boxes(m_boundary.CornerCount());
        for (std::size_t edge = 0; edge < boxes.size(); ++edge)
            boxes[edge] = m_boundary.EdgeBox(edge);
        BoxTree const tree(std::move(boxes));
        for (std::size_t const edge : edges)
            tree.Visit(
                [this, box = m_boundary.EdgeBox(edge)](Box const& other) { return !IsFull() && box.Meets(other); },
                [this, edge](std::size_t other) {
                    if (other != edge)
                        MeetPair(edge, other);
                });
    }

    void MeetPair(std::size_t edge, std::size_t other) {
        auto const &a = m_boundary.PointAt(edge), &b = m_boundary.EdgeEnd(edge);
        auto const &c = m_boundary.PointAt(other), &d = m_boundary.EdgeEnd(other);
        auto const meeting = Meet(a, b, c, d);
        if (meeting == Meeting::Cross)
            Add({edge, false}, {other, false}, CrossingPoint(a, b, c, d));
        if (meeting != Meeting::Touch && meeting != Meeting::Overlap)
            return;
        for (auto const corner : {other, m_boundary.Next(other)})
            if (IsInside(a, b, m_boundary.PointAt(corner)))
                Add({corner, true}, {edge, false}, m_boundary.PointAt(corner));
        for (auto const corner : {edge, m_boundary.Next(edge)})
            if (IsInside(c, d, m_boundary.PointAt(corner)))
                Add({corner, true}, {other, false}, m_boundary.PointAt(corner));
    }

    Boundary const& m_boundary;
    std::size_t const m_most;
    std::vector<Encounter> m_encounters;
};

/// Tells what strands do where they meet.
class Judge {
public:
    Judge(Boundary const& boundary, std::vector<Encounter> const& encounters)
        : m_boundary(boundary), m_encounters(encounters) {}

    std::vector<Contact> Run() {
        for (auto const& encounter : m_encounters)
            Decide(encounter);
        // Loops that run along each other all the way round part nowhere.
        for (auto const& [loops, along] : m_along)
            if (!along.m_doPart)
                m_contacts.push_back(Make(along.m_encounter, along.m_kind));
        std::sort(m_contacts.begin(), m_contacts.end(), [](Contact const& one, Contact const& other) {
            return std::tie(one.m_first, one.m_second, one.m_kind) <
                   std::tie(other.m_first, other.m_second, other.m_kind);
        });
        return std::move(m_contacts);
    }

private:
    /// An encounter of two loops that run along each other, how, and whether they part anywhere.
    struct Along {
        Encounter m_encounter;
        ContactKind m_kind = ContactKind::RunAlong;
        bool m_doPart = false;
    };

    static Contact Make(Encounter const& encounter, ContactKind kind) {
        return {kind, encounter.m_first.m_number, encounter.m_second.m_number, encounter.m_point};
    }

    Point const& Target(Strand const& strand, Way way) const {
        return m_boundary.PointAt(NextCorner(m_boundary, strand, way));
    }

    void Decide(Encounter const& encounter) {
        auto const& [first, second, point] = encounter;
        if (!first.m_isCorner && !second.m_isCorner) {
            m_contacts.push_back(Make(encounter, ContactKind::Cross));
            return;
        }
        auto const back = SideOf(m_boundary, first, point, Target(second, Way::Back));
        auto const ahead = SideOf(m_boundary, first, point, Target(second, Way::Ahead));
        if (!IsOn(back) && !IsOn(ahead)) {
            auto const touch =
                first.m_isCorner && second.m_isCorner ? ContactKind::TouchCorner : ContactKind::TouchEdge;
            m_contacts.push_back(Make(encounter, back != ahead ? ContactKind::Cross : touch));
            return;
        }
        auto const loops =
            std::make_pair(m_boundary.At(first.m_number).m_loop, m_boundary.At(second.m_number).m_loop);
        auto const kind = ahead == Side::OnAhead ? ContactKind::RunAlong : ContactKind::RunBack;
        auto& along = m_along.try_emplace(loops, Along{encounter, kind, false}).first->second;
        if (IsOn(back) && IsOn(ahead))
            return;
        along.m_doPart = true;
        DecideRun(encounter, IsOn(back) ? Way::Back : Way::Ahead, IsOn(back) ? back : ahead,
                  IsOn(back) ? ahead : back);
    }

    /// From an end of a run where two strands go along each other to its other end. The run is told once, from the
    /// end that stands first.
    ///
    /// \param way     the way of the second strand along the run.
    ///
    /// \param along   the way of the first, as a side.
    ///
    /// \param origin  the side of the first that the second comes from.
    void DecideRun(Encounter const& start, Way way, Side along, Side origin) {
        auto first = start.m_first, second = start.m_second;
        auto point = start.m_point;
        auto const firstWay = along == Side::OnAhead ? Way::Ahead : Way::Back;
        for (std::size_t steps = 0; steps < 2 * m_boundary.CornerCount(); ++steps) {
            auto const &a = Target(first, firstWay), &b = Target(second, way);
            auto const next = (point < a) == (a < b) ? a : b; // the nearer of the two
            first = Follow(m_boundary, first, firstWay, next);
            second = Follow(m_boundary, second, way, next);
            point = next;
            if (first == second)
                return; // the two legs of a spike
            if (AreSameRay(point, Target(first, firstWay), Target(second, way)))
                continue;
            auto const side = SideOf(m_boundary, first, point, Target(second, way));
            if (IsOn(side))
                return; // the second turns back in a spike
            auto const end = second < first ? Encounter{second, first, point} : Encounter{first, second, point};
            if (end < start)
                return;
            auto const run = firstWay == way ? ContactKind::RunAlong : ContactKind::RunBack;
            m_contacts.push_back(Make(start, side == origin ? run : ContactKind::Cross));
            return;
        }
    }

    Boundary const& m_boundary;
    std::vector<Encounter> const& m_encounters;
    /// By the numbers of the two loops.
    std::map<std::pair<int, int>, Along> m_along;
    std::vector<Contact> m_contacts;
};

} // namespace

Contacts FindContacts(Boundary const& boundary, std::size_t most) {
    EncounterSearch search(boundary, most);
    Contacts result;
    result.m_isComplete = search.Run();
    result.m_contacts = Judge(boundary, search.Encounters()).Run();
    return result;
}

} // namespace qel::SectrixTools::Geometry
