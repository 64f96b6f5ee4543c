#pragma once

#include "sectrix/interfaces/gvs.h"

#include <cstdint>
#include <cstdlib>
#include <string>

struct sqlite3_stmt;

/// \file
/// A host's own access to a table. What the library has no reason to call ends the program.

namespace mvq {

class DbTable {
public:
    DbTable(gvs::Database* db, wchar_t const* table);
    virtual ~DbTable();
    DbTable(DbTable const&) = delete;
    DbTable& operator=(DbTable const&) = delete;

    virtual bool isNull(wchar_t const*) const { std::abort(); }
    virtual bool getBooleanValue(wchar_t const*) const { std::abort(); }
    virtual std::int32_t getInt32Value(wchar_t const*) const { std::abort(); }
    virtual std::int64_t getInt64Value(wchar_t const*) const { std::abort(); }
    virtual double getDoubleValue(wchar_t const*) const { std::abort(); }
    virtual wchar_t const* getDateTimeValue(wchar_t const*) const { std::abort(); }
    /// Promised of this and the next: the table has the column, and the query a row.
    virtual wchar_t const* getStringValue(wchar_t const* column) const;
    /// Promised: the size is 0 before.
    virtual unsigned char const* getBlob(wchar_t const* column, int* size) const;
    virtual unsigned char const* getHvtGeometry(wchar_t const*, int*) const { std::abort(); }
    virtual void setNull(wchar_t const*) { std::abort(); }
    virtual void setGeomNull(wchar_t const*) { std::abort(); }
    virtual void setValue(wchar_t const*, wchar_t const*) { std::abort(); }
    virtual void setValue(wchar_t const*, double) { std::abort(); }
    virtual void setValue(wchar_t const*, std::int64_t) { std::abort(); }
    virtual void setValue(wchar_t const*, int) { std::abort(); }
    virtual void setValue(wchar_t const*, bool) { std::abort(); }
    virtual void setDateTime(wchar_t const*, wchar_t const*) { std::abort(); }
    virtual void setBlob(wchar_t const* column, void const* data, int size);
    virtual void setHvtGeometry(wchar_t const*, void const*, int) { std::abort(); }
    virtual void querySequential(std::int64_t) { std::abort(); }
    /// Promised: the filter is built, the text null, the flag true.
    virtual void querySequential(gvs::Expression const* filter, wchar_t const* text, bool flag);
    virtual bool readNext();
    virtual void endQuery() { std::abort(); }
    virtual bool queryIsEmpty(gvs::Expression const*) const { std::abort(); }
    virtual std::int64_t queryCount(gvs::Expression const*, bool) const { std::abort(); }
    virtual void queryExtent(double*, gvs::Expression const*) const { std::abort(); }
    virtual bool insert(std::int64_t*) { std::abort(); }
    virtual std::int64_t update(std::int64_t) { std::abort(); }
    virtual std::int64_t update(gvs::Expression const*) { std::abort(); }
    virtual std::int64_t remove(gvs::Expression const*) { std::abort(); }
    virtual std::int64_t remove(std::int64_t) { std::abort(); }
    virtual void beginBulk() { std::abort(); }
    virtual void endBulk() { std::abort(); }

    gvs::TableDef const& getDef() const { return m_def; }
    static wchar_t const* _ID() { return L"rowid"; }

private:
    void Prepare(std::string const& sql);
    int PlaceOf(wchar_t const* column) const;

    gvs::Database& m_database;
    std::string m_name;
    gvs::TableDef m_def;
    sqlite3_stmt* m_query = nullptr;
    bool m_hasRow = false;
    /// What `getStringValue` gave last.
    mutable std::wstring m_text;
};

} // namespace mvq
