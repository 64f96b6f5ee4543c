#include "sectrix/extrusion/extrusion.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/interfaces/dom_writer_json.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"
#include "support/meshes.h"
#include "support/result.h"
#include "support/shape_set.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <sqlite3.h>
#include <sstream>

// Every operation with its first allocation failing, then its second and so on, until it gets through: once with
// all later allocations failing too, and once with that one alone. What leaks or is broken, the sanitizers see.

using namespace qel;
using namespace qel::Sectrix;

namespace {

/// How many allocations still succeed; negative when there is no limit.
thread_local long budget = -1;
thread_local bool isLasting = false;
thread_local bool hasFailed = false;

bool MayAllocate() {
    if (budget > 0)
        --budget;
    else if (budget == 0) {
        hasFailed = true;
        budget = isLasting ? 0 : -1;
        return false;
    }
    return true;
}

void* Allocate(std::size_t size) noexcept {
    return MayAllocate() ? std::malloc(size > 0 ? size : 1) : nullptr;
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    return memory ? memory : throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

/// Runs the part of a test that may run out of memory. True when it got through.
struct Attempt {
    long m_count;
    template <class Operation>
    bool operator()(Operation const& operation) const {
        budget = m_count;
        bool isDone = false;
        try {
            operation();
            isDone = true;
        } catch (std::bad_alloc const&) {
        } catch (gvs::Error const& error) { // the database says it in its own words
            budget = -1;
            EXPECT_STREQ(error.what(), "out of memory");
        }
        budget = -1;
        return isDone;
    }
};

/// Calls `test` with attempts that fail later and later, and returns how many did.
template <class Test>
long Exhaust(Test const& test) {
    long points = 0;
    for (bool const lasting : {false, true}) {
        isLasting = lasting;
        for (long count = 0;; ++count, ++points) {
            hasFailed = false;
            test(Attempt{count});
            if (!hasFailed || ::testing::Test::HasFailure())
                break;
        }
    }
    std::printf("%ld points\n", points);
    EXPECT_GT(points, 0);
    return points;
}

/// A set of three sections with names. \param corners, holes  of the first; the others are small.
CrossSections SetOfThree(int shift, std::size_t corners, std::size_t holes) {
    shapes::Random random(1);
    CSPositions pool;
    std::vector<shapes::Shape> const parts{shapes::StarWithHoles(random, corners, holes, 3), shapes::Comb(5),
                                           shapes::StarWithHoles(random, 9, 2)};
    std::vector<shapes::Loops> sections;
    for (auto const& shape : parts) {
        sections.push_back(shape.loops);
        for (auto& loop : sections.back())
            for (int& index : loop)
                index += pool.Count();
        for (auto const& point : shape.points)
            pool.AddPosition(
                pool.Count() % 7 ? "" : "a name that is too long to stand within " + std::to_string(pool.Count()),
                {point.x + shift, point.y});
    }
    auto set = shapes::MakeSet(pool, sections);
    Dom parameters;
    parameters["Params"]["a parameter with a name of its own"] = Dom(1.0 + shift);
    parameters["Params"]["another one with a name of its own"] = Dom(2.0);
    set.From(parameters);
    return set;
}

/// A set must work whatever happened to it, and be what it was once derived state is taken back.
void ExpectIntact(CrossSections& set, std::string const& text, std::string const& cutText) {
    set.ResetConvexLoops();
    EXPECT_EQ(fuzz::Text(set), text);
    EXPECT_EQ(fuzz::CutText(set), cutText);
}

class OutOfMemory : public testing::Test {
protected:
    CrossSections const m_first = SetOfThree(0, 12, 4), m_second = SetOfThree(5, 12, 4);
    std::string const m_text = fuzz::Text(m_first), m_secondText = fuzz::Text(m_second);
    std::string const m_cut = fuzz::CutText(CrossSections(m_first)),
                      m_secondCut = fuzz::CutText(CrossSections(m_second));
};

TEST_F(OutOfMemory, Documents) {
    Dom written;
    CrossSections(m_first).To(written);
    auto const json = DomWriterJson::ToString(written);
    CrossSections expected;
    expected.From(written);
    Exhaust([&](Attempt attempt) {
        Dom dom(1.0);
        if (!attempt([&] { DomReaderJson::FromString(dom, json.c_str(), nullptr); })) {
            EXPECT_EQ(dom.asDouble(0), 1.0);
        }
        Dom copy("kept");
        if (!attempt([&] { copy = written; })) {
            EXPECT_EQ(copy.asString(""), "kept");
        }
        std::string text;
        if (attempt([&] { text = DomWriterJson::ToString(written); })) {
            EXPECT_EQ(text, json);
        }
    });
    Exhaust([&](Attempt attempt) {
        CrossSections set;
        std::istringstream stream(json);
        if (attempt([&] { set.From(stream); })) {
            EXPECT_EQ(fuzz::Text(set), fuzz::Text(expected));
            return;
        }
        // What was read is the beginning of the whole.
        bool found = false;
        for (std::uint64_t i = 0; i < static_cast<std::uint64_t>(set.Positions().Count()); ++i)
            EXPECT_EQ(set.Positions().GetPosition(i, found).Name(),
                      expected.Positions().GetPosition(i, found).Name());
        EXPECT_LE(set.Items().size(), expected.Items().size());
        for (std::size_t i = 0; i + 1 < set.Items().size(); ++i)
            EXPECT_EQ(fuzz::Text(set.Items()[i].InteriorLoops()), fuzz::Text(expected.Items()[i].InteriorLoops()));
        ExpectIntact(set, fuzz::Text(set), fuzz::CutText(CrossSections(set)));
    });
    Exhaust([&](Attempt attempt) {
        Dom dom;
        CrossSections set = expected;
        if (attempt([&] { set.To(dom); })) {
            EXPECT_EQ(DomWriterJson::ToString(dom["Outlines"]), DomWriterJson::ToString(written["Outlines"]));
        }
        ExpectIntact(set, fuzz::Text(expected), m_cut);
    });
}

TEST_F(OutOfMemory, CuttingAndResetting) {
    // Large enough for blocks of vertices, and for more working memory than stands on the stack.
    auto const first = SetOfThree(0, 150, 6);
    auto const text = fuzz::Text(first), cut = fuzz::CutText(CrossSections(first));
    Exhaust([&](Attempt attempt) {
        CrossSections set = first;
        auto const& section = set.Items()[0];
        if (!attempt([&] { section.ConvexLoops(); })) {
            EXPECT_EQ(set.Positions().Count(), first.Positions().Count());
            EXPECT_TRUE(section.AddedVertices().empty());
        }
        EXPECT_EQ(fuzz::CutText(set), cut);
        auto const whole = fuzz::Text(set);
        if (!attempt([&] { set.ResetConvexLoops(); })) {
            EXPECT_EQ(fuzz::Text(set) + fuzz::CutText(set), whole + cut);
        }
        ExpectIntact(set, text, cut);
    });
    std::ofstream stream("/dev/null");
    Exhaust([&](Attempt attempt) {
        CrossSections set = m_first;
        attempt([&] { set.Dump(stream, "a prefix that is too long to stand within"); });
        ExpectIntact(set, m_text, m_cut);
    });
}

TEST_F(OutOfMemory, ComparingAndBlending) {
    CrossSections const other(std::vector<Vec<2, double>>{{0, 0}, {1, 0}, {1, 1}}, true);
    for (bool const convex : {false, true})
        for (auto const* partner : {&m_second, &other}) {
            auto const blended = fuzz::CutText(CrossSections(CrossSections(m_first), *partner, 0.25, convex));
            Exhaust([&](Attempt attempt) {
                CrossSections first = m_first, second = *partner;
                attempt([&] { EXPECT_EQ(first.IsCompatible(second, convex), partner == &m_second); });
                ExpectIntact(first, m_text, m_cut);
                attempt([&] {
                    CrossSections const blend(first, second, 0.25, convex);
                    budget = -1;
                    EXPECT_EQ(fuzz::CutText(blend), blended);
                });
                ExpectIntact(first, m_text, m_cut);
                if (partner == &m_second)
                    ExpectIntact(second, m_secondText, m_secondCut);
            });
        }
}

TEST_F(OutOfMemory, CopyingAndAssigning) {
    CrossSections cut = m_first;
    EXPECT_EQ(fuzz::CutText(cut), m_cut);
    auto const text = fuzz::Text(cut);
    Exhaust([&](Attempt attempt) {
        attempt([&] {
            CrossSections const copy = cut;
            budget = -1;
            EXPECT_EQ(fuzz::CutText(copy), m_cut);
        });
        CrossSections target(std::vector<Vec<2, double>>{{0, 0}, {1, 0}, {1, 1}}, true);
        if (!attempt([&] { target = cut; })) {
            target.ResetConvexLoops();
            fuzz::CutText(target);
        }
        target = cut;
        EXPECT_EQ(fuzz::Text(target), fuzz::Text(cut));
        CrossSection section = target.Items()[1];
        attempt([&] { section = target.Items()[0]; });
        section = target.Items()[0];
        EXPECT_EQ(fuzz::Text(section.InteriorLoops()), fuzz::Text(cut.Items()[0].InteriorLoops()));
        EXPECT_EQ(fuzz::Text(cut) + fuzz::CutText(cut), text + m_cut);
    });
}

TEST_F(OutOfMemory, Meshes) {
    std::vector<aiVector3D> vertices;
    std::vector<std::vector<unsigned>> faces;
    for (unsigned i = 0; i < 600; ++i)
        vertices.emplace_back(static_cast<ai_real>(i / 2), 0.0f, i % 7 ? 0.0f : 1.0f);
    for (unsigned i = 0; i < 600; i += 3)
        faces.push_back({i, i + 1, i + 2});
    aiMesh source;
    meshes::Fill(source, vertices, faces);
    Mat<4, double> shifted;
    shifted[12] = 3.0;
    Mesh filled(L"a key that is too long to stand within", L"a name that is too long to stand within");
    filled.fromOBJ(&source, Matrix{shifted.m_elements.data()});
    auto const merged = Mesh(filled, true).Indices();
    Exhaust([&](Attempt attempt) {
        Mesh mesh(L"a key that is too long to stand within", L"");
        Matrix const matrix{shifted.m_elements.data()};
        if (!attempt([&] { mesh.fromOBJ(&source, matrix); })) {
            EXPECT_LE(mesh.Positions().size(), 600u);
            EXPECT_EQ(mesh.Transform()[12], 0.0);
        }
        attempt([&] {
            Mesh const copy(filled, true);
            budget = -1;
            EXPECT_EQ(copy.Indices(), merged);
        });
        auto const before = mesh.Indices();
        if (!attempt([&] { mesh = filled; })) {
            EXPECT_EQ(mesh.Indices(), before);
            EXPECT_EQ(mesh.Name(), L"");
        }
        EXPECT_EQ(Mesh(filled, true).Indices(), merged);
    });
}

TEST_F(OutOfMemory, ExtrusionsAndText) {
    Dom dom;
    DomReaderJson::FromString(dom, R"({"assemblyPartName": "a name that is too long to stand within", "Sections":
        [{"Profiles": [{"Points": [[0, 0, 0], [1, 2, 3]]}, {"Points": [[1, 1, 1]]}]}, {}]})",
                              nullptr);
    std::wstring const wide(100, L'\u00E9');
    Exhaust([&](Attempt attempt) {
        Extrusion part;
        Extrusion copy;
        if (attempt([&] { part.from(dom); })) {
            EXPECT_EQ(part.Sections().at(0).Profiles().size(), 2u);
        }
        attempt([&] { copy = part; });
        std::string narrow;
        attempt([&] { narrow = ToUtf8(wide); });
        attempt([&] { EXPECT_EQ(Utf8ToW(narrow).size(), narrow.size() / 2); });
    });
}

