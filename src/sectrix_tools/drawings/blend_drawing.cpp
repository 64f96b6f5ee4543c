#include "sectrix_tools/drawings/blend_drawing.h"

#include "sectrix_tools/drawings/section/section_content.h"
#include "sectrix_tools/drawings/svg/refusal.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <algorithm>
#include <utility>

namespace qel::SectrixTools {

namespace {

using namespace Pictures;

using Rings = std::vector<std::vector<Point>>;

constexpr double kMargin = 28.0, kTop = 56.0, kFoot = 48.0;
/// No picture shows more.
constexpr std::size_t kMostStations = 1000;

/// The box around all stations.
struct Frame {
    explicit Frame(std::vector<DrawnStation> const& stations) {
        qel::BBox<2, double> box;
        for (DrawnStation const& station : stations)
            box.Widen(station.m_section->BBox());
        m_low = {box.m_min[0], box.m_min[1]};
        m_high = {box.m_max[0], box.m_max[1]};
    }
    double Width() const { return m_high.x - m_low.x; }
    double Height() const { return m_high.y - m_low.y; }

    Point m_low, m_high;
};

Rings RingsOf(Sectrix::CrossSection const& section) {
    Rings rings{CornersOf(section.ExteriorLoop())};
    for (auto const& hole : section.InteriorLoops())
        rings.push_back(CornersOf(hole));
    return rings;
}

/// Lines from the corners of one station to those of the next.
std::vector<Segment> LinesBetween(Rings const& rings, Rings const& next) {
    std::vector<Segment> lines;
    for (std::size_t ring = 0; ring < std::min(rings.size(), next.size()); ++ring)
        for (std::size_t corner = 0; corner < std::min(rings[ring].size(), next[ring].size()); ++corner)
            lines.emplace_back(rings[ring][corner], next[ring][corner]);
    return lines;
}

std::string SideBySide(std::vector<DrawnStation> const& stations, Frame const& frame, std::string const& title,
                       std::string const& unit) {
    constexpr double kCell = 330.0, kGap = 26.0, kCaption = 46.0;
    constexpr std::size_t kMostColumns = 4;
    std::size_t const columns = std::min(stations.size(), kMostColumns);
    std::size_t const rows = (stations.size() + columns - 1) / columns;
    double const most = 1.5 * kCell;
    double const height =
        frame.Width() > 0 ? std::clamp(kCell * (frame.Height() / frame.Width()), 40.0, most) : most;
    Point const page{2 * kMargin + static_cast<double>(columns) * (kCell + kGap) - kGap,
                     kTop + static_cast<double>(rows) * (height + kCaption) + kFoot};
    Svg svg(page.x, page.y, title,
            LoopStyle() + ".drawing .outline{stroke-width:1.2}.drawing .cut{stroke-width:.8}");
    svg.Raw(LoopDefinitions());
    svg.Text({kMargin, 32}, title, "title");
    double scale = 1.0;
    for (std::size_t i = 0; i < stations.size(); ++i) {
        std::size_t const row = i / columns;
        Point const corner{kMargin + static_cast<double>(i % columns) * (kCell + kGap),
                           kTop + static_cast<double>(row) * (height + kCaption)};
        View const view(frame.m_low, frame.m_high, corner, {kCell, height});
        DrawLoops(svg, SectionContent(*stations[i].m_section, true), view);
        svg.Text({corner.x + kCell / 2, corner.y + height + 20}, stations[i].m_caption, "dimension-text", "middle");
        scale = view.Scale();
    }
    svg.ScaleBar({kMargin, page.y - 24}, page.x / 5, scale, unit);
    return svg.Document();
}

std::string AlongSpan(std::vector<DrawnStation> const& stations, Frame const& frame, std::string const& title,
                      std::string const& unit) {
    constexpr double kWidth = 1100.0;
    // The whole way to the right and upward, for sections of any shape.
    double const breadth = std::max(frame.Width(), 0.1 * frame.Height());
    Point const way{1.1 * breadth, 0.45 * breadth + 0.35 * frame.Height()};
    double const scale = (kWidth - 2 * kMargin) / (frame.Width() + way.x);
    Point const size{kWidth - 2 * kMargin, (frame.Height() + way.y) * scale};
    Point const page{kWidth, kTop + size.y + kFoot};
    View const view(frame.m_low, {frame.m_high.x + way.x, frame.m_high.y + way.y}, {kMargin, kTop}, size);

    Svg svg(page.x, page.y, title,
            ".title{font-size:18px;font-weight:bold}"
            ".face{fill:#bcd3ea;fill-opacity:.82;stroke:#1d3853;stroke-width:1.4;stroke-linejoin:round}"
            ".along{stroke:#66727f;stroke-width:.8;fill:none}");
    svg.Text({kMargin, 32}, title, "title");
    Rings behind;
    for (std::size_t i = stations.size(); i-- > 0;) { // from the back to the front
        double const part =
            stations.size() > 1 ? static_cast<double>(i) / static_cast<double>(stations.size() - 1) : 0;
        Rings rings = RingsOf(*stations[i].m_section);
        for (auto& ring : rings)
            std::transform(ring.begin(), ring.end(), ring.begin(), [&](Point point) {
                return view({point.x + part * way.x, point.y + part * way.y});
            });
        svg.Segments(LinesBetween(rings, behind), "along");
        svg.Shape(rings, "face");
        behind = std::move(rings);
    }
    svg.ScaleBar({kMargin, page.y - 24}, page.x / 6, view.Scale(), unit);
    svg.Text({page.x - kMargin, page.y - 20}, "distances along the span are not to scale", "dimension-text", "end");
    return svg.Document();
}

/// Draws what of the stations a picture can show.
template <class Draw>
Drawing DrawStations(std::vector<DrawnStation> const& stations, Draw const& draw) {
    std::vector<DrawnStation> const shown(
        stations.begin(), stations.begin() + static_cast<std::ptrdiff_t>(std::min(stations.size(), kMostStations)));
    Frame const frame(shown);
    if (!IsDrawable(frame.Width(), frame.Height()))
        return NothingToDraw("the sections have no finite extent");
    Drawing drawing{draw(shown, frame), {}};
    if (shown.size() < stations.size())
        drawing.m_findings.push_back(
            LeftOut("stations-left-out", "only the first " + std::to_string(kMostStations) + " of " +
                                             std::to_string(stations.size()) + " stations are drawn"));
    return drawing;
}

} // namespace

Drawing DrawSideBySide(std::vector<DrawnStation> const& stations, std::string const& title,
                       std::string const& unit) {
    return DrawStations(stations, [&](std::vector<DrawnStation> const& shown, Frame const& frame) {
        return SideBySide(shown, frame, title, unit);
    });
}

Drawing DrawAlongSpan(std::vector<DrawnStation> const& stations, std::string const& title,
                      std::string const& unit) {
    return DrawStations(stations, [&](std::vector<DrawnStation> const& shown, Frame const& frame) {
        return AlongSpan(shown, frame, title, unit);
    });
}

} // namespace qel::SectrixTools
