#include "support/cutting_judge.h"
#include "support/drafts.h"
#include "support/plain_alignment.h"

#include <gtest/gtest.h>

// The plain twins judge the library in the fuzz targets. A judge is none unless it can say no.

using namespace qel::Sectrix;

namespace {

/// The twin's cutting of a shape against the library's.
bool IsCutAlike(shapes::Shape const& twin, shapes::Shape const& library) {
    auto const set = shapes::MakeSet(twin);
    auto cutter = plain::CutterOf(set.Items()[0]);
    cutter.Run();
    return fuzz::CutText(shapes::MakeSet(library)) == plain::CutText(cutter);
}

TEST(CuttingTwin, TellsASectionFromOneThatIsALittleHigherOrLessByACornerOrAHole) {
    shapes::Random random(3);
    auto const shape = shapes::StarWithHoles(random, 30, 4);
    auto higher = shape; // by the last bit, and so at the feet of the bridges
    for (auto& point : higher.points)
        point.y = std::nextafter(point.y, INFINITY);
    auto fewer = shape, solid = shape;
    fewer.loops[0].pop_back();
    solid.loops.pop_back();
    EXPECT_TRUE(IsCutAlike(shape, shape));
    for (auto const& other : {higher, fewer, solid})
        EXPECT_FALSE(IsCutAlike(shape, other));
}

TEST(AlignmentTwin, TellsSetsThatMatchFromOthersAndABlendFromAnother) {
    shapes::Draft draft{{{{"A", {0, 0}}, {"B", {1, 0}}, {"C", {0, 1}}}}};
    auto const set = shapes::MakeSet(draft);
    auto& ring = draft[0][0];
    std::rotate(ring.begin(), ring.begin() + 1, ring.end());
    for (auto& corner : ring)
        corner.point[1] += 1.0;
    auto const turned = shapes::MakeSet(draft);
    std::swap(ring[0].name, ring[1].name);
    auto const mirrored = shapes::MakeSet(draft);
    EXPECT_TRUE(plain::IsCompatible(set, turned, false));
    EXPECT_FALSE(plain::IsCompatible(set, mirrored, false));

    auto const text = plain::BlendText(set, turned, 0.25, false);
    EXPECT_EQ(sectrix_tests::SetText(CrossSections(set, turned, 0.25, false)), text);
    EXPECT_NE(sectrix_tests::SetText(CrossSections(set, turned, 0.26, false)), text);
    EXPECT_NE(sectrix_tests::SetText(CrossSections(set, mirrored, 0.25, false)), text);
}

} // namespace
