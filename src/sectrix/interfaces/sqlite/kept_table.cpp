#include "sectrix/interfaces/sqlite/kept_table.h"
#include "sectrix/interfaces/sqlite/guard.h"

#include <algorithm>
#include <new>
#include <sqlite3.h>

namespace gvs {

namespace {

char const* ColumnName(Statement const& statement, int place) {
    auto const* name = sqlite3_column_name(statement.Handle(), place);
    if (!name)
        throw std::bad_alloc();
    return name;
}

} // namespace

std::list<KeptTable> KeptTable::Take(Database& database, wchar_t const* name) {
    auto const wanted = ToSqlText(name);
    auto& kept = database.m_kept;
    std::list<KeptTable> table;
    auto const found = std::find_if(kept.begin(), kept.end(),
                                    [&](KeptTable const& candidate) { return candidate.m_name == wanted; });
    if (found == kept.end())
        table.emplace_back(database, wanted);
    else
        table.splice(table.begin(), kept, found);
    table.front().Begin();
    return table;
}

void KeptTable::Keep(std::list<KeptTable>& table) noexcept {
    auto& self = table.front();
    self.m_reading.Reset();
    for (auto& [sql, query] : self.m_queries)
        query.Reset();
    self.m_database.m_kept.splice(self.m_database.m_kept.begin(), table);
}

// The statement gives one row at no cost. On a file that nobody vouches for it must not name the table, which may
// not be compiled yet. On a connection of the host it names nothing else, which the host may have forbidden.
KeptTable::KeptTable(Database& database, std::string const& name)
    : m_database(database), m_name(name), m_source("main." + Quoted(name)),
      m_reading(database, "SELECT NOT EXISTS (SELECT 1 FROM " +
                              (database.m_guard ? "main.sqlite_schema" : m_source) + " WHERE 0)") {}

void KeptTable::Begin() {
    m_reading.Step();
    int const recompilations = sqlite3_stmt_status(m_reading.Handle(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (recompilations == m_recompilations)
        return;
    m_queries.clear();
    if (m_database.m_guard)
        m_database.m_guard->RequireStoredRows(m_database, m_name);
    ReadSchema();
    m_recompilations = recompilations;
}

void KeptTable::ReadSchema() {
    Statement const named(m_database, "SELECT t.* FROM (SELECT 1 AS a) AS t");
    m_prefix = ColumnName(named, 0);
    m_prefix.pop_back();
    Statement const all(m_database, "SELECT t.* FROM " + m_source + " AS t");
    int const count = sqlite3_column_count(all.Handle());
    m_columns.m_columns.clear();
    for (int place = 0; place < count; ++place)
        m_columns.m_columns.emplace_back(ColumnName(all, place) + m_prefix.size());

    auto* const connection = m_database.m_connection.get();
    bool const hasRoom = count < sqlite3_limit(connection, SQLITE_LIMIT_COLUMN, -1);
    m_rowId.clear();
    // A column of the table's own may have one of these names, and hides it.
    for (auto const* name : {L"_rowid_", L"oid", L"rowid"})
        if (auto const alias = ToSqlText(name);
            hasRoom && !m_columns[name] && IsTable(connection, m_name, alias.c_str()))
            m_rowId = alias;
    m_row = m_rowId.empty() ? "t.*" : "t." + m_rowId + ", t.*";
}

Statement& KeptTable::Select(std::string const& what, Expression const* filter) {
    // Columns are named through t, since SQLite takes a quoted name that stands alone for a text when there is no
    // such column.
    auto sql = "SELECT " + what + " FROM " + m_source + " AS t";
    if (auto const condition = filter ? filter->Condition(m_rowId) : std::string(); !condition.empty())
        sql += " WHERE " + condition;
    auto& query = m_queries.try_emplace(sql, m_database, sql).first->second;
    query.Reset();
    int place = 0;
    if (filter)
        for (auto const& constant : filter->m_constants)
            query.Bind(++place, constant);
    return query;
}

int KeptTable::PlaceOf(wchar_t const* column, Statement const& rows) const {
    // Of the query, not of `m_columns`: a host may have changed the table since, on the connection that it lends.
    auto const name = ToSqlText(column);
    if (!m_rowId.empty() && sqlite3_stricmp(name.c_str(), "rowid") == 0)
        return 0;
    auto const full = m_prefix + name;
    for (int place = m_rowId.empty() ? 0 : 1; place < sqlite3_column_count(rows.Handle()); ++place)
        if (sqlite3_stricmp(ColumnName(rows, place), full.c_str()) == 0)
            return place;
    throw Error("no such column: " + name);
}

void KeptTable::Store(wchar_t const* column, std::int64_t rowId, void const* data, int size) {
    if (m_rowId.empty())
        throw Error("no row ids are read from: " + m_source);
    Statement statement(m_database, "UPDATE " + m_source + " SET " + Quoted(ToSqlText(column)) + " = ?2 WHERE " +
                                        m_rowId + " = ?1");
    statement.Bind(1, Value(rowId));
    statement.Bind(2, data, size);
    statement.Step();
}

} // namespace gvs
