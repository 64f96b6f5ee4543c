#include "sectrix/interfaces/sqlite/statement.h"
#include "sectrix/interfaces/sqlite/guard.h"

#include <algorithm>
#include <cstdint>
#include <sqlite3.h>
#include <string_view>

namespace gvs {

namespace {

void AppendUtf8(std::uint32_t character, std::string& text) {
    // A lead byte with a bit for each byte of the character, then six bits a byte.
    int const following = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    std::uint32_t const lead = following == 0 ? 0 : 0xFF00 >> (following + 1) & 0xFF;
    text += static_cast<char>(lead | character >> 6 * following);
    for (int shift = 6 * (following - 1); shift >= 0; shift -= 6)
        text += static_cast<char>(0x80 | (character >> shift & 0x3F));
}

} // namespace

std::string ToSqlText(wchar_t const* text) {
    std::wstring_view const wide(text ? text : L"");
    auto const isAscii = [](wchar_t element) { return static_cast<std::uint32_t>(element) < 0x80; };
    // Nearly always that of the text.
    auto const* const end = std::find_if_not(wide.data(), wide.data() + wide.size(), isAscii);
    std::string result(wide.data(), end);
    for (text = end; *text; ++text) {
        auto character = static_cast<std::uint32_t>(text[0]);
        auto const next = static_cast<std::uint32_t>(text[1]);
        if (character >> 10 == 0xD800 >> 10 && next >> 10 == 0xDC00 >> 10) { // a high and a low surrogate
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++text;
        }
        AppendUtf8(character <= 0x10FFFF ? character : character & 0xFFFF, result);
    }
    return result;
}

bool IsWellFormed(std::string const& text) {
    // U+D800 to U+DFFF are the characters whose bytes begin with ED A0 to ED BF.
    auto at = text.find('\xED');
    while (at != text.npos && static_cast<unsigned char>(text[at + 1]) < 0xA0)
        at = text.find('\xED', at + 1);
    return at == text.npos;
}

std::string Quoted(std::string const& name) {
    auto quoted = '"' + name + '"';
    for (auto at = quoted.find('"', 1); at + 1 < quoted.size(); at = quoted.find('"', at + 2))
        quoted.insert(at, 1, '"');
    return quoted;
}

bool IsTable(sqlite3* connection, std::string const& table, char const* column) {
    int const result = sqlite3_table_column_metadata(connection, "main", table.c_str(), column, nullptr, nullptr,
                                                     nullptr, nullptr, nullptr);
    if (result != SQLITE_OK && result != SQLITE_ERROR)
        throw Error(sqlite3_errmsg(connection));
    return result == SQLITE_OK;
}

Statement::Statement(Database& database, std::string const& sql)
    : m_database(database), m_handle(nullptr, sqlite3_finalize) {
    if (database.m_guard)
        database.m_guard->BeginStep(); // SQLite may have to read the schema
    sqlite3_stmt* handle = nullptr;
    int const result = sqlite3_prepare_v3(database.m_connection.get(), sql.data(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    m_handle.reset(handle);
    Check(result);
}

void Statement::Bind(int place, Value const& value) {
    auto const& text = value.m_text;
    if (value.m_kind == Value::Integer)
        Check(sqlite3_bind_int64(Handle(), place, value.m_integer));
    else if (IsWellFormed(text))
        Check(sqlite3_bind_text64(Handle(), place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
    else
        Check(sqlite3_bind_null(Handle(), place)); // which nothing equals
}

void Statement::Bind(int place, void const* data, int size) {
    Check(sqlite3_bind_blob(Handle(), place, size == 0 ? "" : data, size, SQLITE_STATIC));
}

bool Statement::Step() {
    if (m_database.m_guard)
        m_database.m_guard->BeginStep();
    int const result = sqlite3_step(Handle());
    if (result != SQLITE_ROW)
        sqlite3_reset(Handle()); // which leaves the reason as it is
    Check(result);
    return result == SQLITE_ROW;
}

void Statement::Reset() noexcept {
    sqlite3_reset(Handle());
}

void Statement::Check(int result) const {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE)
        throw Error(sqlite3_errmsg(m_database.m_connection.get()));
}

} // namespace gvs
