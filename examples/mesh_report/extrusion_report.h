#pragma once

/// \file
/// What the program says about an extrusion and the planes at its ends.

#include "common/html.h"
#include "sectrix/extrusion/extrusion.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace example {

/// An extrusion with what its document is called, and the end planes that were given with it.
struct LoadedExtrusion {
    std::string m_name;
    qel::Sectrix::Extrusion m_extrusion;
    std::vector<std::pair<std::string, qel::Sectrix::EndPlane>> m_planes;
};

/// Writes a picture, adds a chapter to `page`, and returns the tree of the extrusion as plain text.
std::string ReportExtrusion(LoadedExtrusion const& loaded, std::filesystem::path const& picture, HtmlPage& page);

} // namespace example
