#pragma once

/// \file
/// A table that goes to the terminal and to a page alike.

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace example {

struct Table {
    std::vector<std::string> m_header;
    /// Each as long as the header.
    std::vector<std::vector<std::string>> m_rows;
    /// The columns of text, which stand to the left; the others are numbers and stand to the right.
    std::set<std::size_t> m_textColumns = {0};
};

/// The table as plain text, a line a row, its columns aligned by characters.
std::string PlainText(Table const& table);

} // namespace example
