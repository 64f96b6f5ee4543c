#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <string>

/// \file
/// Where a piece of ACIS geometry stands in the model, and how its SAT text is fetched.

namespace gvs {
class Database;
}

namespace qel::Sectrix {

/// The record of one piece of ACIS geometry. The host fills it; it holds no connection to the database.
///
/// Strings are wide, one 16-bit unit an element.
class SECTRIX_EXPORT AcisGeometry {
public:
    /// Index 0, empty strings, the identity transform.
    AcisGeometry() = default;
    /// A record of these values.
    AcisGeometry(std::wstring const& guid, std::wstring const& parentClass, std::wstring const& parentGuid,
                 std::wstring const& dataGuid, Mat<4, double> const& transform, int index,
                 std::wstring const& category);
    /// A full copy.
    AcisGeometry(AcisGeometry const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its index and transform.
    AcisGeometry(AcisGeometry&& other) noexcept;
    /// Takes a full copy.
    AcisGeometry& operator=(AcisGeometry const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its index and transform.
    AcisGeometry& operator=(AcisGeometry&& other) noexcept;

    /// The number that, with the parent's class and GUID, identifies the geometry row.
    int Index() const { return m_index; }
    /// The record's own GUID.
    std::wstring const& Guid() const { return m_guid; }
    /// The GUID of the definition row that holds the text.
    std::wstring const& DataGuid() const { return m_dataGuid; }
    /// The class of the record that owns this geometry.
    std::wstring const& ParentClass() const { return m_parentClass; }
    /// The GUID of the record that owns this geometry.
    std::wstring const& ParentGuid() const { return m_parentGuid; }
    /// What the host sorts the geometry under.
    std::wstring const& Category() const { return m_category; }
    /// The placement of the geometry.
    Mat<4, double> const& Transform() const { return m_transform; }

    /// Replaces what `Index` gives.
    void SetIndex(int index) { m_index = index; }
    /// Replaces what `Guid` gives.
    void SetGuid(std::wstring const& guid) { m_guid = guid; }
    /// Replaces what `DataGuid` gives.
    void SetDataGuid(std::wstring const& dataGuid) { m_dataGuid = dataGuid; }
    /// Replaces what `ParentClass` gives.
    void SetParentClass(std::wstring const& parentClass) { m_parentClass = parentClass; }
    /// Replaces what `ParentGuid` gives.
    void SetParentGuid(std::wstring const& parentGuid) { m_parentGuid = parentGuid; }
    /// Replaces what `Category` gives.
    void SetCategory(std::wstring const& category) { m_category = category; }
    /// Replaces what `Transform` gives.
    void SetTransform(Mat<4, double> const& transform) { m_transform = transform; }

    /// Fetches the SAT text into `out`.
    ///
    /// Where the table "SAT_GEOMETRIES" has the column "DATA_GUID", the text is the bytes, as they are, of the
    /// definition row with the GUID `DataGuid()`; else it is the text, converted by `ToUtf8`, of the geometry row
    /// with this parent class, parent GUID and index. The schema alone decides. Of several rows that match, the
    /// first that the database delivers counts. Costs one query; an index on what is filtered keeps it short.
    /// \param db   null does nothing at all.
    /// \param out  replaced when `db` is not null, and left empty when there is no such row or no text in it.
    /// \throws gvs::Error when the database fails; `out` then keeps what it held.
    void PullDataFromSourceRecord(gvs::Database* db, std::string& out) const;

private:
    int m_index = 0;
    std::wstring m_guid;
    std::wstring m_dataGuid;
    std::wstring m_parentClass;
    std::wstring m_parentGuid;
    std::wstring m_category;
    Mat<4, double> m_transform;
};

} // namespace qel::Sectrix
