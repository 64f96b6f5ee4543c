#include "output_files.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/interfaces/dom_writer_json.h"
#include "sectrix_tools/checks/blend_check.h"
#include "sectrix_tools/drawings/blend_drawing.h"
#include "sectrix_tools/measures/section_properties.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstdio>
#include <deque>
#include <memory>
#include <optional>

/// \file
/// The verb `blend`: the sections on the way from one document to another.

namespace qel::SectrixCommand {
namespace {

using Sectrix::CrossSection;
using Sectrix::CrossSections;

/// The arguments.
struct BlendOptions {
    /// Without its files.
    SectionFilesOptions m_reading;
    std::string m_first;
    std::string m_second;
    std::optional<double> m_ratio;
    std::int64_t m_count = 5;
    std::string m_output;
    std::string m_folder;
};

/// A set on the way, and where it lies.
struct Blend {
    double m_ratio;
    CrossSections m_set;
};

/// In a deque, so that sections stay where they are.
std::deque<Blend> BlendAll(CrossSections const& first, CrossSections const& second, BlendOptions const& options) {
    std::deque<Blend> blends;
    if (options.m_ratio)
        blends.push_back({*options.m_ratio, CrossSections(first, second, *options.m_ratio, false)});
    for (std::int64_t i = 0; !options.m_ratio && i < options.m_count; ++i) {
        double const ratio = static_cast<double>(i) / static_cast<double>(options.m_count - 1);
        blends.push_back({ratio, CrossSections(first, second, ratio, false)});
    }
    return blends;
}

double Depth(CrossSection const& section) {
    auto const& box = section.BBox();
    return box.m_max[1] - box.m_min[1];
}

/// The parameters are an object within.
Row BlendRow(Blend const& blend, SectionDocument const& first, std::size_t place) {
    CrossSection const& section = blend.m_set.Items()[place];
    Row row = RowOf(first, place);
    row["ratio"] = blend.m_ratio;
    row["depth"] = Depth(section);
    row["area"] = SectrixTools::PropertiesOf(section).m_area;
    row["holes"] = static_cast<std::int64_t>(section.InteriorLoops().size());
    row["convex_loops"] = static_cast<std::int64_t>(section.ConvexLoops().size());
    Dom& parameters = row["parameters"].toObject();
    for (auto const& [key, value] : blend.m_set.Parameters())
        parameters[key] = value;
    return row;
}

/// A table a section, with a column a parameter.
void PrintTable(std::vector<Row> const& rows, std::string const& unit) {
    std::vector<Column> columns{{"section", "section"},      {"ratio", "ratio"},
                                {"depth", "depth, " + unit}, {"area", "area, " + unit + "\u00B2"},
                                {"holes", "holes"},          {"convex_loops", "convex loops"}};
    std::vector<Row> flat = rows;
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (auto const& [key, value] : rows[i]["parameters"].objects())
            flat[i]["parameters/" + key] = value;
    if (!rows.empty())
        for (auto const& [key, value] : rows[0]["parameters"].objects())
            columns.push_back({"parameters/" + key, key});
    PrintRows("text", columns, flat);
}

/// With its parameters as an object, so that they are read again.
void WriteDocument(CrossSections& set, std::string const& path) {
    Dom dom;
    set.To(dom);
    // `To` makes a list of the parameters, which `From` does not read.
    Dom& parameters = dom["Params"].toObject();
    for (auto const& [key, value] : set.Parameters())
        parameters[key] = value;
    WriteFile(path, DomWriterJson::ToString(dom) + '\n');
}

void DrawBlends(std::deque<Blend> const& blends, SectionDocument const& first, std::size_t place,
                BlendOptions const& options, Outcome& outcome) {
    std::string const& unit = options.m_reading.m_unit;
    std::vector<SectrixTools::DrawnStation> stations;
    for (Blend const& blend : blends) {
        CrossSection const& section = blend.m_set.Items()[place];
        char text[100];
        std::snprintf(text, sizeof text, "ratio %.3g, %.4g ", blend.m_ratio, Depth(section));
        stations.push_back(
            {&section, text + unit + " deep, " + std::to_string(section.ConvexLoops().size()) + " convex loops"});
    }
    std::string const title = TitleOf(first.m_set, place);
    std::string const stem = FileStems({options.m_first})[0] + "-blend_" + std::to_string(place + 1);
    auto along = SectrixTools::DrawAlongSpan(stations, title + ", along the span", unit);
    AddFindings(outcome, options.m_first, along.m_findings);
    if (along.m_svg.empty())
        return;
    auto side = SectrixTools::DrawSideBySide(stations, title + ", side by side", unit);
    outcome.m_files.emplace_back(stem + "_along.svg", std::move(along.m_svg));
    outcome.m_files.emplace_back(stem + "_side-by-side.svg", std::move(side.m_svg));
}

Outcome BlendThem(BlendOptions const& options) {
    Outcome outcome;
    SectionDocument const first = ReadSections(options.m_first, options.m_reading, outcome);
    SectionDocument const second = ReadSections(options.m_second, options.m_reading, outcome);
    if (first.m_chosen.empty() || second.m_chosen.empty())
        return outcome;
    AddFindings(outcome, options.m_first, SectrixTools::CheckBlend(first.m_set, second.m_set));
    if (!first.m_set.IsCompatible(second.m_set, false)) {
        outcome.Add(options.m_first + " and " + options.m_second + " cannot be blended", 1);
        return outcome;
    }
    auto blends = BlendAll(first.m_set, second.m_set, options);
    if (!options.m_output.empty()) // before convex loops add positions
        WriteDocument(blends[0].m_set, options.m_output);
    for (std::size_t const place : first.m_chosen) {
        for (Blend const& blend : blends)
            outcome.m_rows.push_back(BlendRow(blend, first, place));
        if (!options.m_folder.empty())
            DrawBlends(blends, first, place, options, outcome);
    }
    return outcome;
}

void RequireSense(BlendOptions const& options) {
    SectionFilesOptions reading = options.m_reading;
    reading.m_files = {options.m_first, options.m_second};
    RequireSense(reading);
    if (options.m_ratio && !std::isfinite(*options.m_ratio))
        throw CLI::ValidationError("--ratio", "the ratio must be a finite number");
    if (!options.m_output.empty() && !options.m_ratio)
        throw CLI::ValidationError("-o", "one document is written, for the one ratio that --ratio gives");
}

} // namespace

void AddBlend(CLI::App& program, int& status) {
    auto const options = std::make_shared<BlendOptions>();
    CLI::App* const verb = program.add_subcommand("blend", "Blend one document into another, as along a span");
    verb->group("Verbs");
    verb->add_option("FIRST", options->m_first, "The document at the ratio 0")->type_name("")->required();
    verb->add_option("SECOND", options->m_second, "The document at the ratio 1")->type_name("")->required();
    auto* const ratio =
        verb->add_option("--ratio", options->m_ratio, "One place on the way; 0.5 is the middle")->type_name("R");
    verb->add_option("--count", options->m_count, "So many places at equal distances, both ends included")
        ->check(CLI::Range(2, 1000))
        ->type_name("N")
        ->capture_default_str()
        ->excludes(ratio);
    AddReadingOptions(*verb, options->m_reading);
    AddFormat(*verb, options->m_reading.m_format);
    verb->add_option("-o,--output", options->m_output, "Write the blended document of one ratio")
        ->type_name("FILE.json");
    verb->add_option("--draw", options->m_folder, "Draw the sections side by side, and along the span, into it")
        ->type_name("FOLDER");
    verb->footer("Two documents that cannot be blended are an error, and each reason is told.");
    verb->callback([options, &status] {
        RequireSense(*options);
        std::vector<Row> rows;
        status = WorkOnAll(
            {options->m_first}, 1, options->m_folder, [&](std::size_t) { return BlendThem(*options); }, rows);
        if (options->m_reading.m_format == "json")
            Print(JsonText(rows));
        else
            PrintTable(rows, options->m_reading.m_unit);
    });
}

} // namespace qel::SectrixCommand
