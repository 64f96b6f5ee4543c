#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/interfaces/dom_writer_json.h"
#include "support/result.h"
#include "target.h"

#include <cstdio>
#include <fstream>
#include <sstream>

using namespace qel;
using namespace qel::Sectrix;

namespace fuzz {

namespace {

std::string DumpText(CrossSections const& set) {
    auto const path = OwnFile();
    std::ofstream out(path);
    set.Dump(out, "-");
    out.close();
    std::ifstream in(path);
    std::string text(std::istreambuf_iterator<char>(in), {});
    std::remove(path.c_str());
    Require(text.compare(0, 16, "-CrossSections:\n") == 0, "a dump");
    return text;
}

std::vector<Vertex> ReadAgain(Loop const& loop, CSPositions const& pool) {
    std::vector<Vertex> vertices;
    for (auto const& vertex : loop.Vertices())
        if (vertex.Index() >= 0 && vertex.Index() < pool.Count())
            vertices.emplace_back(vertex.Index(), true);
    if (!vertices.empty() && vertices.front().Index() == vertices.back().Index())
        vertices.pop_back(); // each read takes one closing vertex off
    return vertices;
}

/// What reading gives for a set that was written; `isSame` false where that is not the set itself.
std::string ExpectedText(CrossSections const& set, bool& isSame) {
    auto text = Text(set.Positions());
    for (auto const& section : set.Items()) {
        auto const exterior = ReadAgain(section.ExteriorLoop(), set.Positions());
        bool isWhole = exterior.size() > 2;
        isSame = isSame && exterior.size() == section.ExteriorLoop().Vertices().size();
        auto sectionText = "section " + section.AssemblyPartName() + '\n' + Text(exterior);
        for (auto const& loop : section.InteriorLoops()) {
            auto const vertices = ReadAgain(loop, set.Positions());
            isWhole = isWhole && vertices.size() > 2;
            isSame = isSame && vertices.size() == loop.Vertices().size();
            sectionText += "loop " + Text(vertices);
        }
        isSame = isSame && isWhole;
        text += isWhole ? sectionText : "";
    }
    return text;
}

CrossSections WriteAndRead(CrossSections& set) {
    Dom written;
    set.To(written);
    std::istringstream stream(DomWriterJson::ToString(written));
    CrossSections read;
    read.From(stream);
    return read;
}

/// Compares a set with a copy of it and blends the two, by loops as they were read and by convex ones.
std::string RunBlending(CrossSections const& set, CrossSections const& copy) {
    std::string text;
    for (bool const convex : {false, true}) {
        text += set.IsCompatible(copy, convex) ? "compatible\n" : "other\n";
        CrossSections const blend(set, copy, 0.25, convex);
        text += Text(blend); // before cutting adds to it
        text += CutText(blend);
    }
    return text;
}

/// What all threads read at the same time: the static objects, and a set whose derived state is built.
std::string RunShared() {
    static auto const shared = [] {
        CrossSections set(std::vector<Vec<2, double>>{{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}}, true);
        set.BBox();
        set.Items()[0].ConvexLoops();
        return set;
    }();
    bool found = true;
    auto const nothing = CrossSection().Positions().GetPosition("none", found).Name() + Text(Loop().BBox());
    Require(!found && shared.IsCompatible(shared, true), "a set matches itself");
    return nothing + Text(shared) + CutText(shared) + Text(shared.BBox());
}

} // namespace

std::string RunSectionDocument(std::string const& bytes) {
    CrossSections set;
    std::istringstream stream(bytes);
    set.From(stream);
    auto const before = Text(set);
    if (set.Positions().Count() == 0 && set.Items().empty())
        return before;
    CrossSections const copy = set;

    auto const cut = CutText(set);
    auto const dump = DumpText(set);
    set.ResetConvexLoops();
    Require(Text(set) == before, "a reset takes back all that cutting has added");
    Require(CutText(set) == cut, "a second cut is like the first");
    set.ResetConvexLoops();

    bool isSame = true;
    auto const expected = ExpectedText(set, isSame);
    auto const read = WriteAndRead(set);
    Require(Text(read) == expected, "what is written reads back");
    Require(!isSame || CutText(read) == cut, "what is read back is cut alike");

    auto const blends = RunBlending(set, copy);
    CrossSections scaled(0.001);
    Dom document;
    DomReaderJson::FromString(document, bytes.c_str(), nullptr);
    scaled.From(document);
    scaled.NormalizeVertical();
    CrossSections taken(std::move(scaled));
    auto text = before + cut + dump + blends;
    text += Text(taken); // step by step, since cutting adds to the set
    text += Text(taken.BBox());
    text += CutText(taken);
    scaled = std::move(taken);
    text += CutText(scaled);
    return text + RunShared() + (scaled.HasHollow() ? "hollow" : "solid");
}

} // namespace fuzz
