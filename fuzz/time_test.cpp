#include "sectrix/extrusion/extrusion.h"
#include "sectrix/foundation/text_conversion.h"
#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/interfaces/dom_writer_json.h"
#include "sectrix/sections/cross_sections.h"
#include "support/meshes.h"
#include "support/small_stack.h"

#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>

// The worst megabytes there are, beside a megabyte of well-formed input of the same kind, each run through all that
// a host does with it on a thread with a small stack. Prints how many times as long as the well-formed one each
// takes, and fails beyond a bound that no load of the machine explains.

using namespace qel;
using namespace qel::Sectrix;

namespace {

std::size_t const kMegabyte = 1000000;
double const kGreatestMultiple = 50.0;

/// `start`, then what `part` gives for 0, 1 and so on, up to a megabyte in all, then `end`.
std::string Document(std::string start, std::function<std::string(int)> const& part, std::string const& end) {
    for (int i = 0; start.size() + end.size() < kMegabyte; ++i)
        start += (i > 0 ? "," : "") + part(i);
    return start + end;
}

std::string Point(int x, int y) {
    return '[' + std::to_string(x) + ',' + std::to_string(y) + ']';
}

std::string const kSquare = R"({"Outlines":[[[0,0],[9,0],[9,9],[0,9]],[)";

void RunSections(std::string const& bytes) {
    CrossSections set;
    std::istringstream stream(bytes);
    set.From(stream);
    std::ofstream nowhere("/dev/null");
    set.Dump(nowhere, "");
    CrossSections other = set;
    for (int round = 0; round < 2; ++round) { // as they were, then with the last section first
        for (bool const convex : {false, true})
            CrossSections(set, other, 0.5, convex).NormalizeVertical();
        std::vector<CrossSection>(other.Items().rbegin(), other.Items().rend()).swap(other.GetItems());
    }
    set.ResetConvexLoops();
    Dom dom;
    set.To(dom);
    DomWriterJson::ToString(dom);
}

void RunExtrusion(std::string const& bytes) {
    Dom dom;
    DomReaderJson::FromString(dom, bytes.c_str(), nullptr);
    Extrusion part;
    part.from(dom);
    Extrusion const copy = part;
    EndPlane().from(dom);
}

/// Twelve bytes a vertex, at random places of a lattice or all at one, and a triangle each.
/// \param step  from one place of the lattice to the next, of 2^24 on each axis.
void RunMesh(float step) {
    std::mt19937 random;
    auto const coordinate = [&] { return step * static_cast<float>(random() >> 8); };
    std::vector<aiVector3D> vertices;
    std::vector<std::vector<unsigned>> faces;
    for (unsigned i = 0; i < kMegabyte / 12; ++i) {
        float const x = coordinate(), y = coordinate();
        vertices.emplace_back(x, y, coordinate());
        faces.push_back({i, i, i});
    }
    aiMesh source;
    meshes::Fill(source, vertices, faces);
    Mat<4, double> const identity;
    Mesh mesh(L"", L"");
    mesh.fromOBJ(&source, Matrix{identity.m_elements.data()});
    Position min, max;
    Mesh(mesh, true).BoundingBox(min, max);
}

/// Of the processor, so that what else the machine does is not counted.
double ProcessorSeconds(std::function<void()> const& run) {
    auto const start = std::clock();
    fuzz::OnSmallStacks(1, [&](std::size_t) { run(); });
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Family {
    char const* m_name;
    std::function<void()> m_run;
};

/// \param families  the well-formed one first.
/// \return whether all of them stay within the bound.
bool Compare(std::vector<Family> const& families) {
    double reference = 0.0;
    bool isGood = true;
    for (auto const& [name, run] : families) {
        double const seconds = ProcessorSeconds(run);
        reference = reference > 0.0 ? reference : seconds;
        std::printf("%8.1f ms %6.1f times  %s\n", seconds * 1000.0, seconds / reference, name);
        isGood = isGood && seconds < kGreatestMultiple * reference;
    }
    return isGood;
}

Family Sections(char const* name, std::string const& document) {
    return {name, [document] { RunSections(document); }};
}

Family Extrusions(char const* name, std::string const& document) {
    return {name, [document] { RunExtrusion(document); }};
}

/// One section that uses all points in turn.
std::string Outline(std::function<std::string(int)> const& point) {
    return Document(R"({"Outlines":[[)", point, "]]}");
}

/// One section of the outline of a shape. \param scale  on its coordinates.
/// \param farEvery  so many corners from one another, coordinates are too large to be indexed; 0 for none.
std::string Shaped(shapes::Shape const& shape, double scale, std::size_t farEvery) {
    std::ostringstream text;
    for (std::size_t i = 0; i < shape.loops[0].size(); ++i) {
        auto const& [x, y] = shape.points[static_cast<std::size_t>(shape.loops[0][i])];
        bool const isFar = farEvery > 0 && i % farEvery == 0;
        text << (i > 0 ? "," : "") << '[' << (isFar ? 1e200 : x * scale) << ',' << y * scale << ']';
    }
    return R"({"Outlines":[[)" + text.str() + "]]}";
}

shapes::Shape Coast() {
    shapes::Random random(1);
    return shapes::Coast(random, 50000, 0);
}

/// Sections that have one hole twice, the same in all of them, and another of their own.
std::string Repeats() {
    int const count = 9000;
    std::string text = R"({"Outlines":[[[0,0],[9,0],[9,9])";
    for (int i = -1; i < count; ++i)
        text += R"(,{"name":"z)" + std::to_string(i) + R"(","coordinates":[1,1]})";
    text += "],[";
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? "," : "") + std::string("[[[0,1,2],true],[[3,0,1],false],[[3,0,1],false],[[") +
                std::to_string(4 + i) + ",0,1],false]]";
    return text + "]]}";
}

} // namespace

