#include "support/section_text.h"
#include "support/shape_set.h"
#include "support/test_data.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;
using shapes::MakeSet;

namespace {

/// Everything that a build makes, bit for bit.
std::string BuildText(CrossSection const& section) {
    std::ostringstream text;
    text << std::hexfloat;
    for (auto const& loop : section.ConvexLoops())
        text << LoopText(loop) << '\n';
    bool found = false;
    for (int index : section.AddedVertices()) {
        auto const& point = section.Positions().GetPosition(static_cast<std::uint64_t>(index), found).Position();
        text << index << " at " << point[0] << ' ' << point[1] << '\n';
    }
    return text.str();
}

double SignedArea(CrossSection const& section, Loop const& loop) {
    double sum = 0.0;
    bool found = false;
    auto const& vertices = loop.Vertices();
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        auto const at = [&](std::size_t place) {
            auto const index = vertices[place % vertices.size()].Index();
            return section.Positions().GetPosition(static_cast<std::uint64_t>(index), found).Position();
        };
        auto const p = at(i), q = at(i + 1);
        sum += (p[0] * q[1] - q[0] * p[1]) / 2;
    }
    return sum;
}

TEST(Cutting, CoversTheSectionAndMarksTheOutline) {
    shapes::Random random(2);
    for (std::size_t size = 8; size < 120; size += 3) {
        SCOPED_TRACE(size);
        auto const shape = shapes::StarWithHoles(random, size, size / 6);
        auto set = MakeSet(shape);
        auto const& section = set.Items()[0];
        double area = SignedArea(section, section.ExteriorLoop());
        for (auto const& hole : section.InteriorLoops())
            area += SignedArea(section, hole);
        double covered = 0.0;
        std::size_t edges = 0;
        std::set<std::pair<int, int>> outlineEdges;
        for (auto const& loop : section.ConvexLoops()) {
            covered += SignedArea(section, loop);
            for (std::size_t i = 0; i < loop.Vertices().size(); ++i) {
                auto const& vertex = loop.Vertices()[i];
                ASSERT_TRUE(vertex.Index() >= 0 && vertex.Index() < set.Positions().Count());
                auto const& before = loop.Vertices()[i > 0 ? i - 1 : loop.Vertices().size() - 1];
                if (vertex.Exterior())
                    outlineEdges.emplace(before.Index(), vertex.Index());
                edges += vertex.Exterior();
            }
        }
        EXPECT_NEAR(covered, area, 1e-9 * area);
        // Each edge of the outline and the holes once; a bridge foot has split one of them in two.
        EXPECT_EQ(edges, shape.points.size() + section.AddedVertices().size());
        EXPECT_EQ(outlineEdges.size(), edges);
    }
}

struct LoopRow {
    char const* m_operation;
    void (*m_edit)(Loop& loop, Loop const& other);
    char const* m_result;
};

/// The loop that `LoopText` writes so.
Loop MakeLoop(CSPositions const& pool, std::string const& text) {
    Loop loop(pool, false);
    std::istringstream vertices(text);
    for (std::string vertex; vertices >> vertex;)
        loop.AddVertex(std::stoi(vertex), vertex.back() != '\'');
    return loop;
}

/// Appends what stands in a document; a hole goes in front, the other way round.
void Read(Loop& loop, char const* text, bool exterior) {
    Dom dom;
    EXPECT_TRUE(DomReaderJson::FromString(dom, text, nullptr));
    EXPECT_EQ(loop.From(dom, exterior), loop.Vertices().size() > 2);
}

void RunRows(std::vector<LoopRow> const& rows, std::string const& start) {
    CSPositions pool;
    for (int i = 0; i < 13; ++i)
        pool.AddPosition({13.0 - i, 0.0});
    auto const other = MakeLoop(pool, "10 11 12");
    auto const mirror = [&pool] { pool.Transform({-1, 0, 0, 0, 1, 0, 0, 0, 1}); };
    for (auto const& row : rows) {
        auto loop = MakeLoop(pool, start);
        int const leftMost = loop.LeftMostVertex();
        mirror(); // now it is the right-most one, which shows once the loop has changed
        row.m_edit(loop, other);
        EXPECT_EQ(LoopText(loop), row.m_result) << row.m_operation;
        Loop fresh(loop, pool);
        EXPECT_EQ(loop.LeftMostVertex(), LoopText(loop) == start ? leftMost : fresh.LeftMostVertex())
            << row.m_operation;
        mirror();
    }
}

