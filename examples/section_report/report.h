#pragma once

/// \file
/// What the program says about a document: to the terminal, in files, and on the page of all documents.

#include "common/html.h"
#include "section_report/loaded_document.h"

#include <filesystem>
#include <string>

namespace example {

/// Writes, into `folder`, a picture of each section, the text dump, and the document as it is written back; adds a
/// chapter with all of this to `page`; and returns the chapter's tables as plain text.
/// \param stem  how the names of the files begin.
std::string ReportDocument(LoadedDocument& document, std::filesystem::path const& folder, std::string const& stem,
                           HtmlPage& page);

} // namespace example
