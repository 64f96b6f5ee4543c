#include "section_report/blend_picture.h"

#include "common/svg.h"
#include "section_report/measures.h"
#include "section_report/section_picture.h"

#include <algorithm>
#include <utility>

namespace example {
namespace {

using Rings = std::vector<std::vector<Point>>;

constexpr double kMargin = 28.0, kTop = 56.0, kFoot = 48.0;

/// The box around all stations; it must not be empty.
struct Frame {
    explicit Frame(std::vector<Station> const& stations) {
        qel::BBox<2, double> box;
        for (Station const& station : stations) {
            box.Widen(station.m_section->BBox().m_min);
            box.Widen(station.m_section->BBox().m_max);
        }
        m_low = {box.m_min[0], box.m_min[1]};
        m_high = {box.m_max[0], box.m_max[1]};
    }
    double Width() const { return m_high.x - m_low.x; }
    double Height() const { return m_high.y - m_low.y; }

    Point m_low, m_high;
};

Rings RingsOf(qel::Sectrix::CrossSection const& section) {
    Rings rings{Corners(section.ExteriorLoop())};
    for (auto const& hole : section.InteriorLoops())
        rings.push_back(Corners(hole));
    return rings;
}

/// Lines from the corners of one station to those of the next. The stations are blends of the same two sets, so
/// that their corners stand in the same order.
std::vector<std::pair<Point, Point>> LinesBetween(Rings const& rings, Rings const& next) {
    std::vector<std::pair<Point, Point>> lines;
    for (std::size_t ring = 0; ring < std::min(rings.size(), next.size()); ++ring)
        for (std::size_t corner = 0; corner < std::min(rings[ring].size(), next[ring].size()); ++corner)
            lines.emplace_back(rings[ring][corner], next[ring][corner]);
    return lines;
}

} // namespace

std::string DrawSideBySide(std::vector<Station> const& stations, std::string const& title,
                           std::string const& unit) {
    constexpr double kCell = 330.0, kGap = 26.0, kCaption = 46.0;
    constexpr std::size_t kMostColumns = 4;
    Frame const frame(stations);
    std::size_t const columns = std::min(stations.size(), kMostColumns);
    std::size_t const rows = (stations.size() + columns - 1) / columns;
    double const height = std::clamp(kCell * frame.Height() / frame.Width(), 40.0, 1.5 * kCell);
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
        DrawConvexLoops(svg, *stations[i].m_section, view);
        svg.Text({corner.x + kCell / 2, corner.y + height + 20}, stations[i].m_caption, "dimension-text", "middle");
        scale = view.Scale();
    }
    svg.ScaleBar({kMargin, page.y - 24}, page.x / 5, scale, unit);
    return svg.Document();
}

std::string DrawAlongSpan(std::vector<Station> const& stations, std::string const& title, std::string const& unit) {
    constexpr double kWidth = 1100.0;
    Frame const frame(stations);
    // The whole way to the right and upward, for sections of any shape.
    Point const way{1.1 * frame.Width(), 0.45 * frame.Width() + 0.35 * frame.Height()};
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

} // namespace example
