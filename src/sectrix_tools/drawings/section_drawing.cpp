#include "sectrix_tools/drawings/section_drawing.h"

#include "sectrix_tools/drawings/section/section_content.h"
#include "sectrix_tools/drawings/svg/label_placement.h"
#include "sectrix_tools/drawings/svg/markup.h"
#include "sectrix_tools/drawings/svg/refusal.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <algorithm>
#include <cmath>

namespace qel::SectrixTools {

namespace {

using namespace Pictures;

constexpr char const* kMarkStyle = ".foot{fill:#fff;stroke:#c8102e;stroke-width:1.6}"
                                   ".named{fill:#0b5cad;stroke:#fff;stroke-width:1}"
                                   ".leader{stroke:#0b5cad;stroke-width:.7}"
                                   ".name{font-size:11px;fill:#0b4a8c;paint-order:stroke;stroke:#fff;"
                                   "stroke-width:3;stroke-opacity:.8;stroke-linejoin:round}";

/// As the style sheet has it.
constexpr double kNameSize = 11.0;
/// Placing names costs their number times that of the edges; beyond this many a picture could not show them anyway.
constexpr std::size_t kMostNames = 100;
/// Beyond this many edges, thinner lines.
constexpr double kManyEdges = 150.0;
constexpr double kMargin = 24.0;
constexpr double kLegendRow = 22.0;

/// Where everything stands on the page, in pixels.
struct Layout {
    Layout(qel::BBox<2, double> const& box, SectionContent const& content, SectionDrawingOptions const& options);

