#include "support/plain_cutting.h"
#include "support/result.h"
#include "support/shapes.h"
#include "target.h"

#include <algorithm>

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// A section that runs the steps of its build one by one, on a working list that it has filled itself.
class SteppedSection : public CrossSection {
public:
    using CrossSection::CrossSection;

    void BuildByHand(plain::Cutter const& twin) {
        for (auto const& ring : twin.loops) {
            auto& loop = AddConvexLoop();
            for (auto const& corner : ring)
                loop.AddVertex(corner.index, corner.exterior);
        }
        while (RemoveHole()) {
        }
        for (std::size_t i = 0, count = ConvexLoops().size(); i < count; ++i)
            while (!BuildConvexLoop(i)) {
            }
    }
};

/// What hosts have, what is hard to cut, and what no host should have, mostly of few vertices. Large ones lie on
/// both sides of each size from which something is indexed: rings of 48 and of 128 vertices, 40,000 pairs of hole
/// and edge.
shapes::Shape MakeShape(shapes::Random& random) {
    bool const isLarge = shapes::Below(random, 8) == 0;
    auto const size =
        static_cast<std::size_t>(isLarge ? 100 + shapes::Below(random, 120) : 4 + shapes::Below(random, 60));
    switch (shapes::Below(random, 9)) {
    case 0:
        return shapes::StarWithHoles(random, size,
                                     isLarge ? static_cast<std::size_t>(shapes::Below(random, 90)) : size / 8);
    case 1: // its holes touch and overlap
        return shapes::GridPlate(random, isLarge ? 20 + shapes::Below(random, 30) : 2 + shapes::Below(random, 7));
    case 2:
        return shapes::Plate(1 + size / 8, static_cast<std::size_t>(1 + shapes::Below(random, 9)));
    case 3:
        return shapes::Garbage(random, static_cast<int>(size), 2 + shapes::Below(random, isLarge ? 40 : 8));
    case 4:
        return shapes::Coast(random, size, size / 20);
    case 5:
        return shapes::LeaningComb(size);
    case 6:
        return shapes::Comb(size);
    case 7:
        return shapes::Spiral(size);
    default:
        return shapes::NotchedCircle(size);
    }
}

/// Scales and shifts a shape, at times to where doubles are farther apart than 1, and at times puts numbers into it
/// that are no points.
void Distort(shapes::Random& random, shapes::Shape& shape) {
    double const scale = shapes::Below(random, 8) ? std::pow(10.0, shapes::Below(random, 15) - 7) : 1e15;
    double const shift = shapes::Below(random, 3) * 1000.0 * scale;
    for (auto& point : shape.points)
        point = {point.x * scale + shift, point.y * scale - shift};
    double const oddities[] = {INFINITY, -INFINITY, NAN, 1e308, -1e308, 1e200, 5e-324};
    for (int i = shapes::Below(random, 6) ? 0 : 1 + shapes::Below(random, 3); i > 0 && !shape.points.empty(); --i) {
        auto const place = shapes::Below(random, static_cast<int>(shape.points.size()));
        auto& point = shape.points[static_cast<std::size_t>(place)];
        (shapes::Below(random, 2) ? point.x : point.y) = oddities[shapes::Below(random, 7)];
    }
}

plain::Cutter MakeTwin(shapes::Shape const& shape) {
    plain::Cutter twin;
    for (auto const& point : shape.points)
        twin.pool.push_back({point.x, point.y});
    for (auto const& loop : shape.loops) {
        auto& ring = twin.loops.emplace_back();
        for (int index : loop)
            ring.push_back({index, true});
    }
    return twin;
}

/// Points, then loops of any indices, one behind the end and -1 among them. Beside the bytes of each point, long
/// stretches may be drawn from a formula, so that a short input reaches what large loops need.
plain::Cutter ReadTwin(Input& input) {
    plain::Cutter twin;
    input.ReadScale();
    int const count = 1 + input.Below(320);
    int const drawn = input.Below(4) == 0 ? count : 0;
    unsigned seed = drawn ? static_cast<unsigned>(1 + input.Below(65536)) : 0;
    int const grid = 2 + input.Below(64);
    for (int i = 0; i < count; ++i)
        if (i < drawn) {
            seed = seed * 1664525u + 1013904223u;
            twin.pool.push_back({static_cast<double>(seed >> 8) / 65536 / grid,
                                 static_cast<double>(seed % 4099 % static_cast<unsigned>(grid))});
        } else {
            double const x = input.Coordinate();
            twin.pool.push_back({x, input.Coordinate()});
        }
    twin.loops.emplace_back();
    if (input.Below(4) == 0) // the outline runs through a stretch of the pool
        for (int i = input.Below(count), end = input.Below(count); i < end; ++i)
            twin.loops[0].push_back({i, true});
    for (int loops = 0; loops < 40 && !input.IsAtEnd(); ++loops) {
        auto& ring = twin.loops[static_cast<std::size_t>(loops)];
        for (int corners = input.Below(96); corners > 0; --corners)
            ring.push_back({input.Below(count + 2) - 1, input.Below(16) != 0});
        twin.loops.emplace_back();
    }
    if (twin.loops.size() > 1)
        twin.loops.pop_back();
    return twin;
}

