#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/detail/first_match.h"
#include "sectrix/records/obj.h"
#include "sectrix/records/parametric_reference.h"
#include "sectrix/records/tables.h"
#include "support/test_data.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <thread>
#include <unistd.h>

using namespace qel;
using namespace qel::Sectrix;
using namespace sectrix_tests;

namespace {

/// The host's own connection, on which every statement must succeed.
struct Host {
    explicit Host(std::string const& path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &m_connection), SQLITE_OK);
        sqlite3_busy_timeout(m_connection, 2000); // on Windows readers wait for each other while they begin
        Run("PRAGMA synchronous = OFF");          // these files need not outlast a power cut
    }
    ~Host() { EXPECT_EQ(sqlite3_close(m_connection), SQLITE_OK); }

    void Run(std::string const& sql) const {
        EXPECT_EQ(sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_connection);
    }
    /// Calls `visit` with each row.
    template <class Visit>
    void Each(char const* sql, Visit visit) const {
        sqlite3_stmt* row = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(m_connection, sql, -1, &row, nullptr), SQLITE_OK);
        while (sqlite3_step(row) == SQLITE_ROW)
            visit(row);
        sqlite3_finalize(row);
    }

    sqlite3* m_connection = nullptr;
};

std::wstring Text(sqlite3_stmt* row, int place) {
    auto const* units = static_cast<char16_t const*>(sqlite3_column_text16(row, place));
    return units ? std::wstring(units, units + sqlite3_column_bytes16(row, place) / 2) : std::wstring();
}

class Records : public testing::Test {
protected:
    Records() {
        std::filesystem::remove_all(m_folder); // of a process of this number that crashed
        std::filesystem::create_directory(m_folder);
    }
    ~Records() override { std::filesystem::remove_all(m_folder); }

    std::string Path(std::string const& name) const { return (m_folder / name).string(); }
    /// Makes a database file out of SQL and returns its path.
    std::string Make(std::string const& name, std::string const& sql) const {
        Host(Path(name)).Run(sql);
        return Path(name);
    }
    /// Makes one out of a file in data.
    std::string MakeFrom(std::string const& sqlFile, std::string const& encoding = "UTF-8") const {
        return Make(sqlFile + encoding, "PRAGMA encoding = '" + encoding + "';" + FileText("records/" + sqlFile));
    }

    std::filesystem::path const m_folder =
        std::filesystem::temp_directory_path() / ("sectrix_records_" + std::to_string(getpid()));
};

/// What a pull gives; or, where it raises, "! " and the reason, once it has kept what `out` held.
template <class Record>
std::string Pull(Record const& record, gvs::Database* database) {
    std::string out = "old";
    try {
        record.PullDataFromSourceRecord(database, out);
    } catch (gvs::Error const& error) {
        EXPECT_EQ(out, "old");
        return std::string("! ") + error.what();
    }
    return out;
}

AcisGeometry Geometry(std::wstring const& dataGuid) {
    return AcisGeometry({}, L"Pier", L"p", dataGuid, {}, 0, {});
}

/// Pulls every case that the database holds and compares with what the case expects.
void PullCases(Host const& host, gvs::Database& database) {
    int count = 0;
    auto const check = [&](auto const& record, sqlite3_stmt* row) {
        auto const size = sqlite3_column_bytes(row, 0); // first, since it turns text into the bytes that it counts
        std::string const bytes(static_cast<char const*>(sqlite3_column_blob(row, 0)),
                                static_cast<std::size_t>(size));
        EXPECT_EQ(Pull(record, &database), bytes) << sqlite3_column_text(row, 1);
        ++count;
    };
    host.Each("SELECT RESULT, DATA_GUID, PARENT_CLASS, PARENT_GUID, \"INDEX\" FROM SAT_CASES", [&](auto* row) {
        check(AcisGeometry({}, Text(row, 2), Text(row, 3), Text(row, 1), {}, sqlite3_column_int(row, 4), {}), row);
    });
    host.Each("SELECT RESULT, DATA_GUID, ID FROM MESH_CASES",
              [&](auto* row) { check(Obj(sqlite3_column_int64(row, 2), {}, {}, {}, {}, Text(row, 1), {}), row); });
    EXPECT_GT(count, 10);
}