TEST(Loops, Edit) {
    RunRows({{"around a vertex", [](Loop& l, Loop const& o) { l.Add(o, 1, 0, -1); }, "0 1 10' 11 12 10 1' 2 3"},
             {"a run that wraps", [](Loop& l, Loop const& o) { l.Add(o, 1, 2, 0); }, "0 1 12' 10 1' 2 3"},
             {"a run forward", [](Loop& l, Loop const& o) { l.Add(o, 1, 0, 1); }, "0 1 10' 11 1' 2 3"},
             {"of itself", [](Loop& l, Loop const&) { l.Add(l, 0, 2, 3); }, "0 2' 3 0' 1 2 3"},
             {"bad place", [](Loop& l, Loop const& o) { l.Add(o, -1, 0, 1), l.Add(o, 4, 0, 1); }, "0 1 2 3"},
             {"bad run", [](Loop& l, Loop const& o) { l.Add(o, 1, -1, 1), l.Add(o, 1, 3, 1), l.Add(o, 1, 0, 3); },
              "0 1 2 3"},
             {"nothing", [](Loop& l, Loop const& o) { l.Add(Loop(o.Positions(), false), 1, 0, -1); }, "0 1 2 3"},
             {"insert", [](Loop& l, Loop const&) { l.InsertVertex(7, 0), l.InsertVertex(8, 2); }, "7 0 8 1 2 3"},
             {"append", [](Loop& l, Loop const&) { l.InsertVertex(7, 4), l.InsertVertex(8, -1); }, "0 1 2 3 7 8"},
             {"remove", [](Loop& l, Loop const&) { l.RemoveVertex(3), l.RemoveVertex(3), l.RemoveVertex(-1); },
              "0 1 2"},
             {"read", [](Loop& l, Loop const&) { Read(l, "[5, 13, 6]", true); }, "0 1 2 3 5 6"},
             {"read a hole", [](Loop& l, Loop const&) { Read(l, "[5, 6]", false); }, "6 5 0 1 2 3"},
             {"read nothing", [](Loop& l, Loop const&) { Read(l, "[13, -1]", true); }, "0 1 2 3"},
             {"assign", [](Loop& l, Loop const& o) { l = o, l = *&l; }, "10 11 12"}},
            "0 1 2 3");
    RunRows({{"whole", [](Loop& l, Loop const& o) { l.Add(o, -1, 1, -1); }, "11 12 10"},
             {"wrapping", [](Loop& l, Loop const& o) { l.Add(o, -1, 2, 0); }, "12' 10"},
             {"forward", [](Loop& l, Loop const& o) { l.Add(o, -1, 0, 1); }, "10' 11"},
             {"bad", [](Loop& l, Loop const& o) { l.Add(o, -1, 3, 1), l.Cut(0, 0); }, ""}},
            "");
    RunRows({{"forward", [](Loop& l, Loop const&) { l.Cut(1, 3); }, "0 1 3' 4"},
             {"neighbours", [](Loop& l, Loop const&) { l.Cut(1, 2); }, "0 1 2' 3 4"},
             {"backward", [](Loop& l, Loop const&) { l.Cut(3, 1); }, "1' 2 3"},
             {"to one", [](Loop& l, Loop const&) { l.Cut(2, 2); }, "2'"},
             {"bad", [](Loop& l, Loop const&) { l.Cut(-1, 2), l.Cut(0, 5); }, "0 1 2 3 4"}},
            "0 1 2 3 4");
    RunRows({{"cut again", [](Loop& l, Loop const&) { l.Cut(1, 2), l.Cut(3, 0); }, "0' 1 2' 0"},
             {"close", [](Loop& l, Loop const&) { Read(l, "[]", false); }, "0' 1 2'"}},
            "0' 1 2' 0");
}

