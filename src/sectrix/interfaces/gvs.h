#pragma once

#include "sectrix/foundation/export.h"

#include <cstdint>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;

/// \file
/// The model database: its handle, the schemas of its tables, and the filters on their rows.
///
/// Text is taken and given as wide strings of 16-bit units; a pair of surrogates is one character, and so is a
/// single element beyond 0xFFFF where `wchar_t` is that wide.

namespace gvs {

class Guard;
class KeptTable;

/// A failure of the database, with SQLite's own reason as its text.
class SECTRIX_GVS_EXPORT Error : public std::runtime_error {
public:
    /// An error with this text.
    explicit Error(std::string const& reason);
    ~Error() override;
};

/// A column of a table.
class SECTRIX_GVS_EXPORT ColumnDef {
public:
    /// A column of this name, in UTF-8.
    explicit ColumnDef(std::string name) : m_name(std::move(name)) {}

    /// In UTF-8, spelled as in the schema.
    std::string const& Name() const { return m_name; }

private:
    std::string m_name;
};

/// The schema of a table.
class SECTRIX_GVS_EXPORT TableDef {
public:
    /// The column of this name, else null; null too for a name that is empty or null. As in SQL, the case of ASCII
    /// letters makes no difference. Good for as long as the table object that gave the schema. Costs a walk of the
    /// columns.
    ColumnDef const* operator[](wchar_t const* column) const;

private:
    friend class KeptTable;

    /// In the order of the schema.
    std::vector<ColumnDef> m_columns;
};

/// A typed constant of a filter.
class SECTRIX_GVS_EXPORT Value {
public:
    /// What `m_kind` tells.
    enum Kind : std::int64_t { String = 1, Integer = 3 };

    /// An integer.
    explicit Value(std::int64_t integer) : m_kind(Integer), m_integer(integer) {}
    /// A text of its own; null is the empty text. A surrogate without its partner is no text of any database, so
    /// nothing is equal to a text that has one.
    explicit Value(wchar_t const* text) : Value(std::int64_t{0}) { SetString(text, true); }

private:
    friend class ExprBuilder;
    friend class Expression;
    friend class KeptTable;
    friend class Statement;

    /// The kind of an operand that is no constant but a column, whose name is the text.
    static constexpr std::int64_t kColumn = 0;

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
class Expression {
    friend class ExprBuilder;
    friend class KeptTable;

    /// \throws Error when what was pushed is not exactly one condition, or nothing.
    void RequireCondition() const;
    /// True when the two differ in their constants at most.
    bool HasColumnsOf(Expression const& other) const;
    /// The filter as an SQL condition on a table called t, with a "?" for each constant; empty for an empty filter.
    /// \param rowId  the name that the row id has in that table; empty where the table has none.
    std::string Condition(std::string const& rowId) const;

    /// Two for each comparison, in the order in which they were pushed. With "and" alone to join comparisons, their
    /// order is all that there is to know.
    std::vector<Value> m_operands;
    /// How many operands wait for their comparison.
    int m_waiting = 0;
    /// How many conditions have not been joined to the one before.
    int m_conditions = 0;
};

/// Writes a filter in postfix order: `Identifier`, `Constant`, `CmpOp` for one comparison; for a second one the
/// same again, and `BooleanOp`.
class SECTRIX_GVS_EXPORT ExprBuilder {
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
    /// \throws Error for any other value than `Equal`, and unless just two operands wait.
    void CmpOp(ComparisonOps op);
    /// Replaces the two top conditions by their conjunction.
    /// \throws Error for any other value than `And`, and unless there are two conditions and no operand waits.
    void BooleanOp(LogicalOps op);

private:
    Value& Push(Value&& operand);

    Expression* m_target;
};

/// A handle on a model database, an SQLite file.
///
/// It keeps the statements that it prepared and uses them again until the schema changes. Tables on it must be gone
/// before it goes. One thread at a time may use a handle and what stands on it.
class SECTRIX_GVS_EXPORT Database {
public:
    /// What a handle may do with its file.
    enum class Access { ReadOnly, ReadWrite };

    /// Opens a file that is there already. Whether it is a database shows at the first read.
    ///
    /// Nobody vouches for such a file, so reading it computes nothing that its author has written: only plain
    /// tables are read, and only those whose columns are stored. It waits up to two seconds for a writer that holds
    /// a lock. A search that takes more steps than any file of that size needs is interrupted, and raises that. A
    /// handle for writing runs no trigger of the file, no write can damage the file's structure, and it raises
    /// where an expression anywhere in the schema is more than 100 levels deep, or the SQL of one table, index,
    /// view or trigger is longer than 50,000 bytes.
    ///
    /// \param path  in UTF-8; the name of a file whatever it looks like, never a URI or ":memory:".
    /// \throws Error when the file cannot be opened.
    explicit Database(std::string const& path, Access access = Access::ReadOnly);
    /// Borrows a connection, which must outlive the handle. It is the host's own: none of its settings is touched,
    /// it has no bounds but the host's, and what it calls a table is read as any SQL would read it, views, virtual
    /// tables and generated columns included. Nothing of the handle stays on it: once the handle is gone the
    /// connection can be closed. \throws Error when `connection` is null.
    explicit Database(sqlite3* connection);
    ~Database();

    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;

private:
    friend class KeptTable;
    friend class Statement;

    /// What bounds a connection of the handle's own; null on one that is borrowed.
    std::unique_ptr<Guard> m_guard;
    /// Closes what was opened, and does nothing to what was borrowed.
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> m_connection;
    /// Tables that nobody is using, the last used first. One stands here several times where it was used several
    /// times at once.
    std::list<KeptTable> m_kept;
};

} // namespace gvs
