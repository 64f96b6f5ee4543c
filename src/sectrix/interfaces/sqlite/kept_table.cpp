#include "sectrix/interfaces/sqlite/kept_table.h"
#include "sectrix/interfaces/sqlite/guard.h"

#include <algorithm>
#include <cstring>
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
    auto const* wanted = name ? name : L"";
    auto& kept = database.m_kept;
    std::list<KeptTable> table;
    auto const found = std::find_if(kept.begin(), kept.end(), [&](KeptTable const& candidate) {
        return IsCalled(candidate.m_name.c_str(), wanted);
    });
    if (found == kept.end())
        table.emplace_back(database, ToSqlText(wanted));
    else
        table.splice(table.begin(), kept, found);
    table.front().Begin();
    return table;
}

void KeptTable::Keep(std::list<KeptTable>& table) noexcept {
    auto& self = table.front();
    self.m_reading.Reset();
    self.m_database.m_kept.splice(self.m_database.m_kept.begin(), table);
}

// The statement gives one row and reads nothing. On a file that nobody vouches for it must not name the table,
// which may not be compiled yet. On a connection of the host it names nothing else, which the host may have
// forbidden.
KeptTable::KeptTable(Database& database, std::string const& name)
    : m_database(database), m_name(name), m_source("main." + Quoted(name)),
      m_reading(database, "SELECT CASE WHEN 0 THEN (SELECT 1 FROM " +
                              (database.m_guard ? "main.sqlite_schema" : m_source) + ") END") {}

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
    m_lastPlace = m_rowId.empty() ? 0 : 1;
}

Statement KeptTable::Prepare(std::string const& what, Expression const& filter) const {
    // Columns are named through t, since SQLite takes a quoted name that stands alone for a text when there is no
    // such column.
    auto sql = "SELECT " + what + " FROM " + m_source + " AS t";
    if (auto const condition = filter.Condition(m_rowId); !condition.empty())
        sql += " WHERE " + condition;
    return Statement(m_database, sql);
}

Statement& KeptTable::Select(std::string const& what, Expression const* filter) {
    Expression const all;
    auto const& wanted = filter ? *filter : all;
    wanted.RequireCondition();
    auto query = std::find_if(m_queries.begin(), m_queries.end(), [&](Query const& candidate) {
        return candidate.m_what == what && candidate.m_filter.HasColumnsOf(wanted);
    });
    if (query == m_queries.end())
        query = m_queries.insert(query, {what, wanted, Prepare(what, wanted)});
    int place = 0;
    for (auto const& operand : wanted.m_operands)
        if (operand.m_kind != Value::kColumn)
            query->m_statement.Bind(++place, operand);
    return query->m_statement;
}

int KeptTable::PlaceOf(wchar_t const* column, Statement const& rows) const {
    // Of the query, not of `m_columns`: a host may have changed the table since, on the connection that it lends.
    auto const* name = column ? column : L"";
    if (!m_rowId.empty() && IsCalled("rowid", name))
        return 0;
    int const count = sqlite3_column_count(rows.Handle());
    auto const isIt = [&](int place) {
        auto const* const full = ColumnName(rows, place);
        return std::strncmp(full, m_prefix.c_str(), m_prefix.size()) == 0 && IsCalled(full + m_prefix.size(), name);
    };
    // Nearly always it is the column that was asked for last, and no two have one name.
    if (m_lastPlace < count && isIt(m_lastPlace))
        return m_lastPlace;
    for (int place = m_rowId.empty() ? 0 : 1; place < count; ++place)
        if (isIt(place))
            return m_lastPlace = place;
    throw Error("no such column: " + ToSqlText(name));
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