TEST_F(Records, PullWhatTheRowHolds) {
    for (auto const* schema : {"definitions.sql", "direct.sql"})
        for (auto const* encoding : {"UTF-8", "UTF-16le", "UTF-16be"}) {
            SCOPED_TRACE(std::string(schema) + " in " + encoding);
            auto const path = MakeFrom(schema, encoding);
            Host const host(path);
            gvs::Database borrowed(host.m_connection);
            PullCases(host, borrowed);
            host.Run("PRAGMA short_column_names = OFF; PRAGMA full_column_names = ON");
            PullCases(host, borrowed);
            std::vector<std::thread> threads;
            for (int i = 0; i < 4; ++i)
                threads.emplace_back([&path] {
                    Host const own(path);
                    gvs::Database opened(path);
                    for (int round = 0; round < 10; ++round)
                        PullCases(own, opened);
                });
            for (auto& thread : threads)
                thread.join();
        }
}

TEST_F(Records, AMissingColumnOrHandleIsNoFailure) {
    // The names differ in ASCII case, which does not matter, as in SQL.
    gvs::Database database(Make("thin.db", "CREATE TABLE SAT_GEOMETRIES (data_guid); CREATE TABLE MESHES (NAME);"
                                           "CREATE TABLE SAT_DEFINITIONS (GUID); INSERT INTO MESHES VALUES ('n');"
                                           "INSERT INTO SAT_DEFINITIONS VALUES ('a')"));
    EXPECT_EQ(Pull(Geometry(L"a"), &database), "");
    EXPECT_EQ(Pull(Obj(1, {}, {}, {}, {}, {}, {}), &database), "");
    EXPECT_EQ(Pull(AcisGeometry(), nullptr), "old");
    EXPECT_EQ(Pull(Obj(), nullptr), "old");
}

TEST_F(Records, SchemaChangesBetweenPullsCount) {
    auto const path = MakeFrom("direct.sql");
    Host const host(path);
    Host const other(path);
    gvs::Database borrowed(host.m_connection);
    gvs::Database opened(path);
    auto const record = Geometry(L"d");
    auto const steps = FileDom("records/schema_changes.json");
    for (auto* changing : {&host, &other})
        for (std::uint64_t i = 0; i < steps.size(); ++i) {
            auto const sql = steps[i]["sql"].asString({});
            SCOPED_TRACE(sql);
            changing->Run(sql);
            for (auto* database : {&borrowed, &opened})
                EXPECT_EQ(
                    Pull(record, database),
                    steps[i][database == &borrowed && steps[i].has("borrowed") ? "borrowed" : "pull"].asString({}));
        }
    // A change taken back, and another that gives the schema the same number.
    host.Run("BEGIN; ALTER TABLE SAT_GEOMETRIES ADD COLUMN DATA_GUID");
    EXPECT_EQ(Pull(record, &borrowed), "! no such table: main.SAT_DEFINITIONS");
    host.Run("ROLLBACK");
    host.Run("ALTER TABLE SAT_GEOMETRIES ADD COLUMN DATA_SIZE");
    EXPECT_EQ(Pull(record, &borrowed), "400 0 1 0");
}

TEST_F(Records, NothingStaysOnABorrowedConnection) {
    Host const host(MakeFrom("definitions.sql"));
    sqlite3_busy_timeout(host.m_connection, 5);
    host.Run("CREATE TEMP TABLE SAT_DEFINITIONS (GUID)"); // no part of the model
    {
        gvs::Database database(host.m_connection);
        EXPECT_EQ(Pull(Geometry(L"plain"), &database), "400 0 1 0");
        EXPECT_EQ(sqlite3_txn_state(host.m_connection, nullptr), SQLITE_TXN_NONE);
        {
            mvq::SATDefinitions const table(&database);
            EXPECT_EQ(sqlite3_txn_state(host.m_connection, "main"), SQLITE_TXN_READ);
        }
        auto* const kept = sqlite3_next_stmt(host.m_connection, nullptr);
        EXPECT_EQ(Pull(Geometry(L"zeros"), &database).size(), 3u);
        EXPECT_EQ(sqlite3_next_stmt(host.m_connection, nullptr), kept); // the same statements again
    }
    EXPECT_EQ(sqlite3_next_stmt(host.m_connection, nullptr), nullptr);
    int isSet = 1;
    sqlite3_db_config(host.m_connection, SQLITE_DBCONFIG_DEFENSIVE, -1, &isSet);
    EXPECT_EQ(isSet, 0);
    host.Each("PRAGMA busy_timeout", [](auto* row) { EXPECT_EQ(sqlite3_column_int(row, 0), 5); });
}

