/// \file
/// A host of the library: reads documents of sections, lists, draws and writes back what came of them.

#include "common/host.h"
#include "common/html.h"
#include "common/markup.h"
#include "section_report/blend_report.h"
#include "section_report/loaded_document.h"
#include "section_report/report.h"

#include <charconv>
#include <cmath>
#include <exception>
#include <filesystem>
#include <iostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace example {
namespace {

constexpr char const* kUsage = R"(usage: section_report [--out DIR] { [--unit NAME] FILE[@SCALE] } ...
       section_report ... --blend COUNT FIRST[@SCALE] SECOND[@SCALE] ...

Reads each FILE, a JSON document of sections, multiplies its coordinates by SCALE (such as 0.001 from
millimetres to metres), and prints a table of its sections. Writes a picture of each section, the text dump
and the document as it is written back into DIR (section_report unless given), with an index.html of it all.
NAME is the unit of the coordinates after scaling, for this and the following files.

With --blend, draws COUNT sets on the way from the document FIRST to the document SECOND, side by side and one
behind the other, or says why there are none between the two.
)";

struct Arguments {
    std::filesystem::path m_folder = "section_report";
    std::vector<Request> m_requests;
    std::vector<BlendRequest> m_blends;
};

/// Takes a scale off the end of an argument; what follows the last @ is part of the name unless it is a number.
Request ParseDocument(std::string const& argument, std::string const& unit) {
    Request request{argument, 1.0, unit};
    std::size_t const at = argument.rfind('@');
    if (at == std::string::npos)
        return request;
    double scale = 0.0;
    char const* const end = argument.data() + argument.size();
    auto const [rest, error] = std::from_chars(argument.data() + at + 1, end, scale);
    if (error == std::errc() && rest == end && std::isfinite(scale)) {
        request.m_file = argument.substr(0, at);
        request.m_scale = scale;
    }
    return request;
}

BlendRequest ParseBlend(std::string const& count, std::string const& first, std::string const& second,
                        std::string const& unit) {
    constexpr int kMostBlends = 1000; // no picture shows more
    BlendRequest request{0, ParseDocument(first, unit), ParseDocument(second, unit)};
    char const* const end = count.data() + count.size();
    auto const [rest, error] = std::from_chars(count.data(), end, request.m_count);
    if (error != std::errc() || rest != end || request.m_count < 2 || request.m_count > kMostBlends)
        throw std::invalid_argument("--blend wants a count from 2 to " + std::to_string(kMostBlends) + ", not " +
                                    count);
    return request;
}

Arguments Parse(std::vector<std::string> const& words) {
    Arguments arguments;
    std::string unit = Request().m_unit;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string const& word = words[i];
        auto const want = [&](std::size_t count, char const* what) {
            if (words.size() - i <= count)
                throw std::invalid_argument(word + " wants " + what);
        };
        if (word.substr(0, 2) != "--") {
            arguments.m_requests.push_back(ParseDocument(word, unit));
        } else if (word == "--out") {
            want(1, "a folder");
            arguments.m_folder = words[++i];
        } else if (word == "--unit") {
            want(1, "a name");
            unit = words[++i];
        } else if (word == "--blend") {
            want(3, "a count and two documents");
            arguments.m_blends.push_back(ParseBlend(words[i + 1], words[i + 2], words[i + 3], unit));
            i += 3;
        } else {
            throw std::invalid_argument("there is no option " + word);
        }
    }
    if (arguments.m_requests.empty() && arguments.m_blends.empty())
        throw std::invalid_argument("no document given");
    return arguments;
}

/// The file name without its ending, made different from all that are taken.
std::string UniqueStem(std::filesystem::path const& file, std::set<std::string>& taken) {
    std::string const stem = FileStem(file.stem().string());
    std::string unique = stem;
    for (int number = 2; !taken.insert(unique).second; ++number)
        unique = stem + '-' + std::to_string(number);
    return unique;
}

/// Returns false when a document could not be reported on; the others are nevertheless.
bool Report(Arguments const& arguments) {
    std::filesystem::create_directories(arguments.m_folder);
    HtmlPage page("Sections and their convex loops");
    page.Paragraph("Each section is cut into convex loops, which are tinted. Solid lines are the outline and its "
                   "holes, dashed lines the bridges and cuts. A picture opens by itself when it is clicked.");
    bool good = true;
    auto const attempt = [&](std::string const& heading, auto const& report) {
        try {
            std::cout << report() << std::endl;
        } catch (std::exception const& error) {
            std::cerr << "section_report: " << error.what() << std::endl;
            page.Heading(heading);
            page.Warning(error.what());
            good = false;
        }
    };
    std::set<std::string> stems;
    for (Request const& request : arguments.m_requests)
        attempt(request.m_file.filename().string(), [&] {
            LoadedDocument document = Load(request);
            return ReportDocument(document, arguments.m_folder, UniqueStem(request.m_file, stems), page);
        });
    for (BlendRequest const& request : arguments.m_blends)
        attempt(request.m_first.m_file.filename().string(), [&] {
            return ReportBlend(request, arguments.m_folder,
                               UniqueStem(request.m_first.m_file.stem() += "-blend", stems), page);
        });
    WriteFile(arguments.m_folder / "index.html", page.Document());
    std::cout << "pictures: " << (arguments.m_folder / "index.html").string() << std::endl;
    return good;
}

} // namespace
} // namespace example

int main(int argc, char** argv) {
    return example::RunHost("section_report", example::kUsage, argc, argv,
                            [](auto const& words) { return example::Report(example::Parse(words)); });
}
