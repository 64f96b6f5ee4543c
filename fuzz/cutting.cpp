#include "../tests/plain_cutting.h"
#include "result.h"
#include "target.h"

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// Points, then loops of any indices, one behind the end and -1 among them. Beside the bytes of each point, long
/// stretches may be drawn from a formula, so that a short input reaches what large loops need.
plain::Cutter Read(Input& input) {
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

std::string Text(plain::Cutter const& twin) {
    std::string text = "cut\n";
    for (auto const& ring : twin.loops) {
        std::vector<Vertex> vertices;
        for (auto const& corner : ring)
            vertices.emplace_back(corner.index, corner.exterior);
        text += "loop " + fuzz::Text(vertices);
    }
    for (int index : twin.added)
        text += std::to_string(index) + ' ';
    text += '\n';
    for (auto const& point : twin.pool)
        text += Number(point.x) + Number(point.y) + " \n";
    return text + "0 names\n";
}

} // namespace

std::string RunCutting(std::string const& bytes) {
    Input input(bytes);
    auto twin = Read(input);
    auto set = MakeSet(twin);
    auto const before = fuzz::Text(set);
    auto const cut = CutText(set);
    twin.Run();
    Require(cut == Text(twin), "cutting as the twin does");
    set.ResetConvexLoops();
    Require(fuzz::Text(set) == before, "a reset takes back all that cutting has added");
    Require(CutText(set) == cut, "a second cut is like the first");
    return cut;
}

} // namespace fuzz
