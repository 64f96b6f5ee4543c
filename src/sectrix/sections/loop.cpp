#include "sectrix/sections/loop.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <limits>

namespace qel::Sectrix {

Loop::Loop() : m_positions(&m_emptyPositions) {}

void Loop::Fill() {
    m_vertices.reserve(static_cast<std::size_t>(m_positions->Count()));
    for (int index = 0; index < m_positions->Count(); ++index)
        m_vertices.emplace_back(index, true);
}

Loop::Loop(Loop const& other, CSPositions const& pool) : m_vertices(other.m_vertices), m_positions(&pool) {}

Loop& Loop::operator=(Loop const& other) {
    m_vertices = other.m_vertices;
    Touch();
    return *this;
}

void Loop::AddVertex(int index, bool exterior) {
    m_vertices.emplace_back(index, exterior);
    Touch();
}

void Loop::InsertVertex(int index, int place) {
    if (!HasPlace(place))
        return AddVertex(index, true);
    m_vertices.emplace(m_vertices.begin() + place, index, true);
    Touch();
}

void Loop::RemoveVertex(int place) {
    if (!HasPlace(place))
        return;
    m_vertices.erase(m_vertices.begin() + place);
    Touch();
}

void Loop::Add(Loop const& other, int place, int from, int to) {
    if (to == -1)
        to = from;
    bool const wasEmpty = m_vertices.empty();
    if (!other.HasPlace(from) || !other.HasPlace(to) || (!wasEmpty && !HasPlace(place)))
        return;
    bool const isWholeLoop = wasEmpty && to == from;

    // The run is copied aside first, since it may wrap around and `other` may be this loop.
    auto const source = other.m_vertices.begin();
    std::vector<Vertex> run;
    if (to > from) {
        run.assign(source + from, source + to + 1);
    } else {
        run.assign(source + from, other.m_vertices.end());
        run.insert(run.end(), source, source + (isWholeLoop ? to : to + 1));
    }
    if (!isWholeLoop)
        run.front().SetExterior(false);
    if (!wasEmpty)
        run.emplace_back(m_vertices[static_cast<std::size_t>(place)].Index(), false);

    auto const behind = wasEmpty ? m_vertices.begin() : m_vertices.begin() + place + 1;
    m_vertices.insert(behind, run.begin(), run.end());
    Touch();
}

void Loop::Cut(int first, int last) {
    if (!HasPlace(first) || !HasPlace(last))
        return;
    auto const count = m_vertices.size();
    auto const begin = m_vertices.begin();
    auto arrival = begin;
    if (last > first) {
        arrival = m_vertices.erase(begin + first + 1, begin + last);
    } else {
        m_vertices.erase(begin + first + 1, m_vertices.end());
        arrival = m_vertices.erase(begin, begin + last);
    }
    if (m_vertices.size() < count || arrival->Exterior())
        Touch();
    arrival->SetExterior(false);
}

int Loop::LeftMostVertex() {
    if (m_leftMost < 0)
        m_leftMost = FindLeftMost();
    return m_leftMost;
}

int Loop::FindLeftMost() const {
    int leftMost = -1;
    double best = std::numeric_limits<double>::max();
    for (std::size_t place = 0; place < m_vertices.size(); ++place) {
        auto const* position = m_positions->Find(m_vertices[place].Index());
        if (position && position->Position()[0] < best) {
            best = position->Position()[0];
            leftMost = static_cast<int>(place);
        }
    }
    return leftMost;
}

qel::BBox<2, double> Loop::BBox() const {
    qel::BBox<2, double> box;
    for (auto const& vertex : m_vertices)
        if (auto const* position = m_positions->Find(vertex.Index()))
            box.Widen(position->Position());
    return box;
}

int Loop::NamedPositionIndex(std::string const& name) const {
    for (std::size_t place = 0; place < m_vertices.size(); ++place) {
        auto const* position = m_positions->Find(m_vertices[place].Index());
        if (position && position->Name() == name)
            return static_cast<int>(place);
    }
    return -1;
}

std::uint64_t Loop::GetNamedPositionCount() const {
    std::uint64_t count = 0;
    for (auto const& vertex : m_vertices) {
        auto const* position = m_positions->Find(vertex.Index());
        if (position && !position->Name().empty())
            ++count;
    }
    return count;
}

} // namespace qel::Sectrix
