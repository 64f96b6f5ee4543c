#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/solids/sweeping/station_rings.h"
#include "sectrix_tools/solids/sweeping/triangulation.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

/// \file
/// The convex loops of a section as polygons that share their edges.

namespace qel::SectrixTools::Solids {

/// The convex loops of a section, and which of them has which edge.
///
/// An edge is given by its ends, in the direction in which its polygon runs. It is open while no other polygon has
/// it the other way round: on the outline, on a hole, and where a foot of a bridge lies on an edge of a neighbour
/// that does not know of it.
class CapEdges {
public:
    /// Builds the convex loops if they are not built yet. All their indices must be in the pool.
    explicit CapEdges(Sectrix::CrossSection const& section);

    /// Puts into a ring the feet that lie on its edges, so that all its edges are open ones, and takes these out of
    /// the open ones. False where an edge of the ring is not to be found.
    bool SplitRing(Ring& ring);

    /// Puts feet into the edges of polygons beside which they lie, as a bridge does that ends on the side of
    /// another. False where open edges are left that no foot explains.
    bool CloseSeams();

    /// By pool indices.
    std::vector<Ring> const& Polygons() const { return m_polygons; }
    /// How far beside an edge a point on it may lie: what rounding moves coordinates of this size.
    double Rounding() const { return m_rounding; }

private:
    using Edge = std::pair<int, int>;

    Point2 const& At(int index) const;
    /// True for a foot that lies between two points.
    bool IsFootBetween(int index, int from, int to) const;
    /// Goes along open edges from `from` to `to`, with feet between them only, takes the edges out of the open ones
    /// and returns the feet. `found` is false where there is no such way; nothing is taken out then.
    Ring TakeWay(int from, int to, bool& found);
    /// Puts vertices between the ends of an edge of a polygon, and makes the new edges that polygon's.
    void Insert(std::size_t polygon, Edge const& edge, Ring const& vertices);
    double Distance(Edge const& edge) const;

    Sectrix::CSPositions const* m_positions;
    std::vector<Ring> m_polygons;
    /// The feet of bridges that are new positions.
    std::set<int> m_feet;
    double m_rounding = 0.0;
    /// From each edge to its polygon.
    std::map<Edge, std::size_t> m_owners;
    /// The open edges that neither a ring nor a seam has taken.
    std::set<Edge> m_open;
    /// True where two polygons have one edge the same way round.
    bool m_hasDoubles = false;
};

} // namespace qel::SectrixTools::Solids
