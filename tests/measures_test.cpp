#include "sectrix_tools/measures/loop_measures.h"
#include "sectrix_tools/measures/section_properties.h"
#include "support/shape_set.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

using namespace qel;
using namespace qel::Sectrix;
using namespace qel::SectrixTools;

namespace {

using Corners = std::vector<shapes::Point>;

double Number(Dom const& dom) {
    return dom.asDouble(NAN);
}

/// A figure that is symmetric about x = 0, by its heights and the widths there, from the bottom up.
Corners Symmetric(Dom const& heights) {
    Corners corners;
    for (std::uint64_t i = 0; i < heights.size(); ++i)
        corners.push_back({Number(heights[i][1]) / 2, Number(heights[i][0])});
    for (std::uint64_t i = heights.size(); i-- > 0;)
        corners.push_back({-Number(heights[i][1]) / 2, Number(heights[i][0])});
    return corners;
}

Corners Circle(double x, double y, double diameter) {
    Corners corners;
    for (int i = 0; i < 1440; ++i)
        corners.push_back({x + diameter / 2 * std::cos(shapes::kFullTurn * i / 1440),
                           y + diameter / 2 * std::sin(shapes::kFullTurn * i / 1440)});
    return corners;
}

CrossSections GirderOf(Dom const& girder) {
    shapes::Shape shape;
    shape.AddLoop(Symmetric(girder["outline"]));
    if (girder["void"].size() > 0)
        shape.AddLoop(Symmetric(girder["void"]), true);
    Dom const& circles = girder["circles"];
    for (std::uint64_t i = 0; i < circles.size(); ++i)
        shape.AddLoop(Circle(Number(circles[i][0]), Number(circles[i][1]), Number(circles[i][2])), true);
    return MakeSet(shape);
}

/// The properties that both ways of measuring have.
std::vector<double> Numbers(SectionProperties const& p) {
    return {p.m_area,
            p.m_firstMomentX,
            p.m_firstMomentY,
            p.m_centroid[0],
            p.m_centroid[1],
            p.m_ix,
            p.m_iy,
            p.m_ixy,
            p.m_i1,
            p.m_i2,
            p.m_angle,
            p.m_top,
            p.m_bottom,
            p.m_left,
            p.m_right,
            p.m_sectionModulusTop,
            p.m_sectionModulusBottom,
            p.m_sectionModulusLeft,
            p.m_sectionModulusRight,
            p.m_radiusX,
            p.m_radiusY};
}

SectionProperties PropertiesOfShape(shapes::Shape const& shape) {
    return PropertiesOf(MakeSet(shape).Items()[0]);
}

shapes::Shape ShapeOf(Corners const& corners) {
    shapes::Shape shape;
    shape.AddLoop(corners);
    return shape;
}

shapes::Shape Moved(shapes::Shape shape, double x, double y) {
    for (auto& point : shape.points)
        point = {point.x + x, point.y + y};
    return shape;
}

} // namespace

TEST(Measures, PropertiesOfStandardGirdersAreThePublishedOnes) {
    Dom const girders = sectrix_tests::FileDom("properties/girders.json");
    int compared = 0;
    for (std::uint64_t i = 0; i < girders.size(); ++i) {
        Dom const& girder = girders[i];
        SCOPED_TRACE(girder["case"].asString(""));
        auto const set = GirderOf(girder);
        auto const properties = PropertiesOf(set.Items()[0]);
        double const numbers[] = {properties.m_area, properties.m_centroid[1], properties.m_ix};
        char const* const keys[] = {"area", "centroid", "inertia"};
        for (std::size_t key = 0; key < 3; ++key) {
            Dom const& printed = girder["printed"][keys[key]];
            if (printed.size() > 0) {
                ++compared;
                EXPECT_NEAR(numbers[key], Number(printed[0]), Number(printed[1]) * 0.5000001) << keys[key];
            }
            if (girder["exact"].size() > 0) {
                EXPECT_NEAR(numbers[key] / Number(girder["exact"][key]), 1, 1e-14) << keys[key];
            }
        }
        EXPECT_NEAR(properties.m_centroid[0], 0, 1e-14);
        auto const fromOutline = Numbers(properties);
        auto const fromLoops = Numbers(PropertiesOfConvexLoops(set.Items()[0]));
        for (std::size_t key = 0; key < fromOutline.size(); ++key) {
            // These are 0: what they are a difference of tells how near.
            double const scale = key == 2 || key == 7 ? properties.m_iy : std::abs(fromOutline[key]);
            EXPECT_NEAR(fromLoops[key], fromOutline[key], 1e-13 + 1e-12 * scale) << key;
        }
    }
    EXPECT_EQ(compared, 59);
}

