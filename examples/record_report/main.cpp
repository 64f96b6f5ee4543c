/// \file
/// A host of the library: fills records from a model database, and lists the data that each of them pulls.

#include "common/host.h"
#include "common/markup.h"
#include "common/table.h"
#include "record_report/model_rows.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/interfaces/gvs.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
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

/// The first characters on one line; a point stands for what cannot be printed.
std::string Beginning(std::string const& data) {
    constexpr std::size_t kMost = 32;
    auto text = data.substr(0, kMost);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < 0x20 || byte > 0x7E; }, '.');
    return text;
}

/// Adds a row for each record, with the data that it pulls.
template <class Record, class Key>
void AppendRows(Table& table, gvs::Database& database, std::string const& kind, bool hasDefinitions,
                std::vector<Record> const& records, Key key) {
    std::string data;
    for (auto const& record : records) {
        record.PullDataFromSourceRecord(&database, data);
        table.m_rows.push_back({kind, key(record), hasDefinitions ? "definition" : "direct",
                                std::to_string(data.size()), Beginning(data)});
    }
}

std::string Report(std::string const& path) {
    auto const connection = Open(path);
    gvs::Database database(connection.get());
    Table table{{"table", "key", "path", "bytes", "begins with"}, {}, {0, 1, 2, 4}};
    AppendRows(table, database, "geometry", HasDefinitions(connection.get(), "SAT_GEOMETRIES"),
               ReadGeometries(connection.get()), [](auto const& record) {
                   return ToUtf8(record.ParentClass()) + " " + std::to_string(record.Index()) + ", " +
                          ToUtf8(record.Category());
               });
    AppendRows(table, database, "mesh", HasDefinitions(connection.get(), "MESHES"), ReadMeshes(connection.get()),
               [](auto const& record) { return std::to_string(record.ID()) + ", " + ToUtf8(record.Name()); });
    return PlainText(table);
}

bool Run(std::vector<std::string> const& words) {
    if (words.empty() || words.size() > 2)
        throw std::invalid_argument("wants a database and at most one file");
    std::string const report = Report(words[0]);
    std::cout << report;
    if (words.size() == 2)
        WriteFile(words[1], report);
    return true;
}

} // namespace
} // namespace example

int main(int argc, char** argv) {
    return example::RunHost("record_report", example::kUsage, argc, argv, example::Run);
}
