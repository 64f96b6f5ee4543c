/// \file
/// A host of the library: fills records from a model database, and lists the data that each of them pulls.

#include "common/markup.h"
#include "record_report/model_rows.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/interfaces/gvs.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace example {
namespace {

using qel::Sectrix::ToUtf8;

constexpr char const* kUsage = R"(usage: record_report DATABASE [FILE]

Fills a record from each geometry and each mesh of a model database, has it pull its data, and prints a table:
what the record stands for, whether the data lies in a definition or directly in the row, its bytes, and how it
begins. Writes the table into FILE too, where given.
)";

/// Left to right: table, key, path, bytes, beginning.
using Row = std::vector<std::string>;

/// The first characters on one line; a point stands for what cannot be printed.
std::string Beginning(std::string const& data) {
    auto text = data.substr(0, 32);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < 0x20 || byte > 0x7E; }, '.');
    return text;
}

/// A row for each record, with the data that it pulls.
template <class Record, class Key>
void AppendRows(std::vector<Row>& rows, gvs::Database& database, std::string const& table, bool hasDefinitions,
                std::vector<Record> const& records, Key key) {
    std::string data;
    for (auto const& record : records) {
        record.PullDataFromSourceRecord(&database, data);
        rows.push_back({table, key(record), hasDefinitions ? "definition" : "direct", std::to_string(data.size()),
                        Beginning(data)});
    }
}

std::string Format(std::vector<Row> const& rows) {
    std::size_t widths[5] = {};
    for (auto const& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], Length(row[column]));
    std::string text;
    for (auto const& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            std::string const padding(widths[column] - Length(row[column]), ' ');
            text += "  " + (column == 3 ? padding + row[column] : row[column] + padding);
        }
        text.erase(text.find_last_not_of(' ') + 1) += '\n';
    }
    return text;
}

std::string Report(std::string const& path) {
    auto const connection = Open(path);
    gvs::Database database(connection.get());
    std::vector<Row> rows{{"table", "key", "path", "bytes", "begins with"}};
    AppendRows(rows, database, "geometry", HasDefinitions(connection.get(), "SAT_GEOMETRIES"),
               ReadGeometries(connection.get()), [](auto const& record) {
                   return ToUtf8(record.ParentClass()) + " " + std::to_string(record.Index()) + ", " +
                          ToUtf8(record.Category());
               });
    AppendRows(rows, database, "mesh", HasDefinitions(connection.get(), "MESHES"), ReadMeshes(connection.get()),
               [](auto const& record) { return std::to_string(record.ID()) + ", " + ToUtf8(record.Name()); });
    return Format(rows);
}

} // namespace
} // namespace example

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << example::kUsage;
        return 2;
    }
    try {
        auto const report = example::Report(argv[1]);
        std::cout << report;
        if (argc == 3)
            example::WriteFile(argv[2], report);
        return 0;
    } catch (std::exception const& error) {
        std::cerr << "record_report: " << error.what() << '\n';
        return 1;
    }
}