TEST_F(Records, ABorrowedConnectionNeedsNoLeaveButToRead) {
    Host const host(MakeFrom("definitions.sql"));
    auto const mayRead = [](void*, int action, char const* table, char const*, char const*, char const*) {
        bool const isOfTheModel = action == SQLITE_READ && std::string(table).compare(0, 4, "SAT_") == 0;
        return action == SQLITE_SELECT || isOfTheModel ? SQLITE_OK : SQLITE_DENY;
    };
    sqlite3_set_authorizer(host.m_connection, mayRead, nullptr);
    gvs::Database database(host.m_connection);
    EXPECT_EQ(Pull(Geometry(L"plain"), &database), "400 0 1 0");
    EXPECT_EQ(Pull(Obj(1, {}, {}, {}, {}, {}, {}), &database).substr(0, 2), "! ");
}

TEST_F(Records, AHostMayChangeATableInUse) {
    Host const host(Make("changed.db", "CREATE TABLE t (a, b, c); INSERT INTO t VALUES (1, 2, 3), (4, 5, 6)"));
    gvs::Database database(host.m_connection);
    mvq::DbTable table(&database, L"t");
    table.querySequential(2);
    ASSERT_TRUE(table.readNext());
    host.Run("ALTER TABLE t ADD COLUMN d DEFAULT 7; ALTER TABLE t DROP COLUMN a");
    table.querySequential(2); // the same statement
    ASSERT_TRUE(table.readNext());
    EXPECT_EQ(table.getInt32Value(L"c"), 6);
    EXPECT_EQ(table.getInt64Value(L"rowid"), 2);
    EXPECT_THROW(table.isNull(L"a"), gvs::Error);
}

TEST_F(Records, BadDatabasesRaiseTheReason) {
    try {
        gvs::Database(Path("not there.db"), gvs::Database::Access::ReadWrite);
        ADD_FAILURE() << "opened";
    } catch (std::runtime_error const& error) {
        EXPECT_STREQ(error.what(), "unable to open database file");
    }
    EXPECT_FALSE(std::filesystem::exists(Path("not there.db")));
    for (auto const* noFile : {"", ":memory:", "file:x?mode=memory"})
        EXPECT_THROW(gvs::Database database(noFile), gvs::Error) << noFile;
    EXPECT_THROW(gvs::Database(static_cast<sqlite3*>(nullptr)), gvs::Error);

    auto const path = MakeFrom("definitions.sql");
    auto const broken = Make("broken.db", FileText("records/definitions.sql"));
    Host(broken).Each("SELECT (rootpage - 1) * 4096 FROM sqlite_schema WHERE name = 'SAT_DEFINITIONS'",
                      [&](auto* row) {
                          std::fstream file(broken, std::ios::in | std::ios::out | std::ios::binary);
                          file.seekp(sqlite3_column_int(row, 0)) << std::string(100, '\xFF');
                      });
    std::ofstream(Path("text.db")) << std::string(5000, 'x');
    std::pair<std::string, std::string> const bad[] = {
        {broken, "database disk image is malformed"},
        {Path("text.db"), "file is not a database"},
        {Make("empty.db", ""), "no such table: main.SAT_GEOMETRIES"},
        {Make("decoy.db", // the table's row does nothing, since there is the view
              "CREATE TABLE SAT_GEOMETRIES (DATA_GUID); PRAGMA writable_schema = ON; INSERT INTO sqlite_schema "
              "VALUES"
              " ('VIEW', 'SAT_DEFINITIONS', 'SAT_DEFINITIONS', 0, 'CREATE VIEW SAT_DEFINITIONS AS SELECT ''plain'' "
              "GUID, 1 DATA'),"
              " ('table', 'SAT_DEFINITIONS', 'SAT_DEFINITIONS', 2, 'CREATE TABLE IF NOT EXISTS "
              "SAT_DEFINITIONS(x)')"),
         "no such table: main.SAT_DEFINITIONS"},
        {Make(
             "disguised.db", // with the root page of a plain table
             "CREATE TABLE SAT_GEOMETRIES (DATA_GUID); CREATE VIRTUAL TABLE SAT_DEFINITIONS USING fts5(GUID, DATA);"
             "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = 2 WHERE rootpage = 0"),
         "not a plain table: main.SAT_DEFINITIONS"},
        {Make("shadow.db", // its own table instead of SQLite's list of columns
              "CREATE TABLE SAT_GEOMETRIES (DATA_GUID); CREATE TABLE SAT_DEFINITIONS (GUID, DATA AS (GUID || 1));"
              "CREATE VIRTUAL TABLE pragma_table_xinfo USING fts4(hidden)"),
         "a generated column is not stored in: main.SAT_DEFINITIONS"},
    };
    auto const record = Geometry(L"plain");
    gvs::Database locked(path);
    for (auto const& [badPath, reason] : bad) {
        gvs::Database database(badPath);
        EXPECT_EQ(Pull(record, &database), "! " + reason);
        EXPECT_EQ(Pull(record, &locked), "400 0 1 0");
    }

    Host const writer(path);
    writer.Run("BEGIN EXCLUSIVE");
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(Pull(record, &locked), "! database is locked");
    EXPECT_GT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500)); // it has waited
    writer.Run("COMMIT");
    EXPECT_EQ(Pull(record, &locked), "400 0 1 0");
}

