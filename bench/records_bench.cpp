#include "sectrix/interfaces/gvs.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

/// \file
/// What a pull costs beside its statement: one blob of 2 kB out of 20,000 indexed rows, against the same statement
/// kept, bound, stepped and reset by hand.

namespace {

using namespace qel::Sectrix;

int const kRows = 20000;
std::size_t const kBlobSize = 2048;

std::string Guid(int row) {
    auto const digits = std::to_string(row);
    return "{6F9619FF-8B86-D011-B42D-" + std::string(12 - digits.size(), '0') + digits + "}";
}

/// A database file of both schemas' largest tables, removed at the end of the program.
class ModelFile {
public:
    ModelFile() : m_path((std::filesystem::temp_directory_path() / "sectrix_records_bench.db").string()) {
        std::filesystem::remove(m_path);
        sqlite3* connection = nullptr;
        std::string const sql =
            "BEGIN;"
            "CREATE TABLE SAT_GEOMETRIES (GUID TEXT, DATA_GUID TEXT, PARENT_CLASS TEXT, PARENT_GUID TEXT,"
            " \"INDEX\" INTEGER, XFORM TEXT, CATEGORY TEXT);"
            "CREATE TABLE SAT_DEFINITIONS (GUID TEXT, DATA BLOB);"
            "CREATE TABLE MESHES (KEY TEXT, NAME TEXT, PARENT_CLASS TEXT, PARENT_ID TEXT, XFORM TEXT, DATA BLOB,"
            " MTL BLOB);"
            "WITH RECURSIVE rows(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM rows WHERE i + 1 < " +
            std::to_string(kRows) +
            ") INSERT INTO SAT_DEFINITIONS SELECT printf('{6F9619FF-8B86-D011-B42D-%012d}', i), randomblob(" +
            std::to_string(kBlobSize) +
            ") FROM rows;"
            "INSERT INTO MESHES (DATA) SELECT DATA FROM SAT_DEFINITIONS;"
            "CREATE INDEX SAT_DEFINITIONS_GUID ON SAT_DEFINITIONS (GUID);"
            "COMMIT;";
        bool const isMade = sqlite3_open(m_path.c_str(), &connection) == SQLITE_OK &&
                            sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(connection);
        if (!isMade)
            throw std::runtime_error("the database for the benchmark could not be made");
    }
    ~ModelFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    static std::string const& Path() {
        static ModelFile const file;
        return file.m_path;
    }

private:
    std::string m_path;
};

/// Rows in an order that the page cache does not foresee, the same in every run.
int NextRow(int row) {
    return (row + 7919) % kRows;
}

/// The statement by hand, on a connection opened like the library's own.
class ByHand {
public:
    explicit ByHand(char const* sql) {
        sqlite3_open_v2(ModelFile::Path().c_str(), &m_connection, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                        nullptr);
        sqlite3_prepare_v3(m_connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    }
    ~ByHand() {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_connection);
    }
    ByHand(ByHand const&) = delete;
    ByHand& operator=(ByHand const&) = delete;

    sqlite3_stmt* Handle() { return m_statement; }
    /// The blob of the row that the bound statement finds.
    void Read(std::string& out) {
        if (sqlite3_step(m_statement) == SQLITE_ROW) {
            auto const* bytes = static_cast<char const*>(sqlite3_column_blob(m_statement, 0));
            out.assign(bytes, static_cast<std::size_t>(sqlite3_column_bytes(m_statement, 0)));
        }
        sqlite3_reset(m_statement);
    }

private:
    sqlite3* m_connection = nullptr;
    sqlite3_stmt* m_statement = nullptr;
};

void DefinitionByHand(benchmark::State& state) {
    ByHand statement("SELECT DATA FROM SAT_DEFINITIONS WHERE GUID = ?1");
    std::string out;
    int row = 0;
    for (auto _ : state) {
        row = NextRow(row);
        auto const guid = Guid(row);
        sqlite3_bind_text(statement.Handle(), 1, guid.c_str(), -1, SQLITE_STATIC);
        statement.Read(out);
    }
    if (out.size() != kBlobSize)
        state.SkipWithError("no data");
}
BENCHMARK(DefinitionByHand);

void DefinitionPull(benchmark::State& state) {
    gvs::Database database(ModelFile::Path());
    AcisGeometry geometry;
    std::string out;
    int row = 0;
    for (auto _ : state) {
        row = NextRow(row);
        auto const guid = Guid(row);
        geometry.SetDataGuid(std::wstring(guid.begin(), guid.end()));
        geometry.PullDataFromSourceRecord(&database, out);
    }
    if (out.size() != kBlobSize)
        state.SkipWithError("no data");
}
BENCHMARK(DefinitionPull);

void RowIdByHand(benchmark::State& state) {
    ByHand statement("SELECT DATA FROM MESHES WHERE rowid = ?1");
    std::string out;
    int row = 0;
    for (auto _ : state) {
        row = NextRow(row);
        sqlite3_bind_int64(statement.Handle(), 1, row + 1);
        statement.Read(out);
    }
    if (out.size() != kBlobSize)
        state.SkipWithError("no data");
}
BENCHMARK(RowIdByHand);

void RowIdPull(benchmark::State& state) {
    gvs::Database database(ModelFile::Path());
    Obj object;
    std::string out;
    int row = 0;
    for (auto _ : state) {
        row = NextRow(row);
        object.SetID(row + 1);
        object.PullDataFromSourceRecord(&database, out);
    }
    if (out.size() != kBlobSize)
        state.SkipWithError("no data");
}
BENCHMARK(RowIdPull);

} // namespace
