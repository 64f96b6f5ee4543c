#include "sectrix/foundation/detail/reserve_more.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix/sections/cutting/hole_merger.h"
#include "sectrix/sections/cutting/loop_points.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace qel::Sectrix {

namespace {

/// The entries of the working list that are holes with a left-most vertex, in the order of merging, no more than
/// `limit`: by their least x, of equal ones the first in the list first.
Scratch::List<std::size_t> OrderHoles(std::vector<Loop>& loops, CSPositions const& pool, std::size_t limit,
                                      Scratch& scratch) {
    Scratch::List<std::pair<double, std::size_t>> heads(scratch.Resource());
    heads.reserve(loops.size());
    for (std::size_t entry = 1; entry < loops.size(); ++entry) {
        int const place = loops[entry].LeftMostVertex();
        if (place < 0)
            continue;
        auto const& vertex = loops[entry].Vertices()[static_cast<std::size_t>(place)];
        bool found = false;
        auto const& position = pool.GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        if (found && position.Position()[0] < std::numeric_limits<double>::max())
            heads.emplace_back(position.Position()[0], entry);
    }
    std::size_t const count = std::min(limit, heads.size());
    std::partial_sort(heads.begin(), heads.begin() + static_cast<std::ptrdiff_t>(count), heads.end());
    Scratch::List<std::size_t> order(scratch.Resource());
    order.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        order.push_back(heads[i].second);
    return order;
}

} // namespace

bool CrossSection::RemoveHole() const {
    return MergeHoles(1) > 0;
}

void CrossSection::RemoveHoles() const {
    // Between single steps, left-most vertices that were worked out before their positions changed are looked at
    // again, and an index that was not in the pool may be that of a new foot. All at once is the same only without
    // either.
    bool const isPlain = std::all_of(m_convexLoops.begin(), m_convexLoops.end(), [this](Loop const& loop) {
        return loop.m_positions == m_positions && (loop.m_leftMost < 0 || loop.m_leftMost == loop.FindLeftMost()) &&
               std::all_of(loop.m_vertices.begin(), loop.m_vertices.end(),
                           [this](Vertex const& vertex) { return m_positions->Find(vertex.Index()) != nullptr; });
    });
    if (isPlain)
        MergeHoles(m_convexLoops.size());
    while (m_convexLoops.size() > 1 && RemoveHole()) {
        // Where holes are left, the last step merges nothing, but all loops remember their left-most vertices then.
    }
}

std::size_t CrossSection::MergeHoles(std::size_t limit) const {
    Scratch scratch;
    auto const order = OrderHoles(m_convexLoops, *m_positions, limit, scratch);
    int const leftMost = order.empty() ? -1 : m_convexLoops[0].LeftMostVertex();
    if (leftMost < 0)
        return 0;
    auto const& outline = m_convexLoops[0].m_vertices;
    Scratch::List<Vec<2, double>> points(scratch.Resource());
    if (!ReadPoints(outline, *m_positions, points))
        return 0;

    Scratch::List<HoleMerger::Hole> holes(scratch.Resource());
    holes.reserve(order.size());
    for (auto const entry : order) {
        auto& loop = m_convexLoops[entry];
        holes.push_back({entry, &loop.m_vertices, Scratch::List<Vec<2, double>>(scratch.Resource()),
                         static_cast<std::size_t>(loop.LeftMostVertex())});
        ReadPoints(loop.m_vertices, *m_positions, holes.back().m_points);
    }
    HoleMerger merger(outline, points, static_cast<std::size_t>(leftMost), std::move(holes), m_positions->Count());
    while (merger.Merge()) {
    }
    if (merger.MergedCount() > 0)
        TakeMerged(merger);
    return merger.MergedCount();
}

void CrossSection::TakeMerged(HoleMerger const& merger) const {
    auto vertices = merger.Outline();
    auto const merged = merger.MergedEntries();
    ReserveMore(m_addedVertices, merger.Feet().size());
    ReserveMore(m_positions->m_positions, merger.Feet().size());
    for (auto const& foot : merger.Feet())
        m_addedVertices.push_back(m_positions->AddPosition(foot));
    m_convexLoops[0].m_vertices.swap(vertices);
    m_convexLoops[0].Touch();

    // What stays moves forward over what is gone.
    std::size_t kept = merged.front();
    auto next = merged.begin();
    for (std::size_t entry = kept; entry < m_convexLoops.size(); ++entry) {
        if (next != merged.end() && entry == *next) {
            ++next;
            continue;
        }
        m_convexLoops[kept].m_vertices.swap(m_convexLoops[entry].m_vertices);
        m_convexLoops[kept++].Touch();
    }
    m_convexLoops.erase(m_convexLoops.begin() + static_cast<std::ptrdiff_t>(kept), m_convexLoops.end());
}

} // namespace qel::Sectrix
