#include "support/cutting_judge.h"
#include "support/shape_set.h"
#include "target.h"

#include <algorithm>
#include <cstdlib>

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// A copy of a section over a pool of its own, cut at once or by single steps on a working list that it has filled
/// itself.
class Copy : public CrossSection {
public:
    Copy(CSPositions& pool, CrossSection const& section) : CrossSection(pool, false) {
        GetExteriorLoop() = section.ExteriorLoop();
        for (auto const& hole : section.InteriorLoops())
            AddInteriorLoop() = hole;
    }

    void BuildByHand() {
        AddConvexLoop() = ExteriorLoop();
        for (auto const& hole : InteriorLoops())
            AddConvexLoop() = hole;
        while (RemoveHole()) {
        }
        for (std::size_t i = 0, count = ConvexLoops().size(); i < count; ++i)
            while (!BuildConvexLoop(i)) {
            }
    }
};

/// What hosts have, what is hard to cut, and what no host should have, mostly of few vertices. Large ones lie on
/// both sides of each size from which something is indexed: rings of 48 and of 128 vertices, 65,000 pairs of hole
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

/// An outline whose x are small multiples of the least double, and holes of one vertex, so many that its edges are
/// indexed. The foot on the first edge is rounded to a place beyond both of its ends, and beyond those on all
/// others.
shapes::Shape SubnormalHoles() {
    double const unit = 5e-324;
    shapes::Shape shape;
    shape.AddLoop({{0, 0}, {460 * unit, 0.0021}, {470 * unit, 0}, {470 * unit, 0.0021}});
    for (int hole = 0; hole < 130; ++hole)
        shape.AddLoop({{1e-307, 0.0011}});
    return shape;
}

/// As the reading of numbers rounds it, which is alike on all systems.
double PowerOfTen(int exponent) {
    return std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
}

/// Scales and shifts a shape, at times to where doubles are farther apart than 1, or in x to the least there are,
/// and at times puts numbers into it that are no points.
void Distort(shapes::Random& random, shapes::Shape& shape) {
    double const scale = shapes::Below(random, 8) ? PowerOfTen(shapes::Below(random, 15) - 7) : 1e15;
    double const shift = shapes::Below(random, 3) * 1000.0 * scale;
    bool const isLow = shapes::Below(random, 16) == 0;
    double const width = isLow ? PowerOfTen(-305 - shapes::Below(random, 19)) : scale;
    for (auto& point : shape.points)
        point = {point.x * width + (isLow ? 0.0 : shift), point.y * scale - shift};
    double const oddities[] = {INFINITY, -INFINITY, NAN, 1e308, -1e308, 1e200, 5e-324};
    for (int i = shapes::Below(random, 6) ? 0 : 1 + shapes::Below(random, 3); i > 0 && !shape.points.empty(); --i) {
        auto const place = shapes::Below(random, static_cast<int>(shape.points.size()));
        auto& point = shape.points[static_cast<std::size_t>(place)];
        (shapes::Below(random, 2) ? point.x : point.y) = oddities[shapes::Below(random, 7)];
    }
}

/// Points, then loops of any indices, one behind the end and -1 among them. Beside the bytes of each point, long
/// stretches may be drawn from a formula, so that a short input reaches what large loops need.
CrossSections ReadSet(Input& input) {
    CSPositions pool;
    input.ReadScale();
    int const count = 1 + input.Below(320);
    int const drawn = input.Below(4) == 0 ? count : 0;
    unsigned seed = drawn ? static_cast<unsigned>(1 + input.Below(65536)) : 0;
    int const grid = 2 + input.Below(64);
    for (int i = 0; i < count; ++i)
        if (i < drawn) {
            seed = seed * 1664525u + 1013904223u;
            pool.AddPosition({static_cast<double>(seed >> 8) / 65536 / grid,
                              static_cast<double>(seed % 4099 % static_cast<unsigned>(grid))});
        } else {
            double const x = input.Coordinate();
            pool.AddPosition({x, input.Coordinate()});
        }
    CrossSections set(pool, false);
    auto& section = set.GetItems()[0];
    if (input.Below(4) == 0) // the outline runs through a stretch of the pool
        for (int i = input.Below(count), end = input.Below(count); i < end; ++i)
            section.GetExteriorLoop().AddVertex(i, true);
    for (int loops = 0; loops < 40 && !input.IsAtEnd(); ++loops) {
        auto& loop = loops == 0 ? section.GetExteriorLoop() : section.AddInteriorLoop();
        for (int corners = input.Below(96); corners > 0; --corners) {
            int const index = input.Below(count + 2) - 1; // the two in this order
            loop.AddVertex(index, input.Below(16) != 0);
        }
    }
    return set;
}

/// Bytes behind the word are the seed of a shape; without the word they are the points and loops. Three shapes have
/// names of their own: rings of over 4,096 vertices, which get boxes of boxes, in the order of the ring and not,
/// and holes among the smallest numbers there are.
CrossSections SetOf(std::string const& bytes) {
    shapes::Random fixed(3);
    if (bytes == "large star")
        return shapes::MakeSet(shapes::StarWithHoles(fixed, 4100, 8));
    if (bytes == "large leaning comb")
        return shapes::MakeSet(shapes::LeaningComb(2100));
    if (bytes == "subnormal holes")
        return shapes::MakeSet(SubnormalHoles());
    std::string const word = "shape";
    if (bytes.compare(0, word.size(), word) != 0) {
        Input input(bytes);
        return ReadSet(input);
    }
    shapes::Random random(SeedIn(bytes.substr(word.size())));
    auto shape = MakeShape(random);
    if (shapes::Below(random, 2))
        Distort(random, shape);
    return shapes::MakeSet(shape);
}

/// The convex loops of a section, and the place of least x in each once all positions have been mirrored: the old
/// one where a loop remembers it.
std::string LoopsAndRememberedPlaces(CrossSection& section, CSPositions& pool) {
    auto text = Text(section.ConvexLoops());
    pool.Transform({-1, 0, 0, 0, 1, 0, 0, 0, 1});
    for (auto& loop : section.GetConvexLoops())
        text += std::to_string(loop.LeftMostVertex()) + ' ';
    return text;
}

/// Single steps give what cutting at once gives.
void CheckSteps(CrossSection const& section, CSPositions const& positions) {
    auto pool = positions, steppedPool = positions;
    Copy whole(pool, section), stepped(steppedPool, section);
    stepped.BuildByHand();
    Require(LoopsAndRememberedPlaces(whole, pool) == LoopsAndRememberedPlaces(stepped, steppedPool),
            "cutting step by step is like cutting at once");
}

} // namespace

std::string RunCutting(std::string const& bytes) {
    auto set = SetOf(bytes);
    auto const before = Text(set);
    auto twin = plain::CutterOf(set.Items()[0]);
    // Each step puts the whole ring in order anew, which takes long for the largest.
    if (!twin.loops[0].empty() && twin.loops[0].size() < 1000)
        CheckSteps(set.Items()[0], set.Positions());
    twin.Run();
    auto const cut = CutText(set);
    Require(cut == plain::CutText(twin), "cutting as the twin does");
    set.ResetConvexLoops();
    Require(Text(set) == before, "a reset takes back all that cutting has added");
    Require(CutText(set) == cut, "a second cut is like the first");
    return cut;
}

} // namespace fuzz
