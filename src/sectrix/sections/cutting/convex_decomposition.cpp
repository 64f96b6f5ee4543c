#include "sectrix/sections/cross_section.h"
#include "sectrix/sections/cutting/ring_cutter.h"

namespace qel::Sectrix {

std::vector<Loop>& CrossSection::GetConvexLoops() {
    ConvexLoops();
    return m_convexLoops;
}

std::vector<Loop> const& CrossSection::ConvexLoops() const {
    if (!m_convexLoops.empty() || m_exteriorLoop.Vertices().empty())
        return m_convexLoops;
    auto const addedBefore = m_addedVertices.size();
    auto const poolBefore = m_positions->m_positions.size();
    try {
        m_convexLoops.reserve(1 + m_interiorLoops.size());
        m_convexLoops.push_back(m_exteriorLoop);
        m_convexLoops.insert(m_convexLoops.end(), m_interiorLoops.begin(), m_interiorLoops.end());
        RemoveHoles();
        BuildConvexLoops();
    } catch (...) {
        m_convexLoops.clear();
        m_addedVertices.resize(addedBefore);
        while (m_positions->m_positions.size() > poolBefore)
            m_positions->m_positions.pop_back(); // bridge feet, which have no names
        throw;
    }
    return m_convexLoops;
}

void CrossSection::BuildConvexLoops() const {
    auto const count = m_convexLoops.size();
    auto const limit = static_cast<std::size_t>(m_positions->Count());
    Scratch scratch;
    RingCutter cutter(scratch);
    Scratch::List<Vertex> pieces(scratch); // all pieces, one behind the other
    Scratch::List<std::size_t> ends(scratch);
    std::size_t const outlineSize = count > 0 ? m_convexLoops[0].m_vertices.size() : 0;
    pieces.reserve(3 * outlineSize); // each cut leaves a vertex less and doubles two
    ends.reserve(outlineSize);
    for (std::size_t entry = 0; entry < count && count + ends.size() < limit; ++entry) {
        auto& vertices = m_convexLoops[entry].m_vertices;
        if (vertices.size() <= 3)
            continue;
        cutter.Load(vertices, *m_positions);
        auto const endsBefore = ends.size();
        while (count + ends.size() < limit) {
            auto const chain = cutter.FindPiece();
            if (!chain)
                break;
            cutter.CutOff(*chain, pieces);
            ends.push_back(pieces.size());
        }
        if (ends.size() > endsBefore) {
            cutter.CopyRest(vertices);
            m_convexLoops[entry].Touch();
        }
    }

    m_convexLoops.reserve(count + ends.size());
    auto const* begin = pieces.data();
    for (auto const end : ends) {
        auto const* const next = pieces.data() + end;
        m_convexLoops.emplace_back(*m_positions, false).m_vertices = std::vector<Vertex>(begin, next);
        begin = next;
    }
}

bool CrossSection::BuildConvexLoop(std::uint64_t index) const {
    bool const isListFull = m_convexLoops.size() >= static_cast<std::size_t>(m_positions->Count());
    if (index >= m_convexLoops.size() || isListFull)
        return true;
    auto const& vertices = m_convexLoops[index].m_vertices;
    Scratch scratch;
    RingCutter cutter(scratch);
    cutter.Load(vertices, *m_positions);
    auto const chain = cutter.FindPiece();
    if (!chain)
        return true;
    Scratch::List<Vertex> piece(scratch);
    cutter.CutOff(*chain, piece);
    AddConvexLoop().m_vertices.assign(piece.begin(), piece.end()); // which may move the loop at `index`
    cutter.CopyRest(m_convexLoops[index].m_vertices);
    m_convexLoops[index].Touch();
    return false;
}

void CrossSection::ResetConvexLoops(std::set<int>& removed) {
    removed.insert(m_addedVertices.begin(), m_addedVertices.end());
    m_convexLoops.clear();
    m_addedVertices.clear();
}

} // namespace qel::Sectrix