TEST(Measures, PropertiesFollowTheFormulas) {
    // A hollow rectangle of 8 by 12 with an opening of 4 by 6, its middle at (5, 7).
    shapes::Shape hollow;
    hollow.AddLoop({{1, 1}, {9, 1}, {9, 13}, {1, 13}});
    hollow.AddLoop({{3, 4}, {7, 4}, {7, 10}, {3, 10}}, true);
    auto const p = PropertiesOfShape(hollow);
    double const ix = (8 * 12 * 12 * 12 - 4 * 6 * 6 * 6) / 12.0, iy = (12 * 8 * 8 * 8 - 6 * 4 * 4 * 4) / 12.0;
    std::vector<double> const expected{72,
                                       72 * 7,
                                       72 * 5,
                                       5,
                                       7,
                                       ix,
                                       iy,
                                       0,
                                       ix,
                                       iy,
                                       0,
                                       6,
                                       6,
                                       4,
                                       4,
                                       ix / 6,
                                       ix / 6,
                                       iy / 4,
                                       iy / 4,
                                       std::sqrt(ix / 72),
                                       std::sqrt(iy / 72)};
    EXPECT_EQ(Numbers(p), expected);
    EXPECT_TRUE(p.m_outerPerimeter == 40 && p.m_innerPerimeter == 20);

    // A rectangle of 10 by 2, turned: the greatest moment is about the short axis, a quarter of a turn further.
    double const pi = shapes::kFullTurn / 2;
    for (double const degrees : {0, 20, 45, 89, 90, 100, 179}) {
        double const c = std::cos(degrees * pi / 180), s = std::sin(degrees * pi / 180);
        Corners turned;
        for (auto const& [x, y] : Corners{{-5, -1}, {5, -1}, {5, 1}, {-5, 1}})
            turned.push_back({x * c - y * s, x * s + y * c});
        auto const q = PropertiesOfShape(ShapeOf(turned));
        double const angle = degrees > 0 ? degrees - 90 : 90;
        EXPECT_NEAR(q.m_angle * 180 / pi, angle, 1e-10);
        EXPECT_NEAR(q.m_i1, 2 * 1000 / 12.0, 1e-10);
        EXPECT_NEAR(q.m_i2, 10 * 8 / 12.0, 1e-10);
        EXPECT_NEAR(q.m_ixy, (q.m_i2 - q.m_i1) * -s * c, 1e-10);
    }
    EXPECT_EQ(PropertiesOfShape(ShapeOf({{0, 0}, {1, 0}, {1, 1}, {0, 1}})).m_angle, 0);
}

TEST(Measures, FarCoordinatesCostNoDigits) {
    // Of whole sixty-fourths, so that moving by whole numbers rounds nothing.
    shapes::Random random(3);
    for (int round = 0; round < 50; ++round) {
        auto shape = shapes::StarWithHoles(random, 20, static_cast<std::size_t>(round % 6));
        for (auto& [x, y] : shape.points)
            std::tie(x, y) = std::tuple(std::round(64 * x) / 64, std::round(64 * y) / 64);
        auto const near = PropertiesOfShape(shape), far = PropertiesOfShape(Moved(shape, 500000, 5000000));
        auto expected = Numbers(near);
        expected[1] += 5000000 * near.m_area;
        expected[2] += 500000 * near.m_area;
        expected[3] = far.m_centroid[0];
        expected[4] = far.m_centroid[1];
        auto const numbers = Numbers(far);
        for (std::size_t key = 0; key < numbers.size(); ++key)
            EXPECT_NEAR(numbers[key], expected[key], (key == 1 || key == 2) * 1e-15 * std::abs(expected[key]))
                << key;
        EXPECT_NEAR(far.m_centroid[0] - 500000, near.m_centroid[0], 6e-11);
        EXPECT_NEAR(far.m_centroid[1] - 5000000, near.m_centroid[1], 5e-10);
        EXPECT_EQ(SignedArea(MakeSet(shape).Items()[0].ExteriorLoop()),
                  SignedArea(MakeSet(Moved(shape, 500000, 5000000)).Items()[0].ExteriorLoop()));
    }
}

