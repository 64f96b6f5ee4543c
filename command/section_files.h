#pragma once

#include "work.h"

#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/finding.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// \file
/// Section documents as verbs read them, and the options that these share.

namespace qel::SectrixCommand {

/// The options that verbs on section documents share.
struct SectionFilesOptions {
    /// The documents, "-" being standard input.
    std::vector<std::string> m_files;
    /// What coordinates are multiplied by.
    double m_scale = 1;
    /// The unit of coordinates after scaling.
    std::string m_unit = "units";
    /// A name or a number, counted from 1; empty for all sections.
    std::string m_section;
    /// One of `kFormats`.
    std::string m_format = "text";
    /// How many threads work at once; 0 for as many as there are cores.
    std::int64_t m_jobs = 0;
};

/// Adds FILE..., `--jobs`, and what `AddReadingOptions` adds.
void AddSectionFiles(CLI::App& verb, SectionFilesOptions& options);
/// Adds `--scale`, `--unit` and `--section`.
void AddReadingOptions(CLI::App& verb, SectionFilesOptions& options);
/// Adds `--format`.
void AddFormat(CLI::App& verb, std::string& format);

/// Refuses what CLI11 does not. \throws CLI::ValidationError.
void RequireSense(SectionFilesOptions const& options);

/// A document that was read.
struct SectionDocument {
    /// As it was given.
    std::string m_name;
    Sectrix::CrossSections m_set;
    /// The places of the sections that are asked for, at least one.
    std::vector<std::size_t> m_chosen;
};

/// Reads a document. Where reading drops something, where there is no section, or none that was asked for, the
/// outcome says so; `m_chosen` is empty in the latter cases.
///
/// \param text  its content.
SectionDocument ReadSections(std::string const& name, std::string const& text, SectionFilesOptions const& options,
                             Outcome& outcome);
/// The same with the content of the file; the outcome tells, with the status 2, of one that cannot be read.
SectionDocument ReadSections(std::string const& name, SectionFilesOptions const& options, Outcome& outcome);

/// The name of a section, or its number, counted from 1, where it has none.
std::string TitleOf(Sectrix::CrossSections const& set, std::size_t section);
/// An object with the document's name, the section's, and its number.
Row RowOf(SectionDocument const& document, std::size_t section);

/// Tells each finding, as `sectrix check` prints it, and asks for the status 1.
void AddFindings(Outcome& outcome, std::string const& name, SectrixTools::Findings const& findings);

/// Works on things as `WorkInOrder` does, on as many threads as `--jobs` says; tells the troubles, writes the
/// files, and collects the rows.
///
/// \param files   names of what is worked on.
/// \param folder  where files go, which is made; empty where there are none.
/// \param rows    receives the rows.
/// \returns the greatest status.
int WorkOnAll(std::vector<std::string> const& files, std::int64_t jobs, std::string const& folder,
              std::function<Outcome(std::size_t)> const& work, std::vector<Row>& rows);

} // namespace qel::SectrixCommand