CrossSections MakeSet(plain::Cutter const& twin) {
    CSPositions pool;
    for (auto const& point : twin.pool)
        pool.AddPosition({point.x, point.y});
    CrossSections set(pool, false);
    auto& section = set.GetItems()[0];
    for (auto const& ring : twin.loops) {
        auto& loop = &ring == &twin.loops[0] ? section.GetExteriorLoop() : section.AddInteriorLoop();
        for (auto const& corner : ring)
            loop.AddVertex(corner.index, corner.exterior);
    }
    return set;
}

std::string TwinText(plain::Cutter const& twin) {
    std::string text = "cut\n";
    for (auto const& ring : twin.loops) {
        std::vector<Vertex> vertices;
        for (auto const& corner : ring)
            vertices.emplace_back(corner.index, corner.exterior);
        text += "loop " + Text(vertices);
    }
    for (int index : twin.added)
        text += std::to_string(index) + ' ';
    text += '\n';
    for (auto const& point : twin.pool)
        text += Number(point.x) + Number(point.y) + " \n";
    return text + "0 names\n";
}

/// The judge is no judge unless it tells a section from one that is a little higher, has a corner less or a hole
/// less.
void CheckThatCuttingTwinSaysNo() {
    shapes::Random random(3);
    auto const shape = shapes::StarWithHoles(random, 30, 4);
    auto twin = MakeTwin(shape);
    twin.Run();
    auto higher = shape; // by the last bit, and so at the feet of the bridges
    for (auto& point : higher.points)
        point.y = std::nextafter(point.y, 1000.0);
    auto fewer = shape;
    fewer.loops[0].pop_back();
    auto solid = shape;
    solid.loops.pop_back();
    Require(CutText(MakeSet(MakeTwin(shape))) == TwinText(twin), "the twin says yes");
    for (auto const& other : {higher, fewer, solid})
        Require(CutText(MakeSet(MakeTwin(other))) != TwinText(twin), "the twin says no");
}

/// Bytes behind the word are the seed of a shape; without the word they are the points and loops. Two shapes have
/// names of their own: rings of over 4,096 vertices, which get blocks of blocks, in the order of the ring and not.
plain::Cutter TwinOf(std::string const& bytes) {
    shapes::Random fixed(3);
    if (bytes == "large star")
        return MakeTwin(shapes::StarWithHoles(fixed, 4100, 8));
    if (bytes == "large leaning comb")
        return MakeTwin(shapes::LeaningComb(2100));
    std::string const word = "shape";
    if (bytes.compare(0, word.size(), word) != 0) {
        Input input(bytes);
        return ReadTwin(input);
    }
    shapes::Random random(SeedIn(bytes.substr(word.size())));
    auto shape = MakeShape(random);
    if (shapes::Below(random, 2))
        Distort(random, shape);
    return MakeTwin(shape);
}

} // namespace

std::string RunCutting(std::string const& bytes) {
    if (bytes == "judge") {
        CheckThatCuttingTwinSaysNo();
        return bytes;
    }
    auto twin = TwinOf(bytes);
    auto set = MakeSet(twin);
    auto const before = Text(set);
    auto const cut = CutText(set);
    auto pool = MakeSet(twin).Positions();
    SteppedSection stepped(pool, false);
    // Each step puts the whole ring in order anew, which takes long for the largest.
    bool const isStepped = !twin.loops[0].empty() && twin.loops[0].size() < 1000;
    if (isStepped)
        stepped.BuildByHand(twin);
    twin.Run();
    Require(cut == TwinText(twin), "cutting as the twin does");
    set.ResetConvexLoops();
    Require(Text(set) == before, "a reset takes back all that cutting has added");
    Require(CutText(set) == cut, "a second cut is like the first");
    Require(!isStepped || Text(stepped.ConvexLoops()) == Text(set.Items()[0].ConvexLoops()),
            "cutting step by step is like cutting at once");
    return cut;
}

} // namespace fuzz
