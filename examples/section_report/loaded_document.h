#pragma once

/// \file
/// One document, read, with an account of what reading has passed over.

#include "sectrix/sections/cross_sections.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace example {

/// A document to report on.
struct Request {
    std::filesystem::path m_file;
    /// The factor from the document's unit to that of the report.
    double m_scale = 1.0;
    /// The name of the report's unit, which no document tells.
    std::string m_unit = "units";
};

/// How many elements of one kind a document has, and how many of them the set has after reading.
struct Tally {
    char const* m_kind;
    std::uint64_t m_given = 0;
    std::uint64_t m_kept = 0;
};

/// A document that was read.
struct LoadedDocument {
    Request m_request;
    qel::Sectrix::CrossSections m_set;
    /// Positions, sections, loops, vertices and parameters.
    std::vector<Tally> m_tallies;
};

/// Throws std::runtime_error with a message for the user when the file cannot be read or is not JSON. A JSON
/// document that holds no sections is no error.
LoadedDocument Load(Request const& request);

/// What a section of a set is called: the name of its part, or else its number, counted from 1.
std::string TitleOf(qel::Sectrix::CrossSections const& set, std::size_t section);

/// True when reading has passed over anything.
bool HasDropped(LoadedDocument const& document);

} // namespace example
