#pragma once

#include "sectrix_tools/checks/finding.h"

#include <string>
#include <string_view>
#include <vector>

/// \file
/// Where a document holds the sections, loops and vertices that reading keeps of it. Internal to the checks.

namespace qel::SectrixTools {

/// A vertex in the text of its document.
struct VertexPlace {
    /// The place of its element in the array of its loop, counted from 0 in the order of the document.
    int m_element = 0;
    /// The line and the column, in bytes, of that element, counted from 1.
    int m_line = 0;
    int m_column = 0;
};

/// A loop in the text of its document.
struct LoopPlaces {
    /// The JSON Pointer of the array that holds the vertices: the first of the loop's pair, or, in a document
    /// without a list of sections, the array of positions. That of a vertex is this, a slash, and its `m_element`.
    std::string m_pointer;
    /// The line and the column, in bytes, of that array, counted from 1.
    int m_line = 0;
    int m_column = 0;
    /// One for each vertex that reading keeps, in the order of the set: that of the document in the exterior loop,
    /// the reverse of it in an interior loop.
    std::vector<VertexPlace> m_vertices;
};

/// A section in the text of its document.
struct SectionPlaces {
    /// The JSON Pointer of the section's element; of the list of positions, in a document without a list of
    /// sections.
    std::string m_pointer;
    /// The line and the column, in bytes, of that element, counted from 1.
    int m_line = 0;
    int m_column = 0;
    /// The exterior loop, then the interior loops in document order, wherever the exterior one stands.
    std::vector<LoopPlaces> m_loops;
};

/// One for each section that reading keeps, in the order of the set.
using DocumentPlaces = std::vector<SectionPlaces>;

/// What `CheckDocument(text)` gives, and into `places`, which is emptied first, where the set that reading makes of
/// the text stands in it.
Findings CheckDocument(std::string_view text, DocumentPlaces& places);

} // namespace qel::SectrixTools
