#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <cstdint>
#include <string>

/// \file
/// Where a stored mesh object stands in the model, and how its data is fetched.

namespace gvs {
class Database;
}

namespace qel::Sectrix {

/// The record of one mesh object. The host fills it; it holds no connection to the database.
///
/// Strings are wide, one 16-bit unit an element.
class SECTRIX_EXPORT Obj {
public:
    /// The id -1, empty strings, the identity transform.
    Obj() = default;
    /// A record of these values.
    Obj(std::int64_t id, std::wstring const& key, std::wstring const& name, std::wstring const& parentId,
        std::wstring const& parentClass, std::wstring const& dataGuid, Mat<4, double> const& transform);
    /// A full copy.
    Obj(Obj const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its id and transform.
    Obj(Obj&& other) noexcept;
    /// Takes a full copy.
    Obj& operator=(Obj const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its id and transform.
    Obj& operator=(Obj&& other) noexcept;

    /// The row id of the object in "MESHES"; -1 when it is not set.
    std::int64_t ID() const { return m_id; }
    /// The key of the object.
    std::wstring const& Key() const { return m_key; }
    /// The display name.
    std::wstring const& Name() const { return m_name; }
    /// The GUID of the definition row that holds the data.
    std::wstring const& DataGuid() const { return m_dataGuid; }
    /// The id, as text, of the record that owns this object.
    std::wstring const& ParentID() const { return m_parentId; }
    /// The class of the record that owns this object.
    std::wstring const& ParentClass() const { return m_parentClass; }
    /// The placement of the object.
    Mat<4, double> const& Transform() const { return m_transform; }

    /// Replaces what `ID` gives.
    void SetID(std::int64_t id) { m_id = id; }
    /// Replaces what `Key` gives.
    void SetKey(std::wstring const& key) { m_key = key; }
    /// Replaces what `Name` gives.
    void SetName(std::wstring const& name) { m_name = name; }
    /// Replaces what `DataGuid` gives.
    void SetDataGuid(std::wstring const& dataGuid) { m_dataGuid = dataGuid; }
    /// Replaces what `ParentID` gives.
    void SetParentID(std::wstring const& parentId) { m_parentId = parentId; }
    /// Replaces what `ParentClass` gives.
    void SetParentClass(std::wstring const& parentClass) { m_parentClass = parentClass; }
    /// Replaces what `Transform` gives.
    void SetTransform(Mat<4, double> const& transform) { m_transform = transform; }

    /// Fetches the mesh data, the bytes as they are stored, into `out`.
    ///
    /// Where the table "MESHES" has the column "DATA_GUID", they come from the definition row with the GUID
    /// `DataGuid()`; else from the mesh row with the row id `ID()`. The schema alone decides. Of several rows that
    /// match, the first that the database delivers counts. Costs one query; an index on what is filtered keeps it
    /// short.
    /// \param db   null does nothing at all.
    /// \param out  replaced when `db` is not null, and left empty when there is no such row or no data in it.
    /// \throws gvs::Error when the database fails; `out` then keeps what it held.
    void PullDataFromSourceRecord(gvs::Database* db, std::string& out) const;

private:
    std::int64_t m_id = -1;
    std::wstring m_key;
    std::wstring m_name;
    std::wstring m_dataGuid;
    std::wstring m_parentId;
    std::wstring m_parentClass;
    Mat<4, double> m_transform;
};

} // namespace qel::Sectrix
