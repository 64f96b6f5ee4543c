#include "output_files.h"
#include "printable.h"
#include "scene_import.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/foundation/text_conversion.h"
#include "sectrix_tools/drawings/mesh_drawing.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>

/// \file
/// The verb `mesh`: meshes of model files before and after near positions are merged.

namespace qel::SectrixCommand {
namespace {

using Sectrix::Mesh;

/// The arguments.
struct MeshOptions {
    /// Without a section.
    SectionFilesOptions m_files;
    double m_turn = 0;
    std::string m_move = "0,0,0";
    std::string m_folder;
};

/// Three numbers with commas between them.
///
/// \throws CLI::ValidationError where the text is something else.
Vec<3, double> ParseMove(std::string const& text) {
    Vec<3, double> move;
    char const* at = text.data();
    char const* const end = at + text.size();
    for (std::size_t axis = 0; axis < 3; ++axis) {
        auto const [rest, error] = std::from_chars(at, end, move[axis]);
        bool const isBeforeComma = axis < 2 && rest != end && *rest == ',';
        bool const isNumber = error == std::errc() && std::isfinite(move[axis]);
        if (!isNumber || !(axis == 2 ? rest == end : isBeforeComma))
            throw CLI::ValidationError("--move", text + " is not three numbers with commas");
        at = rest + 1;
    }
    return move;
}

/// Scales, then turns about the z axis, then moves.
Mat<4, double> Transform(MeshOptions const& options) {
    constexpr double kDegree = 3.14159265358979323846 / 180;
    double const scale = options.m_files.m_scale;
    Mat<4, double> transform;
    transform[0] = transform[5] = scale * std::cos(options.m_turn * kDegree);
    transform[1] = scale * std::sin(options.m_turn * kDegree);
    transform[4] = -transform[1];
    transform[10] = scale;
    auto const move = ParseMove(options.m_move);
    for (std::size_t axis = 0; axis < 3; ++axis)
        transform[12 + axis] = move[axis];
    return transform;
}

/// Triangles of which two corners are the same position.
std::int64_t FlatCount(Mesh const& mesh) {
    std::int64_t count = 0;
    auto const& corners = mesh.Indices();
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
        count += corners[i] == corners[i + 1] || corners[i + 1] == corners[i + 2] || corners[i + 2] == corners[i];
    return count;
}

void SetPoint(Dom& node, Sectrix::Position const& position) {
    for (double const coordinate : {position.X(), position.Y(), position.Z()})
        node.append() = coordinate;
}

Row MeshRow(std::string const& file, std::size_t place, ImportedMesh const& imported, Mesh const& merged) {
    Mesh const& mesh = imported.m_mesh;
    std::string const name = Sectrix::ToUtf8(mesh.Name());
    Row row;
    row["document"] = ValidUtf8(file);
    row["mesh"] = name.empty() ? "mesh " + std::to_string(place + 1) : ValidUtf8(name);
    row["number"] = static_cast<std::int64_t>(place + 1);
    row["positions"] = static_cast<std::int64_t>(mesh.Positions().size());
    row["merged_positions"] = static_cast<std::int64_t>(merged.Positions().size());
    row["triangles"] = static_cast<std::int64_t>(mesh.Indices().size() / 3);
    row["flat_triangles"] = FlatCount(merged);
    row["other_faces"] = static_cast<std::int64_t>(imported.m_otherFaces.size());
    Sectrix::Position low, high;
    Dom &min = row["min"], noBox;
    if (mesh.BoundingBox(low, high)) {
        SetPoint(min, low);
        SetPoint(row["max"], high);
    } else {
        row["max"] = noBox;
    }
    return row;
}

Outcome Merge(MeshOptions const& options, Mat<4, double> const& transform, std::string const& file,
              std::string const& stem) {
    Outcome outcome;
    std::vector<ImportedMesh> meshes;
    try {
        meshes = ImportMeshes(file, transform);
    } catch (std::runtime_error const& error) {
        outcome.Add(file + ": " + error.what(), 2);
    }
    for (std::size_t place = 0; place < meshes.size(); ++place) {
        Mesh const& mesh = meshes[place].m_mesh;
        Mesh const merged(mesh, true);
        Row const& row = outcome.m_rows.emplace_back(MeshRow(file, place, meshes[place], merged));
        if (options.m_folder.empty())
            continue;
        auto before = SectrixTools::TrianglesOf(mesh, "as imported, positions: " + CellText(row["positions"]));
        before.m_otherFaces = meshes[place].m_otherFaces;
        auto const after =
            SectrixTools::TrianglesOf(merged, "merged, positions: " + CellText(row["merged_positions"]));
        std::string const title = stem + ", " + CellText(row["mesh"]);
        auto drawing = SectrixTools::DrawTriangles({before, after}, title, options.m_files.m_unit);
        AddFindings(outcome, file, drawing.m_findings);
        if (!drawing.m_svg.empty())
            outcome.m_files.emplace_back(PictureName(stem, place, CellText(row["mesh"])), std::move(drawing.m_svg));
    }
    return outcome;
}

int MergeAll(MeshOptions const& options) {
    auto const& files = options.m_files.m_files;
    auto const stems = FileStems(files);
    auto const transform = Transform(options);
    std::vector<Row> rows;
    int const status = WorkOnAll(
        files, options.m_files.m_jobs, options.m_folder,
        [&](std::size_t i) { return Merge(options, transform, files[i], stems[i]); }, rows);
    PrintRows(options.m_files.m_format,
              {{"document", "document"},
               {"mesh", "mesh"},
               {"positions", "positions"},
               {"merged_positions", "merged"},
               {"triangles", "triangles"},
               {"flat_triangles", "flat then"},
               {"other_faces", "other faces"},
               {"min", "from"},
               {"max", "to"}},
              rows);
    return status;
}

} // namespace

void AddMesh(CLI::App& program, int& status) {
    auto const options = std::make_shared<MeshOptions>();
    CLI::App* const verb = program.add_subcommand("mesh", "Import models and merge their near positions");
    verb->group("Verbs");
    verb->add_option("FILE", options->m_files.m_files, "Models: OBJ, STL, glTF and what else Assimp reads")
        ->type_name("");
    verb->add_option("--scale", options->m_files.m_scale, "Multiply coordinates by it")->type_name("FACTOR");
    verb->add_option("--turn", options->m_turn, "Then turn about the z axis, counter-clockwise")
        ->type_name("DEGREES");
    verb->add_option("--move", options->m_move, "Then move")->type_name("X,Y,Z");
    verb->add_option("--unit", options->m_files.m_unit, "The unit of coordinates after scaling, for pictures")
        ->type_name("NAME");
    verb->add_option("--jobs", options->m_files.m_jobs,
                     "Work on so many files at once, as many as there\nare cores unless given")
        ->type_name("N");
    AddFormat(*verb, options->m_files.m_format);
    verb->add_option("-o,--output", options->m_folder, "Draw each mesh into it")->type_name("FOLDER");
    verb->footer("Positions closer than 0.0001, after scaling, are merged. Columns: positions before and after, "
                 "triangles, those\nof which merging leaves a line or a point, faces that are no triangles and are "
                 "left out, and the box.");
    verb->callback([options, &status] {
        RequireSense(options->m_files);
        if (!std::isfinite(options->m_turn))
            throw CLI::ValidationError("--turn", "the angle must be a finite number");
        status = MergeAll(*options);
    });
}

} // namespace qel::SectrixCommand
