#include "sectrix/records/tables.h"
#include "sectrix/foundation/text_conversion.h"

namespace mvq {

SATGeometries::SATGeometries(gvs::Database* db) : DbTable(db, L"SAT_GEOMETRIES") {}
SATGeometries::~SATGeometries() = default;

SATDefinitions::SATDefinitions(gvs::Database* db) : DbTable(db, L"SAT_DEFINITIONS") {}
SATDefinitions::~SATDefinitions() = default;

void SATDefinitions::setData(void const* data, int size) {
    setBlob(L"DATA", data, size);
}

MeshDefinitions::MeshDefinitions(gvs::Database* db) : DbTable(db, L"MESH_DEFINITIONS") {}
MeshDefinitions::~MeshDefinitions() = default;

void MeshDefinitions::setData(void const* data, int size) {
    setBlob(L"DATA", data, size);
}

DbObject::DbObject(gvs::Database* db, wchar_t const* table) : DbTable(db, table) {}
DbObject::~DbObject() = default;

Meshes::Meshes(gvs::Database* db) : DbObject(db, L"MESHES") {}
Meshes::~Meshes() = default;

void Meshes::setData(void const* data, int size) {
    setBlob(L"DATA", data, size);
}

void Meshes::setMtl(void const* data, int size) {
    setBlob(L"MTL", data, size);
}

} // namespace mvq

namespace qel::Sectrix {

std::string getBlobText(mvq::DbTable const& table, wchar_t const* column) {
    if (!table.getDef()[column])
        return {};
    int size = 0;
    auto const* bytes = table.getBlob(column, &size);
    if (!bytes || size == 0)
        return {};
    // A negative size becomes one beyond the limit of every string, which the string refuses.
    return std::string(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
}

std::string getStringText(mvq::DbTable const& table, wchar_t const* column) {
    if (!table.getDef()[column])
        return {};
    return ToUtf8(table.getStringValue(column));
}

} // namespace qel::Sectrix
