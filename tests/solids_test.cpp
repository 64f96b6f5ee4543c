#include "sectrix_tools/measures/loop_measures.h"
#include "sectrix_tools/measures/section_properties.h"
#include "sectrix_tools/solids/boundary.h"
#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"
#include "support/shape_set.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

namespace {

using Points3 = std::vector<Vec<3, double>>;

/// What is not as it must be in a solid, judged edge by edge: empty for a good one.
std::string Faults(Solid const& solid) {
    for (auto const& finding : solid.m_findings)
        return finding.m_code;
    auto const& corners = solid.m_mesh.m_triangles;
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
    std::vector<bool> used(solid.m_mesh.m_points.size());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        ++edges[{corners[i], corners[i - i % 3 + (i + 1) % 3]}];
        used.at(corners[i]) = true;
    }
    for (auto const& [edge, uses] : edges)
        if (uses != 1 || edge.first == edge.second || edges.count({edge.second, edge.first}) != 1)
            return "an edge is not used once in each direction";
    if (std::count(used.begin(), used.end(), false) > 0)
        return "a point is not used";
    return IsClosed(solid.m_mesh) && Volume(solid.m_mesh) > 0 ? "" : "does not count as closed, or faces inward";
}

Solid Prism(CrossSection const& section, double length) {
    return Sweep(
        {{&section, Placement({1, 2, 3}, {0, 1, 0})}, {&section, Placement({1, 2 + length, 3}, {0, 1, 0})}});
}

double Area(CrossSection const& section) {
    return PropertiesOf(section).m_area;
}

/// Turned a little, so that no ray of a bridge passes exactly through a vertex.
shapes::Shape Turned(shapes::Shape shape, double angle) {
    for (auto& [x, y] : shape.points)
        std::tie(x, y) =
            std::tuple(x * std::cos(angle) - y * std::sin(angle), x * std::sin(angle) + y * std::cos(angle));
    return shape;
}

} // namespace

TEST(Solids, PrismsOfSoundSectionsAreClosed) {
    shapes::Random random(16);
    std::vector<shapes::Shape> all{shapes::Girder(),
                                   shapes::NineGirder(),
                                   shapes::Comb(40),
                                   shapes::Spiral(60),
                                   shapes::Hilbert(4),
                                   shapes::LeaningComb(40),
                                   shapes::NotchedCircle(90),
                                   shapes::Plate(12, 1),
                                   shapes::Plate(1, 12),
                                   shapes::Plate(9, 9),
                                   shapes::Coast(random, 200, 30)};
    for (int cells = 1; cells <= 6; ++cells)
        all.push_back(shapes::Box(cells));
    for (int i = 0; i < 300; ++i)
        all.push_back(Turned(shapes::StarWithHoles(random, static_cast<std::size_t>(8 + shapes::Below(random, 40)),
                                                   static_cast<std::size_t>(i % 11),
                                                   static_cast<std::size_t>(3 + shapes::Below(random, 8))),
                             shapes::Uniform(random, 0.1, 1)));
    for (auto const& shape : all) {
        auto const set = MakeSet(shape);
        auto const& section = set.Items()[0];
        auto const solid = Prism(section, 7);
        EXPECT_EQ(Faults(solid), "") << shape.points.size();
        EXPECT_NEAR(Volume(solid.m_mesh) / (7 * Area(section)), 1, 1e-12);
        EXPECT_EQ(solid.m_mesh.m_points.size(), 2 * static_cast<std::size_t>(set.Positions().Count()));
    }
}
