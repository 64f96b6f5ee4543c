#include "sectrix/records/obj.h"
#include "sectrix/records/detail/first_match.h"

#include <utility>

namespace qel::Sectrix {

Obj::Obj(std::int64_t id, std::wstring const& key, std::wstring const& name, std::wstring const& parentId,
         std::wstring const& parentClass, std::wstring const& dataGuid, Mat<4, double> const& transform)
    : m_id(id), m_key(key), m_name(name), m_dataGuid(dataGuid), m_parentId(parentId), m_parentClass(parentClass),
      m_transform(transform) {}

Obj::Obj(Obj&& other) noexcept {
    *this = std::move(other);
}

Obj& Obj::operator=(Obj&& other) noexcept {
    m_id = other.m_id;
    m_key = std::exchange(other.m_key, {});
    m_name = std::exchange(other.m_name, {});
    m_dataGuid = std::exchange(other.m_dataGuid, {});
    m_parentId = std::exchange(other.m_parentId, {});
    m_parentClass = std::exchange(other.m_parentClass, {});
    m_transform = other.m_transform;
    return *this;
}

void Obj::PullDataFromSourceRecord(gvs::Database* db, std::string& out) const {
    if (!db)
        return;
    mvq::Meshes meshes(db);
    bool const hasDefinitions = meshes.getDef()[L"DATA_GUID"] != nullptr;

    gvs::Expression filter;
    gvs::ExprBuilder builder(filter, nullptr, nullptr);
    if (hasDefinitions) {
        PushEqual(builder, L"GUID", gvs::Value(m_dataGuid.c_str()));
        mvq::MeshDefinitions definitions(db);
        ReadFirstMatch(definitions, filter, ReadBlob, out);
    } else {
        PushEqual(builder, mvq::DbTable::_ID(), gvs::Value(m_id));
        ReadFirstMatch(meshes, filter, ReadBlob, out);
    }
}

} // namespace qel::Sectrix
