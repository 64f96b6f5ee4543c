#include "sectrix_tools/checks/geometry/trial_cut.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/checks/geometry/boundary.h"
#include "sectrix_tools/checks/geometry/corner_points.h"

#include <cmath>

namespace qel::SectrixTools::Geometry {

namespace {

/// Where the loop turns to the right, by more than rounding can make a straight corner turn.
std::optional<Point> FindNotch(std::vector<Point> const& corners) {
    auto const size = corners.size();
    for (std::size_t i = 0; size > 3 && i < size; ++i) {
        auto const &a = corners[i], &b = corners[(i + 1) % size], &c = corners[(i + 2) % size];
        double const before = std::abs(b.x - a.x) + std::abs(b.y - a.y);
        double const after = std::abs(c.x - b.x) + std::abs(c.y - b.y);
        double const turn = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
        double const rounding = 0x1p-50 * (std::abs(b.x) + std::abs(b.y)) * (before + after);
        if (turn < -1e-9 * before * after - rounding)
            return b;
    }
    return std::nullopt;
}

} // namespace

TrialCut::TrialCut(Sectrix::CSPositions const& pool) : m_set(pool, false) {}

CutResult TrialCut::Cut(Sectrix::CrossSection const& section) {
    auto& copy = m_set.GetItems()[0];
    copy.GetExteriorLoop() = section.ExteriorLoop();
    for (auto const& hole : section.InteriorLoops())
        copy.AddInteriorLoop() = hole;
    CutResult result;
    auto const& loops = copy.ConvexLoops();
    for (std::size_t i = 0; i < loops.size(); ++i) {
        auto const corners = CornerPoints(loops[i]);
        result.m_area += std::abs(SignedArea(corners));
        if (auto const notch = FindNotch(corners))
            result.m_notches.push_back({i, *notch});
    }
    m_set.ResetConvexLoops();
    copy.GetInteriorLoops().clear();
    return result;
}

} // namespace qel::SectrixTools::Geometry