TEST_F(Records, FiltersAreBuiltInPostfixOrder) {
    gvs::Database database(MakeFrom("direct.sql"));
    mvq::Meshes meshes(&database);
    auto const count = [&meshes](std::string const& steps) {
        gvs::Expression filter;
        gvs::ExprBuilder builder(filter, nullptr, nullptr);
        for (char const step : steps)
            if (step == 'i')
                builder.Identifier(L"MTL");
            else if (step == 'c')
                builder.Constant(gvs::Value(L"x"));
            else if (step == '=' || step == '<')
                builder.CmpOp(step == '=' ? gvs::ExprBuilder::Equal : gvs::ExprBuilder::ComparisonOps(1));
            else
                builder.BooleanOp(step == '&' ? gvs::ExprBuilder::And : gvs::ExprBuilder::LogicalOps(1));
        EXPECT_EQ(meshes.queryIsEmpty(&filter), !steps.empty());
        return meshes.queryCount(&filter, false);
    };
    EXPECT_EQ(count(""), 5);
    for (auto const* sound : {"ic=", "ci=", "ic=ic=&", "ic=ic=&ic=&", "ic=ic=ic=&&"})
        EXPECT_EQ(count(sound), 0) << sound;
    for (auto const* unsound : {"i", "ic", "i=", "ic=ic=", "ic=&",
                                "ic=&ic=", "ic==", "icc=", "ic=c=", "iic==", "ic=ic=&ic", "ic=ic=|", "ic<"})
        EXPECT_THROW(count(unsound), gvs::Error) << unsound;
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "ic=";
    EXPECT_THROW(count(deep + std::string(99999, '&')), gvs::Error); // too deep for SQLite, and nothing worse
}

TEST_F(Records, TablesReadColumnsAndNest) {
    gvs::Database database(MakeFrom("direct.sql"));
    mvq::SATGeometries outer(&database);
    EXPECT_EQ(outer.getDef()[L"INDEXES"], nullptr);
    EXPECT_EQ(outer.getDef()[nullptr], nullptr);
    EXPECT_FALSE(outer.readNext());
    EXPECT_THROW(outer.isNull(L"DATA"), gvs::Error);
    outer.querySequential(nullptr, nullptr, true);
    EXPECT_THROW(outer.getStringValue(L"DATA"), gvs::Error);
    int innerCount = 0;
    while (outer.readNext()) {
        mvq::SATGeometries inner(&database); // the same statements at once
        inner.querySequential(nullptr, nullptr, true);
        while (inner.readNext())
            ++innerCount;
    }
    EXPECT_EQ(innerCount, 11 * 11);
    EXPECT_FALSE(outer.readNext());

    outer.querySequential(7);
    ASSERT_TRUE(outer.readNext());
    EXPECT_EQ(outer.getInt64Value(mvq::DbTable::_ID()), 7);
    EXPECT_EQ(outer.getInt64Value(L"INDEX"), 4294967289);
    EXPECT_EQ(outer.getInt32Value(L"INDEX"), -7);
    EXPECT_EQ(outer.getDoubleValue(L"INDEX"), 4294967289.0);
    EXPECT_TRUE(outer.getBooleanValue(L"INDEX"));
    EXPECT_TRUE(outer.isNull(L"XFORM"));
    EXPECT_EQ(outer.getStringValue(L"XFORM"), nullptr);
    auto const* parent = outer.getStringValue(L"PARENT_CLASS");
    EXPECT_STREQ(outer.getDateTimeValue(L"DATA"), L"not -7");
    EXPECT_STREQ(parent, L"Pier"); // the texts of a row live side by side
    EXPECT_THROW(outer.isNull(L"NONE"), gvs::Error);
}

