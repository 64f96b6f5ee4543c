#pragma once

#include "sectrix/interfaces/gvs.h"

#include <string>
#include <string_view>

/// \file
/// SQL at work on a model database: for the layer above the handle, not for the host.

namespace gvs {

/// The text in UTF-8 with surrogate pairs joined, as SQLite wants it; empty when `text` is null. A surrogate
/// without its partner is kept as three bytes, which no well-formed text equals.
SECTRIX_EXPORT std::string ToSqlText(wchar_t const* text);

/// The name as an SQL identifier.
SECTRIX_EXPORT std::string Quoted(std::string const& name);

/// The use of one prepared statement.
///
/// The statement is taken from those that the database keeps, or prepared when none of this SQL is idle, and goes
/// back when the use ends. Two uses of the same SQL at once are therefore two statements.
class SECTRIX_EXPORT Statement {
public:
    /// Binds the constants of `filter`, where there is one, to the first parameters.
    /// \param sql  one statement; the text is what it is kept by.
    /// \throws Error when it cannot be prepared, for instance as there is no such table.
    Statement(Database& database, std::string_view sql, Expression const* filter = nullptr);
    /// Ends the use, and with it the statement's hold on the database. Where the schema has changed, the statement
    /// goes: what was made sure of before it was compiled holds for those that are kept.
    ~Statement();

    Statement(Statement const&) = delete;
    Statement& operator=(Statement const&) = delete;

    /// True when the database keeps an idle statement of this SQL.
    static bool IsKept(Database const& database, std::string_view sql);
    /// True when SQLite has compiled the statement anew, as the schema has changed since it was prepared.
    bool IsRecompiled() const;

    /// \param place  of the parameter, counted from 1.
    void Bind(int place, Value const& value);
    /// Binds a copy of a text in UTF-8.
    /// \param place  of the parameter, counted from 1.
    void Bind(int place, std::string const& text);
    /// Binds bytes, which are not copied; no bytes are an empty blob, not a NULL.
    /// \param place  of the parameter, counted from 1.
    void Bind(int place, void const* data, int size);

    /// Goes to the next row and returns true when there is one.
    /// \throws Error when SQLite fails, for instance as the database is locked or corrupt.
    bool Step();

    /// The columns of a row, true to the schema that the last `Step` found.
    TableDef const& Columns() const { return m_prepared.mapped().m_columns; }
    /// SQLite's own handle, good for as long as this use.
    sqlite3_stmt* Handle() const { return m_prepared.mapped().m_handle.get(); }
    /// Raises what SQLite says of its latest failure.
    [[noreturn]] void Fail() const;

private:
    Database& m_database;
    /// Out of the database's list for as long as the use lasts; going back needs no memory, so it cannot fail.
    Database::Statements::node_type m_prepared;
};

} // namespace gvs
