#include "sectrix/interfaces/gvs.h"
#include "sectrix/interfaces/sqlite/guard.h"
#include "sectrix/interfaces/sqlite/kept_table.h"
#include "sectrix/interfaces/sqlite/statement.h"

#include <sqlite3.h>

namespace gvs {

namespace {

/// The path as SQLite takes it for nothing but a path, neither for a URI nor for a database in memory.
std::string PlainPath(std::string const& path) {
    bool const isSpecial = path.c_str()[0] == '\0' || path[0] == ':' || path.compare(0, 5, "file:") == 0;
    return isSpecial ? "./" + path : path;
}

} // namespace

Error::Error(std::string const& reason) : std::runtime_error(reason) {}
Error::~Error() = default;

ColumnDef const* TableDef::operator[](wchar_t const* column) const {
    auto const name = ToSqlText(column);
    for (auto const& candidate : m_columns)
        if (!name.empty() && sqlite3_stricmp(candidate.Name().c_str(), name.c_str()) == 0)
            return &candidate;
    return nullptr;
}

void Value::SetString(wchar_t const* text, bool) {
    m_text = ToSqlText(text);
    m_kind = String;
}

std::string Expression::Condition(std::string const& rowId) const {
    if (m_waiting != 0 || m_conditions > 1)
        throw Error("the filter is not one condition");
    std::string condition;
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        auto const& operand = m_operands[i];
        condition += i == 0 ? "" : i % 2 == 1 ? " = " : " AND ";
        bool const isRowId = operand && !rowId.empty() && sqlite3_stricmp(operand->c_str(), "rowid") == 0;
        condition += operand ? "t." + Quoted(isRowId ? rowId : *operand) : "?";
    }
    return condition;
}

void ExprBuilder::Identifier(wchar_t const* name) {
    m_target->m_operands.emplace_back(ToSqlText(name));
    ++m_target->m_waiting;
}

void ExprBuilder::Constant(Value const& value) {
    m_target->m_constants.push_back(value);
    m_target->m_operands.emplace_back();
    ++m_target->m_waiting;
}

void ExprBuilder::CmpOp(ComparisonOps op) {
    if (op != Equal)
        throw Error("this comparison is not supported");
    if (m_target->m_waiting != 2)
        throw Error("a comparison takes two operands");
    m_target->m_waiting = 0;
    ++m_target->m_conditions;
}

void ExprBuilder::BooleanOp(LogicalOps op) {
    if (op != And)
        throw Error("this logical operator is not supported");
    if (m_target->m_waiting != 0 || m_target->m_conditions < 2)
        throw Error("a conjunction takes two conditions");
    --m_target->m_conditions;
}

Database::Database(std::string const& path, Access access) : m_connection(nullptr, sqlite3_close) {
    sqlite3* connection = nullptr;
    int const mode = access == Access::ReadWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    // Only one thread uses a handle at a time, so the connection needs no lock of its own.
    int const result = sqlite3_open_v2(PlainPath(path).c_str(), &connection, mode | SQLITE_OPEN_NOMUTEX, nullptr);
    m_connection.reset(connection);
    if (result != SQLITE_OK)
        throw Error(connection ? sqlite3_errmsg(connection) : sqlite3_errstr(result));
    m_guard = std::make_unique<Guard>(connection, access);
}

Database::Database(sqlite3* connection) : m_connection(connection, [](sqlite3*) { return SQLITE_OK; }) {
    if (!connection)
        throw Error("there is no connection to borrow");
}

Database::~Database() = default;

} // namespace gvs
