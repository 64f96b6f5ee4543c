#include "sectrix_tools/checks/geometry_check.h"
#include "support/plain_geometry.h"
#include "support/result.h"
#include "support/shape_set.h"
#include "support/test_data.h"

#include <gtest/gtest.h>
#include <set>

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;
using namespace sectrix_tests;
using shapes::MakeSet;
using shapes::Shape;

namespace {

/// Codes that the twin does not know: what cutting gives.
bool IsOfCutting(std::string const& code) {
    return std::set<std::string>{"convex-loop-not-convex", "areas-differ", "below-tolerance"}.count(code) > 0;
}

/// Findings in the lines of the twin, which gives a point to a contact alone.
std::vector<std::string> Lines(Findings const& findings) {
    static std::set<std::string> const contacts{"edges-cross",          "edges-touch",   "point-repeated",
                                                "edges-run-back",       "edges-overlap", "hole-crosses-outline",
                                                "hole-touches-outline", "holes-cross",   "holes-touch"};
    std::vector<std::string> lines;
    for (auto const& finding : findings) {
        auto const point = contacts.count(finding.m_code) ? finding.m_point.value() : Vec<2, double>{};
        if (!IsOfCutting(finding.m_code))
            lines.push_back(
                plain::GeometryCheck::Line(finding.m_code, finding.m_loop, finding.m_vertex, point[0], point[1]));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

Shape RandomShape(shapes::Random& random) {
    bool const isSmall = shapes::Below(random, 2) == 0;
    int const size = 3 + shapes::Below(random, isSmall ? 12 : 40),
              grid = 3 + shapes::Below(random, isSmall ? 4 : 30);
    return shapes::Below(random, 3) > 0 ? shapes::Garbage(random, size, grid)
                                        : shapes::GridPlate(random, 1 + size % 6);
}

TEST(GeometryCheck, FindsWhatTheTwinFinds) {
    shapes::Random random(1);
    std::set<std::string> codes;
    int different = 0;
    std::vector<std::string> last;
    for (int i = 0; i < 4000; ++i) {
        auto const shape = RandomShape(random);
        auto const findings = CheckGeometry(MakeSet(shape));
        auto const lines = Lines(findings);
        ASSERT_EQ(lines, plain::GeometryCheck(shape).Lines()) << "shape " << i;
        for (auto const& finding : findings)
            codes.insert(finding.m_code);
        different += lines != last;
        last = lines;
    }
    for (auto const* code : {"edge-without-length", "edges-cross", "edges-overlap", "edges-run-back", "edges-touch",
                             "hole-counter-clockwise", "hole-crosses-outline", "hole-inside-hole", "hole-outside",
                             "hole-touches-outline", "holes-cross", "holes-touch", "index-out-of-range",
                             "loop-too-short", "loop-without-area", "outline-clockwise", "point-repeated", "spike"})
        EXPECT_EQ(codes.count(code), 1u) << code;
    EXPECT_GT(different, 3000) << "one answer is not like another";
}

/// What a change of the shape changes in the answer of the twin, the check must follow: so it can be told wrong.
TEST(GeometryCheck, IsToldFromTheAnswerForAShapeWithACornerMoved) {
    shapes::Random random(2);
    auto shape = shapes::Plate(4, 4);
    auto const lines = Lines(CheckGeometry(MakeSet(shape)));
    EXPECT_EQ(lines, std::vector<std::string>());
    for (auto& point : shape.points)
        point = {4 * point.x, 4 * point.y};
    for (int i = 0; i < 60; ++i) {
        auto moved = shape;
        auto& point = moved.points[std::size_t(4 + shapes::Below(random, 64))];
        point.x += 2 + shapes::Below(random, 12); // over the edge of its hole, at least
        EXPECT_NE(plain::GeometryCheck(moved).Lines(), lines);
        EXPECT_EQ(Lines(CheckGeometry(MakeSet(moved))), plain::GeometryCheck(moved).Lines());
    }
}

/// All edges against all others, all corners at one point, a loop run through twice, spikes alone: a host gets an
/// answer that it can read. A section in good order of the same size has none.
TEST(GeometryCheck, OfAFloodIsShort) {
    int const count = 20000;
    shapes::Random random(3);
    std::vector<shapes::Point> crossing, onePoint, spikes, any;
    for (int i = 0; i < count; ++i) {
        crossing.push_back(i % 2 ? shapes::Point{double(count - i), 1000.0 + i}
                                 : shapes::Point{double(i), 1e-3 * i});
        onePoint.push_back({1, 1});
        spikes.push_back({10.0 * (i % 2) + 1e-5 * i, 0});
        any.push_back({shapes::Uniform(random, 0, 1000), shapes::Uniform(random, 0, 1000)});
    }
    for (auto const& points : {crossing, onePoint, spikes, any}) {
        Shape shape;
        shape.AddLoop(points);
        auto const findings = CheckGeometry(MakeSet(shape));
        EXPECT_GE(findings.size(), 1000u);
        EXPECT_LE(findings.size(), 4000u);
        EXPECT_EQ(findings.back().m_code, "not-listed");
    }
    for (auto const& shape : {shapes::StarWithHoles(random, count, 0), shapes::Comb(std::size_t(count)),
                              shapes::Coast(random, std::size_t(count), 900), shapes::Plate(70, 70)})
        EXPECT_EQ(Lines(CheckGeometry(MakeSet(shape))), std::vector<std::string>());
}

std::string Text(Finding const& finding) {
    auto text = std::string(SeverityName(finding.m_severity)) + " " + finding.m_code;
    for (int const place : {finding.m_section, finding.m_loop, finding.m_vertex})
        text += " " + (place < 0 ? "-" : std::to_string(place));
    return text;
}

/// Cases by their documents, with what is said of them. The set stays as it is.
TEST(GeometryCheck, OfDocuments) {
    auto const cases = FileDom("checks/geometry.json");
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i]["case"].asString(""));
        CrossSections set;
        set.From(cases[i]["document"]);
        auto const before = fuzz::Text(set);
        std::vector<std::string> said, expected;
        for (auto const& finding : CheckGeometry(set))
            said.push_back(Text(finding));
        for (std::size_t j = 0; j < cases[i]["findings"].size(); ++j)
            expected.push_back(cases[i]["findings"][j].asString(""));
        EXPECT_EQ(said, expected);
        EXPECT_EQ(fuzz::Text(set), before);
        for (auto const& section : set.Items())
            EXPECT_TRUE(section.AddedVertices().empty());
    }
}

TEST(GeometryCheck, OfASectionIsThatOfItsSet) {
    shapes::Random random(4);
    for (int i = 0; i < 50; ++i) {
        auto const set = MakeSet(RandomShape(random));
        auto const ofSet = CheckGeometry(set), ofSection = CheckGeometry(set.Items()[0]);
        ASSERT_EQ(ofSet.size(), ofSection.size());
        for (std::size_t j = 0; j < ofSet.size(); ++j)
            EXPECT_EQ(ofSet[j].m_message, ofSection[j].m_message);
    }
}

} // namespace
