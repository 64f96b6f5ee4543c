#include "common/table.h"

#include "common/markup.h"

#include <algorithm>

namespace example {
namespace {

void AppendRow(std::string& text, std::vector<std::string> const& row, std::vector<std::size_t> const& widths) {
    for (std::size_t column = 0; column < row.size(); ++column) {
        std::string const padding(widths[column] - Length(row[column]), ' ');
        text += column == 0 ? "  " + row[column] + padding : "  " + padding + row[column];
    }
    text += '\n';
}

} // namespace

std::string PlainText(Table const& table) {
    std::vector<std::size_t> widths(table.m_header.size(), 0);
    auto const widen = [&](std::vector<std::string> const& row) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], Length(row[column]));
    };
    widen(table.m_header);
    std::for_each(table.m_rows.begin(), table.m_rows.end(), widen);

    std::string text;
    AppendRow(text, table.m_header, widths);
    for (std::vector<std::string> const& row : table.m_rows)
        AppendRow(text, row, widths);
    return text;
}

} // namespace example
