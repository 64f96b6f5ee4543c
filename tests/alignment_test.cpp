#include "plain_alignment.h"
#include "shapes.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;
using shapes::Below;

namespace {

/// A bang for a name is a vertex without a position, a star the vertex before once more.
struct Corner {
    std::string name = {};
    Vec<2, double> point = {};
};
using Ring = std::vector<Corner>;
/// Rings by section, the exterior one first.
using Draft = std::vector<std::vector<Ring>>;

/// The set has three unnamed positions more, in front.
CrossSections MakeSet(Draft const& draft) {
    CSPositions pool;
    for (int i = 0; i < 3; ++i)
        pool.AddPosition({});
    for (auto const& section : draft)
        for (auto const& ring : section)
            for (auto const& [name, point] : ring)
                pool.AddPosition(name == "!" || name == "*" ? "" : name, point);
    CrossSections set(pool, false);
    auto& items = set.GetItems();
    items.assign(draft.size(), CrossSection(items[0]));
    int index = 3;
    for (std::size_t i = 0; i < draft.size(); ++i)
        for (auto const& ring : draft[i]) {
            auto& loop = &ring == &draft[i][0] ? items[i].GetExteriorLoop() : items[i].AddInteriorLoop();
            for (auto const& [name, point] : ring) {
                loop.AddVertex(name == "!" ? pool.Count() * (index % 2) - 1 + index % 2 : index - (name == "*"),
                               index % 9 != 0);
                ++index;
            }
        }
    return set;
}

/// Rings with holes in them; rings, holes and sections are as many as lie on both sides of each threshold. Names:
/// none, all different, few letters, the same in all sections, only in holes, one in a ring, the same in exterior
/// loops only.
Draft MakeDraft(shapes::Random& random) {
    int const naming = Below(random, 7), counts[] = {1, 2, 3, 31, 32, 40}, count = counts[Below(random, 6)];
    int const sizes[] = {3, 4, 5, 0, 47, 48, 60}, size = sizes[Below(random, count > 3 ? 3 : 7)];
    int const holeCounts[] = {0, 1, 2, 3, 31, 32, 36};
    int const holes = holeCounts[Below(random, size > 5 ? 2 : count > 3 ? 4 : 7)];
    Draft draft(std::size_t(count), std::vector<Ring>(std::size_t(holes + 1)));
    for (int s = 0; s < count; ++s)
        for (int r = 0; r <= holes; ++r) {
            double const x = r ? Below(random, 9) - 4 : 0, y = r ? r % 7 - 3 : 0, radius = r ? 0.4 : 10;
            int const corners = r == 0 ? size : 3 + (naming == 6 ? Below(random, 3) : 0);
            for (auto const& corner : shapes::Star(random, std::size_t(corners), x, y, radius - 0.3, radius)) {
                auto& ring = draft[std::size_t(s)][std::size_t(r)];
                auto const place = std::to_string(r) + "." + std::to_string(ring.size());
                auto const own = std::to_string(s % 35) + ":" + place;
                auto const letter = std::string("ABC").substr(std::size_t(Below(random, 4)), 1);
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
                std::rotate(ring.begin(), ring.begin() + Below(random, int(ring.size())), ring.end());
        for (std::size_t i = 2; i < draft[s].size(); ++i)
            std::swap(draft[s][i], draft[s][std::size_t(1 + Below(random, int(i)))]);
        std::swap(draft[s], draft[std::size_t(Below(random, int(s) + 1))]);
    }
    for (int spoils = Below(random, 5) - 2; spoils > 0; --spoils) {
        auto& section = draft[std::size_t(Below(random, int(draft.size())))];
        auto& ring = section[std::size_t(Below(random, int(section.size())))];
        std::string const names[] = {"!", "*", "", ring.empty() ? "" : ring[0].name};
        int const kind = Below(random, 6);
        if (kind < 4 && !ring.empty())
            ring[std::size_t(Below(random, int(ring.size())))].name = names[kind];
        else if (!ring.empty())
            ring.erase(ring.begin() + Below(random, int(ring.size())));
    }
    return draft;
}

/// All of a set and, without building any, what building convex loops has added.
std::string Text(CrossSections const& set) {
    auto text = SetText(set);
    for (auto const& section : set.Items())
        for (int index : section.AddedVertices())
            text += std::to_string(&section - &set.Items()[0]) + " added " + std::to_string(index) + '\n';
    return text;
}

void ExpectSameLoops(Loop const& loop, Loop const& other) {
    bool ok = false, twinOk = false;
    ASSERT_EQ(loop.GetOtherShift(other, ok), plain::Shift(loop, other, twinOk));
    ASSERT_EQ(ok, twinOk);
    ASSERT_EQ(loop.IsCompatible(other), plain::IsCompatible(loop, other));
}

TEST(Alignment, AnswersAsTheTwinDoes) {
    shapes::Random random(3);
    int answers[2][2] = {};
    CSPositions const unnamed = MakeSet({}).Positions();
    for (int round = 0; round < 800 && !HasFatalFailure(); ++round) {
        SCOPED_TRACE(round);
        auto const draft = MakeDraft(random);
        auto const firstDraft = Twist(random, draft, false), secondDraft = Twist(random, draft, round % 4 != 0);
        auto const strays = Below(random, 4) == 0 ? random() : 0;
        auto const make = [&](Draft const& from, std::uint64_t bits) {
            auto set = MakeSet(from);
            for (auto& section : set.GetItems()) { // holes that are compared by their indices
                if (strays)
                    section.GetInteriorLoops()
                        .emplace_back(bits % 2 ? unnamed : set.Positions(), false)
                        .AddVertex(1, true);
                bits = bits / 2 + (bits % 2 << 63);
            }
            return set;
        };
        auto const first = make(firstDraft, strays), second = make(secondDraft, strays >> 7);
        auto const twinFirst = make(firstDraft, strays), twinSecond = make(secondDraft, strays >> 7);
        auto const expectSameSources = [&] {
            ASSERT_EQ(Text(first) + Text(second), Text(twinFirst) + Text(twinSecond));
        };
        auto const& section = first.Items()[0];
        ExpectSameLoops(section.ExteriorLoop(), second.Items()[0].ExteriorLoop());
        for (bool const convex : {false, true}) {
            bool const answer = plain::IsCompatible(twinFirst, twinSecond, convex);
            ++answers[convex][answer];
            ASSERT_EQ(first.IsCompatible(second, convex), answer);
            expectSameSources();
            double const ratio = Below(random, 9) / 4.0 - 0.5;
            ASSERT_EQ(Text(CrossSections(first, second, ratio, convex)),
                      plain::BlendText(twinFirst, twinSecond, ratio, convex));
            expectSameSources();
            auto const place = std::size_t(Below(random, 50));
            bool found = false;
            auto const& partner = second.GetCompatibleSection(section, place, convex, found);
            auto const* expected = plain::FindSection(second, section, place, convex);
            ASSERT_TRUE(found ? &partner == expected : !expected && &partner == &section);
        }
        for (auto const& loop : second.Items()[0].InteriorLoops()) {
            bool found = false;
            auto const& partner = section.GetCompatibleInteriorLoop(loop, std::size_t(round % 3), found);
            auto const* expected = plain::FindLoop(section, loop, std::size_t(round % 3));
            ASSERT_TRUE(found ? &partner == expected : !expected && &partner == &loop);
        }
    }
    for (int const count : {answers[0][0], answers[0][1], answers[1][0], answers[1][1]})
        EXPECT_GT(count, 90) << "the twin says yes and no";
}

/// A letter is a name, a dot none; x counts the corners.
CrossSections MakeLoopSet(std::string const& letters) {
    Draft draft{{{}}, {{{"unused", {}}}}};
    for (char const letter : letters)
        draft[0][0].push_back({letter == '.' ? "" : std::string(1, letter), {double(draft[0][0].size()), 0}});
    return MakeSet(draft);
}

TEST(Alignment, OfTwoLoops) {
    auto const cases = FileDom("alignment/loops.json");
    for (std::size_t i = 0; i < cases.size(); ++i) {
        auto const& test = cases[i];
        SCOPED_TRACE(test[0].asString("") + " against " + test[1].asString(""));
        auto const first = MakeLoopSet(test[0].asString("")), second = MakeLoopSet(test[1].asString(""));
        auto const &loop = first.Items()[0].ExteriorLoop(), &other = second.Items()[0].ExteriorLoop();
        bool ok = false;
        EXPECT_EQ(loop.GetOtherShift(other, ok), test[2].asInt(9));
        EXPECT_EQ(ok, test[3].asBool(!ok));
        EXPECT_EQ(loop.IsCompatible(other), test[4].asBool(false));
        ExpectSameLoops(loop, other);
        auto pool = first.Positions();
        Loop const blend(loop, other, pool, loop.Positions(), other.Positions(), 1);
        std::ostringstream partners; // at ratio 1 a vertex goes where its partner is
        for (auto const& vertex : blend.Vertices())
            partners << pool.GetPosition(std::uint64_t(vertex.Index()), ok).Position()[0];
        EXPECT_EQ(partners.str(), test[5].asString(""));
    }
}

/// Sizes that a walk for each name or each section would take minutes for.
TEST(Alignment, OfMany) {
    Draft draft(1, {Ring(50000)});
    for (auto& corner : draft[0][0])
        corner.name = "corner " + std::to_string(&corner - &draft[0][0][0]);
    auto const set = MakeSet(draft);
    std::rotate(draft[0][0].begin(), draft[0][0].begin() + 12345, draft[0][0].end());
    bool ok = false;
    EXPECT_EQ(set.Items()[0].ExteriorLoop().GetOtherShift(MakeSet(draft).Items()[0].ExteriorLoop(), ok), 12345);
    EXPECT_TRUE(ok);
    for (auto& corner : draft[0][0])
        corner.name = "one name";
    EXPECT_FALSE(MakeSet(draft).IsCompatible(MakeSet(draft), false));
    for (int const holes : {0, 1, 3}) { // named in the last loop; the others are alike
        draft.assign(5000, std::vector<Ring>(std::size_t(1 + holes), Ring(4)));
        for (auto& section : draft)
            section.back()[2].name = std::to_string(&section - &draft[0]);
        auto const first = MakeSet(draft);
        std::reverse(draft.begin(), draft.end());
        EXPECT_EQ(SetText(CrossSections(first, MakeSet(draft), 0.5, false)), SetText(first)) << holes;
        EXPECT_TRUE(first.IsCompatible(MakeSet(draft), false)) << holes;
        draft[0].back()[2].name = "new";
        EXPECT_FALSE(first.IsCompatible(MakeSet(draft), false)) << holes;
    }
}

CrossSections Read(Dom const& document) {
    CrossSections set;
    set.From(document);
    return set;
}

TEST(Blending, OfTwoDocuments) {
    auto const cases = FileDom("alignment/blends.json");
    for (std::size_t i = 0; i < cases.size(); ++i) {
        auto const& test = cases[i];
        SCOPED_TRACE(test["case"].asString(""));
        auto first = Read(test["first"]);
        auto const second = Read(test["second"]);
        for (std::size_t j = 0; j < 2 * test["blends"].size(); ++j) { // in the second round the first is cut
            auto const& blend = test["blends"][j / 2];
            auto const text = SetText(CrossSections(first, second, blend[0].asDouble(-1), false));
            EXPECT_EQ(text, SetText(Read(blend[1]))) << blend[0].asDouble(-1);
            for (auto const& section : first.Items()) {
                section.ConvexLoops();
                EXPECT_EQ(section.AddedVertices().size(), std::size_t(test["added"].asInt(0)));
            }
        }
        EXPECT_EQ(SetText(CrossSections(first, first, 0.25, true)), SetText(Read(test["first"]))) << "with itself";
        first.ResetConvexLoops();
        EXPECT_EQ(SetText(first), SetText(Read(test["first"])));
    }
}

TEST(Blending, StepByStep) {
    // The exterior loops need not match, an interior loop without a partner is left out, and so is what is not in
    // the pool; the list of added vertices is taken over.
    auto const first = MakeSet({{{{"A"}, {}, {}}, {{"B"}, {}}, {{"C"}, {}}}});
    auto const second = MakeSet({{{{"Z"}, {}}, {{}, {"C"}}, {{"X"}, {}}}});
    first.Items()[0].ConvexLoops();
    auto pool = first.Positions();
    CrossSection const section(first.Items()[0], second.Items()[0], pool, pool, pool, NAN);
    EXPECT_EQ(SectionText(section), ": 3 4 | 8 9'");
    EXPECT_EQ(section.AddedVertices(), first.Items()[0].AddedVertices());
    EXPECT_EQ(&section.InteriorLoops()[0].Positions(), &pool);
    bool found = false;
    EXPECT_TRUE(std::isnan(pool.GetPosition("A", found).Position()[0]));
    auto small = MakeLoopSet(".").Positions();
    EXPECT_EQ(SectionText({first.Items()[0], first.Items()[0], small, pool, pool, 0}), ": 3 4 |  | ");

    CrossSections const scaled(8.0);
    CrossSections blend(scaled, scaled, 0, false);
    blend.From(FileDom("alignment/blends.json")[0]["first"]);
    EXPECT_EQ(blend.BBox().m_max[0], 10) << "the scale is 1";
}

/// The partner of a name is what the index leads to, be it stale, and the index of the result is made anew.
TEST(Blending, OfPools) {
    CSPositions first, second, pool;
    bool found = false;
    for (auto const& [name, x] : {std::pair{"A", 1.0}, {"C", 3.0}, {"", 5.0}, {"B", 7.0}})
        first.AddPosition(name, {x, x});
    for (auto const& [name, x] : {std::pair{"B", 9.0}, {"A", 11.0}, {"C", 13.0}})
        second.AddPosition(name, {x, x});
    auto renamed = second, removed = second;
    renamed.GetPosition(0u, found).Name() = "C";
    renamed.GetPosition(2u, found).Name() = "B";
    removed.RemovePosition(0);
    for (auto const& [other, a, b, c] :
         {std::tuple{&second, 6, 8, 8}, {&renamed, 6, 7, 3}, {&removed, 1, 7, 3}, {&pool, 1, 7, 3}}) {
        pool.SetPositions(first, *other, 0.5); // the last time, into itself what was blended
        for (auto const& [name, x] : {std::pair{"A", a}, {"B", b}, {"C", c}})
            EXPECT_EQ(pool.GetPosition(name, found).Position()[0], x) << name;
    }
    EXPECT_EQ(pool.Count(), 16);
    CSPositions indexed;
    indexed.SetPositions(removed, second, 0);
    for (auto const* name : {"A", "C"})
        EXPECT_EQ(indexed.GetPosition(name, found).Name(), name);
    first.SetPositions(first, first, 0.5);
    EXPECT_EQ(first.Count(), 8);
}

/// In large sets with names, sections and loops over pools without names are compared by their indices.
TEST(Alignment, OverOtherPools) {
    auto const unnamed = MakeSet({}).Positions();
    auto const makeHoles = [&](CSPositions const* pool, int start, int step) {
        auto set = MakeLoopSet("A");
        for (int i = start; i >= 9 && i < 45; i += step)
            set.GetItems()[0]
                .GetInteriorLoops()
                .emplace_back(pool ? *pool : set.Positions(), false)
                .AddVertex(i, true);
        return set;
    };
    EXPECT_TRUE(makeHoles(&unnamed, 9, 1).Items()[0].IsCompatible(makeHoles(nullptr, 44, -1).Items()[0], false));

    CSPositions named, other = unnamed;
    for (auto const* name : {"A", "B", "C"})
        named.AddPosition(name, {});
    CrossSections first(named, true), second(named, false);
    first.GetItems().resize(40, CrossSection(first.Items()[0]));
    second.GetItems().resize(39, CrossSection(second.Items()[0]));
    second.GetItems().emplace(second.GetItems().begin(), other, true);
    EXPECT_TRUE(first.IsCompatible(second, false)) << "without a look at the numbers of names";
}

} // namespace