    Point m_page;
    View m_view{{}, {1, 1}, {}, {1, 1}};
    /// The rectangle of the section.
    Box m_shape{};
    /// How far the dimension lines stand off it.
    Point m_dimensionGap{};
};

Layout::Layout(qel::BBox<2, double> const& box, SectionContent const& content,
               SectionDrawingOptions const& options) {
    constexpr double kNarrowest = 640.0, kSide = 40.0, kGap = 30.0;
    double const most = std::clamp(options.m_width, 100.0, 10000.0);
    double const highest = most / 1.6;
    double const top = 24.0 + (options.m_title.empty() ? 0.0 : 32.0) + (options.m_subtitle.empty() ? 0.0 : 28.0);
    double const bottom = 56.0 + (options.m_showsLegend ? 56.0 : 0.0);
    Point const low{box.m_min[0], box.m_min[1]};
    Point const high{box.m_max[0], box.m_max[1]};
    Point const extent{high.x - low.x, high.y - low.y};
    Point names; // the room that names take around the shape: much where there is much, beside a high one
    double const longest = extent.x > 1.3 * extent.y ? 60.0 : 120.0;
    if (options.m_showsNames)
        for (auto const& [index, label] : content.m_named)
            names = {std::min(longest, std::max(names.x, Svg::TextWidth(label.m_text, kNameSize))), 2 * kNameSize};
    if (options.m_showsDimensions)
        m_dimensionGap = {kGap + names.x, kGap + names.y};

    double const left = kSide + m_dimensionGap.x;
    double const right = kSide + names.x;
    // A ribbon would be too thin to see anything in it, so its page is wider.
    double const widest = extent.x > 8 * extent.y ? 1.7 * most : most;
    Point const room{std::max(widest - left - right, 20.0), highest};
    double const scale = View(low, high, {}, room).Scale();
    Point const size{extent.x * scale, extent.y * scale};
    m_page = {std::max(std::min(kNarrowest, most), size.x + left + right),
              top + names.y + size.y + m_dimensionGap.y + bottom};
    Point const corner{left + (m_page.x - left - right - size.x) / 2, top + names.y};
    m_shape = {corner, {corner.x + size.x, corner.y + size.y}};
    m_view = View(low, high, corner, size);
}

std::vector<Point> Diamond(Point centre) {
    constexpr double kReach = 4.5;
    return {{centre.x + kReach, centre.y},
            {centre.x, centre.y - kReach},
            {centre.x - kReach, centre.y},
            {centre.x, centre.y + kReach}};
}

/// The style sheet, with lines that get the thinner the more of them there are.
std::string StyleFor(SectionContent const& content) {
    auto const edges = static_cast<double>(content.m_outline.size() + content.m_cuts.size());
    double const weight =
        std::min(1.0, std::pow(kManyEdges / edges, 0.4)); // more than in step would leave too little
    std::string const dashes = Number(2 + 3 * weight, 3) + ' ' + Number(1 + 2 * weight, 3);
    return LoopStyle() + kMarkStyle + ".drawing .outline{stroke-width:" + Number(1.8 * weight, 3) + '}' +
           ".drawing .cut{stroke-width:" + Number(weight, 3) + ";stroke-dasharray:" + dashes + '}';
}

void DrawTitles(Svg& svg, SectionDrawingOptions const& options) {
    double line = kMargin + 8;
    if (!options.m_title.empty()) {
        svg.Text({kMargin, line}, options.m_title, "title");
        line += 22;
    }
    svg.Text({kMargin, line}, options.m_subtitle, "dimension-text");
}

void DrawDimensions(Svg& svg, Layout const& layout, std::string const& unit) {
    Box const& shape = layout.m_shape;
    double const scale = layout.m_view.Scale();
    auto const text = [&](double pixels) { return Number(pixels / scale) + ' ' + unit; };
    double const below = shape.m_high.y + layout.m_dimensionGap.y;
    double const left = shape.m_low.x - layout.m_dimensionGap.x;
    svg.Dimension({shape.m_low.x, below}, {shape.m_high.x, below}, text(shape.m_high.x - shape.m_low.x));
    svg.Dimension({left, shape.m_high.y}, {left, shape.m_low.y}, text(shape.m_high.y - shape.m_low.y));
}

/// Marks the feet of bridges, and returns what room the marks take.
std::vector<Box> DrawFeet(Svg& svg, SectionContent const& content, View const& view) {
    std::vector<Box> taken;
    for (Point const point : content.m_feet) {
        std::vector<Point> const diamond = Diamond(view(point));
        svg.Polygon(diamond, "foot");
        taken.push_back({{diamond[2].x, diamond[1].y}, {diamond[0].x, diamond[3].y}});
    }
    return taken;
}

/// \param taken  what names must not cover.
void DrawNames(Svg& svg, SectionContent const& content, Layout const& layout, std::vector<Box> const& taken) {
    std::vector<Label> labels;
    for (auto const& [index, label] : content.m_named)
        labels.push_back({label.m_text, layout.m_view(label.m_point)});
    if (labels.size() <= kMostNames) {
        std::vector<Segment> lines = ToPicture(content.m_outline, layout.m_view);
        std::vector<Segment> const cuts = ToPicture(content.m_cuts, layout.m_view);
        lines.insert(lines.end(), cuts.begin(), cuts.end());
        Box const& shape = layout.m_shape;
        Box const room{{shape.m_low.x - layout.m_dimensionGap.x + 10, shape.m_low.y - 30},
                       {layout.m_page.x - 10, shape.m_high.y + layout.m_dimensionGap.y - 20}};
        PlaceLabels(labels, kNameSize, room, shape, taken, lines);
    }
    for (Label const& label : labels)
        if (label.m_placed && label.m_far)
            svg.Segments({{label.m_point, label.m_leaderEnd}}, "leader");
    for (Label const& label : labels)
        svg.Circle(label.m_point, 3.5, "named");
    for (Label const& label : labels)
        if (label.m_placed)
            svg.Text(label.m_baseline, label.m_text, "name", "middle");
}

/// Explains what occurs in the picture, in rows at its foot.
void DrawLegend(Svg& svg, SectionContent const& content, Point page) {
    constexpr double kSwatch = 24.0;
    Point place{kMargin, page.y - 16 - kLegendRow};
    auto const next = [&](std::string const& text) {
        double const width = kSwatch + 8 + Svg::TextWidth(text, Svg::kTextSize) + 14;
        if (place.x + width > page.x - kMargin / 2 && place.x > kMargin)
            place = {kMargin, place.y + kLegendRow};
        Point const swatch = place;
        svg.Text({swatch.x + kSwatch + 8, swatch.y + 4}, text, "dimension-text");
        place.x += width;
        return swatch;
    };
    auto const patch = [&](Point at, std::string const& className) {
        svg.Rectangle({at.x, at.y - 7}, {kSwatch, 14}, className);
    };
    patch(next(content.m_tints.empty() ? "section" : "convex loop"), "tint0");
    if (std::count(content.m_faults.begin(), content.m_faults.end(), true) > 0)
        patch(next("not convex or clockwise"), "fault");
    Point at = next("outline");
    svg.Segments({{at, {at.x + kSwatch, at.y}}}, "outline");
    if (!content.m_cuts.empty()) {
        at = next("bridge or cut");
        svg.Segments({{at, {at.x + kSwatch, at.y}}}, "cut");
    }
    if (!content.m_feet.empty()) {
        at = next("foot of a bridge");
        svg.Polygon(Diamond({at.x + kSwatch / 2, at.y}), "foot");
    }
    if (!content.m_named.empty()) {
        at = next("named position");
        svg.Circle({at.x + kSwatch / 2, at.y}, 3.5, "named");
    }
}

std::string Draw(SectionContent const& content, Layout const& layout, SectionDrawingOptions const& options) {
    std::string const label = options.m_title + (options.m_subtitle.empty() ? "" : ": " + options.m_subtitle);
    Svg svg(layout.m_page.x, layout.m_page.y, label, StyleFor(content));
    svg.Raw(LoopDefinitions());
    DrawTitles(svg, options);
    DrawLoops(svg, content, layout.m_view);
    if (options.m_showsDimensions)
        DrawDimensions(svg, layout, options.m_unit);
    auto const taken = DrawFeet(svg, content, layout.m_view);
    if (options.m_showsNames)
        DrawNames(svg, content, layout, taken);
    double const foot = layout.m_page.y - (options.m_showsLegend ? 66 : 16);
    svg.ScaleBar({kMargin, foot}, layout.m_page.x / 5, layout.m_view.Scale(), options.m_unit);
    if (options.m_showsLegend)
        DrawLegend(svg, content, layout.m_page);
    return svg.Document();
}

} // namespace

Drawing DrawSection(Sectrix::CrossSection const& section, SectionDrawingOptions const& options) {
    qel::BBox<2, double> const box = section.BBox();
    double const width = box.m_max[0] - box.m_min[0];
    double const height = box.m_max[1] - box.m_min[1];
    if (!IsDrawable(width, height))
        return NothingToDraw("the section has no finite extent");
    SectionContent content(section, options.m_showsConvexLoops);
    if (!options.m_showsFeet)
        content.m_feet.clear();
    if (!options.m_showsNames)
        content.m_named.clear();
    return {Draw(content, Layout(box, content, options), options), {}};
}

} // namespace qel::SectrixTools
