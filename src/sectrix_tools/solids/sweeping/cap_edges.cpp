#include "sectrix_tools/solids/sweeping/cap_edges.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qel::SectrixTools::Solids {
namespace {

int Next(Ring const& ring, std::size_t place) {
    return ring[place + 1 < ring.size() ? place + 1 : 0];
}

} // namespace

CapEdges::CapEdges(Sectrix::CrossSection const& section) : m_positions(&section.Positions()) {
    for (auto const& loop : section.ConvexLoops()) {
        Ring polygon;
        for (auto const& vertex : loop.Vertices())
            polygon.push_back(vertex.Index());
        for (std::size_t place = 0; place < polygon.size(); ++place) {
            Edge const edge(polygon[place], Next(polygon, place));
            m_hasDoubles |= !m_owners.emplace(edge, m_polygons.size()).second;
            for (double coordinate : At(edge.first).m_elements)
                m_rounding = std::max(m_rounding, std::abs(coordinate));
        }
        m_polygons.push_back(std::move(polygon));
    }
    m_feet.insert(section.AddedVertices().begin(), section.AddedVertices().end());
    m_rounding *= 16 * std::numeric_limits<double>::epsilon();
    for (auto const& [edge, polygon] : m_owners)
        if (m_owners.count({edge.second, edge.first}) == 0)
            m_open.insert(edge);
}

Point2 const& CapEdges::At(int index) const {
    bool found = false;
    return m_positions->GetPosition(static_cast<std::uint64_t>(index), found).Position();
}

double CapEdges::Distance(Edge const& edge) const {
    Point2 const &a = At(edge.first), &b = At(edge.second);
    return std::sqrt((b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1]));
}

bool CapEdges::IsFootBetween(int index, int from, int to) const {
    if (m_feet.count(index) == 0)
        return false;
    Point2 const &a = At(from), &b = At(to), &foot = At(index);
    double const along = (foot[0] - a[0]) * (b[0] - a[0]) + (foot[1] - a[1]) * (b[1] - a[1]);
    double const length = Distance({from, to});
    return along > 0 && along < length * length && std::abs(TwiceArea(a, b, foot)) <= m_rounding * length;
}

Ring CapEdges::TakeWay(int from, int to, bool& found) {
    Ring way{from};
    std::vector<Edge> taken;
    found = true;
    while (found && m_open.count({way.back(), to}) == 0 && way.size() <= m_feet.size() + 1) {
        int const last = way.back();
        found = false;
        for (auto edge = m_open.lower_bound({last, std::numeric_limits<int>::min()});
             edge != m_open.end() && edge->first == last && !found; ++edge)
            if (IsFootBetween(edge->second, last, to)) {
                found = true;
                way.push_back(edge->second);
            }
    }
    found = m_open.count({way.back(), to}) > 0;
    if (!found)
        return {};
    way.push_back(to);
    for (std::size_t place = 0; place + 1 < way.size(); ++place)
        m_open.erase({way[place], way[place + 1]});
    return {way.begin() + 1, way.end() - 1};
}

bool CapEdges::SplitRing(Ring& ring) {
    Ring split;
    for (std::size_t place = 0; place < ring.size(); ++place) {
        bool found = false;
        Ring const feet = TakeWay(ring[place], Next(ring, place), found);
        if (!found)
            return false;
        split.push_back(ring[place]);
        split.insert(split.end(), feet.begin(), feet.end());
    }
    ring = std::move(split);
    return true;
}

bool CapEdges::CloseSeams() {
    std::vector<Edge> const seams(m_open.begin(), m_open.end());
    for (Edge const& edge : seams) {
        if (m_open.count(edge) == 0)
            continue;
        bool found = false;
        Ring feet = TakeWay(edge.second, edge.first, found);
        if (!found)
            continue;
        m_open.erase(edge);
        std::reverse(feet.begin(), feet.end());
        Insert(m_owners.at(edge), edge, feet);
    }
    return m_open.empty() && !m_hasDoubles;
}

void CapEdges::Insert(std::size_t polygon, Edge const& edge, Ring const& vertices) {
    Ring& ring = m_polygons[polygon];
    std::size_t place = 0;
    while (ring[place] != edge.first || Next(ring, place) != edge.second)
        ++place;
    ring.insert(ring.begin() + static_cast<std::ptrdiff_t>(place) + 1, vertices.begin(), vertices.end());
    m_owners.erase(edge);
    for (std::size_t i = 0; i <= vertices.size(); ++i)
        m_owners[{i == 0 ? edge.first : vertices[i - 1], i == vertices.size() ? edge.second : vertices[i]}] =
            polygon;
}

} // namespace qel::SectrixTools::Solids
