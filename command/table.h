#pragma once

#include "sectrix/interfaces/dom.h"

#include <string>
#include <vector>

/// \file
/// Results as a table for people or as JSON for programs.

namespace qel::SectrixCommand {

/// How results are shown, as `--format` names it.
inline constexpr char const* kFormats[] = {"text", "json"};

/// A column of a table.
struct Column {
    /// The key of its values in the rows.
    std::string m_key;
    /// What stands above it in text.
    std::string m_title;
};

/// A row: an object whose values are texts, numbers, booleans, or a point as an array.
using Row = Dom;

/// A value as it is shown in text: numbers with eight digits, a point in brackets, a dash for what is not there.
std::string CellText(Dom const& value);

/// A line a row below the titles, columns aligned, texts to the left and numbers to the right. Values of other keys
/// are not shown.
std::string TableText(std::vector<Column> const& columns, std::vector<Row> const& rows);

/// The rows as one JSON array.
std::string JsonText(std::vector<Row> const& rows);

/// Prints rows as JSON or as a table; none where there are no rows.
///
/// \param format  one of `kFormats`.
void PrintRows(std::string const& format, std::vector<Column> const& columns, std::vector<Row> const& rows);

} // namespace qel::SectrixCommand
