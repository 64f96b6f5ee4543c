#include "sectrix_tools/drawings/blend_drawing.h"
#include "sectrix_tools/drawings/extrusion_drawing.h"
#include "sectrix_tools/drawings/mesh_drawing.h"
#include "sectrix_tools/drawings/section_drawing.h"
#include "support/shape_set.h"

#include <gtest/gtest.h>
#include <limits>

using namespace qel;
using namespace qel::SectrixTools;

namespace {

std::size_t Count(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string Codes(Drawing const& drawing) {
    std::string codes;
    for (auto const& finding : drawing.m_findings)
        codes += (codes.empty() ? "" : " ") + finding.m_code;
    return codes;
}

Sectrix::CrossSections NamedBox() {
    Sectrix::CSPositions pool;
    for (auto const& [x, y] : {std::pair{0, 0}, {6, 0}, {6, 3}, {0, 3}, {2, 1}, {2, 2}, {4, 2}, {4, 1}})
        pool.AddPosition(x == 0 ? "<&\x01" : "", {1.0 * x, 1.0 * y});
    Sectrix::CrossSections set(pool, false);
    auto& section = set.GetItems()[0];
    for (int index = 0; index < 4; ++index)
        section.GetExteriorLoop().AddVertex(index, true);
    auto& hole = section.AddInteriorLoop();
    for (int index = 4; index < 8; ++index)
        hole.AddVertex(index, true);
    return set;
}

TEST(Drawings, ShowWhatTheOptionsSay) {
    auto const set = NamedBox();
    auto const& section = set.Items()[0];
    SectionDrawingOptions options;
    options.m_showsConvexLoops = false;
    auto const plain = DrawSection(section, options).m_svg;
    EXPECT_EQ(set.Positions().Count(), 8) << "drawing the outline alone builds nothing";
    EXPECT_EQ(Count(plain, "<polygon"), 0u);
    EXPECT_EQ(Count(plain, "class=\"name\""), 2u);

    options = {};
    options.m_showsLegend = false;
    auto const full = DrawSection(section, options).m_svg;
    EXPECT_EQ(Count(full, "<polygon class=\"tint"), section.ConvexLoops().size());
    EXPECT_EQ(Count(full, "class=\"foot\""), section.AddedVertices().size());
    EXPECT_EQ(Count(full, ">&lt;&amp;\xEF\xBF\xBD</text>"), 2u) << "names are escaped";
    EXPECT_EQ(Count(full, ">6 units</text>"), 1u) << "the width";

    options.m_showsFeet = options.m_showsNames = options.m_showsDimensions = false;
    auto const bare = DrawSection(section, options).m_svg;
    EXPECT_EQ(Count(bare, "class=\"foot\"") + Count(bare, "class=\"name") + Count(bare, "class=\"dimension\""), 0u);
}

TEST(Drawings, SayWhyThereIsNone) {
    double const infinity = std::numeric_limits<double>::infinity();
    auto const none = Sectrix::CrossSections();
    for (double const far : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 0.0, 1.7e308}) {
        Sectrix::CrossSections const set({{-far, 0}, {far, 0}, {far, 0}}, true);
        EXPECT_EQ(Codes(DrawSection(set.Items()[0])), "nothing-to-draw") << far;
        EXPECT_EQ(Codes(DrawAlongSpan({{&set.Items()[0], ""}}, "", "")), "nothing-to-draw") << far;
    }
    EXPECT_EQ(Codes(DrawSideBySide({}, "", "")), "nothing-to-draw");
    EXPECT_EQ(Codes(DrawTriangles({{"", {{{infinity, 0, 0}}}, {0, 0, 0}, {}}}, "", "")), "nothing-to-draw");
    EXPECT_EQ(Codes(DrawExtrusion({}, {{}}, "", "")), "nothing-to-draw");
    auto const box = NamedBox();
    auto const many = DrawSideBySide(std::vector<DrawnStation>(1001, {&box.Items()[0], ""}), "", "");
    EXPECT_EQ(Codes(many), "stations-left-out");
    EXPECT_EQ(Count(many.m_svg, "class=\"drawing\""), 1000u);
}

TEST(Drawings, CoverWhatLiesBehind) {
    // A small triangle, seen from its back, in front of a large one.
    DrawnTriangles panel{"",
                         {{{-9, -9, 0}}, {{9, -9, 0}}, {{0, 9, 0}}, {{-1, -1, 3}}, {{0, 1, 3}}, {{1, -1, 3}}},
                         {3, 4, 5, 0, 1, 2},
                         {}};
    auto const svg = DrawTriangles({panel}, "", "m").m_svg;
    EXPECT_EQ(Count(svg, "<polygon"), 2u);
    EXPECT_EQ(svg.find("<polygon class=\"back\""), svg.rfind("<polygon"));
    std::swap_ranges(panel.m_corners.begin(), panel.m_corners.begin() + 3, panel.m_corners.begin() + 3);
    EXPECT_EQ(DrawTriangles({panel}, "", "m").m_svg, svg) << "the order in the list decides nothing";

    // All of them reach through each other.
    DrawnTriangles tangle;
    shapes::Random random(3);
    for (int i = 0; i < 3000; ++i)
        for (int corner = 0; corner < 3; ++corner) {
            tangle.m_corners.push_back(static_cast<std::int64_t>(tangle.m_points.size()));
            tangle.m_points.push_back(
                {{shapes::Uniform(random, -1, 1), shapes::Uniform(random, -1, 1), shapes::Uniform(random, -1, 1)}});
        }
    auto const count = Count(DrawTriangles({tangle}, "", "m").m_svg, "<polygon");
    EXPECT_GE(count, 3000u);
    EXPECT_LE(count, 23000u);
}

} // namespace
