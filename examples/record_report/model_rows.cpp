#include "record_report/model_rows.h"

#include <cstdint>
#include <sstream>
#include <stdexcept>

namespace example {
namespace {

using qel::Mat;
using qel::Sectrix::AcisGeometry;
using qel::Sectrix::Obj;

[[noreturn]] void Fail(sqlite3* connection) {
    char const* const path = sqlite3_db_filename(connection, "main");
    throw std::runtime_error(std::string(path ? path : "") + ": " + sqlite3_errmsg(connection));
}

/// The rows of a query, one at a time.
class Query {
public:
    Query(sqlite3* connection, std::string const& sql)
        : m_connection(connection), m_row(nullptr, sqlite3_finalize) {
        sqlite3_stmt* row = nullptr;
        if (sqlite3_prepare_v2(connection, sql.c_str(), -1, &row, nullptr) != SQLITE_OK)
            Fail(connection);
        m_row.reset(row);
    }

    bool Next() {
        int const result = sqlite3_step(m_row.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE)
            Fail(m_connection);
        return result == SQLITE_ROW;
    }

    std::int64_t Integer(int column) const { return sqlite3_column_int64(m_row.get(), column); }
    /// One 16-bit unit an element, as the records take it; empty for a NULL.
    std::wstring Text(int column) const {
        auto const* units = static_cast<char16_t const*>(sqlite3_column_text16(m_row.get(), column));
        return units ? std::wstring(units, units + sqlite3_column_bytes16(m_row.get(), column) / 2)
                     : std::wstring();
    }
    /// 16 numbers between spaces, row by row; the identity for anything else.
    Mat<4, double> Transform(int column) const {
        auto const* text = reinterpret_cast<char const*>(sqlite3_column_text(m_row.get(), column));
        std::istringstream numbers(text ? text : "");
        Mat<4, double> transform;
        for (double& number : transform.m_elements)
            if (!(numbers >> number))
                return {};
        return transform;
    }

private:
    sqlite3* m_connection;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> m_row;
};

/// The column that refers to a definition, or an empty text where there is none.
std::string DataGuid(sqlite3* connection, std::string const& table) {
    return HasDefinitions(connection, table) ? "DATA_GUID" : "''";
}

} // namespace

Connection Open(std::string const& path) {
    sqlite3* opened = nullptr;
    int const result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    Connection connection(opened, sqlite3_close);
    if (result != SQLITE_OK)
        throw std::runtime_error(path + ": " + sqlite3_errstr(result));
    return connection;
}

bool HasDefinitions(sqlite3* connection, std::string const& table) {
    return Query(connection, "SELECT 1 FROM pragma_table_info('" + table + "') WHERE name = 'DATA_GUID'").Next();
}

std::vector<AcisGeometry> ReadGeometries(sqlite3* connection) {
    Query row(connection, "SELECT GUID, PARENT_CLASS, PARENT_GUID, " + DataGuid(connection, "SAT_GEOMETRIES") +
                              ", XFORM, \"INDEX\", CATEGORY FROM SAT_GEOMETRIES ORDER BY rowid");
    std::vector<AcisGeometry> records;
    while (row.Next())
        records.emplace_back(row.Text(0), row.Text(1), row.Text(2), row.Text(3), row.Transform(4),
                             static_cast<int>(row.Integer(5)), row.Text(6));
    return records;
}

std::vector<Obj> ReadMeshes(sqlite3* connection) {
    Query row(connection, "SELECT rowid, KEY, NAME, PARENT_ID, PARENT_CLASS, " + DataGuid(connection, "MESHES") +
                              ", XFORM FROM MESHES ORDER BY rowid");
    std::vector<Obj> records;
    while (row.Next())
        records.emplace_back(row.Integer(0), row.Text(1), row.Text(2), row.Text(3), row.Text(4), row.Text(5),
                             row.Transform(6));
    return records;
}

} // namespace example
