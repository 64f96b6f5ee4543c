#pragma once

#include "sectrix/foundation/export.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// \file
/// The model database: its handle, the schemas of its tables, and the filters on their rows.
///
/// Text is taken and given as wide strings of 16-bit units; a pair of surrogates is one character, and so is a
/// single element beyond 0xFFFF where `wchar_t` is that wide.

namespace gvs {

/// A failure of the database, with SQLite's own reason as its text.
class SECTRIX_EXPORT Error : public std::runtime_error {
public:
    /// An error with this text.
    explicit Error(std::string const& reason);
    ~Error() override;
};

/// A column of a table.
class SECTRIX_EXPORT ColumnDef {
public:
    /// A column of this name, in UTF-8, at this place.
    ColumnDef(std::string name, int place) : m_name(std::move(name)), m_place(place) {}

    /// In UTF-8, spelled as in the schema.
    std::string const& Name() const { return m_name; }
    /// Counted from 0 in the order of the schema.
    int Place() const { return m_place; }

private:
    std::string m_name;
    int m_place;
};

/// The schema of a table, or of the rows that a query gives.
class SECTRIX_EXPORT TableDef {
public:
    TableDef() = default;
    /// The columns of a prepared statement; not null.
    explicit TableDef(sqlite3_stmt* statement);

    /// The column of this name, else null. As in SQL, the case of ASCII letters makes no difference. Good for as
    /// long as the table object that gave the schema. Costs a walk of the columns.
    ColumnDef const* operator[](wchar_t const* column) const;

private:
    std::vector<ColumnDef> m_columns;
};

/// A typed constant of a filter.
class SECTRIX_EXPORT Value {
public:
    /// What `m_kind` tells.
    enum Kind : std::int64_t { String = 1, Integer = 3 };

    /// An integer.
    explicit Value(std::int64_t integer) : m_kind(Integer), m_integer(integer) {}
    /// A text of its own; null is the empty text.
    explicit Value(wchar_t const* text) : Value(std::int64_t{0}) { SetString(text, true); }

private:
    friend class Statement;

    void SetString(wchar_t const* text, bool copy);

    /// These two stand first, so that an integer can be made by writing them.
    std::int64_t m_kind;
    std::int64_t m_integer;
    /// In UTF-8; empty for an integer.
    std::string m_text;
};

/// A filter on the rows of a table: comparisons for equality, joined by "and".
///
/// An empty filter lets every row through. Made by an `ExprBuilder`.
class SECTRIX_EXPORT Expression {
public:
    Expression() = default;

    /// The filter as an SQL condition on a table called t, with a "?" for each constant; empty for an empty filter.
    /// Costs one walk of the filter, however deep it is.
    /// \throws Error when what was pushed is not exactly one condition.
    std::string Condition() const;
    /// In the order of their "?".
    std::vector<Value> const& Constants() const { return m_constants; }

private:
    friend class ExprBuilder;

    enum class Kind { Identifier, Constant, Equal, And };
    struct Node {
        Kind m_kind;
        /// The column that an identifier names, in UTF-8; empty for every other kind.
        std::string m_name;
    };

    /// In postfix order: operands first, then what joins them.
    std::vector<Node> m_nodes;
    /// The values of the nodes of kind Constant, in their order.
    std::vector<Value> m_constants;
};

/// Writes a filter in postfix order: `Identifier`, `Constant`, `CmpOp` for one comparison; for a second one the
/// same again, and `BooleanOp`.
class SECTRIX_EXPORT ExprBuilder {
public:
    /// How two operands are compared.
    enum ComparisonOps : int { Equal = 0 };
    /// How two conditions are joined.
    enum LogicalOps : int { And = 0 };

    /// Writes behind what `target` holds. It must outlive the builder. There is no schema to look names up in and
    /// no result to report: the other two arguments are null.
    ExprBuilder(Expression& target, TableDef const*, bool*) : m_target(&target) {}

    /// Pushes a column as an operand. The name is quoted, so it may be any text.
    void Identifier(wchar_t const* name);
    /// Pushes a copy of the value as an operand. It is bound, so no text can become SQL.
    void Constant(Value const& value);
    /// Replaces the two top operands by their comparison.
    /// \throws Error for any other value than `Equal`.
    void CmpOp(ComparisonOps op);
    /// Replaces the two top conditions by their conjunction.
    /// \throws Error for any other value than `And`.
    void BooleanOp(LogicalOps op);

private:
    Expression* m_target;
};

/// A handle on a model database, an SQLite file.
///
/// It keeps the statements that it prepared and uses them again until the schema changes. Tables and statements on
/// it must be gone before it goes. One thread at a time may use a handle and what stands on it.
class SECTRIX_EXPORT Database {
public:
    /// What a handle may do with its file.
    enum class Access { ReadOnly, ReadWrite };

    /// Opens a file that is there already. Whether it is a database shows at the first read.
    ///
    /// Waits up to two seconds for a writer that holds a lock. The schema is not trusted: it can run no function
    /// with side effects, and no write can damage the file's structure. A search that takes more steps than any
    /// file of that size needs is interrupted, and raises that. A handle for writing runs no trigger of the file,
    /// and raises where an expression anywhere in the schema is more than 100 levels deep, or the SQL of one table,
    /// index, view or trigger is longer than 50,000 bytes. A connection that is borrowed has no such bounds.
    ///
    /// \param path  in UTF-8; the name of a file whatever it looks like, never a URI or ":memory:".
    /// \throws Error when the file cannot be opened.
    explicit Database(std::string const& path, Access access = Access::ReadOnly);
    /// Borrows a connection, which must outlive the handle. None of its settings is touched, and nothing of the
    /// handle stays on it: once the handle is gone the connection can be closed.
    /// \throws Error when `connection` is null.
    explicit Database(sqlite3* connection);
    ~Database();

    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;

private:
    friend class Statement;

    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };
    struct Prepared {
        std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
        /// The columns of a row, as SQLite compiled the statement last.
        TableDef m_columns;
        /// How often SQLite had compiled the statement anew when `m_columns` was read; -1 before that.
        int m_repreparations = -1;
    };

    /// SQLite's question whether to stop the step at work: 1 for yes.
    static int IsEndless(void* database) noexcept;

    using Statements = std::multimap<std::string, Prepared, std::less<>>;

    /// Closes what was opened, and does nothing to what was borrowed.
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> m_connection;
    /// How often SQLite has asked `IsEndless` since the step at work began.
    std::int64_t m_reports = 0;
    /// Statements that nobody is using, by their SQL. Equal ones come about where one was needed while the other
    /// was still at work.
    Statements m_idle;
};

} // namespace gvs
