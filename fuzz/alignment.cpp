#include "../tests/plain_alignment.h"
#include "result.h"
#include "target.h"

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// A pool with few names, and sections with loops of any indices, one behind the end and -1 among them.
/// \param like  where not null, the set to begin as a copy of.
CrossSections ReadSet(Input& input, CrossSections const* like) {
    if (like && input.Below(4)) { // a copy with a few changes
        CrossSections set = *like;
        for (int edits = input.Below(6); edits > 0 && !set.Items().empty(); --edits) {
            auto& section =
                set.GetItems()[static_cast<std::size_t>(input.Below(static_cast<int>(set.Items().size())))];
            auto& holes = section.GetInteriorLoops();
            auto& loop = holes.empty() || input.Below(2)
                             ? section.GetExteriorLoop()
                             : holes[static_cast<std::size_t>(input.Below(static_cast<int>(holes.size())))];
            int const count = static_cast<int>(loop.Vertices().size());
            switch (input.Below(5)) {
            case 0: {
                Loop const turned = loop;
                if (count > 0) {
                    int const start = input.Below(count);
                    while (!loop.Vertices().empty())
                        loop.RemoveVertex(0);
                    loop.Add(turned, -1, start, start);
                }
                break;
            }
            case 1: {
                int const index = input.Below(256) - 1;
                loop.InsertVertex(index, input.Below(count + 1));
                break;
            }
            case 2:
                loop.RemoveVertex(input.Below(count + 1));
                break;
            case 3:
                section.GetInteriorLoops().emplace_back(loop);
                break;
            default:
                std::swap(loop, section.GetExteriorLoop());
            }
        }
        return set;
    }
    CSPositions pool;
    input.ReadScale();
    int const letters = 1 + input.Below(256);
    for (int count = input.Below(160); count > 0; --count) {
        int const letter = input.Below(letters);
        double const x = input.Coordinate();
        pool.AddPosition(letter ? std::string(1, static_cast<char>(letter)) : "", {x, input.Coordinate()});
    }
    CrossSections set(pool, false);
    int const sections = input.Below(40);
    set.GetItems().assign(static_cast<std::size_t>(sections), CrossSection(set.Items()[0]));
    for (auto& section : set.GetItems())
        for (int loops = input.Below(40); loops >= 0 && !input.IsAtEnd(); --loops) {
            auto& loop =
                section.ExteriorLoop().Vertices().empty() ? section.GetExteriorLoop() : section.AddInteriorLoop();
            for (int corners = input.Below(70); corners > 0; --corners) {
                int const index = input.Below(pool.Count() + 2) - 1; // the two in this order
                loop.AddVertex(index, input.Below(16) != 0);
            }
        }
    return set;
}

/// All of a set, and what building has added.
std::string WholeText(CrossSections const& set) {
    auto text = Text(set);
    for (auto const& section : set.Items())
        for (int index : section.AddedVertices())
            text += std::to_string(index) + ' ';
    return text;
}

void CheckLoops(Loop const& loop, Loop const& other) {
    bool isGood = false;
    bool isPlainGood = false;
    Require(loop.GetOtherShift(other, isGood) == plain::Shift(loop, other, isPlainGood), "shift");
    Require(isGood == isPlainGood, "whether the shift is good");
    Require(loop.IsCompatible(other) == plain::IsCompatible(loop, other), "compatible loops");
}

} // namespace

std::string RunAlignment(std::string const& bytes) {
    Input input(bytes);
    double const ratio = input.Below(9) / 4.0 - 0.5;
    auto const first = ReadSet(input, nullptr);
    auto const second = ReadSet(input, &first);
    if (!first.Items().empty() && !second.Items().empty())
        CheckLoops(first.Items()[0].ExteriorLoop(), second.Items().back().ExteriorLoop());
    std::string text;
    for (bool const convex : {false, true}) {
        CrossSections const ours[] = {first, second}, twins[] = {first, second};
        bool const isSame = ours[0].IsCompatible(ours[1], convex);
        Require(isSame == plain::IsCompatible(twins[0], twins[1], convex), "compatible sets");
        Require(WholeText(ours[0]) == WholeText(twins[0]) && WholeText(ours[1]) == WholeText(twins[1]),
                "what comparing builds");
        CrossSections const blend(ours[0], ours[1], ratio, convex);
        auto const blended = WholeText(blend);
        if (!first.Items().empty())
            Require(sectrix_tests::SetText(blend) == plain::BlendText(twins[0], twins[1], ratio, convex),
                    "the blend");
        Require(WholeText(ours[0]) == WholeText(twins[0]) && WholeText(ours[1]) == WholeText(twins[1]),
                "what blending builds");
        text += (isSame ? "same\n" : "other\n") + blended;
    }
    return text;
}

} // namespace fuzz
