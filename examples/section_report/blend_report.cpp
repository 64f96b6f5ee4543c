#include "section_report/blend_report.h"

#include "common/markup.h"
#include "section_report/blend_picture.h"
#include "section_report/measures.h"
#include "section_report/mismatch.h"

#include <cmath>

namespace example {
namespace {

using qel::Sectrix::CrossSection;
using qel::Sectrix::CrossSections;

/// A set on the way, and where it lies.
struct Blend {
    double m_ratio;
    CrossSections m_set;
};

std::vector<Blend> BlendAll(CrossSections const& first, CrossSections const& second, int count) {
    std::vector<Blend> blends;
    for (int i = 0; i < count; ++i) {
        double const ratio = static_cast<double>(i) / (count - 1);
        blends.push_back({ratio, CrossSections(first, second, ratio, false)});
    }
    return blends;
}

double Depth(CrossSection const& section) {
    auto const box = section.BBox();
    return box.m_max[1] - box.m_min[1];
}

Table BlendTable(std::vector<Blend> const& blends, std::size_t section, std::string const& unit) {
    Table table{{"ratio", "depth, " + unit, "area, " + unit + "\u00B2", "holes", "convex loops",
                 "sum of loops less area", "not convex or clockwise"},
                {}};
    for (auto const& [key, value] : blends[0].m_set.Parameters())
        table.m_header.push_back(key);
    for (Blend const& blend : blends) {
        CrossSection const& item = blend.m_set.Items()[section];
        Measures const measures(item);
        auto& row = table.m_rows.emplace_back(std::vector<std::string>{
            Number(blend.m_ratio, 3), Number(Depth(item)), Number(measures.m_outlineArea),
            std::to_string(measures.m_holes), std::to_string(measures.m_convexLoops),
            Number(measures.m_loopsArea - measures.m_outlineArea, 1), std::to_string(measures.m_faults)});
        for (auto const& [key, value] : blend.m_set.Parameters())
            row.push_back(Number(value));
    }
    return table;
}

std::vector<Figure> DrawFigures(std::vector<Blend> const& blends, std::size_t section, std::string const& title,
                                std::filesystem::path const& folder, std::string const& stem,
                                std::string const& unit) {
    std::vector<Station> stations;
    for (Blend const& blend : blends) {
        CrossSection const& item = blend.m_set.Items()[section];
        stations.push_back({&item, "ratio " + Number(blend.m_ratio, 3) + ", " + Number(Depth(item), 4) + ' ' +
                                       unit + " deep, " + std::to_string(item.ConvexLoops().size()) +
                                       " convex loops"});
    }
    auto const box = stations[0].m_section->BBox();
    if (!std::isfinite(box.m_max[0] - box.m_min[0]) || !(box.m_max[0] > box.m_min[0]))
        return {};
    std::string const name = stem + '_' + std::to_string(section + 1);
    WriteFile(folder / (name + "_side-by-side.svg"), DrawSideBySide(stations, title + ", side by side", unit));
    WriteFile(folder / (name + "_along.svg"), DrawAlongSpan(stations, title + ", along the span", unit));
    return {{name + "_along.svg", title + ", along the span", {}, true},
            {name + "_side-by-side.svg", title + ", side by side", {}, true}};
}

} // namespace

std::string ReportBlend(BlendRequest const& request, std::filesystem::path const& folder, std::string const& stem,
                        HtmlPage& page) {
    LoadedDocument const first = Load(request.m_first);
    LoadedDocument const second = Load(request.m_second);
    std::string const firstName = request.m_first.m_file.filename().string();
    std::string const secondName = request.m_second.m_file.filename().string();
    std::string const& unit = request.m_first.m_unit;
    std::string const heading = "From " + firstName + " to " + secondName;
    page.Heading(heading);
    std::string text = heading + '\n';
    if (!first.m_set.IsCompatible(second.m_set, false)) {
        std::string const reason = "These cannot be blended: a blend would be a copy of the first.";
        Table const table = Mismatches(first.m_set, firstName, second.m_set, secondName);
        page.Warning(reason);
        page.AddTable(table);
        return text + "  " + reason + '\n' + PlainText(table);
    }
    auto const blends = BlendAll(first.m_set, second.m_set, request.m_count);
    for (std::size_t section = 0; section < first.m_set.Items().size(); ++section) {
        Table const table = BlendTable(blends, section, unit);
        page.AddTable(table);
        page.Figures(DrawFigures(blends, section, TitleOf(first.m_set, section), folder, stem, unit));
        text += PlainText(table);
    }
    return text;
}

} // namespace example
