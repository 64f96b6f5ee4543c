#pragma once

#include "sectrix/interfaces/gvs.h"

#include <cstdint>
#include <string>

/// \file
/// What bounds a database file that nobody vouches for.

namespace gvs {

/// Hardens a connection that the library has opened itself.
///
/// The threat is the author of the file. A database is a program: its schema holds SQL that SQLite compiles as soon
/// as the name of a view, of a generated column or of a virtual table is used, deep enough to exhaust the stack,
/// wide enough to exhaust the memory, or endless; triggers and CHECKs do the same when a row is written; and pages
/// may refer to each other in circles, so that a table has rows without end. A reader who only asks for some bytes
/// must not run any of that. So only plain tables are read whose columns are stored; a step takes no more work than
/// a file of that size can need; and what a write has to compile is kept small. A connection that is borrowed has
/// no guard: there the host decides.
class Guard {
public:
    /// \param connection  refers to the guard, in its place, for as long as it is open.
    Guard(sqlite3* connection, Database::Access access);

    /// Gives the step to come the whole of its budget.
    void BeginStep() noexcept { m_reports = 0; }

    /// Looks at what stands under a name before SQLite compiles it. Call it while the read that is to follow is
    /// open, so that the schema cannot change in between.
    /// \throws Error unless it is a plain table whose columns are stored.
    void RequireStoredRows(Database& database, std::string const& table) const;

private:
    /// SQLite's question whether to stop the step at work: 1 for yes.
    static int IsOverBudget(void* guard) noexcept;

    sqlite3* m_connection;
    /// How often SQLite has asked `IsOverBudget` since the step at work began.
    std::int64_t m_reports = 0;
};

} // namespace gvs
