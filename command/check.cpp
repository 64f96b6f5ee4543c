#include "document_kind.h"
#include "progress.h"
#include "report.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/blend_check.h"
#include "sectrix_tools/checks/extrusion_check.h"
#include "sectrix_tools/checks/text_check.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <sstream>

/// \file
/// The verb `check`: what is wrong with documents, and where.

namespace qel::SectrixCommand {
namespace {

using SectrixTools::Findings;

/// The arguments.
struct CheckOptions {
    std::vector<std::string> m_files;
    /// Two files, or none.
    std::vector<std::string> m_blend;
    double m_scale = 1;
    std::string m_kind = "auto";
    std::string m_format = "text";
    bool m_hasContext = false;
    bool m_isStrict = false;
    std::int64_t m_limit = 100;
};

/// Checks one file after another.
class Checker {
public:
    explicit Checker(CheckOptions const& options)
        : m_options(options), m_progress("checked", options.m_files.size() + options.m_blend.size()),
          m_report({options.m_format == "json", options.m_hasContext || IsTerminal(stdout),
                    static_cast<std::size_t>(options.m_limit)}) {}

    /// The exit status.
    int Run() {
        for (std::string const& file : m_options.m_files)
            CheckFile(file);
        if (!m_options.m_blend.empty())
            CheckPair(m_options.m_blend[0], m_options.m_blend[1]);
        m_progress.Hide();
        m_report.End();
        return m_isUnreadable ? 2 : m_isBad ? 1 : 0;
    }

private:
    /// The text of the file, after its findings were reported; nothing for a file that cannot be read.
    std::optional<std::string> CheckFile(std::string const& file) {
        std::optional<std::string> text;
        try {
            text = ReadInput(file);
        } catch (std::runtime_error const& error) {
            m_progress.Hide();
            Trouble(file + ": " + error.what());
            m_isUnreadable = true;
        }
        if (text)
            Report(file, *text, FindingsIn(*text));
        m_progress.Step();
        return text;
    }

    void CheckPair(std::string const& first, std::string const& second) {
        auto const firstText = CheckFile(first);
        auto const secondText = CheckFile(second);
        if (firstText && secondText)
            Report(first, {}, SectrixTools::CheckBlend(SetOf(*firstText), SetOf(*secondText)));
    }

    Findings FindingsIn(std::string const& text) const {
        bool const isExtrusion = m_options.m_kind == "auto" ? IsExtrusion(text) : m_options.m_kind == "extrusion";
        return isExtrusion ? SectrixTools::CheckExtrusion(text) : SectrixTools::CheckText(text, m_options.m_scale);
    }

    Sectrix::CrossSections SetOf(std::string const& text) const {
        Sectrix::CrossSections set(m_options.m_scale);
        std::istringstream stream(text);
        set.From(stream);
        return set;
    }

    void Report(std::string const& file, std::string_view text, Findings const& findings) {
        if (findings.empty())
            return;
        m_progress.Hide();
        m_report.Add(file, text, findings);
        m_isBad = m_isBad || m_options.m_isStrict || HasErrors(findings);
    }

    CheckOptions const& m_options;
    Progress m_progress;
    SectrixCommand::Report m_report;
    bool m_isUnreadable = false;
    bool m_isBad = false;
};

void RequireSense(CheckOptions const& options) {
    if (options.m_files.empty() && options.m_blend.empty())
        throw CLI::ValidationError("FILE", "there is nothing to check");
    if (!(options.m_scale > 0) || !std::isfinite(options.m_scale))
        throw CLI::ValidationError("--scale", "the factor must be a positive number");
    if (options.m_limit < 0)
        throw CLI::ValidationError("--limit", "the number must not be negative");
    if (std::count(options.m_files.begin(), options.m_files.end(), "-") +
            std::count(options.m_blend.begin(), options.m_blend.end(), "-") >
        1)
        throw CLI::ValidationError("-", "standard input can be read once");
}

} // namespace

void AddCheck(CLI::App& program, int& status) {
    auto const options = std::make_shared<CheckOptions>();
    CLI::App* const verb = program.add_subcommand("check", "Say what is wrong with documents, and where");
    verb->group("Verbs");
    verb->add_option("FILE", options->m_files, "Documents; - is standard input")->type_name("");
    verb->add_option("--blend", options->m_blend,
                     "Check two documents, and whether the sections\nof one can be blended with those of the other")
        ->type_name("FIRST SECOND")
        ->type_size(2)
        ->expected(1)
        ->allow_extra_args(false);
    verb->add_option(
            "--scale", options->m_scale,
            "Multiply coordinates by it, such as 0.001 for\nmillimetres read as metres; tolerances are those\n"
            "of the unit that comes of it")
        ->type_name("FACTOR");
    verb->add_option(
            "--kind", options->m_kind,
            "What documents are: sections; extrusion, also for\nan end plane; auto, which looks at their keys")
        ->check(CLI::IsMember({"auto", "sections", "extrusion"}))
        ->capture_default_str();
    verb->add_flag("--strict", options->m_isStrict, "Count warnings as errors");
    verb->add_option("--format", options->m_format, "A line a finding, or one array of all findings")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    verb->add_flag("--context", options->m_hasContext,
                   "Show the line of the document below each finding,\nas is done on a terminal");
    verb->add_option("--limit", options->m_limit, "Show so many findings a file at most; 0 shows all")
        ->type_name("N")
        ->capture_default_str();
    verb->footer("Exit status: 0 without errors, 1 with errors, 2 for wrong use or a file that cannot be read.");
    verb->callback([options, &status] {
        RequireSense(*options);
        status = Checker(*options).Run();
    });
}

} // namespace qel::SectrixCommand