TEST(Loops, LookPastIndicesThatAreNotInThePool) {
    CSPositions pool;
    pool.AddPosition("A", {2, 0});
    pool.AddPosition({1, 5});
    pool.AddPosition("A", {1, 7});
    pool.AddPosition({3, -1});
    auto loop = MakeLoop(pool, "-1 0 4 1 2 0");
    EXPECT_EQ(loop.LeftMostVertex(), 3);
    EXPECT_EQ(loop.GetNamedPositionCount(), 3u);
    EXPECT_EQ(loop.NamedPositionIndex("A"), 1);
    EXPECT_EQ(loop.NamedPositionIndex(""), 3);
    EXPECT_EQ(loop.NamedPositionIndex("B"), -1);
    auto const box = loop.BBox();
    EXPECT_EQ(std::vector<double>({box.m_min[0], box.m_min[1], box.m_max[0], box.m_max[1]}),
              std::vector<double>({1, 0, 2, 7}));
    EXPECT_TRUE(MakeLoop(pool, "-1 4").BBox().IsEmpty());
    EXPECT_EQ(Loop().LeftMostVertex(), -1);
    EXPECT_EQ(LoopText(Loop(pool, true)), "0 1 2 3");
    EXPECT_TRUE(Vertex(3, true) != Vertex(3, false) && Vertex(3, true) == Vertex(3, true));
}

TEST(Positions, RemovalLeavesTheNameIndexBehind) {
    CSPositions pool;
    pool.AddPosition("A", {1, 1});
    pool.AddPosition("A", {2, 2});
    pool.AddPosition("B", {3, 3});
    bool found = false;
    EXPECT_EQ(pool.GetPosition("A", found).Position()[0], 2.0);
    pool.RemovePosition(0);
    EXPECT_EQ(pool.NamedCount(), 1);
    pool.GetPosition("A", found);
    EXPECT_FALSE(found);
    auto const& sentinel = pool.GetPosition("B", found); // its entry points past the end now
    EXPECT_TRUE(!found && sentinel.Name().empty());
    pool.AddPosition({4, 4});
    EXPECT_EQ(pool.GetPosition("B", found).Position()[0], 4.0);
    pool.GetPosition(static_cast<std::uint64_t>(-1), found);
    EXPECT_FALSE(found);
    pool.RemovePosition(3);
    EXPECT_EQ(pool.Count(), 3);
}

TEST(Positions, MoveAwayAndGrowFromWithin) {
    CSPositions pool;
    pool.AddPosition("A", {1, 1});
    auto const moved = std::move(pool);
    EXPECT_EQ(moved.Count() + moved.NamedCount(), 2);
    EXPECT_EQ(pool.Count() + pool.NamedCount(), 0);
    bool found = false;
    EXPECT_EQ(pool.AddPosition("C", {}), 0);
    for (int i = 1; i < 9; ++i) // the name stands in the list that grows
        EXPECT_EQ(pool.AddPosition(pool.GetPosition(std::uint64_t{0}, found).Name(), {}), i);
}

TEST(Positions, AssignedToThemselvesStayWhereTheyAre) {
    CSPositions pool;
    pool.AddPosition("A", {1, 1});
    bool found = false;
    auto const* const position = &pool.GetPosition("A", found);
    auto& self = pool;
    for (auto *const assign :
         {+[](CSPositions&a, CSPositions&b) { a = b; }, +[](CSPositions&a, CSPositions&b) { a.SetPositions(b); },
          +[](CSPositions&a, CSPositions&b) { a = std::move(b); }}) {
        assign(pool, self);
        EXPECT_EQ(&pool.GetPosition("A", found), position);
    }

    CrossSections set;
    set.From(CaseDocument("sections/reading.json", "a deck with names, a closed loop, a hole and a parameter"));
    auto const parts = [&set, &found] {
        return std::make_tuple(set.Items().data(), &set.Positions().GetPosition(std::uint64_t{7}, found),
                               &set.Items()[0].InteriorLoops()[0].Vertices()[3], &set.Parameters().at("Width"));
    };
    auto const before = parts();
    auto& same = set;
    set = same;
    set = std::move(same);
    EXPECT_EQ(parts(), before);
}

