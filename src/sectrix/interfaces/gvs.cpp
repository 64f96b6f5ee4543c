#include "sectrix/interfaces/gvs.h"
#include "sectrix/interfaces/sqlite/guard.h"
#include "sectrix/interfaces/sqlite/kept_table.h"
#include "sectrix/interfaces/sqlite/statement.h"

#include <algorithm>
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
    for (auto const& candidate : m_columns)
        if (column && *column && IsCalled(candidate.Name().c_str(), column))
            return &candidate;
    return nullptr;
}

void Value::SetString(wchar_t const* text, bool) {
    m_text = ToSqlText(text);
    m_kind = String;
}

void Expression::RequireCondition() const {
    if (m_waiting != 0 || m_conditions > 1)
        throw Error("the filter is not one condition");
}

bool Expression::HasColumnsOf(Expression const& other) const {
    auto const isAlike = [](Value const& a, Value const& b) {
        bool const isColumn = a.m_kind == Value::kColumn;
        return isColumn == (b.m_kind == Value::kColumn) && (!isColumn || a.m_text == b.m_text);
    };
    return std::equal(m_operands.begin(), m_operands.end(), other.m_operands.begin(), other.m_operands.end(),
                      isAlike);
}

std::string Expression::Condition(std::string const& rowId) const {
    std::string condition;
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        auto const& operand = m_operands[i];
        condition += i == 0 ? "" : i % 2 == 1 ? " = " : " AND ";
        bool const isRowId = !rowId.empty() && sqlite3_stricmp(operand.m_text.c_str(), "rowid") == 0;
        condition += operand.m_kind == Value::kColumn ? "t." + Quoted(isRowId ? rowId : operand.m_text) : "?";
    }
    return condition;
}

void ExprBuilder::Identifier(wchar_t const* name) {
    Push(Value(name)).m_kind = Value::kColumn;
}

void ExprBuilder::Constant(Value const& value) {
    Push(Value(value));
}

Value& ExprBuilder::Push(Value&& operand) {
    if (m_target->m_operands.empty())
        m_target->m_operands.reserve(6); // as many as the records need, in one allocation
    ++m_target->m_waiting;
    return m_target->m_operands.emplace_back(std::move(operand));
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
