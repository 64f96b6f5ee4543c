#pragma once

/// \file
/// What the program says about a model file.

#include "common/html.h"
#include "sectrix/foundation/value_types.h"

#include <filesystem>
#include <string>

namespace example {

/// Imports a model file, fills a mesh under `transform` for each mesh in it and takes its merging copy; writes a
/// picture of each into `folder`, adds a chapter to `page`, and returns the chapter as plain text. Throws
/// std::runtime_error with a message for the user when the file cannot be read. \param stem  how the names of the
/// pictures begin.
std::string ReportModel(std::filesystem::path const& file, qel::Mat<4, double> const& transform,
                        std::filesystem::path const& folder, std::string const& stem, HtmlPage& page);

} // namespace example