TEST(Positions, TransformDividesByTheThirdComponent) {
    CSPositions mapped;
    mapped.AddPosition({1, 2});
    mapped.Transform({2, 0, 0, 0, 3, 0, 10, 20, 2});
    EXPECT_EQ(mapped.BBox().m_max[0], 6.0);
    EXPECT_EQ(mapped.BBox().m_min[1], 13.0);
}

TEST(Sections, CopyAndAssignAsTheirPoolsDemand) {
    CSPositions pool, otherPool;
    for (int i = 0; i < 4; ++i)
        pool.AddPosition({double(i), 0}), otherPool.AddPosition({0, double(i)});
    CrossSection section(pool, true), target(otherPool, false);
    section.AddInteriorLoop().AddVertex(1, true);
    target.AddInteriorLoop(), target.AddInteriorLoop();
    target = section;
    EXPECT_EQ(SectionText(target), ": 0 1 2 3 | 1");
    EXPECT_EQ(&target.ExteriorLoop().Positions(), &otherPool);
    EXPECT_EQ(&target.InteriorLoops()[0].Positions(), &otherPool);
    CrossSection const rebound(section, otherPool);
    for (auto const* loop : {&rebound.ExteriorLoop(), &rebound.InteriorLoops()[0], &rebound.ConvexLoops()[0]})
        EXPECT_EQ(&loop->Positions(), &otherPool);
    EXPECT_EQ(CrossSection().Positions().Count(), 0);

    CrossSections set;
    set.From(CaseDocument("sections/cutting.json", "a square with a square hole"));
    otherPool = set.Positions();
    CrossSection const built(set.Items()[0], otherPool);
    EXPECT_EQ(set.Positions().Count(), 9); // built on the way
    EXPECT_EQ(built.AddedVertices(), std::vector<int>({8}));
}

TEST(Sections, StartWithoutLoopsAndTakeThemOneByOne) {
    CSPositions pool;
    for (int i = 0; i < 4; ++i)
        pool.AddPosition({double(i), 0});
    CrossSection sparse(pool, true);
    EXPECT_EQ(&sparse.AddInteriorLoop().Positions(), &pool);
    EXPECT_EQ(sparse.BBox().m_max[0], 3.0); // an empty hole adds nothing
    sparse.GetExteriorLoop() = Loop();
    EXPECT_TRUE(sparse.BBox().IsEmpty());
    sparse.AddConvexLoop();
    EXPECT_EQ(sparse.ConvexLoops().size(), 1u);

    struct Steps : CrossSection {
        using CrossSection::Modulo;
    };
    Steps const steps;
    EXPECT_EQ(std::vector<int>({steps.Modulo(-1, 5), steps.Modulo(-6, 5), steps.Modulo(7, 5), steps.Modulo(5, 5)}),
              std::vector<int>({4, 4, 2, 0}));
}

/// Every loop and section of a set must refer to the set's own pool.
void ExpectBound(CrossSections const& set) {
    for (auto const& section : set.Items()) {
        EXPECT_EQ(&section.Positions(), &set.Positions());
        EXPECT_EQ(&section.ExteriorLoop().Positions(), &set.Positions());
        for (auto const* loops : {&section.InteriorLoops(), &section.ConvexLoops()})
            for (auto const& loop : *loops)
                EXPECT_EQ(&loop.Positions(), &set.Positions());
    }
}

TEST(Sets, StayBoundToTheirOwnPoolWhereverTheyGo) {
    shapes::Random random(4);
    std::vector<CrossSections> sets;
    std::vector<std::string> texts;
    for (int i = 0; i < 20; ++i) {
        sets.push_back(MakeSet(shapes::StarWithHoles(random, 20, 4)));
        texts.push_back(BuildText(sets.back().Items()[0]));
    }
    for (std::size_t i = 0; i < sets.size(); ++i) {
        ExpectBound(sets[i]);
        EXPECT_EQ(BuildText(sets[i].Items()[0]), texts[i]);
    }
    CSPositions foreign;
    foreign.AddPosition({1, 1});
    sets[7].GetItems().emplace_back(foreign, true);
    EXPECT_EQ(&CrossSections(sets[7]).Items()[1].Positions(), &foreign); // what is not of the set's pool stays
    auto const unbuilt = MakeSet(shapes::StarWithHoles(random, 20, 4));
    int const count = unbuilt.Positions().Count();
    CrossSections copy(unbuilt);
    EXPECT_EQ(unbuilt.Positions().Count(), count); // copying has built nothing
    copy.Items()[0].ConvexLoops();
    EXPECT_EQ(unbuilt.Positions().Count(), count);
    ExpectBound(copy);
    copy = sets[3];
    ExpectBound(copy);
    EXPECT_EQ(LoopsText(copy.Items()[0].ConvexLoops()), LoopsText(sets[3].Items()[0].ConvexLoops()));
    copy = std::move(sets[5]);
    ExpectBound(copy);
    EXPECT_EQ(BuildText(copy.Items()[0]), texts[5]);
    EXPECT_TRUE(sets[5].Items().empty() && sets[5].Positions().Count() == 0);
}