TEST(Measures, WhatIsNoSectionHasNoProperties) {
    Corners const square{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
    auto const has = [](shapes::Shape const& shape, double area, double firstMoment) {
        auto const p = PropertiesOfShape(shape);
        auto const numbers = Numbers(p);
        bool const isBare =
            std::all_of(numbers.begin() + 3, numbers.end(), [](double number) { return std::isnan(number); });
        return isBare && p.m_area == area && p.m_firstMomentX == firstMoment && p.m_innerPerimeter == 0;
    };
    EXPECT_TRUE(has(ShapeOf({}), 0, 0));
    EXPECT_TRUE(has(ShapeOf({{3, 4}, {5, 6}}), 0, 0));
    EXPECT_TRUE(has(ShapeOf({{0, 0}, {1, 1}, {2, 2}}), 0, 0));
    EXPECT_TRUE(has(ShapeOf({{0, 0}, {0, 2}, {2, 2}, {2, 0}}), -4, -4));
    shapes::Random random(2);
    for (int line = 0; line < 100; ++line) { // the area of points on a line may round to more than 0
        Corners corners;
        double const slope = shapes::Uniform(random, 0, 1);
        for (int i = 0; i < 4; ++i)
            corners.push_back({shapes::Uniform(random, 0, 9), 0});
        for (auto& [x, y] : corners)
            y = slope * x + 0.7;
        EXPECT_TRUE(std::isnan(PropertiesOfShape(ShapeOf(corners)).m_ix));
    }
    for (double const strange : {NAN, INFINITY}) {
        auto const p = PropertiesOfShape(ShapeOf({{0, 0}, {2, 0}, {2, strange}, {0, 2}}));
        for (double const number : Numbers(p))
            EXPECT_TRUE(std::isnan(number));
    }
    // A vertex without a position is passed over; a hole the other way round adds; a clockwise outline takes off.
    shapes::Shape shape = ShapeOf(square);
    shape.loops[0].push_back(9);
    shape.AddLoop({{0.5, 0.5}, {1.5, 0.5}, {1.5, 1.5}, {0.5, 1.5}});
    EXPECT_EQ(PropertiesOfShape(shape).m_area, 5);
}

TEST(Measures, ConvexByTheAngleThatCountsAsStraight) {
    auto const isConvex = [](Corners const& corners, double straight = kStraightAngle) {
        return IsConvex(MakeSet(ShapeOf(corners)).Items()[0].ExteriorLoop(), straight);
    };
    Corners star;
    for (int i = 0; i < 5; ++i)
        star.push_back({std::cos(shapes::kFullTurn * 2 * i / 5), std::sin(shapes::kFullTurn * 2 * i / 5)});
    EXPECT_TRUE(isConvex({{0, 0}, {1, 0}, {2, 0}, {2, 0}, {2, 2}, {0, 2}}));
    EXPECT_FALSE(isConvex({{0, 0}, {0, 2}, {2, 2}, {2, 0}}));
    EXPECT_FALSE(isConvex({{0, 0}, {1, 0}, {2, 0}}) || isConvex({}) || isConvex(star));
    EXPECT_FALSE(isConvex({{0, 0}, {NAN, 0}, {2, 2}}) || isConvex({{0, 0}, {2, 0}, {2, INFINITY}, {0, 2}}));
    // Each side of the dent turns by 1e-4, so the corner turns by twice that.
    Corners const dented{{0, 0}, {1, 1e-4}, {2, 0}, {2, 2}, {0, 2}};
    EXPECT_TRUE(isConvex(dented, 2.1e-4) && !isConvex(dented, 1.9e-4) && !isConvex(dented));
}
