#include "sectrix/interfaces/statement.h"

#include <cwchar>
#include <sqlite3.h>

namespace gvs {

namespace {

/// Writes one character and returns the place behind it.
char* EncodeCharacter(std::uint32_t character, char* target) {
    auto const put = [&target](std::uint32_t byte) { *target++ = static_cast<char>(byte); };
    if (character < 0x80) {
        put(character);
        return target;
    }
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            put(0xE0 | character >> 12);
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
        }
        put(0x80 | (character >> 6 & 0x3F));
    }
    put(0x80 | (character & 0x3F));
    return target;
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
    std::string result(4 * std::wcslen(text), '\0'); // no character needs more
    char* end = result.data();
    for (; *text; ++text) {
        auto character = static_cast<std::uint32_t>(*text);
        auto const next = static_cast<std::uint32_t>(text[1]);
        if (IsHighSurrogate(character) && IsLowSurrogate(next)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++text;
        }
        end = EncodeCharacter(character <= 0x10FFFF ? character : character & 0xFFFF, end);
    }
    result.resize(static_cast<std::size_t>(end - result.data()));
    return result;
}

std::string Quoted(std::string const& name) {
    auto quoted = '"' + name + '"';
    for (auto at = quoted.find('"', 1); at + 1 < quoted.size(); at = quoted.find('"', at + 2))
        quoted.insert(at, 1, '"');
    return quoted;
}

Statement::Statement(Database& database, std::string_view sql, Expression const* filter) : m_database(database) {
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
    m_database.m_idle.insert(std::move(m_prepared));
}

void Statement::Bind(int place, Value const& value) {
    auto const& text = value.m_text;
    int const result =
        value.m_kind == Value::Integer
            ? sqlite3_bind_int64(Handle(), place, value.m_integer)
            : sqlite3_bind_text64(Handle(), place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (result != SQLITE_OK)
        Fail();
}

void Statement::Bind(int place, void const* data, int size) {
    if (sqlite3_bind_blob(Handle(), place, size == 0 ? "" : data, size, SQLITE_STATIC) != SQLITE_OK)
        Fail();
}

bool Statement::Step() {
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
