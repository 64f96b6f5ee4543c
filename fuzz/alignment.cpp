#include "sectrix/interfaces/dom.h"
#include "support/drafts.h"
#include "support/plain_alignment.h"
#include "support/result.h"
#include "support/shapes.h"
#include "target.h"

#include <algorithm>

using namespace qel;
using namespace qel::Sectrix;
using shapes::Draft;
using shapes::Ring;

namespace fuzz {

namespace {

/// Two sets to compare and to blend, and what else they are asked.
struct Question {
    CrossSections m_first, m_second;
    double m_ratio;
    std::size_t m_place;
};

/// Rings with holes in them; the corners of a ring are as many as lie on both sides of the number from which names
/// are sorted. Names: none, all different, few letters, the same in all sections, only in holes, one in a ring, the
/// same in exterior loops only.
Draft MakeDraft(shapes::Random& random) {
    int const naming = shapes::Below(random, 7), counts[] = {1, 2, 3, 31, 32, 40},
              count = counts[shapes::Below(random, 6)];
    int const sizes[] = {3, 4, 5, 0, 47, 48, 60}, size = sizes[shapes::Below(random, count > 3 ? 3 : 7)];
    int const holeCounts[] = {0, 1, 2, 3, 31, 32, 36};
    int const holes = holeCounts[shapes::Below(random, size > 5 ? 2 : count > 3 ? 4 : 7)];
    Draft draft(std::size_t(count), std::vector<Ring>(std::size_t(holes + 1)));
    for (int s = 0; s < count; ++s)
        for (int r = 0; r <= holes; ++r) {
            double const x = r ? shapes::Below(random, 9) - 4 : 0, y = r ? r % 7 - 3 : 0, radius = r ? 0.4 : 10;
            int const corners = r == 0 ? size : 3 + (naming == 6 ? shapes::Below(random, 3) : 0);
            for (auto const& corner : shapes::Star(random, std::size_t(corners), x, y, radius - 0.3, radius)) {
                auto& ring = draft[std::size_t(s)][std::size_t(r)];
                auto const place = std::to_string(r) + "." + std::to_string(ring.size());
                auto const own = std::to_string(s % 35) + ":" + place;
                auto const letter = std::string("ABC").substr(std::size_t(shapes::Below(random, 4)), 1);
                std::string const names[] = {
                    "", own, letter, place, r > 0 ? own : "", ring.empty() ? own : "", r == 0 ? place : ""};
                ring.push_back({names[naming], {corner.x, corner.y}});
            }
        }
    return draft;
}

/// Turns rings and reorders holes and sections, and at times spoils a corner.
Draft Twist(shapes::Random& random, Draft draft, bool isReordered) {
    for (std::size_t s = 0; s < draft.size() && isReordered; ++s) {
        for (auto& ring : draft[s])
            if (!ring.empty())
                std::rotate(ring.begin(), ring.begin() + shapes::Below(random, int(ring.size())), ring.end());
        for (std::size_t i = 2; i < draft[s].size(); ++i)
            std::swap(draft[s][i], draft[s][std::size_t(1 + shapes::Below(random, int(i)))]);
        std::swap(draft[s], draft[std::size_t(shapes::Below(random, int(s) + 1))]);
    }
    for (int spoils = shapes::Below(random, 5) - 2; spoils > 0; --spoils) {
        auto& section = draft[std::size_t(shapes::Below(random, int(draft.size())))];
        auto& ring = section[std::size_t(shapes::Below(random, int(section.size())))];
        std::string const names[] = {shapes::kNoPosition, shapes::kPositionBefore, "",
                                     ring.empty() ? "" : ring[0].name};
        int const kind = shapes::Below(random, 6);
        if (kind < 4 && !ring.empty())
            ring[std::size_t(shapes::Below(random, int(ring.size())))].name = names[kind];
        else if (!ring.empty())
            ring.erase(ring.begin() + shapes::Below(random, int(ring.size())));
    }
    return draft;
}

/// A draft and its twist, at times with holes over a pool without names, which are compared by their indices.
Question DraftedQuestion(std::uint64_t seed) {
    static CSPositions const unnamed = shapes::MakeSet(Draft{}).Positions();
    shapes::Random random(seed);
    auto const draft = MakeDraft(random);
    auto strays = shapes::Below(random, 4) == 0 ? random() : 0;
    auto const make = [&](Draft const& from) {
        auto set = shapes::MakeSet(from);
        for (auto& section : set.GetItems())
            if (strays != 0) {
                auto const& pool = strays % 2 ? unnamed : set.Positions();
                section.GetInteriorLoops().emplace_back(pool, false).AddVertex(1, true);
                strays = strays / 2 + (strays % 2 << 63);
            }
        return set;
    };
    auto first = make(Twist(random, draft, false));
    auto second = make(Twist(random, draft, shapes::Below(random, 4) != 0));
    return {std::move(first), std::move(second), shapes::Below(random, 9) / 4.0 - 0.5,
            static_cast<std::size_t>(shapes::Below(random, 50))};
}

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

/// Some of the parameters a to d. \param choice  which, and how great.
void AddParameters(CrossSections& set, std::size_t choice) {
    Dom document;
    for (std::size_t i = choice % 3; i < 3 + choice % 2; ++i)
        document["Params"][std::string(1, "abcd"[i])] = Dom(static_cast<double>(choice + i) / 3.0);
    set.From(document);
}

/// Bytes behind the word are the seed of a draft; without the word they are the sets themselves.
Question QuestionOf(std::string const& bytes) {
    std::string const word = "shape";
    if (bytes.compare(0, word.size(), word) == 0)
        return DraftedQuestion(SeedIn(bytes.substr(word.size())));
    Input input(bytes);
    double const ratio = input.Below(9) / 4.0 - 0.5;
    auto first = ReadSet(input, nullptr);
    auto second = ReadSet(input, &first);
    return {std::move(first), std::move(second), ratio, static_cast<std::size_t>(input.Below(50))};
}

void CheckLoops(Loop const& loop, Loop const& other) {
    bool isGood = false;
    bool isPlainGood = false;
    Require(loop.GetOtherShift(other, isGood) == plain::Shift(loop, other, isPlainGood), "shift");
    Require(isGood == isPlainGood, "whether the shift is good");
    Require(loop.IsCompatible(other) == plain::IsCompatible(loop, other), "compatible loops");
}

void CheckPartners(Question const& question) {
    auto const& section = question.m_first.Items()[0];
    bool found = false;
    for (bool const convex : {false, true}) {
        auto const& partner = question.m_second.GetCompatibleSection(section, question.m_place, convex, found);
        auto const* expected = plain::FindSection(question.m_second, section, question.m_place, convex);
        Require(found ? &partner == expected : !expected && &partner == &section, "the partner of a section");
    }
    for (auto const& loop : question.m_second.Items()[0].InteriorLoops()) {
        auto const& partner = section.GetCompatibleInteriorLoop(loop, question.m_place % 3, found);
        auto const* expected = plain::FindLoop(section, loop, question.m_place % 3);
        Require(found ? &partner == expected : !expected && &partner == &loop, "the partner of a hole");
    }
}

} // namespace

std::string RunAlignment(std::string const& bytes) {
    auto question = QuestionOf(bytes);
    AddParameters(question.m_first, question.m_place);
    AddParameters(question.m_second, question.m_place / 3);
    auto const& [first, second, ratio, place] = question;
    if (!first.Items().empty() && !second.Items().empty())
        for (auto const* section : {&first.Items().front(), &second.Items().front(), &second.Items().back()})
            CheckLoops(first.Items()[0].ExteriorLoop(), section->ExteriorLoop());
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
    if (!first.Items().empty() && !second.Items().empty())
        CheckPartners(question);
    return text;
}

} // namespace fuzz
