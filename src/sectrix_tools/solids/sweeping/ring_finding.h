#pragma once

#include "sectrix_tools/checks/finding.h"

#include <string>

/// \file
/// The errors of rings.

namespace qel::SectrixTools::Solids {

/// An error about a section, one of its loops, or a vertex of that, as far as they are given.
inline Finding RingError(std::string const& code, std::string const& message,
                         std::optional<std::size_t> loop = std::nullopt,
                         std::optional<std::size_t> vertex = std::nullopt,
                         std::optional<Vec<2, double>> const& point = std::nullopt) {
    Finding finding;
    finding.m_code = code;
    finding.m_message = message;
    finding.m_loop = loop ? static_cast<int>(*loop) : -1;
    finding.m_vertex = vertex ? static_cast<int>(*vertex) : -1;
    finding.m_point = point;
    return finding;
}

} // namespace qel::SectrixTools::Solids
