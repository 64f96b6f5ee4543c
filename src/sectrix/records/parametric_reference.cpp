#include "sectrix/records/parametric_reference.h"

#include <utility>

namespace qel::Sectrix {

ParametricReference::ParametricReference(std::wstring const& path, std::wstring const& parametricType,
                                         std::wstring const& data, Mat<4, double> const& transform)
    : m_path(path), m_parametricType(parametricType), m_data(data), m_transform(transform) {}

ParametricReference::ParametricReference(ParametricReference&& other) noexcept
    : m_path(std::exchange(other.m_path, {})), m_parametricType(std::exchange(other.m_parametricType, {})),
      m_data(std::exchange(other.m_data, {})), m_transform(other.m_transform) {}

ParametricReference& ParametricReference::operator=(ParametricReference&& other) noexcept {
    m_path = std::exchange(other.m_path, {});
    m_parametricType = std::exchange(other.m_parametricType, {});
    m_data = std::exchange(other.m_data, {});
    m_transform = other.m_transform;
    return *this;
}

} // namespace qel::Sectrix