TEST(Sets, AssignmentKeepsTheNamesOfSectionsThatThereAre) {
    CrossSections a, b;
    a.From(CaseDocument("sections/reading.json", "a deck with names, a closed loop, a hole and a parameter"));
    b.From(CaseDocument("sections/cutting.json", "a square with a square hole"));
    a = b;
    EXPECT_EQ(SectionText(a.Items()[0]), "Deck: 0 1 2 3 | 7 6 5 4");
    EXPECT_TRUE(a.HasHollow() && a.Parameters().empty());
    EXPECT_EQ(a.Positions().Count(), b.Positions().Count());
    ExpectBound(a);
}

TEST(Sets, ResetTakesThePositionsOfAllSectionsBack) {
    CrossSections set;
    auto const document = CaseDocument("sections/cutting.json", "a square with a square hole");
    set.From(document);
    set.From(document);
    set.GetItems()[1].GetInteriorLoops().push_back(set.Items()[0].InteriorLoops()[0]);
    auto const build = [&set] {
        auto const text = BuildText(set.Items()[1]);
        return text + BuildText(set.Items()[0]);
    };
    auto const first = build();
    EXPECT_EQ(set.Items()[0].AddedVertices(), std::vector<int>({17}));
    set.ResetConvexLoops();
    EXPECT_EQ(set.Positions().Count(), 16);
    EXPECT_TRUE(set.Items()[0].AddedVertices().empty() && set.Items()[1].AddedVertices().empty());
    EXPECT_EQ(build(), first);
    std::set<int> removed{3};
    set.GetItems()[0].ResetConvexLoops(removed);
    EXPECT_EQ(removed, std::set<int>({3, 17}));
    EXPECT_EQ(set.Positions().Count(), 18);
}

TEST(Sets, NormalizeVertically) {
    struct Row {
        double m_lowest, m_shifted;
    };
    for (auto const& row : {Row{0.00005, 0.00005}, Row{0.0002, 0}, Row{-3, 0}, Row{-0.00005, -0.00005}}) {
        CrossSections set(std::vector<Vec<2, double>>{{1, row.m_lowest}, {2, 5}}, true);
        set.BBox();
        set.NormalizeVertical();
        EXPECT_EQ(set.BBox().m_min[1], row.m_shifted);
        EXPECT_EQ(set.BBox().m_max[0], 2.0);
    }
    CrossSections empty;
    empty.NormalizeVertical();
    EXPECT_TRUE(empty.BBox().IsEmpty() && !empty.HasHollow());
}

TEST(Dump, ListsEverything) {
    auto const path = ::testing::TempDir() + "sectrix_dump.txt";
    CrossSections set;
    set.From(CaseDocument("sections/cutting.json", "a square with a square hole"));
    {
        std::ofstream closed;
        set.Dump(closed, "");
        EXPECT_TRUE(set.Items()[0].AddedVertices().empty());
        std::ofstream stream(path);
        set.Dump(stream, "-");
        set.Items()[0].Dump(stream, "  ");
        CrossSections().Dump(stream, "");
        stream << std::fixed;
        stream.precision(2);
        CrossSections(std::vector<Vec<2, double>>{{0.5, -3}}, false).Dump(stream, "");
    }
    std::ifstream written(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), FileText("dump.txt"));
    std::remove(path.c_str());
}

} // namespace
