#include "sectrix/interfaces/db_table.h"
#include "sectrix/interfaces/promise.h"

#include <sqlite3.h>

using host::Promise;

namespace gvs {

Database::Database(std::string const& path) {
    Promise(sqlite3_open_v2(path.c_str(), &m_connection, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK, "a file");
}

Database::~Database() {
    Promise(sqlite3_close(m_connection) == SQLITE_OK, "no table outlives its database");
}

ColumnDef const* TableDef::operator[](wchar_t const* column) const {
    auto const found = m_columns.find(column);
    return found == m_columns.end() ? nullptr : &found->second;
}

void ExprBuilder::Identifier(wchar_t const* name) {
    std::wstring const wide(name);
    m_target.m_operands.push_back('"' + std::string(wide.begin(), wide.end()) + '"'); // all are ASCII
}

void ExprBuilder::Constant(Value const& value) {
    m_target.m_operands.emplace_back("?");
    m_target.m_constants.push_back(value);
}

void ExprBuilder::CmpOp(ComparisonOps op) {
    Promise(op == 0, "a comparison is one for equality");
    Join(" = ");
}

void ExprBuilder::BooleanOp(LogicalOps op) {
    Promise(op == 0, "conditions are joined by and");
    Join(" AND ");
}

void ExprBuilder::Join(char const* sqlOperator) {
    auto& operands = m_target.m_operands;
    Promise(operands.size() >= 2, "an operator stands behind its operands");
    auto const second = operands.back();
    operands.pop_back();
    operands.back() = '(' + operands.back() + sqlOperator + second + ')';
}

} // namespace gvs

namespace mvq {

DbTable::DbTable(gvs::Database* db, wchar_t const* table) : m_database(*db) {
    Promise(db != nullptr, "a table has a database");
    std::wstring const wide(table);
    m_name.assign(wide.begin(), wide.end());
    Prepare("SELECT name FROM pragma_table_info('" + m_name + "')");
    while (sqlite3_step(m_query) == SQLITE_ROW) {
        std::string const name(reinterpret_cast<char const*>(sqlite3_column_text(m_query, 0)));
        m_def.m_columns[std::wstring(name.begin(), name.end())];
    }
}

DbTable::~DbTable() {
    sqlite3_finalize(m_query);
}

void DbTable::Prepare(std::string const& sql) {
    sqlite3_finalize(m_query);
    m_hasRow = false;
    Promise(sqlite3_prepare_v2(m_database.m_connection, sql.c_str(), -1, &m_query, nullptr) == SQLITE_OK,
            "a table and the columns of a filter are there");
}

void DbTable::querySequential(gvs::Expression const* filter, wchar_t const* text, bool flag) {
    Promise(filter && filter->m_operands.size() <= 1 && !text && flag, "a query is for a filter that is built");
    Prepare("SELECT * FROM " + m_name + (filter->m_operands.empty() ? "" : " WHERE " + filter->m_operands[0]));
    int number = 0;
    for (auto const& constant : filter->m_constants) {
        std::u16string const units(constant.m_text.begin(), constant.m_text.end());
        if (constant.m_isText)
            sqlite3_bind_text16(m_query, ++number, units.c_str(), -1, SQLITE_TRANSIENT);
        else
            sqlite3_bind_int64(m_query, ++number, constant.m_integer);
    }
}

bool DbTable::readNext() {
    m_hasRow = sqlite3_step(m_query) == SQLITE_ROW;
    return m_hasRow;
}

int DbTable::PlaceOf(wchar_t const* column) const {
    Promise(m_hasRow && m_def[column], "what is read is a column of a row");
    std::wstring const wide(column);
    int place = 0;
    while (std::string(wide.begin(), wide.end()) != sqlite3_column_name(m_query, place))
        ++place;
    return place;
}

wchar_t const* DbTable::getStringValue(wchar_t const* column) const {
    auto const place = PlaceOf(column);
    auto const* units = static_cast<char16_t const*>(sqlite3_column_text16(m_query, place));
    if (!units)
        return nullptr;
    m_text.assign(units, units + sqlite3_column_bytes16(m_query, place) / 2);
    return m_text.c_str();
}

unsigned char const* DbTable::getBlob(wchar_t const* column, int* size) const {
    Promise(*size == 0, "the size is 0 before");
    auto const place = PlaceOf(column);
    auto const* bytes = static_cast<unsigned char const*>(sqlite3_column_blob(m_query, place));
    *size = sqlite3_column_bytes(m_query, place);
    return bytes;
}

/// Only called by what a host itself calls.
void DbTable::setBlob(wchar_t const*, void const*, int) {
    std::abort();
}

} // namespace mvq