TEST_F(Records, TablesAndColumnsHaveAnyName) {
    gvs::Database database(
        Make("names.db", R"(CREATE TABLE "a""b" ("c""d", "é", ""); INSERT INTO "a""b" VALUES ('', 4, 5))"));
    mvq::DbTable table(&database, L"a\"b");
    gvs::Expression filter;
    gvs::ExprBuilder builder(filter, nullptr, nullptr);
    PushEqual(builder, L"c\"d", gvs::Value(nullptr)); // the empty text
    table.querySequential(&filter, nullptr, true);
    ASSERT_TRUE(table.readNext());
    EXPECT_EQ(table.getInt32Value(L"\xE9"), 4);
    EXPECT_EQ(table.getDef()[L""], nullptr);     // also where a column has no name
    EXPECT_EQ(table.getDef()[L"\xC9"], nullptr); // only ASCII letters are the same in both cases
    gvs::Expression other;
    gvs::ExprBuilder otherBuilder(other, nullptr, nullptr);
    PushEqual(otherBuilder, L"\xE9", gvs::Value(std::int64_t{4}));
    table.querySequential(&other, nullptr, true); // like the first query but for the column
    EXPECT_TRUE(table.readNext());
}

TEST_F(Records, NoUseCountsForTheNext) {
    gvs::Database database(Make("tiny.db", "PRAGMA page_size = 512; CREATE TABLE t (a); INSERT INTO t VALUES (1)"));
    mvq::DbTable table(&database, L"t");
    for (int i = 0; i < 40000; ++i) // more in all than a step on so small a file may take
        ASSERT_EQ(table.queryCount(nullptr, false), 1);
}

TEST_F(Records, WhatIsNotSupportedSaysSo) {
    gvs::Database database(MakeFrom("direct.sql"));
    mvq::Meshes meshes(&database);
    gvs::Expression const all;
    std::int64_t id = 0;
    double extent[4];
    std::function<void()> const calls[] = {
        [&] { meshes.getHvtGeometry(L"DATA", nullptr); },
        [&] { meshes.setNull(L"NAME"); },
        [&] { meshes.setGeomNull(L"NAME"); },
        [&] { meshes.setValue(L"NAME", L"n"); },
        [&] { meshes.setValue(L"NAME", 1.0); },
        [&] { meshes.setValue(L"NAME", id); },
        [&] { meshes.setValue(L"NAME", 1); },
        [&] { meshes.setValue(L"NAME", true); },
        [&] { meshes.setDateTime(L"NAME", L"n"); },
        [&] { meshes.setHvtGeometry(L"DATA", "a", 1); },
        [&] { meshes.querySequential(&all, L"NAME", true); },
        [&] { meshes.queryExtent(extent, &all); },
        [&] { meshes.insert(&id); },
        [&] { meshes.update(id); },
        [&] { meshes.update(&all); },
        [&] { meshes.remove(&all); },
        [&] { meshes.remove(id); },
        [&] { meshes.beginBulk(); },
        [&] { meshes.endBulk(); },
    };
    for (auto const& call : calls)
        EXPECT_THROW(call(), gvs::Error) << &call - calls;
}