/// SQLite has memory of its own, which runs out with the rest.
struct SqliteMemory {
    SqliteMemory() {
        sqlite3_mem_methods methods;
        sqlite3_config(SQLITE_CONFIG_GETMALLOC, &methods);
        standard = methods;
        methods.xMalloc = [](int size) { return MayAllocate() ? standard.xMalloc(size) : nullptr; };
        methods.xRealloc = [](void* memory, int size) {
            return MayAllocate() ? standard.xRealloc(memory, size) : nullptr;
        };
        sqlite3_config(SQLITE_CONFIG_MALLOC, &methods);
    }
    static sqlite3_mem_methods standard;
};
sqlite3_mem_methods SqliteMemory::standard;

TEST_F(OutOfMemory, Pulls) {
    for (auto const* schema : {"definitions.sql", "direct.sql"}) {
        std::ifstream file(std::string(SECTRIX_TEST_DATA) + "/records/" + schema);
        std::string const sql(std::istreambuf_iterator<char>(file), {});
        auto const path = testing::TempDir() + "sectrix_out_of_memory.db";
        std::remove(path.c_str());
        sqlite3* host = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &host), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(host, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        AcisGeometry const geometry({}, L"Pier", L"p", L"plain", {}, 0, {});
        Obj const object(7, {}, {}, {}, {}, L"plain", {});
        Exhaust([&](Attempt attempt) {
            {
                gvs::Database database(host);
                std::string out = "old";
                bool const isDone = attempt([&] { geometry.PullDataFromSourceRecord(&database, out); });
                EXPECT_EQ(out, isDone ? "400 0 1 0" : "old");
                geometry.PullDataFromSourceRecord(&database, out);
                EXPECT_EQ(out, "400 0 1 0");
                out = "old";
                if (!attempt([&] { object.PullDataFromSourceRecord(&database, out); })) {
                    EXPECT_EQ(out, "old");
                }
                object.PullDataFromSourceRecord(&database, out);
                EXPECT_NE(out, "old");
            }
            EXPECT_EQ(sqlite3_next_stmt(host, nullptr), nullptr);
            std::string out = "old";
            bool const isDone = attempt([&] {
                gvs::Database opened(path);
                geometry.PullDataFromSourceRecord(&opened, out);
            });
            EXPECT_EQ(out, isDone ? "400 0 1 0" : "old");
        });
        EXPECT_EQ(sqlite3_close(host), SQLITE_OK);
        std::remove(path.c_str());
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    SqliteMemory const memory;
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
