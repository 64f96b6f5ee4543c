#include "sectrix/interfaces/sqlite/statement.h"

#include <algorithm>
#include <cwchar>
#include <sqlite3.h>

namespace gvs {

namespace {

void AppendUtf8(std::uint32_t character, std::string& text) {
    auto const append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80)
        return append(character);
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            append(0xE0 | character >> 12);
        } else {
            append(0xF0 | character >> 18);
            append(0x80 | (character >> 12 & 0x3F));
        }
        append(0x80 | (character >> 6 & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

bool IsAscii(wchar_t element) {
    return static_cast<std::uint32_t>(element) < 0x80;
}

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::string ToSqlText(wchar_t const* text) {
    if (!text)
        return {};
    auto const* const end = text + std::wcslen(text);
    if (std::all_of(text, end, IsAscii)) // nearly always, and a pull converts half a dozen names
        return std::string(text, end);
    std::string result;
    for (; text != end; ++text) {
        auto character = static_cast<std::uint32_t>(*text);
        auto const next = static_cast<std::uint32_t>(text[1]);
        if (IsHighSurrogate(character) && IsLowSurrogate(next)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++text;
        }
        AppendUtf8(character <= 0x10FFFF ? character : character & 0xFFFF, result);
    }
    return result;
}

std::string Quoted(std::string const& name) {
    auto quoted = '"' + name + '"';
    for (auto at = quoted.find('"', 1); at + 1 < quoted.size(); at = quoted.find('"', at + 2))
        quoted.insert(at, 1, '"');
    return quoted;
}

Statement::Statement(Database& database, std::string_view sql, Expression const* filter) : m_database(database) {
    m_database.m_reports = 0; // SQLite may have to read the schema
    auto idle = m_database.m_idle.find(sql);
    if (idle == m_database.m_idle.end()) {
        sqlite3_stmt* handle = nullptr;
        if (sqlite3_prepare_v3(m_database.m_connection.get(), sql.data(), static_cast<int>(sql.size()),
                               SQLITE_PREPARE_PERSISTENT, &handle, nullptr) != SQLITE_OK)
            Fail();
        Database::Prepared prepared;
        prepared.m_handle.reset(handle);
        idle = m_database.m_idle.emplace(sql, std::move(prepared));
    }
    m_prepared = m_database.m_idle.extract(idle);

    int place = 0;
    if (filter)
        for (auto const& constant : filter->Constants())
            Bind(++place, constant);
}

Statement::~Statement() {
    sqlite3_reset(Handle());
    sqlite3_clear_bindings(Handle());
    if (!IsRecompiled())
        m_database.m_idle.insert(std::move(m_prepared));
}

bool Statement::IsKept(Database const& database, std::string_view sql) {
    return database.m_idle.find(sql) != database.m_idle.end();
}

bool Statement::IsRecompiled() const {
    return sqlite3_stmt_status(Handle(), SQLITE_STMTSTATUS_REPREPARE, 0) > 0;
}

void Statement::Bind(int place, Value const& value) {
    if (value.m_kind != Value::Integer)
        Bind(place, value.m_text);
    else if (sqlite3_bind_int64(Handle(), place, value.m_integer) != SQLITE_OK)
        Fail();
}

void Statement::Bind(int place, std::string const& text) {
    if (sqlite3_bind_text64(Handle(), place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8) != SQLITE_OK)
        Fail();
}

void Statement::Bind(int place, void const* data, int size) {
    if (sqlite3_bind_blob(Handle(), place, size == 0 ? "" : data, size, SQLITE_STATIC) != SQLITE_OK)
        Fail();
}

bool Statement::Step() {
    m_database.m_reports = 0;
    int const result = sqlite3_step(Handle());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        Fail();
    auto& prepared = m_prepared.mapped();
    int const repreparations = sqlite3_stmt_status(Handle(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (repreparations != prepared.m_repreparations) {
        prepared.m_columns = TableDef(Handle());
        prepared.m_repreparations = repreparations;
    }
    return result == SQLITE_ROW;
}

void Statement::Fail() const {
    throw Error(sqlite3_errmsg(m_database.m_connection.get()));
}

} // namespace gvs
