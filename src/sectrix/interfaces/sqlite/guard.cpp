#include "sectrix/interfaces/sqlite/guard.h"
#include "sectrix/interfaces/sqlite/statement.h"

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
/// The budget of a step. SQLite runs a statement as a list of instructions, and asks after each 100,000 of them,
/// some milliseconds, whether to go on. A step may take 100 instructions for each byte of the file. That is more
/// than the longest search needs: a row takes up five bytes at least, and passing it by costs three instructions
/// and two more for each column that the filter compares. A file whose pages lead back into each other has rows
/// without end, and no search in it would ever be over.
int const kReport = 100000;
int const kBytesPerReport = kReport / 100;

/// The size of the model's file or, where there is one, of its log.
/// \param which  names the file in SQLite's way.
sqlite3_int64 SizeOf(sqlite3* connection, int which) {
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(connection, "main", which, &file) == SQLITE_OK && file && file->pMethods)
        file->pMethods->xFileSize(file, &size);
    return size;
}

} // namespace

Guard::Guard(sqlite3* connection, Database::Access access) : m_connection(connection) {
    sqlite3_busy_timeout(connection, kBusyTimeout);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_progress_handler(connection, kReport, IsOverBudget, this);
    // Reading compiles no expression of the schema, and parsing one is cheap at any depth that SQLite takes.
    if (access == Database::Access::ReadOnly)
        return;
    sqlite3_limit(connection, SQLITE_LIMIT_EXPR_DEPTH, kWrittenDepth);
    sqlite3_limit(connection, SQLITE_LIMIT_SQL_LENGTH, kWrittenLength);
    // A trigger may do anything, and each that another one sets off is compiled deeper on the stack.
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

void Guard::RequireStoredRows(Database& database, std::string const& table) const {
    if (!IsTable(m_connection, table, nullptr))
        throw Error("no such table: main." + table);
    // A virtual table is a table too. SQLite compiles an index for none, and says so before it looks at what is
    // behind the name. This index is never made, as the statement is not run.
    try {
        Statement const index(database, "CREATE INDEX main.\"never made\" ON " + Quoted(table) + " (1)");
    } catch (Error const&) {
        bool const isRefused = sqlite3_errcode(m_connection) == SQLITE_ERROR; // unlike want of memory
        throw Error(isRefused ? "not a plain table: main." + table : sqlite3_errmsg(m_connection));
    }
    // By the statement: in a query a table of the file's own could take the place of the pragma's function.
    Statement columns(database, "PRAGMA main.table_xinfo(" + Quoted(table) + ")");
    int const hidden = 6; // the place of what tells how a column is hidden: 2 for generated and not stored
    while (columns.Step())
        if (sqlite3_column_int(columns.Handle(), hidden) == 2)
            throw Error("a generated column is not stored in: main." + table);
}

int Guard::IsOverBudget(void* guard) noexcept {
    auto& self = *static_cast<Guard*>(guard);
    // Divided before they are added, since a file may claim any size.
    auto const budget = SizeOf(self.m_connection, SQLITE_FCNTL_FILE_POINTER) / kBytesPerReport +
                        SizeOf(self.m_connection, SQLITE_FCNTL_JOURNAL_POINTER) / kBytesPerReport;
    // The first report may be of instructions from before this step.
    return self.m_reports++ > budget;
}

} // namespace gvs
