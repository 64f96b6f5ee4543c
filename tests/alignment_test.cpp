#include "plain_alignment.h"
#include "section_text.h"
#include "shapes.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;
using shapes::Below;

namespace {

struct Corner {
    enum class Kind { Own, Repeated, Lost };
    std::string name;
    Vec<2, double> point;
    Kind kind = Kind::Own;
};
using Ring = std::vector<Corner>;
/// Rings by section, the exterior one first.
using Draft = std::vector<std::vector<Ring>>;

/// \param naming  0 no names, 1 all different, 2 few letters, 3 the same in all sections, 4 only in holes,
///                5 one in each ring, 6 only in exterior loops
std::string Name(shapes::Random& random, int naming, int section, int ring, int corner) {
    auto const place = std::to_string(ring) + "." + std::to_string(corner);
    bool const isNamed =
        naming == 1 || (naming == 4 && ring > 0) || (naming == 5 && corner == 0) || (naming == 6 && ring == 0);
    return isNamed       ? std::to_string(section) + ":" + place
           : naming == 2 ? std::string("ABC").substr(std::size_t(Below(random, 4)), 1)
           : naming == 3 ? place
                         : "";
}

/// Rings around the origin with holes in them, of sizes on both sides of every threshold.
Draft MakeDraft(shapes::Random& random) {
    int const naming = Below(random, 7);
    int const counts[] = {1, 2, 3, 31, 32, 40};
    int const count = counts[Below(random, 6)];
    int const holeCounts[] = {0, 1, 2, 3, 31, 32, 36};
    int const sizes[] = {3, 4, 5, 0, 47, 48, 60};
    int const size = sizes[Below(random, count > 3 ? 3 : 7)];
    int const holes = holeCounts[Below(random, size > 5 ? 2 : count > 3 ? 4 : 7)];
    Draft draft(static_cast<std::size_t>(count));
    for (int s = 0; s < count; ++s)
        for (int r = 0; r <= holes; ++r) {
            auto& ring = draft[std::size_t(s)].emplace_back();
            auto const star = r == 0 ? shapes::Star(random, std::size_t(size), 0, 0, 9, 10)
                                     : shapes::Star(random, 3, Below(random, 9) - 4, r % 7 - 3, 0.1, 0.4);
            for (auto const& point : star)
                ring.push_back({Name(random, naming, s % 35, r, int(ring.size())), {point.x, point.y}});
        }
    return draft;
}

/// Turns loops, shuffles holes and sections, and at times spoils a corner.
Draft Twist(shapes::Random& random, Draft draft, bool isReordered) {
    for (auto& section : draft)
        for (auto& ring : section)
            if (!ring.empty() && isReordered)
                std::rotate(ring.begin(), ring.begin() + Below(random, int(ring.size())), ring.end());
    for (auto& section : draft)
        for (std::size_t i = 2; i < section.size() && isReordered; ++i)
            std::swap(section[i], section[std::size_t(1 + Below(random, int(i)))]);
    for (std::size_t i = 1; i < draft.size() && isReordered; ++i)
        std::swap(draft[i], draft[std::size_t(Below(random, int(i) + 1))]);
    for (int spoils = std::max(0, Below(random, 5) - 2); spoils > 0; --spoils) {
        auto& section = draft[std::size_t(Below(random, int(draft.size())))];
        auto& ring = section[std::size_t(Below(random, int(section.size())))];
        if (ring.empty())
            continue;
        auto const place = std::size_t(Below(random, int(ring.size())));
        switch (Below(random, 6)) {
        case 0:
            ring[place].name = "";
            break;
        case 1:
            ring[place].name = ring.back().name;
            break;
        case 2:
            ring.erase(ring.begin() + std::ptrdiff_t(place));
            break;
        case 3:
            section.push_back(ring);
            break;
        default:
            ring[place].kind = Below(random, 2) ? Corner::Kind::Lost : Corner::Kind::Repeated;
        }
    }
    return draft;
}

CrossSections MakeSet(Draft const& draft) {
    CSPositions pool;
    for (auto const& section : draft)
        for (auto const& ring : section)
            for (auto const& corner : ring)
                pool.AddPosition(corner.name, corner.point);
    CrossSections set(pool, false);
    auto& items = set.GetItems();
    items.assign(draft.size(), CrossSection(items[0]));
    int index = 0;
    for (std::size_t i = 0; i < draft.size(); ++i)
        for (auto const& ring : draft[i]) {
            auto& loop = &ring == &draft[i][0] ? items[i].GetExteriorLoop() : items[i].AddInteriorLoop();
            for (auto const& corner : ring) {
                int const lost = index % 2 ? -1 : pool.Count() + 1;
                loop.AddVertex(corner.kind == Corner::Kind::Own    ? index
                               : corner.kind == Corner::Kind::Lost ? lost
                                                                   : std::max(0, index - 1),
                               index % 9 != 0);
                ++index;
            }
        }
    return set;
}

/// All of a set and, without building any, what building convex loops has added.
std::string Text(CrossSections const& set) {
    auto text = SetText(set);
    for (auto const& section : set.Items())
        for (int index : section.AddedVertices())
            text += std::to_string(&section - &set.Items()[0]) + " added " + std::to_string(index) + '\n';
    return text;
}

/// How often the twin said yes and no.
struct Tally {
    int counts[2] = {};
    bool operator()(bool answer) {
        ++counts[answer];
        return answer;
    }
};

void ExpectSameLoops(Loop const& loop, Loop const& other) {
    bool ok = false;
    bool plainOk = false;
    ASSERT_EQ(loop.GetOtherShift(other, ok), plain::Shift(loop, other, plainOk));
    ASSERT_EQ(ok, plainOk);
    ASSERT_EQ(loop.IsCompatible(other), plain::IsCompatible(loop, other));
}

/// Two sets and copies of them, so that library and twin each build convex loops in their own.
struct Pair {
    CrossSections first, second;
};

void ExpectSamePartners(Pair const& ours, Pair const& twins, std::size_t place, bool convex, Tally& tally) {
    auto const& section = ours.first.Items()[place % ours.first.Items().size()];
    auto const& twin = twins.first.Items()[place % ours.first.Items().size()];
    bool found = false;
    auto const* partner = &ours.second.GetCompatibleSection(section, place, convex, found);
    int const expected = plain::FindSection(twins.second, twin, place, convex);
    ASSERT_EQ(found, tally(expected >= 0));
    ASSERT_EQ(partner, found ? &ours.second.Items()[std::size_t(expected)] : &section);
    ASSERT_EQ(section.IsCompatible(ours.second.Items()[0], convex),
              tally(plain::IsCompatible(twin, twins.second.Items()[0], convex)));
    for (auto const& loop : ours.second.Items()[0].InteriorLoops()) {
        auto const* loopPartner = &section.GetCompatibleInteriorLoop(loop, place, found);
        int const loopExpected = plain::FindLoop(section, loop, place);
        ASSERT_EQ(found, loopExpected >= 0);
        ASSERT_EQ(loopPartner, found ? &section.InteriorLoops()[std::size_t(loopExpected)] : &loop);
    }
}

TEST(Alignment, AnswersAsTheTwinDoes) {
    shapes::Random random(3);
    Tally partners, sets[2];
    CSPositions foreign[2];
    for (auto const* name : {"0:1.0", "", ""})
        foreign[*name != 0].AddPosition(name, {});
    foreign[1].AddPosition({});
    for (int round = 0; round < 1500 && !::testing::Test::HasFatalFailure(); ++round) {
        SCOPED_TRACE(round);
        auto const draft = MakeDraft(random);
        auto const twisted = Twist(random, draft, Below(random, 4) != 0);
        auto const original = Twist(random, draft, false);
        Pair start{MakeSet(original), MakeSet(Below(random, 8) ? twisted : MakeDraft(random))};
        for (int strays = Below(random, 6) ? 0 : 3; strays > 0; --strays) { // loops and sections over other pools
            auto& items = (strays % 2 ? start.first : start.second).GetItems();
            auto& item = items[std::size_t(Below(random, int(items.size())))];
            if (Below(random, 3))
                item.GetInteriorLoops().emplace_back(foreign[Below(random, 2)], true);
            else
                items.emplace_back(foreign[Below(random, 2)], true);
        }
        ExpectSameLoops(start.first.Items()[0].ExteriorLoop(), start.second.Items()[0].ExteriorLoop());
        ExpectSameLoops(start.second.Items().back().ExteriorLoop(), start.first.Items()[0].ExteriorLoop());
        for (bool const convex : {false, true}) {
            Pair ours = start;
            Pair twins = start;
            if (Below(random, 3) == 0)
                ExpectSamePartners(ours, twins, std::size_t(Below(random, 50)), convex, partners);
            ASSERT_EQ(ours.first.IsCompatible(ours.second, convex),
                      sets[convex](plain::IsCompatible(twins.first, twins.second, convex)));
            ASSERT_EQ(Text(ours.first) + Text(ours.second), Text(twins.first) + Text(twins.second));
            double const ratio = Below(random, 9) / 4.0 - 0.5;
            CrossSections const blend(ours.first, ours.second, ratio, convex);
            ASSERT_EQ(Text(blend), Text(plain::Blender(twins.first, twins.second, ratio, convex).Set()));
            ASSERT_EQ(Text(ours.first) + Text(ours.second), Text(twins.first) + Text(twins.second));
        }
    }
    for (auto const& tally : {partners, sets[0], sets[1]})
        EXPECT_GT(std::min(tally.counts[0], tally.counts[1]), 200);
}

/// A letter is a name, a dot a position without one, a bang an index that is not in the pool.
struct Letters {
    explicit Letters(std::string const& letters) {
        for (char const letter : letters) {
            if (letter != '!')
                m_pool.AddPosition(letter == '.' ? "" : std::string(1, letter), {double(m_pool.Count()), 1});
            m_loop.AddVertex(letter == '!' ? -1 : m_pool.Count() - 1, true);
        }
        m_pool.AddPosition("unused", {});
    }
    CSPositions m_pool;
    Loop m_loop{m_pool, false};
};

TEST(Alignment, OfTwoLoops) {
    struct Case {
        char const *loop, *other;
        int shift;
        bool ok, isCompatible;
    };
    for (auto const& test : {
             Case{"PQRS", "RSPQ", 2, true, true},   Case{"PQRS", "SRQP", 1, false, false},
             Case{"P.Q.", "PQ..", 0, false, false}, Case{"P..", "..P", 1, true, true},
             Case{"...", "...", 0, true, true},     Case{"", "", 0, true, true},
             Case{"", "...", 0, true, false},       Case{"", "P", 0, false, false},
             Case{"...", "", 0, true, false},       Case{"!..", "", 0, false, false},
             Case{"PP", "PP", 0, false, false},     Case{".PQ", "RPS", 0, false, false},
             Case{".PQ", ".PR", 0, false, false},   Case{"!P", ".P", 0, false, false},
             Case{".P!", "P..", 1, false, false},   Case{".P.", "P!!", 1, true, true},
             Case{"P.", ".....P", -1, true, false}, Case{"P.Q", "P....Q", 0, true, false},
             Case{"....P", "P", 4, true, false},    Case{"PQ", "P.Q", 0, false, false},
         }) {
        SCOPED_TRACE(std::string(test.loop) + " against " + test.other);
        Letters const loop(test.loop);
        Letters const other(test.other);
        bool ok = false;
        EXPECT_EQ(loop.m_loop.GetOtherShift(other.m_loop, ok), test.shift);
        EXPECT_EQ(ok, test.ok);
        EXPECT_EQ(loop.m_loop.IsCompatible(other.m_loop), test.isCompatible);
        ExpectSameLoops(loop.m_loop, other.m_loop); // so the twin says no as well
    }
}

/// One letter a position: loops as large as hosts have them and larger, which a walk for each name does not finish.
TEST(Alignment, OfHugeLoops) {
    CSPositions pool;
    for (int i = 0; i < 100000; ++i)
        pool.AddPosition("name " + std::to_string(i), {});
    Loop const loop(pool, true);
    Loop turned(pool, false);
    turned.Add(loop, -1, 12345, -1);
    Loop once(pool, false);
    for (int i = 0; i < 100000; ++i)
        once.AddVertex(7, true);
    bool ok = false;
    EXPECT_EQ(loop.GetOtherShift(turned, ok), 12345);
    EXPECT_TRUE(ok);
    turned.InsertVertex(-1, 0);
    EXPECT_EQ(loop.GetOtherShift(turned, ok), 12344);
    EXPECT_TRUE(ok) << "a lost vertex of the other loop only moves the places";
    EXPECT_EQ(turned.GetOtherShift(loop, ok), 0);
    EXPECT_FALSE(ok);
    EXPECT_EQ(once.GetOtherShift(once, ok), 0);
    EXPECT_FALSE(ok);
}

/// Sets of sections with one name each: whatever the order, and with holes that are alike within a section.
TEST(Alignment, OfHugeSets) {
    for (int const holes : {0, 1, 3}) {
        Draft draft(5000);
        for (std::size_t i = 0; i < draft.size(); ++i) {
            draft[i].assign(std::size_t(1 + holes), Ring(4));
            draft[i].back()[2].name = std::to_string(i);
        }
        auto const first = MakeSet(draft);
        std::reverse(draft.begin(), draft.end());
        EXPECT_TRUE(first.IsCompatible(MakeSet(draft), false)) << holes;
        EXPECT_EQ(SetText(CrossSections(first, MakeSet(draft), 0.5, false)), SetText(first)) << holes;
        draft[0].back()[2].name = "new";
        EXPECT_FALSE(first.IsCompatible(MakeSet(draft), false)) << holes;
    }
}

/// \param corners  name, x and y each; a dot is no name.
CrossSections Read(std::string const& corners, std::string const& sections, std::string const& parameters = "{}") {
    std::istringstream words(corners);
    std::string json;
    std::string x, y;
    for (std::string name; words >> name >> x >> y;) {
        auto const point = "[" + x + "," + y + "]";
        json += (json.empty() ? "" : ",") +
                (name == "." ? point : R"({"name": ")" + name + R"(", "coordinates": )" + point + "}");
    }
    CrossSections set(0.5);
    std::istringstream stream(R"({"Outlines": [[)" + json + "],[" + sections + R"(]], "Params": )" + parameters +
                              "}");
    set.From(stream);
    return set;
}

std::string const web = R"({"assemblyPartName": "web", "loops": [[[0, 1, 2, 3], true]]})";

TEST(Blending, OfTwoDocuments) {
    auto const first = Read("P 0 0 Q 20 0 R 20 20 S 0 20 . 9 9", web, R"({"h": 1, "only first": 4})");
    auto const second = Read("R 40 40 S 0 40 P 0 0 Q 40 0 . 1 5", web, R"({"h": 3, "only second": 5})");
    auto const before = SetText(first) + SetText(second);
    struct Case {
        double ratio;
        char const *corners, *parameters;
    };
    for (auto const& test : {Case{0, "P 0 0 Q 20 0 R 20 20 S 0 20 . 9 9", R"({"h": 1})"},
                             Case{0.5, "P 0 0 Q 30 0 R 30 30 S 0 30 . 5 7", R"({"h": 2})"},
                             Case{1, "P 0 0 Q 40 0 R 40 40 S 0 40 . 1 5", R"({"h": 3})"},
                             Case{2, "P 0 0 Q 60 0 R 60 60 S 0 60 . -7 1", R"({"h": 5})"}}) {
        CrossSections blend(first, second, test.ratio, test.ratio > 0.5);
        EXPECT_EQ(SetText(blend), SetText(Read(test.corners, web, test.parameters))) << test.ratio;
        EXPECT_EQ(blend.BBox().m_max[0], blend.Positions().BBox().m_max[0]);
        std::istringstream more(R"({"Outlines": [[[8, 8]], []]})");
        blend.From(more);
        bool found = false;
        EXPECT_EQ(blend.Positions().GetPosition(std::uint64_t(5), found).Position()[0], 8) << "the scale is 1";
    }
    EXPECT_EQ(SetText(CrossSections(first, first, 0.25, true)), SetText(first));
    EXPECT_EQ(SetText(first) + SetText(second), before);
    bool found = false;
    CrossSections const lost(first, second, NAN, false);
    EXPECT_TRUE(std::isnan(lost.Positions().GetPosition("P", found).Position()[0]));
}

/// With other names, sections or counts there is nothing to blend with: a copy, without what cutting has added.
TEST(Blending, OfWhatDoesNotMatch) {
    auto const hollow = Read("P 0 0 . 9 0 . 9 9 . 0 9 . 3 4 . 4 6 . 6 4",
                             R"({"assemblyPartName": "web", "loops": [[[0, 1, 2, 3], true], [[4, 6, 5], false]]})");
    auto const second = Read("R 40 40 S 0 40 P 0 0 Q 40 0", web);
    CrossSections const first = hollow;
    auto const before = SetText(first);
    for (int round = 0; round < 2; ++round) { // not cut yet, then cut
        CrossSections const blend(first, second, 0.5, false);
        EXPECT_EQ(Text(blend), before);
        EXPECT_EQ(first.Items()[0].AddedVertices(), std::vector<int>{7});
    }
    CrossSections const alike(first, hollow, 0.5, true);
    EXPECT_EQ(Text(alike), before) << "cut before, and compatible";

    // Names on one side only: no partner in the pool, but the loops are paired place by place.
    auto const unnamed = Read(". 2 0 . 8 0 . 4 4", "[[[0, 1, 2], true]]");
    auto const named = Read("P 0 0 Q 4 0 R 4 4", "[[[0, 1, 2], true]]");
    EXPECT_EQ(CrossSections(named, unnamed, 0.5, false).Positions().BBox().m_max[0], 3);
}

TEST(Blending, StepByStep) {
    // A shift of 4, although not good, and a remainder that is never negative: 0 meets 2, 1 meets 0, 2 meets 1.
    Letters const five("ABC..");
    Letters const three("CAB");
    auto pool = five.m_pool;
    bool found = false;
    Loop const loop(five.m_loop, three.m_loop, pool, pool, pool, 0.5);
    EXPECT_EQ(LoopText(loop.Vertices()), "0 1 2");
    for (auto const& [name, x] : {std::pair{"A", 1.0}, {"B", 0.5}, {"C", 1.5}})
        EXPECT_EQ(pool.GetPosition(name, found).Position()[0], x) << name;
    CSPositions small;
    small.AddPosition("kept", {7, 7});
    EXPECT_EQ(LoopText(Loop(five.m_loop, three.m_loop, small, pool, pool, 1).Vertices()), "0");
    EXPECT_EQ(small.GetPosition("kept", found).Position()[0], 2);

    // A shift of -1 counts as 0.
    Letters const two("P.");
    Letters const six(".....P");
    auto twoPool = two.m_pool;
    Loop const shifted(two.m_loop, six.m_loop, twoPool, twoPool, twoPool, 1);
    EXPECT_EQ(twoPool.GetPosition("P", found).Position()[0], 0);

    // Exterior loops go without a test, interior ones in the order of the second, those without a partner not at
    // all.
    auto const sections = [](std::string const& name, std::string const& holes) {
        return Read("P 0 0 . 9 0 . 9 9 . 0 9 A 2 2 . 3 3 . 3 2 B 5 5 . 6 6 . 6 5",
                    R"({"assemblyPartName": ")" + name + R"(", "loops": [[[0, 1, 2, 3], true], )" + holes + "]}");
    };
    auto const first = sections("web", "[[4, 5, 6], false], [[7, 8, 9], false]");
    auto const second = sections("rib", "[[9, 7, 8], false], [[0, 2, 3], false], [[6, 4, 5], false]");
    first.Items()[0].ConvexLoops();
    auto sectionPool = first.Positions();
    CrossSection const section(first.Items()[0], second.Items()[0], sectionPool, sectionPool, sectionPool, 0.25);
    EXPECT_EQ(SectionText(section), ": 0 1 2 3 | 9 8 7 | 6 5 4");
    EXPECT_EQ(section.AddedVertices(), first.Items()[0].AddedVertices());
    EXPECT_EQ(section.AddedVertices().size(), 2u);
    EXPECT_EQ(&section.InteriorLoops()[1].Positions(), &sectionPool);
}

TEST(Blending, OfPools) {
    CSPositions first;
    first.AddPosition("A", {1, 1});
    first.AddPosition("A", {3, 3});
    first.AddPosition({5, 5});
    first.AddPosition("B", {7, 7});
    CSPositions second;
    second.AddPosition("B", {9, 9});
    second.AddPosition("A", {11, 11});
    second.AddPosition("C", {0, 0});
    CSPositions pool;
    pool.AddPosition("D", {});
    pool.SetPositions(first, second, 0.5);
    bool found = false;
    for (auto const& [index, x] : {std::pair{1, 6}, {2, 7}, {3, 5}, {4, 8}})
        EXPECT_EQ(pool.GetPosition(std::uint64_t(index), found).Position()[0], x) << index;
    EXPECT_EQ(pool.GetPosition("A", found).Position()[0], 7) << "the later one, as in the first";
    EXPECT_EQ(pool.NamedCount(), 3);

    second.GetPosition("B", found).Name() = "A"; // the index leads from B to what is A now
    second.GetPosition("A", found).Name() = "B";
    CSPositions renamed;
    renamed.SetPositions(first, second, 0.5);
    EXPECT_EQ(renamed.GetPosition("A", found).Position()[0], 3);
    EXPECT_EQ(renamed.GetPosition("B", found).Position()[0], 7);

    first.SetPositions(first, first, 0.5);
    EXPECT_EQ(first.Count(), 8);
    second.SetPositions(first, second, 0.5);
    EXPECT_EQ(second.Count(), 11);
}

} // namespace