int main() {
    bool isGood = Compare({
        Sections("sections: well formed, squares with a square hole",
                 Document(R"({"Outlines":[[[0,0],[9,0],[9,9],[0,9],[3,3],[6,3],[6,6],[3,6]],[)",
                          [](int) { return "[[[0,1,2,3],true],[[4,5,6,7],false]]"; }, "]]}")),
        Sections("sections: deep nesting", kSquare + std::string(kMegabyte, '[')),
        Sections("sections: nesting to the limit, again and again",
                 Document(
                     kSquare, [](int) { return std::string(1000, '[') + std::string(1000, ']'); }, "]]}")),
        Sections("sections: empty ones", Document(
                                             kSquare, [](int) { return "[]"; }, "]]}")),
        Sections("sections: empty loops", Document(
                                              kSquare + "[", [](int) { return "[[],false]"; }, "]]]}")),
        Sections("sections: one name for all positions, in one loop",
                 Outline([](int i) { return R"({"name":"A","coordinates":)" + Point(i % 97, i % 89) + '}'; })),
        Sections("sections: a name for each position, in one loop", Outline([](int i) {
                     return R"({"name":")" + std::to_string(i) + R"(","coordinates":)" + Point(i % 97, i % 89) +
                            '}';
                 })),
        Sections("sections: holes of two vertices in turn",
                 Document(
                     kSquare + "[[[0,1,2,3],true],", [](int) { return "[[1,2,1,2],false]"; }, "]]]}")),
        Sections("sections: a loop of one index repeated",
                 Document(
                     kSquare + "[[[0,1,2", [](int i) { return i > 0 ? "2" : ",2"; }, "],true]]]]}")),
        Sections("sections: all points equal", Outline([](int) { return "[1,1]"; })),
        Sections("sections: a zigzag on a grid", Outline([](int i) { return Point(i / 2, i % 2 * 5); })),
        Sections("sections: any points of a grid",
                 Outline([](int i) { return Point(i * 7919 % 8191, i * 104729 % 8179); })),
        Sections("sections: a spiral whose inner turns are flatter than the tolerance",
                 Shaped(shapes::Spiral(27000), 1e-5, 0)),
        Sections("sections: a coast with corners beyond 1e150", Shaped(Coast(), 1.0, 500)),
        Sections("sections: holes that repeat each other", Repeats()),
        Sections("sections: alike without a name",
                 Document(
                     kSquare, [](int i) { return i % 2 ? "[[[0,1,2],true]]" : "[[[0,1,2,3],true]]"; }, "]]}")),
        Sections("sections: parameters",
                 Document(R"({"Outlines":[[]],"Params":{)",
                          [](int i) { return '"' + std::to_string(i % 9973) + "\":1"; }, "}}")),
    });
    isGood &= Compare({
        Extrusions("extrusions: well formed", Document(R"({"Sections":[{"Profiles":[{"Points":[)",
                                                       [](int) { return "[1.5,2.5,3.5]"; }, "]}]}]}")),
        Extrusions("extrusions: empty sections", Document(R"({"Sections":[)", [](int) { return "0"; }, "]}")),
        Extrusions("extrusions: empty profiles",
                   Document(R"({"Sections":[{"Profiles":[)", [](int) { return "0"; }, "]}]}")),
        Extrusions("extrusions: empty points",
                   Document(R"({"Sections":[{"Profiles":[{"Points":[)", [](int) { return "0"; }, "]}]}]}")),
        Extrusions("extrusions: one key again and again", Document(
                                                              "{", [](int) { return R"("Sections":[])"; }, "}")),
    });
    isGood &= Compare({{"meshes: well formed", [] { RunMesh(1.0f); }},
                       {"meshes: all positions equal", [] { RunMesh(0.0f); }},
                       {"meshes: all within the tolerance", [] { RunMesh(1e-13f); }},
                       {"meshes: close to each other", [] { RunMesh(1e-11f); }},
                       {"meshes: infinite", [] { RunMesh(1e38f); }}});
    isGood &= Compare({{"text: well formed", [] { Utf8ToW(std::string(kMegabyte, 'a')); }},
                       {"text: leads only", [] { ToUtf8(Utf8ToW(std::string(kMegabyte, '\xE2'))); }}});
    if (!isGood)
        std::printf("more than %.0f times as long as a well-formed one\n", kGreatestMultiple);
    return isGood ? 0 : 1;
}
