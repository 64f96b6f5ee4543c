#pragma once

/// \file
/// JSON documents from files.

#include "sectrix/interfaces/dom.h"

#include <filesystem>

namespace example {

/// Throws std::runtime_error with the path and the reason when the file cannot be read or is not JSON.
qel::Dom ReadDocument(std::filesystem::path const& path);

} // namespace example
