#include "sectrix_tools/checks/geometry/edge_sweep.h"

#include "sectrix_tools/checks/geometry/edge_meeting.h"
#include "sectrix_tools/checks/geometry/orientation.h"

#include <iterator>
#include <set>

namespace qel::SectrixTools::Geometry {

namespace {

/// An edge from its end that the line meets first to the other.
struct Span {
    Point m_left, m_right;
};

class Sweep {
public:
    Sweep(Boundary const& boundary, std::size_t most)
        : m_boundary(boundary), m_most(most), m_line(IsBelow{&m_spans}), m_place(boundary.CornerCount()),
          m_state(boundary.CornerCount(), State::Waiting) {
        m_spans.reserve(boundary.CornerCount());
        for (std::size_t edge = 0; edge < boundary.CornerCount(); ++edge) {
            auto const &a = boundary.PointAt(edge), &b = boundary.EdgeEnd(edge);
            m_spans.push_back(a < b ? Span{a, b} : Span{b, a});
        }
    }

    SweepResult Run(std::vector<std::size_t> const& order) {
        for (std::size_t begin = 0, end = 0; begin < order.size() && m_result.m_isComplete; begin = end) {
            auto const& point = m_boundary.PointAt(order[begin]);
            while (end < order.size() && m_boundary.PointAt(order[end]) == point)
                ++end;
            // What ends here leaves the line before what starts here enters it.
            ForEdgesAt(order, begin, end, [&](std::size_t edge) {
                if (m_spans[edge].m_right == point && m_state[edge] == State::OnLine)
                    Leave(edge, State::Passed);
            });
            ForEdgesAt(order, begin, end, [&](std::size_t edge) {
                if (m_spans[edge].m_left == point && m_state[edge] == State::Waiting)
                    Enter(edge);
            });
        }
        return std::move(m_result);
    }

private:
    enum class State : char { Waiting, OnLine, Passed, TakenAway };

    /// The order of two edges on the sweeping line, from below.
    struct IsBelow {
        std::vector<Span> const* m_spans;

        bool operator()(std::size_t one, std::size_t other) const {
            auto const &a = (*m_spans)[one], &b = (*m_spans)[other];
            // The edge that starts later is looked at from the one that was there before.
            if (a.m_left < b.m_left)
                return Side(a, b, one < other) > 0;
            return Side(b, a, other < one) < 0;
        }

        /// 1 when `later` lies above `span`; edges that overlap are above each other by turns of their number.
        static int Side(Span const& span, Span const& later, bool isAbove) {
            int side = Orientation(span.m_left, span.m_right, later.m_left);
            if (side == 0)
                side = Orientation(span.m_left, span.m_right, later.m_right);
            return side != 0 ? side : isAbove ? 1 : -1;
        }
    };
    using Line = std::set<std::size_t, IsBelow>;

    template <class Call>
    void ForEdgesAt(std::vector<std::size_t> const& order, std::size_t begin, std::size_t end, Call const& call) {
        for (; begin < end && m_result.m_isComplete; ++begin) {
            call(m_boundary.Previous(order[begin]));
            call(order[begin]);
        }
    }

    void Enter(std::size_t edge) {
        auto const place = m_line.insert(edge).first;
        m_place[edge] = place;
        m_state[edge] = State::OnLine;
        if (place != m_line.begin())
            Compare(*std::prev(place), edge);
        if (m_state[edge] == State::OnLine && std::next(place) != m_line.end())
            Compare(edge, *std::next(place));
    }

    /// The edges beside this one become neighbours.
    void Leave(std::size_t edge, State state) {
        auto const next = m_line.erase(m_place[edge]);
        m_state[edge] = state;
        if (next != m_line.begin() && next != m_line.end())
            Compare(*std::prev(next), *next);
    }

    /// Takes one of two neighbours away when they meet outside their corners. The edges that then become neighbours
    /// are compared in turn, not more often than edges may be taken away.
    void Compare(std::size_t one, std::size_t other) {
        auto const &a = m_spans[one], &b = m_spans[other];
        auto const meeting = Meet(a.m_left, a.m_right, b.m_left, b.m_right);
        if (meeting == Meeting::None || meeting == Meeting::Corner)
            return;
        m_result.m_isComplete = m_result.m_edges.size() < m_most;
        if (!m_result.m_isComplete)
            return;
        m_result.m_edges.push_back(std::max(one, other));
        Leave(std::max(one, other), State::TakenAway);
    }

    Boundary const& m_boundary;
    std::size_t const m_most;
    std::vector<Span> m_spans;
    /// The edges that the sweeping line meets now, from below.
    Line m_line;
    /// Where an edge is on the line, while it is there.
    std::vector<Line::iterator> m_place;
    std::vector<State> m_state;
    SweepResult m_result;
};

} // namespace

SweepResult SweepEdges(Boundary const& boundary, std::vector<std::size_t> const& order, std::size_t most) {
    return Sweep(boundary, most).Run(order);
}

} // namespace qel::SectrixTools::Geometry
