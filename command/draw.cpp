#include "document_kind.h"
#include "output_files.h"
#include "section_files.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/extrusion/extrusion.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix_tools/checks/extrusion_check.h"
#include "sectrix_tools/drawings/extrusion_drawing.h"
#include "sectrix_tools/drawings/section_drawing.h"

#include <CLI/CLI.hpp>

#include <memory>

/// \file
/// The verb `draw`: pictures of sections, and of extrusions with their end planes.

namespace qel::SectrixCommand {
namespace {

using SectrixTools::Drawing;

/// The arguments.
struct DrawOptions {
    SectionFilesOptions m_files;
    std::string m_output;
    std::string m_title;
    SectrixTools::SectionDrawingOptions m_drawing;

    /// True where the output is one file, not a folder.
    bool IsOnePicture() const { return PathOf(m_output).extension() == ".svg"; }
};

/// A document to be drawn, with the end planes that follow it where it is an extrusion.
struct Subject {
    std::string m_name;
    std::string m_text;
    std::vector<Sectrix::EndPlane> m_planes;
};

Dom Parse(std::string const& text) {
    Dom dom;
    DomReaderJson::FromString(dom, text.c_str(), nullptr);
    return dom;
}

bool IsEndPlane(std::string const& text) {
    Dom const dom = Parse(text);
    return dom.has("Origin") && !dom.has("Sections");
}

/// Reads all documents, and gives end planes to the extrusion before them.
std::vector<Subject> ReadSubjects(std::vector<std::string> const& files, int& status) {
    std::vector<Subject> subjects;
    for (std::string const& file : files) {
        try {
            std::string text = ReadInput(file);
            bool const isBehindExtrusion = !subjects.empty() && IsExtrusion(subjects.back().m_text);
            if (isBehindExtrusion && IsEndPlane(text))
                subjects.back().m_planes.emplace_back().from(Parse(text));
            else
                subjects.push_back({file, std::move(text), {}});
        } catch (std::runtime_error const& error) {
            Trouble(file + ": " + error.what());
            status = 2;
        }
    }
    return subjects;
}

void AddPicture(Outcome& outcome, std::string const& name, std::string const& file, Drawing drawing) {
    AddFindings(outcome, name, drawing.m_findings);
    if (!drawing.m_svg.empty())
        outcome.m_files.emplace_back(file, std::move(drawing.m_svg));
}

void DrawSections(Outcome& outcome, DrawOptions const& options, Subject const& subject, std::string const& stem) {
    SectionDocument const document = ReadSections(subject.m_name, subject.m_text, options.m_files, outcome);
    for (std::size_t const place : document.m_chosen) {
        std::string const title = TitleOf(document.m_set, place);
        auto drawing = options.m_drawing;
        drawing.m_unit = options.m_files.m_unit;
        drawing.m_title = options.m_title.empty() ? title : options.m_title;
        AddPicture(outcome, subject.m_name + ", " + title, PictureName(stem, place, title),
                   SectrixTools::DrawSection(document.m_set.Items()[place], drawing));
    }
}

Outcome Draw(DrawOptions const& options, Subject const& subject, std::string const& stem) {
    Outcome outcome;
    if (!IsExtrusion(subject.m_text)) {
        DrawSections(outcome, options, subject, stem);
        return outcome;
    }
    Dom const dom = Parse(subject.m_text);
    if (!dom.has("Sections") && dom.has("Origin")) {
        outcome.Add(subject.m_name + ": an end plane is drawn with the extrusion before it, and there is none", 1);
        return outcome;
    }
    AddFindings(outcome, subject.m_name, SectrixTools::CheckExtrusion(subject.m_text));
    Sectrix::Extrusion extrusion;
    extrusion.from(dom);
    std::string const title = options.m_title.empty() ? stem : options.m_title;
    AddPicture(outcome, subject.m_name, stem + ".svg",
               SectrixTools::DrawExtrusion(extrusion, subject.m_planes, title, options.m_files.m_unit));
    return outcome;
}

/// Draws all; of one picture that shall be the output, there must be one.
int DrawAll(DrawOptions const& options) {
    int status = 0;
    auto const subjects = ReadSubjects(options.m_files.m_files, status);
    std::vector<std::string> names;
    names.reserve(subjects.size());
    for (Subject const& subject : subjects)
        names.push_back(subject.m_name);
    auto const stems = FileStems(names);
    auto const work = [&](std::size_t i) { return Draw(options, subjects[i], stems[i]); };
    std::vector<Row> rows;
    if (!options.IsOnePicture())
        return std::max(status, WorkOnAll(names, options.m_files.m_jobs, options.m_output, work, rows));
    std::filesystem::path const output = PathOf(options.m_output);
    std::size_t count = 0;
    auto const rename = [&](std::size_t i) {
        Outcome outcome = work(i);
        for (auto& [name, content] : outcome.m_files)
            name = output.filename().u8string();
        if ((count += outcome.m_files.size()) > 1)
            throw std::runtime_error(options.m_output +
                                     ": takes one picture, and there are more; --section names " +
                                     "one, and -o with a folder takes all");
        return outcome;
    };
    return std::max(status,
                    WorkOnAll(names, 1, output.parent_path().u8string(), rename, rows)); // one thread counts
}

} // namespace

void AddDraw(CLI::App& program, int& status) {
    auto const options = std::make_shared<DrawOptions>();
    CLI::App* const verb = program.add_subcommand("draw", "Draw sections and extrusions");
    verb->group("Verbs");
    AddSectionFiles(*verb, options->m_files);
    verb->add_option("-o,--output", options->m_output,
                     "A file for one picture, its name ending in .svg, or a\n"
                     "folder for all")
        ->type_name("PATH")
        ->required();
    auto& drawing = options->m_drawing;
    verb->add_option("--title", options->m_title, "Above the picture instead of the section's name")
        ->type_name("TEXT");
    verb->add_option("--subtitle", drawing.m_subtitle, "A smaller line below it")->type_name("TEXT");
    verb->add_option("--width", drawing.m_width, "The greatest width in pixels")
        ->check(CLI::Range(100.0, 10000.0))
        ->type_name("PIXELS")
        ->capture_default_str();
    auto const turnOff = [&](char const* name, bool& isOn, char const* text) {
        verb->add_flag_callback(
            name, [&isOn] { isOn = false; }, text);
    };
    turnOff("--no-loops", drawing.m_showsConvexLoops, "Draw the section without its convex loops");
    turnOff("--no-feet", drawing.m_showsFeet, "Do not mark the feet of bridges");
    turnOff("--no-names", drawing.m_showsNames, "Leave out the names of positions");
    turnOff("--no-dimensions", drawing.m_showsDimensions, "Leave out width and height");
    turnOff("--no-legend", drawing.m_showsLegend, "Leave out what lines and tints mean");
    verb->footer(
        "The end planes of an extrusion are the documents behind it. Options about loops, names, dimensions, "
        "legend\nand width are those of sections.");
    verb->callback([options, &status] {
        RequireSense(options->m_files);
        status = DrawAll(*options);
    });
}

} // namespace qel::SectrixCommand
