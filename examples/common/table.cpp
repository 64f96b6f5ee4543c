#include "common/table.h"

#include "common/markup.h"

#include <algorithm>

namespace example {

std::string PlainText(Table const& table) {
    std::vector<std::size_t> widths(table.m_header.size(), 0);
    auto const widen = [&](std::vector<std::string> const& row) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], Length(row[column]));
    };
    widen(table.m_header);
    std::for_each(table.m_rows.begin(), table.m_rows.end(), widen);

    std::string text;
    auto const append = [&](std::vector<std::string> const& row) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            std::string const padding(widths[column] - Length(row[column]), ' ');
            text += "  " + (table.m_textColumns.count(column) > 0 ? row[column] + padding : padding + row[column]);
        }
        text.erase(text.find_last_not_of(' ') + 1) += '\n';
    };
    append(table.m_header);
    std::for_each(table.m_rows.begin(), table.m_rows.end(), append);
    return text;
}

} // namespace example
