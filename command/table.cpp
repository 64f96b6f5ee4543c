#include "table.h"

#include "printable.h"
#include "streams.h"

#include "sectrix/interfaces/dom_writer_json.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qel::SectrixCommand {
namespace {

constexpr int kDigits = 8;

std::string NumberText(double number) {
    if (!std::isfinite(number))
        return "-";
    char text[40];
    std::snprintf(text, sizeof text, "%.*g", kDigits, number == 0 ? 0.0 : number); // no "-0"
    return text;
}

/// How many columns of a terminal a printable text takes.
std::size_t Width(std::string const& text) {
    int width = 0;
    for (Glyph const& glyph : Glyphs(text))
        width += glyph.m_width;
    return static_cast<std::size_t>(width);
}

} // namespace

std::string CellText(Dom const& value) {
    if (value.isString())
        return Printable(value.asString(""));
    if (value.isInt())
        return std::to_string(value.asInt(0));
    if (value.isDouble())
        return NumberText(value.asDouble(0));
    if (value.isBool())
        return value.asBool(false) ? "yes" : "no";
    std::string text;
    for (std::uint64_t i = 0; i < value.size(); ++i)
        text += (i == 0 ? "" : ", ") + CellText(value[i]);
    return text.empty() ? "-" : '(' + text + ')';
}

std::string TableText(std::vector<Column> const& columns, std::vector<Row> const& rows) {
    std::vector<std::vector<std::string>> lines(rows.size() + 1);
    std::vector<bool> isText(columns.size(), false);
    std::vector<std::size_t> widths(columns.size(), 0);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        lines[0].push_back(Printable(columns[column].m_title));
        for (std::size_t row = 0; row < rows.size(); ++row) {
            Dom const& value = rows[row][columns[column].m_key.c_str()];
            isText[column] = isText[column] || value.isString();
            lines[row + 1].push_back(CellText(value));
        }
        for (auto const& line : lines)
            widths[column] = std::max(widths[column], Width(line[column]));
    }
    std::string text;
    for (auto const& line : lines) {
        for (std::size_t column = 0; column < columns.size(); ++column) {
            std::string const padding(widths[column] - Width(line[column]), ' ');
            text += column == 0 ? "" : "  ";
            text += isText[column] ? line[column] + padding : padding + line[column];
        }
        text.erase(text.find_last_not_of(' ') + 1) += '\n';
    }
    return text;
}

std::string JsonText(std::vector<Row> const& rows) {
    Dom array;
    array.toArray();
    for (Row const& row : rows)
        array.append() = row;
    return DomWriterJson::ToString(array) + '\n';
}

void PrintRows(std::string const& format, std::vector<Column> const& columns, std::vector<Row> const& rows) {
    if (format == "json")
        Print(JsonText(rows));
    else if (!rows.empty())
        Print(TableText(columns, rows));
}

} // namespace qel::SectrixCommand
