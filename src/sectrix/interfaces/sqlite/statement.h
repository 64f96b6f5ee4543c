#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/gvs.h"

#include <cstdint>
#include <memory>
#include <sqlite3.h>
#include <string>

/// \file
/// SQL on a model database: how names and texts are written in it, and statements.

namespace gvs {

/// The text in UTF-8 with surrogate pairs joined, as SQLite wants it; empty when `text` is null. A surrogate
/// without its partner becomes three bytes, as in `IsWellFormed`.
std::string ToSqlText(wchar_t const* text);

/// True where `name`, in UTF-8, is what `ToSqlText` makes of `text`, the case of ASCII letters aside; not null.
inline bool IsCalled(char const* name, wchar_t const* text) {
    auto const folded = [](std::uint32_t letter) { return letter - 'A' < 26 ? letter + ('a' - 'A') : letter; };
    for (; static_cast<std::uint32_t>(*text) < 0x80; ++name, ++text) {
        if (folded(static_cast<unsigned char>(*name)) != folded(static_cast<std::uint32_t>(*text)))
            return false;
        if (*name == '\0')
            return true;
    }
    return sqlite3_stricmp(name, ToSqlText(text).c_str()) == 0;
}

/// True unless a surrogate stands alone in what `ToSqlText` gave. SQLite would take another character for it, and
/// which one depends on the encoding of the file.
bool IsWellFormed(std::string const& text);

/// The name as an SQL identifier.
std::string Quoted(std::string const& name);

/// True where SQLite knows a table of this name in the model, with such a column unless that is null. For SQLite a
/// view is no table, and the row id is a column. Compiles nothing.
bool IsTable(sqlite3* connection, std::string const& table, char const* column);

/// One SQL statement, prepared, and the row that it stands on.
class Statement {
public:
    /// \throws Error when SQLite cannot prepare it, for instance as there is no such table.
    Statement(Database& database, std::string const& sql);

    /// \param place  of the parameter, counted from 1.
    void Bind(int place, Value const& value);
    /// Binds bytes, which are not copied; no bytes are an empty blob, not a NULL.
    /// \param place  of the parameter, counted from 1.
    void Bind(int place, void const* data, int size);

    /// Goes to the next row and returns true when there is one. Where there is none, the statement is reset.
    /// \throws Error when SQLite fails, for instance as the database is locked or corrupt.
    SECTRIX_GVS_EXPORT bool Step();
    /// Leaves the row; what was bound stays.
    SECTRIX_GVS_EXPORT void Reset() noexcept;

    /// SQLite's own handle.
    sqlite3_stmt* Handle() const { return m_handle.get(); }

private:
    /// Raises what SQLite says, unless all went well.
    void Check(int result) const;

    Database& m_database;
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> m_handle;
};

} // namespace gvs
