#include "sectrix/records/tables.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/records/detail/first_match.h"

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

void ReadBlob(mvq::DbTable const& table, wchar_t const* column, std::string& out) {
    int size = 0;
    auto const* bytes = table.getDef()[column] ? table.getBlob(column, &size) : nullptr;
    // A negative size becomes one beyond the limit of every string, which the string refuses.
    if (bytes)
        out.assign(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
    else
        out.clear();
}

std::string getBlobText(mvq::DbTable const& table, wchar_t const* column) {
    std::string text;
    ReadBlob(table, column, text);
    return text;
}

std::string getStringText(mvq::DbTable const& table, wchar_t const* column) {
    if (!table.getDef()[column])
        return {};
    return ToUtf8(table.getStringValue(column));
}

} // namespace qel::Sectrix
