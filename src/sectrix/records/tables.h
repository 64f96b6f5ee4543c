#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/db_table.h"

#include <string>

/// \file
/// The tables of the model database that hold stored geometry, and how their columns are read.

namespace mvq {

/// "SAT_GEOMETRIES": where ACIS geometry stands in the model. In one of the two schemas it has the column
/// "DATA_GUID", which refers to `SATDefinitions`; in the other it has the SAT text itself, in "DATA".
class SECTRIX_EXPORT SATGeometries : public DbTable {
public:
    /// Binds to the table; the database is not null.
    explicit SATGeometries(gvs::Database* db);
    ~SATGeometries() override;
};

/// "SAT_DEFINITIONS": SAT texts by "GUID".
class SECTRIX_EXPORT SATDefinitions : public DbTable {
public:
    /// Binds to the table; the database is not null.
    explicit SATDefinitions(gvs::Database* db);
    ~SATDefinitions() override;

    /// Stores bytes in "DATA" of the current row.
    virtual void setData(void const* data, int size);
};

/// "MESH_DEFINITIONS": mesh data by "GUID".
class SECTRIX_EXPORT MeshDefinitions : public DbTable {
public:
    /// Binds to the table; the database is not null.
    explicit MeshDefinitions(gvs::Database* db);
    ~MeshDefinitions() override;

    /// Stores bytes in "DATA" of the current row.
    virtual void setData(void const* data, int size);
};

/// A table of objects of the model.
class SECTRIX_EXPORT DbObject : public DbTable {
public:
    /// Binds to the table of this name; the database is not null.
    DbObject(gvs::Database* db, wchar_t const* table);
    ~DbObject() override;
};

/// "MESHES": the mesh objects of the model. In one of the two schemas it has the column "DATA_GUID", which refers
/// to `MeshDefinitions`; in the other it has the mesh data itself, in "DATA".
class SECTRIX_EXPORT Meshes : public DbObject {
public:
    /// Binds to the table; the database is not null.
    explicit Meshes(gvs::Database* db);
    ~Meshes() override;

    /// Stores bytes in "DATA" of the current row.
    virtual void setData(void const* data, int size);
    /// Stores bytes in "MTL" of the current row.
    virtual void setMtl(void const* data, int size);
};

} // namespace mvq

namespace qel::Sectrix {

/// The bytes of a blob column of the current row as they are, zero bytes included; empty when the table has no such
/// column or the row no data in it.
/// \throws std::length_error when the table reports a negative size.
SECTRIX_EXPORT std::string getBlobText(mvq::DbTable const& table, wchar_t const* column);

/// A string column of the current row, converted by `ToUtf8`; empty when the table has no such column or the row no
/// text in it.
SECTRIX_EXPORT std::string getStringText(mvq::DbTable const& table, wchar_t const* column);

} // namespace qel::Sectrix
