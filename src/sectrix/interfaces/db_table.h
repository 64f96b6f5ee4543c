#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/gvs.h"

#include <cstdint>
#include <list>
#include <map>
#include <string>

/// \file
/// Access to the rows of one table of the model database.

namespace gvs {
class KeptTable;
class Statement;
} // namespace gvs

namespace mvq {

/// A table, with at most one query open on it.
///
/// From its construction to its destruction the object holds a read on the database: schema and rows are of one
/// state, whatever other connections write meanwhile. So keep it no longer than needed, as that read may keep a
/// writer waiting. Several objects, also on the same table, may be at work on one database at once.
///
/// What a query filters, and what a row is read by, is named as in the schema; ASCII case does not matter. An
/// operation marked as not supported raises `gvs::Error` saying so, and does nothing.
///
/// \throws gvs::Error from every operation when SQLite fails, with its reason: a table or column that is not there,
/// a database that is no database, is locked beyond the waiting time or is corrupt where it is read.
class SECTRIX_MVQ_EXPORT DbTable {
public:
    /// Binds to a table of the database, and reads its schema.
    ///
    /// On a connection that the host has lent, what SQL would read under that name is read. On a file that the
    /// library has opened it must be a plain table whose columns are stored: a view, a virtual table, and a table
    /// with a generated column that is not STORED raise before SQLite compiles what is behind them.
    ///
    /// \param db     not null; outlives this object.
    /// \param table  its name, any text.
    DbTable(gvs::Database* db, wchar_t const* table);
    /// Ends the query too.
    virtual ~DbTable();

    DbTable(DbTable const&) = delete;
    DbTable& operator=(DbTable const&) = delete;

    /// \name Columns of the current row
    /// The row is the one that `readNext` moved to; without one these raise. SQLite converts between kinds: a NULL
    /// is false, 0 or null. A pointer is good until the next move or the end of the query.
    /// The name that `_ID` gives is the row id's, also where the table has a column of its own of that name. It is
    /// that column's where the table has no row ids, or where its columns have all three names that SQL has for
    /// them.
    /// @{

    /// True when the column holds nothing.
    virtual bool isNull(wchar_t const* column) const;
    /// True when the number in the column is not 0.
    virtual bool getBooleanValue(wchar_t const* column) const { return getInt64Value(column) != 0; }
    /// The lower 32 bits of the integer in the column.
    virtual std::int32_t getInt32Value(wchar_t const* column) const {
        return static_cast<std::int32_t>(getInt64Value(column));
    }
    /// The integer in the column.
    virtual std::int64_t getInt64Value(wchar_t const* column) const;
    /// The number in the column.
    virtual double getDoubleValue(wchar_t const* column) const;
    /// The text of the column, as it is stored.
    virtual wchar_t const* getDateTimeValue(wchar_t const* column) const { return getStringValue(column); }
    /// The text of the column, one 16-bit unit an element; null for a NULL.
    virtual wchar_t const* getStringValue(wchar_t const* column) const;
    /// The bytes of the column, a text in UTF-8; null when there are none.
    /// \param size  receives their count.
    virtual unsigned char const* getBlob(wchar_t const* column, int* size) const;
    /// Not supported.
    virtual unsigned char const* getHvtGeometry(wchar_t const*, int*) const { NotSupported("getHvtGeometry"); }

    /// @}
    /// \name Writing
    /// Not supported but for `setBlob`.
    /// @{

    /// Not supported.
    virtual void setNull(wchar_t const*) { NotSupported("setNull"); }
    /// Not supported.
    virtual void setGeomNull(wchar_t const*) { NotSupported("setGeomNull"); }
    /// Not supported.
    virtual void setValue(wchar_t const*, wchar_t const*) { NotSupported("setValue"); }
    /// Not supported.
    virtual void setValue(wchar_t const*, double) { NotSupported("setValue"); }
    /// Not supported.
    virtual void setValue(wchar_t const*, std::int64_t) { NotSupported("setValue"); }
    /// Not supported.
    virtual void setValue(wchar_t const*, int) { NotSupported("setValue"); }
    /// Not supported.
    virtual void setValue(wchar_t const*, bool) { NotSupported("setValue"); }
    /// Not supported.
    virtual void setDateTime(wchar_t const*, wchar_t const*) { NotSupported("setDateTime"); }
    /// Stores bytes in the column of the current row at once. The current row still reads as before; the next query
    /// finds the new bytes. Needs a database opened for writing, and a table with row ids and with fewer than
    /// SQLite's greatest number of columns, 2,000. `data` may be null when `size` is 0, which stores an empty blob.
    virtual void setBlob(wchar_t const* column, void const* data, int size);
    /// Not supported.
    virtual void setHvtGeometry(wchar_t const*, void const*, int) { NotSupported("setHvtGeometry"); }

    /// @}
    /// \name Queries
    /// @{

    /// Starts a query for the row with this row id.
    virtual void querySequential(std::int64_t id);
    /// Starts a query for the rows that match, in no particular order, and ends the one before.
    ///
    /// Costs as much as SQLite needs for the first row: put an index on what is filtered.
    /// \param filter  null or empty for all rows; not needed once the call returns. A column in it that the table does
    ///                not have raises here, as "no such column: t." and its name.
    /// \param order   null.
    virtual void querySequential(gvs::Expression const* filter, wchar_t const* order, bool);
    /// Moves to the next row of the query and returns true when there is one. Past the last the query has ended,
    /// and without a query there is none.
    virtual bool readNext();
    /// Ends the query; without one, nothing happens.
    virtual void endQuery();
    /// True when no row matches.
    virtual bool queryIsEmpty(gvs::Expression const* filter) const;
    /// The number of rows that match.
    virtual std::int64_t queryCount(gvs::Expression const* filter, bool) const;
    /// Not supported.
    virtual void queryExtent(double*, gvs::Expression const*) const { NotSupported("queryExtent"); }

    /// @}
    /// \name Whole rows
    /// Not supported.
    /// @{

    /// Not supported.
    virtual bool insert(std::int64_t*) { NotSupported("insert"); }
    /// Not supported.
    virtual std::int64_t update(std::int64_t) { NotSupported("update"); }
    /// Not supported.
    virtual std::int64_t update(gvs::Expression const*) { NotSupported("update"); }
    /// Not supported.
    virtual std::int64_t remove(gvs::Expression const*) { NotSupported("remove"); }
    /// Not supported.
    virtual std::int64_t remove(std::int64_t) { NotSupported("remove"); }
    /// Not supported.
    virtual void beginBulk() { NotSupported("beginBulk"); }
    /// Not supported.
    virtual void endBulk() { NotSupported("endBulk"); }

    /// @}

    /// The schema of the table, as it was when this object was made.
    gvs::TableDef const& getDef() const;
    /// The name of the row id column, the same for every table.
    static wchar_t const* _ID() { return L"rowid"; }

private:
    [[noreturn]] static void NotSupported(std::string const& operation) {
        throw gvs::Error("mvq::DbTable::" + operation + " is not supported");
    }
    /// The place of the column in the current row.
    int PlaceOf(wchar_t const* column) const;

    /// Holds `m_table`, taken from what the database keeps.
    std::list<gvs::KeptTable> m_taken;
    gvs::KeptTable& m_table;
    /// The query for rows, one of those of `m_table`; null without one.
    gvs::Statement* m_query = nullptr;
    /// The texts given out of the current row, by the place of their column.
    mutable std::map<int, std::wstring> m_texts;
};

} // namespace mvq
