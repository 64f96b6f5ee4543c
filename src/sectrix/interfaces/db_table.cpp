#include "sectrix/interfaces/db_table.h"

#include <sqlite3.h>

namespace mvq {

namespace {

std::size_t const kUsualLength = 192; // of a query

[[noreturn]] void NotSupported(char const* operation) {
    throw gvs::Error(std::string("mvq::DbTable::") + operation + " is not supported");
}

} // namespace

DbTable::DbTable(gvs::Database* db, wchar_t const* table)
    : m_database(*db), m_name(gvs::ToSqlText(table)), m_source("main." + gvs::Quoted(m_name)),
      m_schema(*db, SchemaQuery()) {
    m_schema.Step();
    if (m_schema.IsRecompiled()) // the table may be another one now
        RequireStoredRows();
}

DbTable::~DbTable() = default;

bool DbTable::isNull(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_type(m_query->Handle(), place) == SQLITE_NULL;
}

bool DbTable::getBooleanValue(wchar_t const* column) const {
    return getInt64Value(column) != 0;
}

std::int32_t DbTable::getInt32Value(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_int(m_query->Handle(), place);
}

std::int64_t DbTable::getInt64Value(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_int64(m_query->Handle(), place);
}

double DbTable::getDoubleValue(wchar_t const* column) const {
    int const place = PlaceOf(column);
    return sqlite3_column_double(m_query->Handle(), place);
}

wchar_t const* DbTable::getDateTimeValue(wchar_t const* column) const {
    return getStringValue(column);
}

wchar_t const* DbTable::getStringValue(wchar_t const* column) const {
    int const place = PlaceOf(column);
    auto* const row = m_query->Handle();
    if (sqlite3_column_type(row, place) == SQLITE_NULL)
        return nullptr;
    auto const* units = static_cast<char16_t const*>(sqlite3_column_text16(row, place));
    if (!units)
        m_query->Fail();
    auto const* end = units + static_cast<std::size_t>(sqlite3_column_bytes16(row, place)) / sizeof(char16_t);
    return m_texts[place].assign(units, end).c_str();
}

unsigned char const* DbTable::getBlob(wchar_t const* column, int* size) const {
    int const place = PlaceOf(column);
    auto* const row = m_query->Handle();
    // In this order, since asking for the size may convert a text to UTF-8 and move it.
    *size = sqlite3_column_bytes(row, place);
    auto const* bytes = static_cast<unsigned char const*>(sqlite3_column_blob(row, place));
    if (!bytes && *size > 0)
        m_query->Fail();
    return bytes;
}

unsigned char const* DbTable::getHvtGeometry(wchar_t const*, int*) const {
    NotSupported("getHvtGeometry");
}

void DbTable::setNull(wchar_t const*) {
    NotSupported("setNull");
}

void DbTable::setGeomNull(wchar_t const*) {
    NotSupported("setGeomNull");
}

void DbTable::setValue(wchar_t const*, wchar_t const*) {
    NotSupported("setValue");
}

void DbTable::setValue(wchar_t const*, double) {
    NotSupported("setValue");
}

void DbTable::setValue(wchar_t const*, std::int64_t) {
    NotSupported("setValue");
}

void DbTable::setValue(wchar_t const*, int) {
    NotSupported("setValue");
}

void DbTable::setValue(wchar_t const*, bool) {
    NotSupported("setValue");
}

void DbTable::setDateTime(wchar_t const*, wchar_t const*) {
    NotSupported("setDateTime");
}

void DbTable::setBlob(wchar_t const* column, void const* data, int size) {
    if (size < 0)
        throw gvs::Error("a blob has no negative size");
    gvs::Value const id(getInt64Value(_ID()));
    gvs::Statement statement(m_database, "UPDATE " + m_source + " SET " + gvs::Quoted(gvs::ToSqlText(column)) +
                                             " = ?2 WHERE rowid = ?1");
    statement.Bind(1, id);
    statement.Bind(2, data, size);
    statement.Step();
}

void DbTable::setHvtGeometry(wchar_t const*, void const*, int) {
    NotSupported("setHvtGeometry");
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
    m_query.emplace(m_database, Select(HasRowId() ? "t.rowid AS rowid, t.*" : "t.*", filter), filter);
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
    m_query.reset();
}

bool DbTable::queryIsEmpty(gvs::Expression const* filter) const {
    gvs::Statement query(m_database, Select("1", filter), filter);
    return !query.Step();
}

std::int64_t DbTable::queryCount(gvs::Expression const* filter, bool) const {
    // Not "count(*)", a single instruction that cannot be interrupted.
    gvs::Statement query(m_database, Select("count(1)", filter), filter);
    query.Step();
    return sqlite3_column_int64(query.Handle(), 0);
}

void DbTable::queryExtent(double*, gvs::Expression const*) const {
    NotSupported("queryExtent");
}

bool DbTable::insert(std::int64_t*) {
    NotSupported("insert");
}

std::int64_t DbTable::update(std::int64_t) {
    NotSupported("update");
}

std::int64_t DbTable::update(gvs::Expression const*) {
    NotSupported("update");
}

std::int64_t DbTable::remove(gvs::Expression const*) {
    NotSupported("remove");
}

std::int64_t DbTable::remove(std::int64_t) {
    NotSupported("remove");
}

void DbTable::beginBulk() {
    NotSupported("beginBulk");
}

void DbTable::endBulk() {
    NotSupported("endBulk");
}

std::string DbTable::SchemaQuery() const {
    // Counting no rows gives one row, at no cost and whatever the table is: of its columns, and of the count.
    auto sql = Select("t.*, count(*) AS \"\"", nullptr) + " WHERE 0";
    if (!gvs::Statement::IsKept(m_database, sql))
        RequireStoredRows();
    return sql;
}

void DbTable::RequireStoredRows() const {
    // SQLite itself spells the beginning of a plain table's SQL: these words, one space and the name. Written by
    // another hand, IF NOT EXISTS would make a row that does nothing where an earlier one, which this search may
    // not see, has made a view. Any other row that lies about what its SQL makes has SQLite refuse the schema.
    gvs::Statement table(m_database,
                         "SELECT sql GLOB 'CREATE TABLE [^ \t\n\f\r/-]*'"
                         " AND sql NOT GLOB 'CREATE TABLE [iI][fF][ \t\n\f\r/-]*' FROM main.sqlite_schema"
                         " WHERE name = ?1 COLLATE NOCASE AND type IN ('table', 'view')");
    table.Bind(1, m_name);
    if (!table.Step())
        throw gvs::Error("no such table: main." + m_name);
    if (sqlite3_column_int(table.Handle(), 0) == 0)
        throw gvs::Error("not a plain table: main." + m_name);
    // While `table` stands on its row the schema stays as it is. The pragma by its statement, since in a query a
    // table of the file could take the place of its function.
    gvs::Statement columns(m_database, "PRAGMA main.table_xinfo(" + gvs::Quoted(m_name) + ")");
    int const hidden = 6; // the place of what tells how a column is hidden: 2 for generated and not stored
    while (columns.Step())
        if (sqlite3_column_int(columns.Handle(), hidden) == 2)
            throw gvs::Error("a generated column is not stored in: main." + m_name);
}

std::string DbTable::Select(char const* what, gvs::Expression const* filter) const {
    // Columns are named through t, since SQLite takes a quoted name that stands alone for a text when there is no
    // such column.
    std::string sql;
    sql.reserve(kUsualLength);
    sql.append("SELECT ").append(what).append(" FROM ").append(m_source).append(" AS t");
    if (auto const condition = filter ? filter->Condition() : std::string(); !condition.empty())
        sql.append(" WHERE ").append(condition);
    return sql;
}

bool DbTable::HasRowId() const {
    // A table made WITHOUT ROWID has none.
    return sqlite3_table_column_metadata(sqlite3_db_handle(m_schema.Handle()), "main", m_name.c_str(), "rowid",
                                         nullptr, nullptr, nullptr, nullptr, nullptr) == SQLITE_OK;
}

int DbTable::PlaceOf(wchar_t const* column) const {
    if (!m_query || sqlite3_data_count(m_query->Handle()) == 0)
        throw gvs::Error("there is no current row");
    auto const* found = m_query->Columns()[column];
    if (!found)
        throw gvs::Error("no such column: " + gvs::ToSqlText(column));
    return found->Place();
}

} // namespace mvq
