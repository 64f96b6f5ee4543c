#include "section_files.h"

#include "output_files.h"
#include "printable.h"
#include "progress.h"
#include "report.h"
#include "streams.h"

#include "sectrix_tools/checks/document_check.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>
#include <thread>

namespace qel::SectrixCommand {
namespace {

using SectrixTools::Finding;
using SectrixTools::Findings;
using SectrixTools::Severity;

/// The places of the sections that are meant.
std::vector<std::size_t> Choose(Sectrix::CrossSections const& set, std::string const& section) {
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < set.Items().size(); ++i)
        if (section.empty() || set.Items()[i].AssemblyPartName() == section)
            chosen.push_back(i);
    std::size_t number = 0;
    auto const [rest, error] = std::from_chars(section.data(), section.data() + section.size(), number);
    bool const isNumber = error == std::errc() && rest == section.data() + section.size();
    if (chosen.empty() && isNumber && number >= 1 && number <= set.Items().size())
        chosen.push_back(number - 1);
    return chosen;
}

/// The first error among findings on the text, in words.
void AddFirstError(Outcome& outcome, std::string const& name, Findings const& findings) {
    auto const isError = [](Finding const& finding) { return finding.m_severity == Severity::Error; };
    auto const first = std::find_if(findings.begin(), findings.end(), isError);
    if (first != findings.end())
        outcome.Add(FindingLine(name, *first) + "; \"sectrix check " + name + "\" tells all", 1);
}

} // namespace

void AddReadingOptions(CLI::App& verb, SectionFilesOptions& options) {
    verb.add_option("--scale", options.m_scale,
                    "Multiply coordinates by it, such as 0.001 for\nmillimetres read as metres")
        ->type_name("FACTOR");
    verb.add_option("--unit", options.m_unit, "The unit of coordinates after scaling, for\ntitles and pictures")
        ->type_name("NAME");
    verb.add_option("--section", options.m_section,
                    "Only sections of this name, or the section of\nthis number, from 1")
        ->type_name("NAME|NUMBER");
}

void AddSectionFiles(CLI::App& verb, SectionFilesOptions& options) {
    verb.add_option("FILE", options.m_files, "Documents; - is standard input")->type_name("");
    AddReadingOptions(verb, options);
    verb.add_option("--jobs", options.m_jobs,
                    "Work on so many files at once, as many as there\nare cores unless given")
        ->type_name("N");
}

void AddFormat(CLI::App& verb, std::string& format) {
    verb.add_option("--format", format, "A table, or one array with an object a row")
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kFormats), std::end(kFormats))))
        ->capture_default_str();
}

void RequireSense(SectionFilesOptions const& options) {
    if (options.m_files.empty())
        throw CLI::ValidationError("FILE", "there is no document");
    if (!(options.m_scale > 0) || !std::isfinite(options.m_scale))
        throw CLI::ValidationError("--scale", "the factor must be a positive number");
    if (options.m_jobs < 0)
        throw CLI::ValidationError("--jobs", "the number must not be negative");
    if (std::count(options.m_files.begin(), options.m_files.end(), "-") > 1)
        throw CLI::ValidationError("-", "standard input can be read once");
}

SectionDocument ReadSections(std::string const& name, std::string const& text, SectionFilesOptions const& options,
                             Outcome& outcome) {
    SectionDocument document{name, Sectrix::CrossSections(options.m_scale), {}};
    std::istringstream stream(text);
    document.m_set.From(stream);
    AddFirstError(outcome, name, SectrixTools::CheckDocument(text));
    document.m_chosen = Choose(document.m_set, options.m_section);
    if (document.m_set.Items().empty())
        outcome.Add(name + ": there is no section in it", 1);
    else if (document.m_chosen.empty())
        outcome.Add(name + ": no section has the name or number " + options.m_section, 1);
    return document;
}

SectionDocument ReadSections(std::string const& name, SectionFilesOptions const& options, Outcome& outcome) {
    try {
        return ReadSections(name, ReadInput(name), options, outcome);
    } catch (std::runtime_error const& error) {
        outcome.Add(name + ": " + error.what(), 2);
        return {};
    }
}

std::string TitleOf(Sectrix::CrossSections const& set, std::size_t section) {
    std::string const& name = set.Items()[section].AssemblyPartName();
    return name.empty() ? "section " + std::to_string(section + 1) : name;
}

Row RowOf(SectionDocument const& document, std::size_t section) {
    Row row;
    row["document"] = ValidUtf8(document.m_name);
    row["section"] = ValidUtf8(TitleOf(document.m_set, section));
    row["number"] = static_cast<std::int64_t>(section + 1);
    return row;
}

void AddFindings(Outcome& outcome, std::string const& name, Findings const& findings) {
    for (Finding const& finding : findings)
        outcome.Add(FindingLine(name, finding), finding.m_severity == Severity::Error ? 1 : 0);
}

int WorkOnAll(std::vector<std::string> const& files, std::int64_t jobs, std::string const& folder,
              std::function<Outcome(std::size_t)> const& work, std::vector<Row>& rows) {
    if (!folder.empty())
        std::filesystem::create_directories(PathOf(folder));
    std::size_t const cores = std::max(1u, std::thread::hardware_concurrency());
    Progress progress("done", files.size());
    int status = 0;
    WorkInOrder(files.size(), jobs == 0 ? cores : static_cast<std::size_t>(jobs), work, [&](Outcome& outcome) {
        if (!outcome.m_troubles.empty())
            progress.Hide();
        for (std::string const& trouble : outcome.m_troubles)
            Trouble(trouble);
        for (auto const& [name, content] : outcome.m_files)
            WriteFile((PathOf(folder) / PathOf(name)).u8string(), content);
        std::move(outcome.m_rows.begin(), outcome.m_rows.end(), std::back_inserter(rows));
        status = std::max(status, outcome.m_status);
        progress.Step();
    });
    return status;
}

} // namespace qel::SectrixCommand