TEST_F(Records, BlobsAreStoredInTheCurrentRow) {
    auto const path = MakeFrom("direct.sql");
    gvs::Database database(path, gvs::Database::Access::ReadWrite);
    {
        mvq::Meshes meshes(&database);
        EXPECT_THROW(meshes.setData("a", 1), gvs::Error); // no row
        meshes.querySequential(7);
        ASSERT_TRUE(meshes.readNext());
        meshes.setData("a\0b", 3);
        meshes.setMtl(nullptr, 0);
        EXPECT_THROW(meshes.setData("a", -1), gvs::Error);
        EXPECT_THROW(meshes.setBlob(L"NONE", "a", 1), gvs::Error);
        EXPECT_FALSE(meshes.readNext());
    }
    EXPECT_EQ(Pull(Obj(7, {}, {}, {}, {}, {}, {}), &database), std::string("a\0b", 3));
    Host(path).Each("SELECT count(*) FROM MESHES WHERE DATA = x'610062' OR MTL = x''",
                    [](auto* row) { EXPECT_EQ(sqlite3_column_int(row, 0), 1); });

    gvs::Database definitions(MakeFrom("definitions.sql"), gvs::Database::Access::ReadWrite);
    mvq::SATDefinitions texts(&definitions);
    mvq::MeshDefinitions meshData(&definitions);
    texts.querySequential(1);
    meshData.querySequential(1);
    ASSERT_TRUE(texts.readNext() && meshData.readNext());
    texts.setData("sat", 3);
    meshData.setData("mesh", 4);
    EXPECT_EQ(Pull(Geometry(L"plain"), &definitions), "sat");
    EXPECT_EQ(Pull(Obj(0, {}, {}, {}, {}, L"plain", {}), &definitions), "mesh");
}

TEST_F(Records, WhatMayNotBeWrittenIsRefused) {
    gvs::Database readOnly(MakeFrom("direct.sql"));
    mvq::Meshes meshes(&readOnly);
    meshes.querySequential(7);
    ASSERT_TRUE(meshes.readNext());
    EXPECT_THROW(meshes.setData("c", 1), gvs::Error);

    // What SQLite keeps behind an index is not written past it.
    gvs::Database indexed(Make("indexed.db", "CREATE VIRTUAL TABLE t USING fts5(x); INSERT INTO t VALUES ('a')"),
                          gvs::Database::Access::ReadWrite);
    mvq::DbTable behind(&indexed, L"t_data");
    behind.querySequential(nullptr, nullptr, true);
    ASSERT_TRUE(behind.readNext());
    EXPECT_THROW(behind.setBlob(L"block", "a", 1), gvs::Error);
}

/// Gives a connection a function, as a program may do with each that it opens.
int AddHostFunction(sqlite3* connection, char const**, sqlite3_api_routines const*) {
    auto const run = [](sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_int(context, 1); };
    int const flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    return sqlite3_create_function(connection, "host", 1, flags, nullptr, run, nullptr, nullptr);
}

TEST_F(Records, TablesOfEveryKindAreReadOrRefused) {
    auto const add = reinterpret_cast<void (*)()>(&AddHostFunction);
    sqlite3_auto_extension(add);
    auto const tables = FileDom("records/meshes.json");
    Obj const record(1, {}, {}, {}, {}, {}, {});
    for (std::uint64_t i = 0; i < tables.size(); ++i) {
        auto sql = "CREATE TABLE MESHES (" + tables[i]["columns"].asString({});
        for (std::int64_t repeat = 0; repeat < tables[i]["count"].asInt(0); ++repeat) {
            auto const term = tables[i]["term"].asString({});
            auto const number = term.find('#');
            sql += term.substr(0, number) + (number == term.npos ? "" : std::to_string(repeat));
        }
        sql +=
            tables[i]["end"].asString(")") + "; INSERT INTO MESHES " + tables[i]["rows"].asString("DEFAULT VALUES");
        SCOPED_TRACE(sql.substr(0, 200));
        auto const path = Make(std::to_string(i), sql);
        Host const host(path);
        gvs::Database borrowed(host.m_connection), opened(path), writable(path, gvs::Database::Access::ReadWrite);
        for (auto* database : {&borrowed, &opened, &writable})
            EXPECT_EQ(Pull(record, database), tables[i][database == &writable ? "writable" : "pull"].asString({}));
    }
    sqlite3_cancel_auto_extension(add);
}

