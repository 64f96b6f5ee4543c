#include "sectrix/sections/cross_sections.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <algorithm>
#include <utility>

namespace qel::Sectrix {

CrossSections::CrossSections() = default;

CrossSections::CrossSections(double scale) : m_scale(scale) {}

CrossSections::CrossSections(std::vector<Vec<2, double>> const& points, bool fill) {
    m_positions.Reserve(points.size());
    for (auto const& point : points)
        m_positions.AddPosition(point);
    m_items.emplace_back(m_positions, fill);
}

CrossSections::CrossSections(CSPositions const& positions, bool fill) : m_positions(positions) {
    m_items.emplace_back(m_positions, fill);
}

CrossSections::CrossSections(CrossSections const& other)
    : m_positions(other.m_positions), m_items(other.m_items), m_scale(other.m_scale), m_bbox(other.m_bbox),
      m_parameters(other.m_parameters) {
    RebindItems(other);
}

CrossSections::CrossSections(CrossSections&& other) noexcept {
    *this = std::move(other);
}

CrossSections& CrossSections::operator=(CrossSections const& other) {
    m_parameters = other.m_parameters;
    m_positions = other.m_positions;
    try {
        m_items = other.m_items;
    } catch (...) {
        RebindItems(other); // some sections may be copies that still refer to the pool of `other`
        throw;
    }
    RebindItems(other);
    m_scale = other.m_scale;
    m_bbox = other.m_bbox;
    return *this;
}

CrossSections& CrossSections::operator=(CrossSections&& other) noexcept {
    m_positions = std::move(other.m_positions);
    m_items = std::exchange(other.m_items, {});
    m_scale = other.m_scale;
    m_bbox = other.m_bbox;
    m_parameters = std::exchange(other.m_parameters, {});
    RebindItems(other);
    return *this;
}

qel::BBox<2, double> const& CrossSections::BBox() const {
    if (m_bbox.IsEmpty())
        InitBBox();
    return m_bbox;
}

bool CrossSections::HasHollow() const {
    return std::any_of(m_items.begin(), m_items.end(),
                       [](CrossSection const& section) { return !section.InteriorLoops().empty(); });
}

void CrossSections::NormalizeVertical() {
    double const tolerance = 1e-8; // on the square of the distance
    InitBBox();
    double const lowest = m_bbox.m_min[1];
    if (!(lowest * lowest > tolerance) || m_bbox.IsEmpty())
        return;
    for (auto& position : m_positions.m_positions)
        position.Position()[1] -= lowest;
    InitBBox();
}

void CrossSections::ResetConvexLoops() {
    // All indices are gathered before a section drops its own: when memory runs out, nothing has changed.
    std::set<int> removed;
    for (auto const& section : m_items)
        removed.insert(section.m_addedVertices.begin(), section.m_addedVertices.end());
    for (auto& section : m_items) {
        section.m_convexLoops.clear();
        section.m_addedVertices.clear();
    }
    for (auto index = removed.rbegin(); index != removed.rend(); ++index)
        m_positions.RemovePosition(static_cast<std::uint64_t>(*index));
}

void CrossSections::ConvertPositions(double factor) {
    if (factor == 1.0)
        return;
    for (auto& position : m_positions.m_positions) {
        position.Position()[0] *= factor;
        position.Position()[1] *= factor;
    }
    InitBBox();
}

void CrossSections::InitBBox() const {
    m_bbox = m_positions.BBox();
}

void CrossSections::RebindItems(CrossSections const& source) {
    for (auto& section : m_items)
        section.Rebind(source.m_positions, m_positions);
}

} // namespace qel::Sectrix
