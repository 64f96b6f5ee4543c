#include "output_files.h"
#include "printable.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/foundation/text_conversion.h"
#include "sectrix/interfaces/db_table.h"
#include "sectrix/records/acis_geometry.h"
#include "sectrix/records/obj.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

/// \file
/// The verb `records`: the data that the records of a model database pull.

namespace qel::SectrixCommand {
namespace {

using mvq::DbTable;
using Sectrix::ToUtf8;

/// A record and the id of its row.
template <class Record>
using Stored = std::pair<std::int64_t, Record>;

/// The text of a column; empty for none.
std::wstring Text(DbTable const& row, wchar_t const* column) {
    wchar_t const* const text = row.getStringValue(column);
    return text ? text : L"";
}

/// The column that refers to a definition; empty where rows hold their data themselves.
std::wstring DataGuid(DbTable const& row) {
    return row.getDef()[L"DATA_GUID"] ? Text(row, L"DATA_GUID") : L"";
}

Sectrix::AcisGeometry GeometryOf(DbTable const& row) {
    return {Text(row, L"GUID"), Text(row, L"PARENT_CLASS"),  Text(row, L"PARENT_GUID"), DataGuid(row),
            Mat<4, double>(),   row.getInt32Value(L"INDEX"), Text(row, L"CATEGORY")};
}

Sectrix::Obj MeshOf(DbTable const& row) {
    return {row.getInt64Value(DbTable::_ID()), Text(row, L"KEY"), Text(row, L"NAME"), Text(row, L"PARENT_ID"),
            Text(row, L"PARENT_CLASS"),        DataGuid(row),     Mat<4, double>()};
}

/// A record for each row, in the order of their ids.
template <class Read>
auto ReadAll(DbTable& table, Read read) {
    std::vector<Stored<decltype(read(table))>> records;
    table.querySequential(nullptr, nullptr, false);
    while (table.readNext())
        records.emplace_back(table.getInt64Value(DbTable::_ID()), read(table));
    table.endQuery();
    auto const isBefore = [](auto const& a, auto const& b) { return a.first < b.first; };
    std::sort(records.begin(), records.end(), isBefore);
    return records;
}

/// The first characters on one line; a point stands for what cannot be printed.
std::string Beginning(std::string const& data) {
    constexpr std::size_t kMost = 32;
    auto text = data.substr(0, kMost);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char byte) { return byte < 0x20 || byte > 0x7E; }, '.');
    return text;
}

/// Where the data of one database goes.
struct Target {
    std::string m_database;
    std::string m_stem;
    Outcome& m_outcome;
};

/// Pulls the data of one record.
template <class Record>
void AddRecord(Target const& target, gvs::Database& database, Stored<Record> const& stored, char const* kind,
               std::string const& name) {
    auto const& [id, record] = stored;
    std::string data;
    record.PullDataFromSourceRecord(&database, data);
    Row& row = target.m_outcome.m_rows.emplace_back();
    row["database"] = ValidUtf8(target.m_database);
    row["kind"] = kind;
    row["id"] = id;
    row["name"] = ValidUtf8(name);
    row["data_guid"] = ValidUtf8(ToUtf8(record.DataGuid()));
    row["bytes"] = static_cast<std::int64_t>(data.size());
    row["begins_with"] = Beginning(data);
    if (data.empty())
        return;
    bool const isGeometry = kind == std::string("geometry");
    bool const isBinary = data.find('\0') != std::string::npos;
    target.m_outcome.m_files.emplace_back(target.m_stem + '_' + kind + '_' + std::to_string(id) +
                                              (isGeometry ? ".sat"
                                               : isBinary ? ".bin"
                                                          : ".obj"),
                                          std::move(data));
}

void AddGeometries(Target const& target, gvs::Database& database) {
    std::vector<Stored<Sectrix::AcisGeometry>> records;
    {
        DbTable table(&database, L"SAT_GEOMETRIES"); // holds a read on the database while it is there
        records = ReadAll(table, GeometryOf);
    }
    for (auto const& stored : records)
        AddRecord(target, database, stored, "geometry",
                  ToUtf8(stored.second.ParentClass()) + ' ' + std::to_string(stored.second.Index()) + ", " +
                      ToUtf8(stored.second.Category()));
}

void AddMeshes(Target const& target, gvs::Database& database) {
    std::vector<Stored<Sectrix::Obj>> records;
    {
        DbTable table(&database, L"MESHES");
        records = ReadAll(table, MeshOf);
    }
    for (auto const& stored : records)
        AddRecord(target, database, stored, "mesh", ToUtf8(stored.second.Name()));
}

/// One table that cannot be read does not keep the other from being read.
Outcome Pull(std::string const& path, std::string const& stem, bool isWritten) {
    Outcome outcome;
    Target const target{path, stem, outcome};
    for (auto* const add : {AddGeometries, AddMeshes}) {
        try {
            gvs::Database database(path);
            add(target, database);
        } catch (gvs::Error const& error) {
            std::string const trouble = path + ": " + error.what();
            if (outcome.m_troubles.empty() || outcome.m_troubles.back() != trouble)
                outcome.Add(trouble, 2);
        }
    }
    if (!isWritten)
        outcome.m_files.clear();
    return outcome;
}

/// The arguments.
struct RecordsOptions {
    std::vector<std::string> m_databases;
    std::int64_t m_jobs = 0;
    std::string m_format = "text";
    std::string m_folder;
};

} // namespace

void AddRecords(CLI::App& program, int& status) {
    auto const options = std::make_shared<RecordsOptions>();
    CLI::App* const verb = program.add_subcommand("records", "Pull stored geometry out of model databases");
    verb->group("Verbs");
    verb->add_option("DATABASE", options->m_databases, "Model databases")->type_name("")->required();
    verb->add_option("--jobs", options->m_jobs,
                     "Work on so many databases at once, as many as\nthere are cores unless given")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    AddFormat(*verb, options->m_format);
    verb->add_option("-o,--output", options->m_folder, "Write the data of each record into it")
        ->type_name("FOLDER");
    verb->callback([options, &status] {
        auto const& databases = options->m_databases;
        auto const stems = FileStems(databases);
        std::vector<Row> rows;
        status = WorkOnAll(
            databases, options->m_jobs, options->m_folder,
            [&](std::size_t i) { return Pull(databases[i], stems[i], !options->m_folder.empty()); }, rows);
        PrintRows(options->m_format,
                  {{"database", "database"},
                   {"kind", "kind"},
                   {"id", "id"},
                   {"name", "name"},
                   {"data_guid", "definition"},
                   {"bytes", "bytes"},
                   {"begins_with", "begins with"}},
                  rows);
    });
}

} // namespace qel::SectrixCommand