TEST_F(Records, ReadingACellAsOneKindLeavesItForAnother) {
    for (auto const* encoding : {"UTF-8", "UTF-16le", "UTF-16be"}) {
        gvs::Database database(Make(encoding, std::string("PRAGMA encoding = '") + encoding +
                                                  "'; CREATE TABLE t (a, b TEXT); INSERT INTO t VALUES"
                                                  " (x'FFFE410042', char(0xFFFD))"));
        mvq::DbTable table(&database, L"t");
        table.querySequential(1);
        ASSERT_TRUE(table.readNext());
        int size = 0;
        table.getStringValue(L"a");
        auto const* bytes = table.getBlob(L"a", &size);
        EXPECT_EQ(std::string(bytes, bytes + size), std::string("\xFF\xFE\x41\0\x42", 5)) << encoding;
        for (auto const* text : {L"\xFFFD", L"\xD800", L"\xDFFF"}) { // the last two are halves of characters
            gvs::Expression filter;
            gvs::ExprBuilder builder(filter, nullptr, nullptr);
            PushEqual(builder, L"b", gvs::Value(text));
            EXPECT_EQ(table.queryCount(&filter, false), text[0] == 0xFFFD ? 1 : 0) << encoding;
        }
    }
}

TEST_F(Records, ABlobOfNegativeSizeIsRefused) {
    struct Table : mvq::SATDefinitions {
        using mvq::SATDefinitions::SATDefinitions;
        unsigned char const* getBlob(wchar_t const*, int* size) const override {
            *size = -1;
            return reinterpret_cast<unsigned char const*>("abc");
        }
    };
    gvs::Database database(MakeFrom("definitions.sql"));
    EXPECT_THROW(getBlobText(Table(&database), L"DATA"), std::length_error);
}

/// The texts of a record in the order of its constructor, its number if it has one, and an element of its
/// transform.
std::wstring State(AcisGeometry const& r) {
    return r.Guid() + r.ParentClass() + r.ParentGuid() + r.DataGuid() + r.Category() + L'|' +
           std::to_wstring(r.Index()) + L'|' + std::to_wstring(std::lround(r.Transform()[12]));
}
std::wstring State(Obj const& r) {
    return r.Key() + r.Name() + r.ParentID() + r.ParentClass() + r.DataGuid() + L'|' + std::to_wstring(r.ID()) +
           L'|' + std::to_wstring(std::lround(r.Transform()[12]));
}
std::wstring State(ParametricReference const& r) {
    return r.Path() + r.ParametricType() + r.Data() + L'|' + std::to_wstring(std::lround(r.Transform()[12]));
}

/// Copies, moves and sets a record whose state is to be `full`.
/// \param other    a plain record.
/// \param setters  for its texts, in the order of the constructor.
template <class Record>
void CheckValue(Record record, Record other, std::wstring const& full,
                std::vector<void (Record::*)(std::wstring const&)> const& setters) {
    auto const emptied = full.substr(setters.size());
    auto& self = record;
    record = self;
    record = std::move(self);
    EXPECT_EQ(State(record), full);
    other = std::move(record);
    EXPECT_EQ(State(other) + State(record), full + emptied);
    Record moved(std::move(other));
    EXPECT_EQ(State(moved) + State(other), full + emptied);
    record = moved;
    EXPECT_EQ(State(record) + State(moved), full + full);
    wchar_t text = L'a';
    for (auto const set : setters)
        (record.*set)(std::wstring(1, text++));
    EXPECT_EQ(State(record), std::wstring(L"abcde", setters.size()) + emptied);
}

TEST_F(Records, AreValues) {
    EXPECT_EQ(State(AcisGeometry()), L"|0|0");
    EXPECT_EQ(State(Obj()), L"|-1|0");
    EXPECT_EQ(Obj().Transform().m_elements, (Mat<4, double>::Identity()));
    Mat<4, double> transform;
    transform[12] = 9.0;
    CheckValue(AcisGeometry(L"1", L"2", L"3", L"4", transform, -3, L"5"), AcisGeometry(), L"12345|-3|9",
               {&AcisGeometry::SetGuid, &AcisGeometry::SetParentClass, &AcisGeometry::SetParentGuid,
                &AcisGeometry::SetDataGuid, &AcisGeometry::SetCategory});
    CheckValue(Obj(5, L"1", L"2", L"3", L"4", L"5", transform), Obj(), L"12345|5|9",
               {&Obj::SetKey, &Obj::SetName, &Obj::SetParentID, &Obj::SetParentClass, &Obj::SetDataGuid});
    CheckValue(
        ParametricReference(L"1", L"2", L"3", transform), ParametricReference({}, {}, {}, {}), L"123|9",
        {&ParametricReference::SetPath, &ParametricReference::SetParametricType, &ParametricReference::SetData});
}

} // namespace
