#include "sectrix/interfaces/db_table.h"
#include "sectrix/interfaces/sqlite/kept_table.h"

#include <new>
#include <sqlite3.h>

namespace mvq {

DbTable::DbTable(gvs::Database* db, wchar_t const* table)
    : m_taken(gvs::KeptTable::Take(*db, table)), m_table(m_taken.front()) {}

DbTable::~DbTable() {
    if (m_query)
        m_query->Reset();
    gvs::KeptTable::Keep(m_taken);
}

bool DbTable::isNull(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_type(m_query->Handle(), place) == SQLITE_NULL;
}

std::int64_t DbTable::getInt64Value(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_int64(m_query->Handle(), place);
}

double DbTable::getDoubleValue(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_double(m_query->Handle(), place);
}

wchar_t const* DbTable::getStringValue(wchar_t const* column) const {
    int const place = PlaceOf(column);
    // Of a copy, since a conversion leaves the cell with something else than is stored.
    std::unique_ptr<sqlite3_value, void (*)(sqlite3_value*)> const copy(
        sqlite3_value_dup(sqlite3_column_value(m_query->Handle(), place)), sqlite3_value_free);
    if (copy && sqlite3_value_type(copy.get()) == SQLITE_NULL)
        return nullptr;
    auto const* units = static_cast<char16_t const*>(sqlite3_value_text16(copy.get()));
    if (!units)
        throw std::bad_alloc();
    auto const* end = units + static_cast<std::size_t>(sqlite3_value_bytes16(copy.get())) / sizeof(char16_t);
    return m_texts[place].assign(units, end).c_str();
}

unsigned char const* DbTable::getBlob(wchar_t const* column, int* size) const {
    int const place = PlaceOf(column);
    // In this order, since asking for the size may convert a text to UTF-8 and move it.
    *size = sqlite3_column_bytes(m_query->Handle(), place);
    auto const* bytes = static_cast<unsigned char const*>(sqlite3_column_blob(m_query->Handle(), place));
    if (!bytes && *size > 0)
        throw std::bad_alloc();
    return bytes;
}

void DbTable::setBlob(wchar_t const* column, void const* data, int size) {
    if (size < 0)
        throw gvs::Error("a blob has no negative size");
    m_table.Store(column, getInt64Value(_ID()), data, size);
}

void DbTable::querySequential(std::int64_t id) {
    gvs::Expression filter;
    gvs::ExprBuilder builder(filter, nullptr, nullptr);
    builder.Identifier(_ID());
    builder.Constant(gvs::Value(id));
    builder.CmpOp(gvs::ExprBuilder::Equal);
    querySequential(&filter, nullptr, true);
}

void DbTable::querySequential(gvs::Expression const* filter, wchar_t const* order, bool) {
    if (order)
        NotSupported("querySequential with an order");
    endQuery();
    m_query = &m_table.Rows(filter);
}

bool DbTable::readNext() {
    m_texts.clear();
    if (m_query && m_query->Step())
        return true;
    endQuery(); // SQLite would begin the query again at the next step
    return false;
}

void DbTable::endQuery() {
    m_texts.clear();
    if (m_query)
        m_query->Reset();
    m_query = nullptr;
}

bool DbTable::queryIsEmpty(gvs::Expression const* filter) const {
    auto& query = m_table.Select("1", filter);
    bool const isEmpty = !query.Step();
    query.Reset();
    return isEmpty;
}

std::int64_t DbTable::queryCount(gvs::Expression const* filter, bool) const {
    // Not "count(*)", a single instruction that cannot be interrupted.
    auto& query = m_table.Select("count(1)", filter);
    query.Step();
    auto const count = sqlite3_column_int64(query.Handle(), 0);
    query.Reset();
    return count;
}

gvs::TableDef const& DbTable::getDef() const {
    return m_table.Columns();
}

int DbTable::PlaceOf(wchar_t const* column) const {
    if (!m_query || sqlite3_data_count(m_query->Handle()) == 0)
        throw gvs::Error("there is no current row");
    return m_table.PlaceOf(column, *m_query);
}

} // namespace mvq
