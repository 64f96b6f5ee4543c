#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <string>

/// \file
/// The reference to a parametric definition.

namespace qel::Sectrix {

/// The record of one parametric definition. The library carries it for the host and reads none of it.
///
/// Strings are wide, one 16-bit unit an element.
class SECTRIX_EXPORT ParametricReference {
public:
    /// A record of these values.
    ParametricReference(std::wstring const& path, std::wstring const& parametricType, std::wstring const& data,
                        Mat<4, double> const& transform);
    /// A full copy.
    ParametricReference(ParametricReference const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its transform.
    ParametricReference(ParametricReference&& other) noexcept;
    /// Takes a full copy.
    ParametricReference& operator=(ParametricReference const& other) = default;
    /// Takes the strings over and leaves them empty in `other`, which keeps its transform.
    ParametricReference& operator=(ParametricReference&& other) noexcept;

    /// The path of the definition.
    std::wstring const& Path() const { return m_path; }
    /// The type of the definition.
    std::wstring const& ParametricType() const { return m_parametricType; }
    /// The data of the definition.
    std::wstring const& Data() const { return m_data; }
    /// The placement.
    Mat<4, double> const& Transform() const { return m_transform; }

    /// Replaces what `Path` gives.
    void SetPath(std::wstring const& path) { m_path = path; }
    /// Replaces what `ParametricType` gives.
    void SetParametricType(std::wstring const& parametricType) { m_parametricType = parametricType; }
    /// Replaces what `Data` gives.
    void SetData(std::wstring const& data) { m_data = data; }
    /// Replaces what `Transform` gives.
    void SetTransform(Mat<4, double> const& transform) { m_transform = transform; }

private:
    std::wstring m_path;
    std::wstring m_parametricType;
    std::wstring m_data;
    Mat<4, double> m_transform;
};

} // namespace qel::Sectrix
