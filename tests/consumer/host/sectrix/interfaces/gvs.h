#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct sqlite3;

/// \file
/// A host's own database handle, schemas and filters: what the library asks for, and no more.

namespace mvq {
class DbTable;
}

namespace gvs {

class Database {
public:
    explicit Database(std::string const& path);
    ~Database();
    Database(Database const&) = delete;
    Database& operator=(Database const&) = delete;

private:
    friend class mvq::DbTable;
    sqlite3* m_connection = nullptr;
};

class ColumnDef {};

class TableDef {
public:
    ColumnDef const* operator[](wchar_t const* column) const;

private:
    friend class mvq::DbTable;
    std::map<std::wstring, ColumnDef> m_columns;
};

class Value {
public:
    explicit Value(std::int64_t integer) : m_integer(integer) {}
    explicit Value(wchar_t const* text) : m_isText(true), m_text(text) {}

private:
    friend class mvq::DbTable;
    std::int64_t m_integer = 0;
    bool m_isText = false;
    std::wstring m_text;
};

/// Lets every row through while it is empty.
class Expression {
private:
    friend class ExprBuilder;
    friend class mvq::DbTable;
    /// In SQL.
    std::vector<std::string> m_operands;
    std::vector<Value> m_constants;
};

class ExprBuilder {
public:
    enum ComparisonOps { Equal = 0 };
    enum LogicalOps { And = 0 };

    ExprBuilder(Expression& target, TableDef const*, bool*) : m_target(target) {}
    void Identifier(wchar_t const* name);
    void Constant(Value const& value);
    void CmpOp(ComparisonOps op);
    void BooleanOp(LogicalOps op);

private:
    void Join(char const* sqlOperator);
    Expression& m_target;
};

} // namespace gvs
