#include "support/drafts.h"
#include "support/plain_alignment.h"
#include "support/test_data.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;
using shapes::Draft;
using shapes::MakeSet;
using shapes::Ring;

namespace {

void ExpectAnswersOfTwin(Loop const& loop, Loop const& other) {
    bool ok = false, twinOk = false;
    ASSERT_EQ(loop.GetOtherShift(other, ok), plain::Shift(loop, other, twinOk));
    ASSERT_EQ(ok, twinOk);
    ASSERT_EQ(loop.IsCompatible(other), plain::IsCompatible(loop, other));
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
        ExpectAnswersOfTwin(loop, other);
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

/// The hole of the second lines up with that of the first. But the other way round, which is what a blend goes by,
/// the walk ends at the vertex without a position, before the name has fixed a shift.
TEST(Blending, OfAHoleThatBeginsWithoutAPosition) {
    auto const first = MakeSet(Draft{{{{"A", {}}}, {{shapes::kNoPosition, {}}, {"P", {1, 0}}, {}}}});
    auto const second = MakeSet(Draft{{{{"A", {}}}, {{"P", {2, 0}}, {"", {3, 0}}, {"", {4, 0}}}}});
    CrossSections const blend(first, second, 1, false);
    bool found = false;
    EXPECT_EQ(SectionText(blend.Items()[0]), ": 3 | 5 6");
    EXPECT_EQ(blend.Positions().GetPosition("P", found).Position()[0], 3);
    EXPECT_EQ(SetText(blend), plain::BlendText(first, second, 1, false));
}

TEST(Blending, OfSectionsWithoutPartners) {
    // The exterior loops need not match, an interior loop without a partner is left out, and so is what is not in
    // the pool; the list of added vertices is taken over.
    auto const first = MakeSet(Draft{{{{"A"}, {}, {}}, {{"B"}, {}}, {{"C"}, {}}}});
    auto const second = MakeSet(Draft{{{{"Z"}, {}}, {{}, {"C"}}, {{"X"}, {}}}});
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
}

/// Building the second section makes the index 5 valid, and so the first its own partner, after it was compared.
TEST(Blending, AsksAgainAfterConvexLoopsWereBuilt) {
    CSPositions pool;
    pool.AddPosition("A", {});
    for (auto const& [x, y] : {std::pair{1.0, 1.0}, {0.0, 0.0}, {0.0, 8.0}, {4.0, 4.0}})
        pool.AddPosition({x, y});
    CrossSections set(pool, false);
    set.GetItems().emplace_back(set.Items()[0]);
    auto const fill = [](Loop& loop, std::initializer_list<int> indices) {
        for (int const index : indices)
            loop.AddVertex(index, true);
    };
    fill(set.GetItems()[0].GetExteriorLoop(), {1, 1, 1, 1, 1, 5});
    fill(set.GetItems()[1].GetExteriorLoop(), {2, 3});
    fill(set.GetItems()[1].AddInteriorLoop(), {4});
    auto const twin = set;
    CrossSections const blend(set, set, 0.5, true);
    EXPECT_EQ(SectionText(blend.Items()[0]), ": 1 1 1 1 1 5");
    EXPECT_EQ(SetText(blend), plain::BlendText(twin, twin, 0.5, true));
}

TEST(Blending, MakesAScaleOfOne) {
    CrossSections const scaled(8.0);
    CrossSections blend(scaled, scaled, 0, false);
    blend.From(FileDom("alignment/blends.json")[0]["first"]);
    EXPECT_EQ(blend.BBox().m_max[0], 10);
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
    CSPositions reindexed;
    reindexed.SetPositions(renamed, second, 0);
    EXPECT_EQ(reindexed.GetPosition("C", found).Position()[0], 9) << "the name that was given to the first";
    first.SetPositions(first, first, 0.5);
    EXPECT_EQ(first.Count(), 8);
}

/// In large sets with names, sections and loops over pools without names are compared by their indices.
TEST(Alignment, OverOtherPools) {
    auto const unnamed = MakeSet(Draft{}).Positions();
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
