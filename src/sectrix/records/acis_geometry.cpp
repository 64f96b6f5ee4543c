#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/detail/first_match.h"

#include <utility>

namespace qel::Sectrix {

AcisGeometry::AcisGeometry(std::wstring const& guid, std::wstring const& parentClass,
                           std::wstring const& parentGuid, std::wstring const& dataGuid,
                           Mat<4, double> const& transform, int index, std::wstring const& category)
    : m_index(index), m_guid(guid), m_dataGuid(dataGuid), m_parentClass(parentClass), m_parentGuid(parentGuid),
      m_category(category), m_transform(transform) {}

AcisGeometry::AcisGeometry(AcisGeometry&& other) noexcept {
    *this = std::move(other);
}

AcisGeometry& AcisGeometry::operator=(AcisGeometry&& other) noexcept {
    m_index = other.m_index;
    m_guid = std::exchange(other.m_guid, {});
    m_dataGuid = std::exchange(other.m_dataGuid, {});
    m_parentClass = std::exchange(other.m_parentClass, {});
    m_parentGuid = std::exchange(other.m_parentGuid, {});
    m_category = std::exchange(other.m_category, {});
    m_transform = other.m_transform;
    return *this;
}

void AcisGeometry::PullDataFromSourceRecord(gvs::Database* db, std::string& out) const {
    if (!db)
        return;
    mvq::SATGeometries geometries(db);
    bool const hasDefinitions = geometries.getDef()[L"DATA_GUID"] != nullptr;

    gvs::Expression filter;
    gvs::ExprBuilder builder(filter, nullptr, nullptr);
    if (hasDefinitions) {
        PushEqual(builder, L"GUID", gvs::Value(m_dataGuid.c_str()));
        mvq::SATDefinitions definitions(db);
        ReadFirstMatch(definitions, filter, ReadBlob, out);
    } else {
        PushEqual(builder, L"PARENT_CLASS", gvs::Value(m_parentClass.c_str()));
        PushEqual(builder, L"PARENT_GUID", gvs::Value(m_parentGuid.c_str()));
        builder.BooleanOp(kAnd);
        PushEqual(builder, L"INDEX", gvs::Value(std::int64_t{m_index}));
        builder.BooleanOp(kAnd);
        auto const readText = [](mvq::DbTable const& table, wchar_t const* column, std::string& text) {
            text = getStringText(table, column);
        };
        ReadFirstMatch(geometries, filter, readText, out);
    }
}

} // namespace qel::Sectrix
