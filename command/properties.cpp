#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix_tools/measures/section_properties.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

/// \file
/// The verb `properties`: area, centroid and moments of sections.

namespace qel::SectrixCommand {
namespace {

using SectrixTools::SectionProperties;

/// A property: its key, the power of its unit, and where it stands.
struct Property {
    char const* m_key;
    char const* m_power;
    double SectionProperties::*m_value;
};

constexpr char const* kLength = "";
constexpr char const* kSquare = "\u00B2";
constexpr char const* kCube = "\u00B3";
constexpr char const* kFourth = "\u2074";

/// All but the centroid.
constexpr Property kProperties[] = {
    {"area", kSquare, &SectionProperties::m_area},
    {"outer_perimeter", kLength, &SectionProperties::m_outerPerimeter},
    {"inner_perimeter", kLength, &SectionProperties::m_innerPerimeter},
    {"first_moment_x", kCube, &SectionProperties::m_firstMomentX},
    {"first_moment_y", kCube, &SectionProperties::m_firstMomentY},
    {"ix", kFourth, &SectionProperties::m_ix},
    {"iy", kFourth, &SectionProperties::m_iy},
    {"ixy", kFourth, &SectionProperties::m_ixy},
    {"i1", kFourth, &SectionProperties::m_i1},
    {"i2", kFourth, &SectionProperties::m_i2},
    {"angle", nullptr, &SectionProperties::m_angle},
    {"top", kLength, &SectionProperties::m_top},
    {"bottom", kLength, &SectionProperties::m_bottom},
    {"left", kLength, &SectionProperties::m_left},
    {"right", kLength, &SectionProperties::m_right},
    {"section_modulus_top", kCube, &SectionProperties::m_sectionModulusTop},
    {"section_modulus_bottom", kCube, &SectionProperties::m_sectionModulusBottom},
    {"section_modulus_left", kCube, &SectionProperties::m_sectionModulusLeft},
    {"section_modulus_right", kCube, &SectionProperties::m_sectionModulusRight},
    {"radius_x", kLength, &SectionProperties::m_radiusX},
    {"radius_y", kLength, &SectionProperties::m_radiusY},
};

Outcome Measure(SectionFilesOptions const& options, std::string const& file) {
    Outcome outcome;
    SectionDocument const document = ReadSections(file, options, outcome);
    for (std::size_t const place : document.m_chosen) {
        SectionProperties const properties = SectrixTools::PropertiesOf(document.m_set.Items()[place]);
        Row& row = outcome.m_rows.emplace_back(RowOf(document, place));
        row["unit"] = options.m_unit;
        for (Property const& property : kProperties)
            row[property.m_key] = properties.*property.m_value;
        Dom& centroid = row["centroid"];
        centroid.append() = properties.m_centroid[0];
        centroid.append() = properties.m_centroid[1];
    }
    return outcome;
}

/// A line a property and a column a section, since few sections are asked for at once, but many properties. Of more
/// sections than a line takes there is one table after another.
std::string Text(std::vector<Row> const& rows, std::string const& unit) {
    constexpr std::size_t kMost = 5;
    std::string text;
    for (std::size_t from = 0; from < rows.size(); from += kMost) {
        std::vector<Row> lines;
        std::vector<Column> columns{{"property", ""}};
        auto const add = [&](std::string const& key, std::string const& title) {
            Row& line = lines.emplace_back();
            line["property"] = title;
            for (std::size_t i = from; i < std::min(from + kMost, rows.size()); ++i)
                line[std::to_string(i)] = CellText(rows[i][key.c_str()]);
        };
        for (std::size_t i = from; i < std::min(from + kMost, rows.size()); ++i)
            columns.push_back({std::to_string(i), CellText(rows[i]["section"])});
        add("document", "document");
        add("centroid", "centroid, " + unit);
        for (Property const& property : kProperties)
            add(property.m_key, property.m_key + (property.m_power ? ", " + unit + property.m_power : ", rad"));
        text += (text.empty() ? "" : "\n") + TableText(columns, lines);
    }
    return text;
}

} // namespace

void AddProperties(CLI::App& program, int& status) {
    auto const options = std::make_shared<SectionFilesOptions>();
    CLI::App* const verb = program.add_subcommand("properties", "Measure sections: area, centroid, moments");
    verb->group("Verbs");
    AddSectionFiles(*verb, *options);
    AddFormat(*verb, options->m_format);
    verb->callback([options, &status] {
        RequireSense(*options);
        std::vector<Row> rows;
        status = WorkOnAll(
            options->m_files, options->m_jobs, {},
            [&](std::size_t i) { return Measure(*options, options->m_files[i]); }, rows);
        Print(options->m_format == "json" ? JsonText(rows) : Text(rows, options->m_unit));
    });
}

} // namespace qel::SectrixCommand
