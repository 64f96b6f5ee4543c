#include "section_report/report.h"

#include "common/markup.h"
#include "section_report/measures.h"
#include "section_report/section_picture.h"
#include "sectrix/interfaces/dom_writer_json.h"

#include <fstream>
#include <stdexcept>

namespace example {
namespace {

using qel::Sectrix::CrossSection;
using qel::Sectrix::CrossSections;

std::string Count(std::size_t count, std::string const& one, std::string const& many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string HowRead(Request const& request) {
    return "unit: " + request.m_unit +
           (request.m_scale == 1.0 ? "" : ", read with the scale " + Number(request.m_scale));
}

Table SectionTable(LoadedDocument const& document) {
    std::string const square = " " + document.m_request.m_unit + "\u00B2";
    Table table{{"section", "vertices", "holes", "named positions", "convex loops", "added positions",
                 "outline less holes," + square, "sum of loops," + square, "difference", "not convex or clockwise"},
                {}};
    for (std::size_t section = 0; section < document.m_set.Items().size(); ++section) {
        Measures const measures(document.m_set.Items()[section]);
        table.m_rows.push_back({TitleOf(document.m_set, section), std::to_string(measures.m_vertices),
                                std::to_string(measures.m_holes), std::to_string(measures.m_namedPositions),
                                std::to_string(measures.m_convexLoops), std::to_string(measures.m_addedPositions),
                                Number(measures.m_outlineArea, 8), Number(measures.m_loopsArea, 8),
                                Number(measures.m_loopsArea - measures.m_outlineArea, 1),
                                std::to_string(measures.m_faults)});
    }
    return table;
}

Table TallyTable(LoadedDocument const& document) {
    Table table{{"elements", "in the document", "kept", "dropped"}, {}};
    for (Tally const& tally : document.m_tallies)
        table.m_rows.push_back({tally.m_kind, std::to_string(tally.m_given), std::to_string(tally.m_kept),
                                std::to_string(tally.m_given - tally.m_kept)});
    return table;
}

Figure DrawFigure(LoadedDocument const& document, std::size_t section, std::filesystem::path const& folder,
                  std::string const& stem) {
    CrossSection const& item = document.m_set.Items()[section];
    Measures const measures(item);
    std::string const title = TitleOf(document.m_set, section);
    std::string const counts = Count(measures.m_vertices, "vertex", "vertices") + ", " +
                               Count(measures.m_holes, "hole", "holes") + ", " +
                               Count(measures.m_convexLoops, "convex loop", "convex loops") + ", " +
                               Count(measures.m_addedPositions, "added position", "added positions");
    Figure figure;
    figure.m_file = stem + '_' + std::to_string(section + 1) + '_' + FileStem(title) + ".svg";
    figure.m_title = title;
    figure.m_lines = {counts,
                      "area " + Number(measures.m_loopsArea, 8) + ' ' + document.m_request.m_unit + "\u00B2"};
    if (measures.m_faults > 0)
        figure.m_lines.push_back(Count(measures.m_faults, "loop", "loops") + " not convex or clockwise (hatched)");

    Picture const picture = DrawSection(item, title, counts, document.m_request.m_unit);
    figure.m_wide = picture.m_wide;
    WriteFile(folder / figure.m_file, picture.m_document);
    return figure;
}

/// The document as it was read, before convex loops add positions to it.
void WriteBack(CrossSections& set, std::filesystem::path const& path) {
    qel::Dom dom;
    set.To(dom);
    WriteFile(path, qel::DomWriterJson::ToString(dom) + '\n');
}

void WriteDump(CrossSections const& set, std::filesystem::path const& path) {
    std::ofstream stream(path, std::ios::binary);
    set.Dump(stream, "");
    stream.close();
    if (!stream)
        throw std::runtime_error(path.string() + ": cannot be written");
}

} // namespace

std::string ReportDocument(LoadedDocument& document, std::filesystem::path const& folder, std::string const& stem,
                           HtmlPage& page) {
    std::string const name = document.m_request.m_file.filename().string();
    WriteBack(document.m_set, folder / (stem + ".json"));
    WriteDump(document.m_set, folder / (stem + ".txt"));
    Table const sections = SectionTable(document);
    Table const tallies = TallyTable(document);

    std::vector<Figure> figures;
    for (std::size_t section = 0; section < document.m_set.Items().size(); ++section)
        figures.push_back(DrawFigure(document, section, folder, stem));

    page.Heading(name);
    page.Paragraph(HowRead(document.m_request));
    std::string text = name + "\n  " + HowRead(document.m_request) + '\n';
    if (figures.empty()) {
        page.Warning("There are no sections.");
        text += "  there are no sections\n";
    } else {
        page.AddTable(sections);
        page.Figures(figures);
        text += PlainText(sections);
    }
    if (HasDropped(document)) {
        page.Warning("Reading has passed over parts of this document:");
        page.AddTable(tallies);
        text += "  reading has dropped parts of the document:\n" + PlainText(tallies);
    } else {
        page.Paragraph("Reading has kept everything.");
        text += "  reading has kept everything\n";
    }
    page.Links({{stem + ".txt", "text dump"}, {stem + ".json", "document written back"}});
    return text;
}

} // namespace example
