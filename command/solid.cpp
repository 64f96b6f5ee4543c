#include "output_files.h"
#include "scene_export.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix_tools/checks/blend_check.h"
#include "sectrix_tools/drawings/mesh_drawing.h"
#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <deque>
#include <memory>
#include <optional>

/// \file
/// The verb `solid`: a closed solid of each section.

namespace qel::SectrixCommand {
namespace {

using Sectrix::CrossSections;
using SectrixTools::TriangleMesh;

/// The arguments.
struct SolidOptions {
    /// Without its files.
    SectionFilesOptions m_reading;
    std::string m_file;
    std::string m_from;
    std::string m_to;
    double m_length = 0;
    std::optional<double> m_radius;
    double m_superelevation = 0;
    std::optional<std::int64_t> m_stations;
    std::string m_output;
    std::string m_picture;

    /// A straight prism takes no station between its ends.
    std::size_t Stations() const {
        bool const isPrism = m_to.empty() && !m_radius;
        return static_cast<std::size_t>(m_stations.value_or(isPrism ? 2 : 21));
    }
};

/// Where the stations stand: x of a section stays x, its y becomes z, and the structure runs along y, or on an arc
/// that begins so. The superelevation is reached at once and stays.
std::vector<Mat<4, double>> Placements(SolidOptions const& options) {
    std::size_t const count = options.Stations();
    double const twist = std::atan(options.m_superelevation / 100);
    std::vector<Mat<4, double>> placements;
    for (std::size_t i = 0; i < count; ++i) {
        double const way = options.m_length * static_cast<double>(i) / static_cast<double>(count - 1);
        Vec<3, double> origin{0, way, 0}, direction{0, 1, 0};
        if (options.m_radius) {
            double const angle = way / *options.m_radius;
            origin = {*options.m_radius * (1 - std::cos(angle)), *options.m_radius * std::sin(angle), 0};
            direction = {std::sin(angle), std::cos(angle), 0};
        }
        placements.push_back(SectrixTools::Placement(origin, direction, {0, 0, 1}, twist));
    }
    return placements;
}

/// The sets at the stations: the one document, or those on the way to the other. In a deque, so that sections stay
/// where they are.
std::deque<CrossSections> Sets(CrossSections const& first, CrossSections const* second, std::size_t count) {
    std::deque<CrossSections> sets;
    for (std::size_t i = 0; second && i < count; ++i)
        sets.emplace_back(first, *second, static_cast<double>(i) / static_cast<double>(count - 1), false);
    if (!second)
        sets.push_back(first);
    return sets;
}

TriangleMesh SweepOne(std::deque<CrossSections> const& sets, std::vector<Mat<4, double>> const& placements,
                      std::size_t place, std::string const& name, Outcome& outcome) {
    std::vector<SectrixTools::Station> stations;
    for (std::size_t i = 0; i < placements.size(); ++i)
        stations.push_back({&sets[std::min(i, sets.size() - 1)].Items()[place], placements[i]});
    auto solid = SectrixTools::Sweep(stations);
    AddFindings(outcome, name, solid.m_findings);
    return std::move(solid.m_mesh);
}

Row SolidRow(SectionDocument const& document, std::size_t place, TriangleMesh const& mesh, std::size_t stations) {
    Row row = RowOf(document, place);
    row["stations"] = static_cast<std::int64_t>(stations);
    row["points"] = static_cast<std::int64_t>(mesh.m_points.size());
    row["triangles"] = static_cast<std::int64_t>(mesh.m_triangles.size() / 3);
    row["volume"] = SectrixTools::Volume(mesh);
    row["surface"] = SectrixTools::SurfaceArea(mesh);
    row["closed"] = SectrixTools::IsClosed(mesh);
    return row;
}

void Draw(std::vector<NamedMesh> const& meshes, SolidOptions const& options, Outcome& outcome) {
    std::vector<SectrixTools::DrawnTriangles> panels;
    panels.reserve(meshes.size());
    for (auto const& [name, mesh] : meshes)
        panels.push_back({name, mesh.m_points, {mesh.m_triangles.begin(), mesh.m_triangles.end()}, {}});
    std::string const title = PathOf(options.m_picture).stem().u8string();
    auto drawing = SectrixTools::DrawTriangles(panels, title, options.m_reading.m_unit);
    AddFindings(outcome, options.m_picture, drawing.m_findings);
    if (!drawing.m_svg.empty())
        outcome.m_files.emplace_back(options.m_picture, std::move(drawing.m_svg));
}

/// The solids of the sections that are asked for; those that cannot be are told.
Outcome Build(SolidOptions const& options) {
    Outcome outcome;
    bool const isBlend = !options.m_to.empty();
    SectionDocument const first =
        ReadSections(isBlend ? options.m_from : options.m_file, options.m_reading, outcome);
    std::optional<SectionDocument> second;
    if (isBlend) {
        second = ReadSections(options.m_to, options.m_reading, outcome);
        if (first.m_chosen.empty() || second->m_chosen.empty())
            return outcome;
        AddFindings(outcome, first.m_name, SectrixTools::CheckBlend(first.m_set, second->m_set));
        if (!first.m_set.IsCompatible(second->m_set, false))
            return outcome;
    }
    auto const placements = Placements(options);
    auto const sets = Sets(first.m_set, isBlend ? &second->m_set : nullptr, placements.size());
    std::vector<NamedMesh> meshes;
    for (std::size_t const place : first.m_chosen) {
        std::string const title = TitleOf(first.m_set, place);
        auto mesh = SweepOne(sets, placements, place, first.m_name + ", " + title, outcome);
        if (mesh.m_triangles.empty())
            continue;
        outcome.m_rows.push_back(SolidRow(first, place, mesh, placements.size()));
        meshes.push_back({title, std::move(mesh)});
    }
    if (!options.m_output.empty() && !meshes.empty())
        ExportMeshes(meshes, options.m_output);
    if (!options.m_picture.empty() && !meshes.empty())
        Draw(meshes, options, outcome);
    return outcome;
}

void RequireSense(SolidOptions const& options) {
    bool const isBlend = !options.m_from.empty() && !options.m_to.empty();
    bool const isOne = !options.m_file.empty() && options.m_from.empty() && options.m_to.empty();
    if (isBlend == isOne)
        throw CLI::ValidationError("FILE", "give one document, or two by --from and --to");
    SectionFilesOptions reading = options.m_reading;
    reading.m_files = isBlend ? std::vector{options.m_from, options.m_to} : std::vector{options.m_file};
    RequireSense(reading);
    if (!(options.m_length > 0) || !std::isfinite(options.m_length))
        throw CLI::ValidationError("--length", "the length must be a positive number");
    if (options.m_radius && (!std::isfinite(*options.m_radius) || *options.m_radius == 0))
        throw CLI::ValidationError("--radius", "the radius must be a number other than 0");
    if (!std::isfinite(options.m_superelevation))
        throw CLI::ValidationError("--superelevation", "the rise must be a number");
}

} // namespace

void AddSolid(CLI::App& program, int& status) {
    auto const options = std::make_shared<SolidOptions>();
    CLI::App* const verb = program.add_subcommand("solid", "Make a closed solid of each section");
    verb->group("Verbs");
    verb->add_option("FILE", options->m_file, "The document to extrude")->type_name("");
    verb->add_option("--from", options->m_from, "Instead, the document at the beginning")->type_name("FILE");
    verb->add_option("--to", options->m_to, "And the one at the end, into which it is blended")->type_name("FILE");
    verb->add_option("--length", options->m_length, "From the first station to the last, along the curve")
        ->type_name("LENGTH")
        ->required();
    verb->add_option("--stations", options->m_stations,
                     "How many sections, both ends included; 21 unless\ngiven, 2 for a straight prism")
        ->check(CLI::Range(2, 100000))
        ->type_name("N");
    verb->add_option("--radius", options->m_radius, "Run on an arc to the right; to the left where it is\nnegative")
        ->type_name("RADIUS");
    verb->add_option("--superelevation", options->m_superelevation, "Rise to the right, in percent")
        ->type_name("PERCENT");
    AddReadingOptions(*verb, options->m_reading);
    AddFormat(*verb, options->m_reading.m_format);
    std::string endings;
    for (std::string const& ending : ExportEndings())
        endings += (endings.empty() ? "" : ", ") + ending;
    verb->add_option("-o,--output", options->m_output, "Write the solids, in the format of its ending")
        ->type_name("FILE");
    verb->add_option("--draw", options->m_picture, "Draw the solids")->type_name("FILE.svg");
    verb->footer(
        "Of a section, x stays x and y becomes z; the structure begins along y.\nEndings of files: " + endings +
        ".\nIn glTF, dae, fbx and x3d y is upward. Most formats have coordinates of seven digits.");
    verb->callback([options, &status] {
        RequireSense(*options);
        std::vector<Row> rows;
        status = WorkOnAll(
            {options->m_file}, 1, {}, [&](std::size_t) { return Build(*options); }, rows);
        std::string const& unit = options->m_reading.m_unit;
        PrintRows(options->m_reading.m_format,
                  {{"section", "section"},
                   {"stations", "stations"},
                   {"points", "points"},
                   {"triangles", "triangles"},
                   {"volume", "volume, " + unit + "\u00B3"},
                   {"surface", "surface, " + unit + "\u00B2"},
                   {"closed", "closed"}},
                  rows);
    });
}

} // namespace qel::SectrixCommand
