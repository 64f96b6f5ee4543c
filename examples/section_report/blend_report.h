#pragma once

/// \file
/// What the program says about the sets that lie between two documents.

#include "common/html.h"
#include "section_report/loaded_document.h"

#include <filesystem>
#include <string>

namespace example {

/// A way from one document to another.
struct BlendRequest {
    /// How many sets, those of the two documents included; at least 2.
    int m_count = 2;
    Request m_first;
    Request m_second;
};

/// Writes pictures of the sets on the way into `folder`, adds a chapter with them and a table to `page`, and
/// returns the table as plain text. When the two documents cannot be blended, says why instead.
/// \param stem  how the names of the files begin.
std::string ReportBlend(BlendRequest const& request, std::filesystem::path const& folder, std::string const& stem,
                        HtmlPage& page);

} // namespace example
