#include "support/cutting_judge.h"
#include "support/shape_set.h"

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

} // namespace
