#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/gvs.h"
#include "sectrix/interfaces/sqlite/statement.h"

#include <list>
#include <string>

/// \file
/// A table with all that was prepared for reading it.

namespace gvs {

/// A table of a database, its schema, and the statements that read and write it.
///
/// Making one costs several times as much as reading a row. So the database keeps it when a use is over, for the
/// next use of a table of that name. What it holds is true to one state of the schema. Each use begins with a step
/// of the statement `m_reading`; where the schema has changed since, by whomever, SQLite compiles that statement
/// anew before the step. So when it has done that, all that the table holds is dropped and made afresh, and else
/// all of it is good.
class KeptTable {
public:
    /// Begins a use: of a table that the database keeps, or of a new one. From then on the database is read in one
    /// state, whatever other connections write.
    /// \return a list of one.
    SECTRIX_GVS_EXPORT static std::list<KeptTable> Take(Database& database, wchar_t const* name);
    /// Ends the use, and with it the table's hold on the database, which keeps the table. All queries of the table
    /// have been reset. Needs no memory, so it cannot fail.
    SECTRIX_GVS_EXPORT static void Keep(std::list<KeptTable>& table) noexcept;
    /// For `Take`; begins no use.
    /// \param name  in UTF-8.
    KeptTable(Database& database, std::string const& name);

    /// The schema.
    TableDef const& Columns() const { return m_columns; }
    /// A query for whole rows: the row id, where there is one, and all columns.
    /// \param filter  null or empty for all.
    Statement& Rows(Expression const* filter) { return Select(m_row, filter); }
    /// Another query, also while one for rows is at work. It is reset again before the next use of it.
    /// \param what    of a row, in SQL.
    /// \param filter  null or empty for all rows.
    SECTRIX_GVS_EXPORT Statement& Select(std::string const& what, Expression const* filter);
    /// The place of a column in the row that a query of `Rows` stands on.
    /// \throws Error when there is none.
    SECTRIX_GVS_EXPORT int PlaceOf(wchar_t const* column, Statement const& rows) const;
    /// Stores bytes in a column of the row with this row id.
    SECTRIX_GVS_EXPORT void Store(wchar_t const* column, std::int64_t rowId, void const* data, int size);

private:
    /// A query prepared for all filters on the same columns.
    struct Query {
        std::string m_what;
        /// Its constants are of no account.
        Expression m_filter;
        Statement m_statement;
    };

    void Begin();
    void ReadSchema();
    Statement Prepare(std::string const& what, Expression const& filter) const;

    Database& m_database;
    /// In UTF-8.
    std::string const m_name;
    /// The table as SQL names it. "main" keeps temporary tables of the same name out.
    std::string const m_source;
    /// Stands on a row during a use, and that holds the read open.
    Statement m_reading;
    /// How often SQLite had compiled `m_reading` anew when what follows was made; -1 before that.
    int m_recompilations = -1;
    TableDef m_columns;
    /// What SQLite puts before the name of each column: "t." under some settings of a connection, else nothing.
    std::string m_prefix;
    /// The name by which SQL reaches the row id. Empty for what has none: views, and tables made WITHOUT ROWID; and
    /// for a table of SQLite's greatest number of columns, where a query has no room for it.
    std::string m_rowId;
    /// What `Rows` selects, in SQL.
    std::string m_row;
    std::list<Query> m_queries;
    /// Where `PlaceOf` has found a column last.
    mutable int m_lastPlace = 0;
};

} // namespace gvs
