/// \file
/// A host of the library: imports models into meshes and merges them, reads extrusions, and lists and draws them.

#include "common/document.h"
#include "common/host.h"
#include "common/html.h"
#include "common/markup.h"
#include "mesh_report/extrusion_report.h"
#include "mesh_report/mesh_report.h"

#include <charconv>
#include <cmath>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace example {
namespace {

constexpr char const* kUsage =
    R"(usage: mesh_report [--out DIR] { [--scale S] [--turn DEGREES] [--move X,Y,Z] FILE } ...

Imports each FILE that is a model (OBJ, STL and what else Assimp reads), fills a mesh with it and takes the copy
in which near positions are merged. Reads each FILE.json that is an extrusion, together with the end planes that
follow it. Prints what came of them, and draws it into DIR (mesh_report unless given), with an index.html.
--scale, --turn (about the z axis) and --move make the transform of the models that follow, in this order.
)";

struct Arguments {
    std::filesystem::path m_folder = "mesh_report";
    std::vector<std::filesystem::path> m_files;
    /// One a file.
    std::vector<qel::Mat<4, double>> m_transforms;
};

/// Exactly `count` numbers with commas between them.
std::vector<double> ParseNumbers(std::string const& text, std::size_t count) {
    std::vector<double> numbers;
    char const* at = text.data();
    char const* const end = text.data() + text.size();
    for (;;) {
        auto const [rest, error] = std::from_chars(at, end, numbers.emplace_back());
        if (error != std::errc() || numbers.size() > count)
            break;
        if (rest == end && numbers.size() == count)
            return numbers;
        if (rest == end || *rest != ',')
            break;
        at = rest + 1;
    }
    throw std::invalid_argument("'" + text + "' is not " +
                                (count == 1 ? "a number" : std::to_string(count) + " numbers with commas"));
}

/// Scales, then turns about the z axis, then moves.
qel::Mat<4, double> Transform(double scale, double degrees, std::vector<double> const& move) {
    constexpr double kPi = 3.14159265358979323846;
    double const angle = degrees * kPi / 180;
    qel::Mat<4, double> transform;
    transform[0] = transform[5] = scale * std::cos(angle);
    transform[1] = scale * std::sin(angle);
    transform[4] = -transform[1];
    transform[10] = scale;
    for (std::size_t axis = 0; axis < 3; ++axis)
        transform[12 + axis] = move[axis];
    return transform;
}

Arguments Parse(std::vector<std::string> const& words) {
    Arguments arguments;
    double scale = 1.0, turn = 0.0;
    std::vector<double> move(3, 0.0);
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string const& word = words[i];
        if (word.substr(0, 2) != "--") {
            arguments.m_files.push_back(word);
            arguments.m_transforms.push_back(Transform(scale, turn, move));
            continue;
        }
        if (++i == words.size())
            throw std::invalid_argument(word + " wants a value");
        if (word == "--out")
            arguments.m_folder = words[i];
        else if (word == "--scale")
            scale = ParseNumbers(words[i], 1)[0];
        else if (word == "--turn")
            turn = ParseNumbers(words[i], 1)[0];
        else if (word == "--move")
            move = ParseNumbers(words[i], 3);
        else
            throw std::invalid_argument("there is no option " + word);
    }
    if (arguments.m_files.empty())
        throw std::invalid_argument("no file given");
    return arguments;
}

/// Runs through the files; an extrusion waits for the end planes that follow it.
class Reporter {
public:
    explicit Reporter(std::filesystem::path const& folder) : m_folder(folder), m_page("Meshes and extrusions") {
        m_page.Paragraph(
            "Models are imported into meshes, whose near positions are then merged. Lines are the edges "
            "that a triangle does not share with exactly one other, and those at which the surface "
            "bends; broken lines are faces that are no triangles. A picture opens by itself when it is "
            "clicked.");
    }

    void Add(std::filesystem::path const& file, qel::Mat<4, double> const& transform) {
        ++m_count;
        if (file.extension() == ".json") {
            Attempt([&] { AddDocument(file); });
        } else {
            Finish();
            Attempt([&] { std::cout << ReportModel(file, transform, m_folder, Stem(file), m_page) << std::endl; });
        }
    }

    /// Reports on the extrusion that waits.
    void Finish() {
        if (auto const loaded = std::exchange(m_extrusion, std::nullopt))
            Attempt(
                [&] { std::cout << ReportExtrusion(*loaded, m_folder / (m_stem + ".svg"), m_page) << std::endl; });
    }

    /// False when a file could not be reported on; the others are nevertheless.
    bool IsGood() const { return m_isGood; }

    void WritePage() const {
        WriteFile(m_folder / "index.html", m_page.Document());
        std::cout << "pictures: " << (m_folder / "index.html").string() << std::endl;
    }

private:
    /// Does a part of the work; what it throws becomes a warning.
    template <class Work>
    void Attempt(Work work) {
        try {
            work();
        } catch (std::exception const& error) {
            std::cerr << "mesh_report: " << error.what() << std::endl;
            m_page.Warning(error.what());
            m_isGood = false;
        }
    }

    void AddDocument(std::filesystem::path const& file) {
        qel::Dom const dom = ReadDocument(file);
        std::string const name = file.filename().string();
        if (dom.has("Sections")) {
            Finish();
            m_stem = Stem(file);
            m_extrusion.emplace().m_name = name;
            m_extrusion->m_extrusion.from(dom);
        } else if (dom.has("Origin") && m_extrusion) {
            m_extrusion->m_planes.emplace_back(name, qel::Sectrix::EndPlane()).second.from(dom);
        } else {
            throw std::runtime_error(file.string() + ": is neither an extrusion nor an end plane behind one");
        }
    }

    /// Different for each file.
    std::string Stem(std::filesystem::path const& file) const {
        return std::to_string(m_count) + '-' + FileStem(file.stem().string());
    }

    std::filesystem::path m_folder;
    HtmlPage m_page;
    bool m_isGood = true;
    std::size_t m_count = 0;
    /// The extrusion that waits.
    std::optional<LoadedExtrusion> m_extrusion;
    /// How the name of its picture begins.
    std::string m_stem;
};

bool Report(Arguments const& arguments) {
    std::filesystem::create_directories(arguments.m_folder);
    Reporter reporter(arguments.m_folder);
    for (std::size_t i = 0; i < arguments.m_files.size(); ++i)
        reporter.Add(arguments.m_files[i], arguments.m_transforms[i]);
    reporter.Finish();
    reporter.WritePage();
    return reporter.IsGood();
}

} // namespace
} // namespace example

int main(int argc, char** argv) {
    return example::RunHost("mesh_report", example::kUsage, argc, argv,
                            [](auto const& words) { return example::Report(example::Parse(words)); });
}
