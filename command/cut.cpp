#include "output_files.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix_tools/drawings/section_drawing.h"
#include "sectrix_tools/measures/loop_measures.h"

#include <CLI/CLI.hpp>

#include <memory>

/// \file
/// The verb `cut`: sections and their convex loops in numbers.

namespace qel::SectrixCommand {
namespace {

using Sectrix::CrossSection;
using Sectrix::Loop;

/// The arguments.
struct CutOptions {
    SectionFilesOptions m_files;
    std::string m_folder;
};

std::int64_t Number(std::size_t count) {
    return static_cast<std::int64_t>(count);
}

void AddBoundary(Row& row, CrossSection const& section) {
    std::size_t vertices = section.ExteriorLoop().Vertices().size();
    double area = SectrixTools::SignedArea(section.ExteriorLoop());
    for (Loop const& hole : section.InteriorLoops()) {
        vertices += hole.Vertices().size();
        area += SectrixTools::SignedArea(hole); // negative, since holes run clockwise
    }
    row["vertices"] = Number(vertices);
    row["holes"] = Number(section.InteriorLoops().size());
    row["named_positions"] = Number(section.GetNamedPositionCount());
    row["area"] = area;
}

void AddConvexLoops(Row& row, CrossSection const& section) {
    double area = 0;
    std::size_t faults = 0;
    for (Loop const& loop : section.ConvexLoops()) {
        area += SectrixTools::SignedArea(loop);
        faults += SectrixTools::IsConvex(loop) ? 0 : 1;
    }
    row["convex_loops"] = Number(section.ConvexLoops().size());
    row["added_positions"] = Number(section.AddedVertices().size());
    row["area_of_convex_loops"] = area;
    row["not_convex"] = Number(faults);
}

std::string Counts(Row const& row) {
    std::string text;
    for (auto const& [key, word] : {std::pair{"vertices", "vertices"},
                                    {"holes", "holes"},
                                    {"convex_loops", "convex loops"},
                                    {"added_positions", "added positions"}})
        text += (text.empty() ? "" : ", ") + std::string(word) + ": " + CellText(row[key]);
    return text;
}

Outcome Cut(CutOptions const& options, std::string const& file, std::string const& stem) {
    Outcome outcome;
    SectionDocument const document = ReadSections(file, options.m_files, outcome);
    for (std::size_t const place : document.m_chosen) {
        CrossSection const& section = document.m_set.Items()[place];
        Row& row = outcome.m_rows.emplace_back(RowOf(document, place));
        AddBoundary(row, section);
        AddConvexLoops(row, section);
        if (options.m_folder.empty())
            continue;
        std::string const title = TitleOf(document.m_set, place);
        auto drawing = SectrixTools::DrawSection(section, {title, Counts(row), options.m_files.m_unit});
        AddFindings(outcome, file + ", " + title, drawing.m_findings);
        if (!drawing.m_svg.empty())
            outcome.m_files.emplace_back(PictureName(stem, place, title), std::move(drawing.m_svg));
    }
    return outcome;
}

int CutAll(CutOptions const& options) {
    auto const& files = options.m_files.m_files;
    auto const stems = FileStems(files);
    std::vector<Row> rows;
    int const status = WorkOnAll(
        files, options.m_files.m_jobs, options.m_folder,
        [&](std::size_t i) { return Cut(options, files[i], stems[i]); }, rows);
    std::string const square = ", " + options.m_files.m_unit + "\u00B2";
    std::vector<Column> const columns{{"document", "document"},
                                      {"section", "section"},
                                      {"vertices", "vertices"},
                                      {"holes", "holes"},
                                      {"named_positions", "names"},
                                      {"convex_loops", "convex loops"},
                                      {"added_positions", "added"},
                                      {"area", "area" + square},
                                      {"area_of_convex_loops", "of the loops" + square},
                                      {"not_convex", "not convex"}};
    PrintRows(options.m_files.m_format, columns, rows);
    return status;
}

} // namespace

void AddCut(CLI::App& program, int& status) {
    auto const options = std::make_shared<CutOptions>();
    CLI::App* const verb = program.add_subcommand("cut", "Cut sections into convex loops, and count them");
    verb->group("Verbs");
    AddSectionFiles(*verb, options->m_files);
    AddFormat(*verb, options->m_files.m_format);
    verb->add_option("-o,--output", options->m_folder, "Draw each section into it")->type_name("FOLDER");
    verb->footer("Columns: vertices of outline and holes, holes, named positions, convex loops, positions added by "
                 "cutting,\nthe area of the outline less that of its holes, the sum of the areas of the loops, and "
                 "how many loops are\nnot convex.");
    verb->callback([options, &status] {
        RequireSense(options->m_files);
        status = CutAll(*options);
    });
}

} // namespace qel::SectrixCommand
