#include "sectrix/interfaces/gvs.h"
#include "sectrix/interfaces/sqlite/statement.h"

#include <algorithm>
#include <new>
#include <sqlite3.h>

namespace gvs {

namespace {

int const kBusyTimeout = 2000; // milliseconds
/// How deep an expression in the schema may be where rows are written. SQLite compiles those of the table,
/// recursing by up to 0.8 KiB of stack a level and copying as it goes: 100 levels take 90 KiB, SQLite's own limit
/// of 1,000 takes 750 KiB. A list of a hundred conditions is as deep as that.
int const kWrittenDepth = 100;
/// How many bytes each statement of the schema may have where rows are written. At `kWrittenDepth`, those copies of
/// so long an expression take 300 MB. A table of 1,000 columns has about so many.
int const kWrittenLength = 50000;
/// SQLite reports after about so many of its instructions, some milliseconds.
int const kReport = 100000;
/// One step may be reported once for so many bytes of the file, which is 100 instructions a byte. A row has no less
/// than five bytes, and passing it by takes three instructions and two more for each column compared. Pages that
/// are entered over and over again, as their parents say, make rows without end.
int const kBytesPerReport = kReport / 100;

int Leave(sqlite3*) {
    return SQLITE_OK;
}

/// The size of the model's file or, where there is one, of its log.
/// \param which  names the file in SQLite's way.
sqlite3_int64 SizeOf(sqlite3* connection, int which) {
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(connection, "main", which, &file) == SQLITE_OK && file && file->pMethods)
        file->pMethods->xFileSize(file, &size);
    return size;
}

/// The path as SQLite takes it for nothing but a path, neither for a URI nor for a database in memory.
std::string PlainPath(std::string const& path) {
    bool const isSpecial = path.c_str()[0] == '\0' || path[0] == ':' || path.compare(0, 5, "file:") == 0;
    return isSpecial ? "./" + path : path;
}

} // namespace

Error::Error(std::string const& reason) : std::runtime_error(reason) {}
Error::~Error() = default;

TableDef::TableDef(sqlite3_stmt* statement) {
    int const count = sqlite3_column_count(statement);
    m_columns.reserve(static_cast<std::size_t>(count));
    for (int place = 0; place < count; ++place) {
        auto const* name = sqlite3_column_name(statement, place);
        if (!name)
            throw std::bad_alloc();
        m_columns.emplace_back(name, place);
    }
}

ColumnDef const* TableDef::operator[](wchar_t const* column) const {
    auto const name = ToSqlText(column);
    auto const found = std::find_if(m_columns.begin(), m_columns.end(), [&name](ColumnDef const& candidate) {
        return sqlite3_stricmp(candidate.Name().c_str(), name.c_str()) == 0;
    });
    return found == m_columns.end() ? nullptr : &*found;
}

void Value::SetString(wchar_t const* text, bool) {
    m_text = ToSqlText(text);
    m_kind = String;
}

std::string Expression::Condition() const {
    // Only "and" joins comparisons, and these stand in push order on both sides of it. So the condition is their
    // list: it needs no parentheses and no stack, only the count of what still waits for its operator.
    std::string condition;
    int operands = 0;
    int conditions = 0;
    bool isSound = true;
    for (auto const& [kind, name] : m_nodes) {
        if (kind == Kind::Equal) {
            isSound = isSound && operands == 2;
            operands = 0;
            ++conditions;
        } else if (kind == Kind::And) {
            isSound = isSound && operands == 0 && conditions >= 2;
            --conditions;
        } else {
            condition += operands > 0 ? " = " : condition.empty() ? "" : " AND ";
            condition += kind == Kind::Identifier ? "t." + Quoted(name) : "?";
            ++operands;
        }
    }
    if (!isSound || operands != 0 || conditions != (m_nodes.empty() ? 0 : 1))
        throw Error("the filter is not one condition");
    return condition;
}

void ExprBuilder::Identifier(wchar_t const* name) {
    m_target->m_nodes.push_back({Expression::Kind::Identifier, ToSqlText(name)});
}

void ExprBuilder::Constant(Value const& value) {
    m_target->m_constants.push_back(value);
    m_target->m_nodes.push_back({Expression::Kind::Constant, {}});
}

void ExprBuilder::CmpOp(ComparisonOps op) {
    if (op != Equal)
        throw Error("this comparison is not supported");
    m_target->m_nodes.push_back({Expression::Kind::Equal, {}});
}

void ExprBuilder::BooleanOp(LogicalOps op) {
    if (op != And)
        throw Error("this logical operator is not supported");
    m_target->m_nodes.push_back({Expression::Kind::And, {}});
}

Database::Database(std::string const& path, Access access) : m_connection(nullptr, sqlite3_close) {
    sqlite3* connection = nullptr;
    int const mode = access == Access::ReadWrite ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    // Only one thread uses a handle at a time, so the connection needs no lock of its own.
    int const result = sqlite3_open_v2(PlainPath(path).c_str(), &connection, mode | SQLITE_OPEN_NOMUTEX, nullptr);
    m_connection.reset(connection);
    if (result != SQLITE_OK)
        throw Error(connection ? sqlite3_errmsg(connection) : sqlite3_errstr(result));
    sqlite3_busy_timeout(connection, kBusyTimeout);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_progress_handler(connection, kReport, IsEndless, this);
    // Reading compiles no expression of the schema, and parsing one is cheap at any depth that SQLite takes.
    if (access == Access::ReadOnly)
        return;
    sqlite3_limit(connection, SQLITE_LIMIT_EXPR_DEPTH, kWrittenDepth);
    sqlite3_limit(connection, SQLITE_LIMIT_SQL_LENGTH, kWrittenLength);
    // A trigger may do anything, and each that another one sets off is compiled deeper on the stack.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

Database::Database(sqlite3* connection) : m_connection(connection, Leave) {
    if (!connection)
        throw Error("there is no connection to borrow");
}

Database::~Database() = default;

int Database::IsEndless(void* database) noexcept {
    auto& self = *static_cast<Database*>(database);
    auto* const connection = self.m_connection.get();
    // Divided before they are added, since a file may claim any size.
    auto const most = SizeOf(connection, SQLITE_FCNTL_FILE_POINTER) / kBytesPerReport +
                      SizeOf(connection, SQLITE_FCNTL_JOURNAL_POINTER) / kBytesPerReport;
    // The first report may be of instructions from before this step.
    return self.m_reports++ > most;
}

void Database::Finalizer::operator()(sqlite3_stmt* statement) const noexcept {
    sqlite3_finalize(statement);
}

} // namespace gvs
