#include "section_report/section_picture.h"

#include "common/markup.h"
#include "common/svg.h"
#include "section_report/label_placement.h"
#include "section_report/measures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace example {
namespace {

using qel::Sectrix::CrossSection;
using qel::Sectrix::Loop;

constexpr char const* kStyle = ".title{font-size:18px;font-weight:bold}"
                               ".tint0{fill:#cfe2f6}.tint1{fill:#fbe3c0}.tint2{fill:#d5edcf}.tint3{fill:#e5d9f2}"
                               ".tint4{fill:#f9d6d5}.tint5{fill:#cdecec}.tint6{fill:#f3efbd}"
                               ".fault{fill:url(#hatch)}"
                               ".outline{stroke:#1d3853;stroke-width:1.8;fill:none;stroke-linecap:round}"
                               ".cut{stroke:#66727f;stroke-width:1;fill:none;stroke-dasharray:5 3}"
                               ".added{fill:#fff;stroke:#c8102e;stroke-width:1.6}"
                               ".named{fill:#0b5cad;stroke:#fff;stroke-width:1}"
                               ".leader{stroke:#0b5cad;stroke-width:.7}"
                               ".name{font-size:11px;fill:#0b4a8c;paint-order:stroke;stroke:#fff;stroke-width:3;"
                               "stroke-opacity:.8;stroke-linejoin:round}";

constexpr char const* kHatch =
    "<defs><pattern id=\"hatch\" width=\"7\" height=\"7\" patternUnits=\"userSpaceOnUse\" "
    "patternTransform=\"rotate(45)\"><line x1=\"0\" y1=\"0\" x2=\"0\" y2=\"7\" stroke=\"#c8102e\" "
    "stroke-width=\"1.8\"/></pattern></defs>";

/// As the style sheet has it.
constexpr double kNameSize = 11.0;
constexpr std::size_t kTints = 7;
/// Placing names costs their number times that of the edges; beyond this many a picture could not show them anyway.
constexpr std::size_t kMostNames = 100;
/// Beyond this many edges, thinner lines.
constexpr double kManyEdges = 150.0;

/// An edge between two pool indices, the lesser first: both loops beside a cut carry it.
using Edge = std::pair<int, int>;

/// Calls `visit(from, to)` for each edge of a loop, with the vertex that it leaves and the one at which it arrives.
template <class Visit>
void VisitEdges(Loop const& loop, Visit visit) {
    auto const& vertices = loop.Vertices();
    for (std::size_t i = 0; i < vertices.size(); ++i)
        visit(vertices[i], vertices[(i + 1) % vertices.size()]);
}

Edge EdgeOf(qel::Sectrix::Vertex const& from, qel::Sectrix::Vertex const& to) {
    return std::minmax(from.Index(), to.Index());
}

/// A tint for each loop, a different one from those of the loops behind its cuts as far as the tints go.
std::vector<std::size_t> ChooseTints(std::vector<Loop> const& loops) {
    std::map<Edge, std::vector<std::size_t>> carriers;
    for (std::size_t loop = 0; loop < loops.size(); ++loop)
        VisitEdges(loops[loop],
                   [&](auto const& from, auto const& to) { carriers[EdgeOf(from, to)].push_back(loop); });

    std::vector<std::size_t> tints(loops.size(), kTints);
    for (std::size_t loop = 0; loop < loops.size(); ++loop) {
        std::set<std::size_t> taken;
        VisitEdges(loops[loop], [&](auto const& from, auto const& to) {
            for (std::size_t const other : carriers[EdgeOf(from, to)])
                taken.insert(tints[other]);
        });
        // Starting at another tint each time spreads all of them over the picture.
        std::size_t tint = loop % kTints;
        for (std::size_t step = 0; step < kTints && taken.count(tint) > 0; ++step)
            tint = (tint + 1) % kTints;
        tints[loop] = tint;
    }
    return tints;
}

/// What a picture shows, in model coordinates.
struct Content {
    explicit Content(CrossSection const& section);

    std::vector<std::vector<Point>> m_loops;
    std::vector<std::size_t> m_tints;
    /// For each loop, whether it is to be hatched.
    std::vector<bool> m_faults;
    std::vector<Segment> m_outline;
    std::vector<Segment> m_cuts;
    std::vector<Point> m_added;
    /// Names and where they belong, by pool index.
    std::map<int, Label> m_named;
};

Content::Content(CrossSection const& section) : m_tints(ChooseTints(section.ConvexLoops())) {
    auto const find = [&](int index, bool& found) {
        auto const& position = section.Positions().GetPosition(static_cast<std::uint64_t>(index), found);
        return std::make_pair(Point{position.Position()[0], position.Position()[1]}, position.Name());
    };
    std::set<std::pair<Edge, bool>> drawn;
    for (Loop const& loop : section.ConvexLoops()) {
        m_loops.push_back(Corners(loop));
        m_faults.push_back(!IsConvex(loop));
        VisitEdges(loop, [&](auto const& from, auto const& to) {
            bool found[2];
            Segment const segment{find(from.Index(), found[0]).first, find(to.Index(), found[1]).first};
            // Once only, since the dashes of one edge drawn from both sides would fill each other's gaps.
            if (found[0] && found[1] && drawn.insert({EdgeOf(from, to), to.Exterior()}).second)
                (to.Exterior() ? m_outline : m_cuts).push_back(segment);
        });
    }
    for (int const index : section.AddedVertices()) {
        bool found = false;
        Point const point = find(index, found).first;
        if (found)
            m_added.push_back(point);
    }
    auto const collectNames = [&](Loop const& loop) {
        for (auto const& vertex : loop.Vertices()) {
            bool found = false;
            auto const [point, name] = find(vertex.Index(), found);
            if (!name.empty())
                m_named.insert({vertex.Index(), Label{name, point}});
        }
    };
    collectNames(section.ExteriorLoop());
    std::for_each(section.InteriorLoops().begin(), section.InteriorLoops().end(), collectNames);
}

/// Where everything stands on the page, in pixels.
struct Layout {
    Layout(qel::BBox<2, double> const& box, Content const& content);

    Point m_page;
    View m_view{{}, {1, 1}, {}, {1, 1}};
    /// The rectangle of the section.
    Box m_shape{};
    /// How far the dimension lines stand off it.
    Point m_dimensionGap{};
};

Layout::Layout(qel::BBox<2, double> const& box, Content const& content) {
    constexpr double kWidest = 960.0, kNarrowest = 640.0, kHighest = 600.0;
    constexpr double kTop = 84.0, kBottom = 112.0, kSide = 40.0, kGap = 30.0;
    Point const low{box.m_min[0], box.m_min[1]};
    Point const high{box.m_max[0], box.m_max[1]};
    Point const extent{high.x - low.x, high.y - low.y};
    Point names; // the room that names take around the shape: much where there is much, beside a high one
    double const most = extent.x > 1.3 * extent.y ? 60.0 : 120.0;
    for (auto const& [index, label] : content.m_named)
        names = {std::min(most, std::max(names.x, Svg::TextWidth(label.m_text, kNameSize))), 2 * kNameSize};
    m_dimensionGap = {kGap + names.x, kGap + names.y};

    double const left = kSide + m_dimensionGap.x;
    double const right = kSide + names.x;
    // A ribbon would be too thin to see anything in it, so its page is wider.
    double const widest = extent.x > 8 * extent.y ? 1.7 * kWidest : kWidest;
    double const scale = View(low, high, {}, {widest - left - right, kHighest}).Scale();
    Point const size{extent.x * scale, extent.y * scale};
    m_page = {std::max(kNarrowest, size.x + left + right), kTop + names.y + size.y + m_dimensionGap.y + kBottom};
    Point const corner{left + (m_page.x - left - right - size.x) / 2, kTop + names.y};
    m_shape = {corner, {corner.x + size.x, corner.y + size.y}};
    m_view = View(low, high, corner, size);
}

std::vector<Segment> ToPicture(std::vector<Segment> const& segments, View const& view) {
    std::vector<Segment> picture;
    picture.reserve(segments.size());
    for (auto const& [from, to] : segments)
        picture.emplace_back(view(from), view(to));
    return picture;
}

std::vector<Point> Diamond(Point centre) {
    constexpr double kReach = 4.5;
    return {{centre.x + kReach, centre.y},
            {centre.x, centre.y - kReach},
            {centre.x - kReach, centre.y},
            {centre.x, centre.y + kReach}};
}

/// The style sheet, with lines that get the thinner the more of them there are.
std::string StyleFor(Content const& content) {
    auto const edges = static_cast<double>(content.m_outline.size() + content.m_cuts.size());
    double const weight =
        std::min(1.0, std::pow(kManyEdges / edges, 0.4)); // more than in step would leave too little
    std::string const dashes = Number(2 + 3 * weight, 3) + ' ' + Number(1 + 2 * weight, 3);
    return kStyle + (".drawing .outline{stroke-width:" + Number(1.8 * weight, 3) + '}') +
           ".drawing .cut{stroke-width:" + Number(weight, 3) + ";stroke-dasharray:" + dashes + '}';
}

void DrawLoops(Svg& svg, Content const& content, View const& view) {
    std::vector<std::vector<Point>> loops;
    for (auto const& corners : content.m_loops) {
        std::vector<Point>& loop = loops.emplace_back();
        std::transform(corners.begin(), corners.end(), std::back_inserter(loop), view);
    }
    for (std::size_t loop = 0; loop < loops.size(); ++loop)
        svg.Polygon(loops[loop], "tint" + std::to_string(content.m_tints[loop]));
    for (std::size_t loop = 0; loop < loops.size(); ++loop)
        if (content.m_faults[loop])
            svg.Polygon(loops[loop], "fault");
    svg.Raw("<g class=\"drawing\">");
    svg.Segments(ToPicture(content.m_cuts, view), "cut");
    svg.Segments(ToPicture(content.m_outline, view), "outline");
    svg.Raw("</g>");
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

void DrawMarks(Svg& svg, Content const& content, Layout const& layout) {
    std::vector<Box> taken;
    for (Point const point : content.m_added) {
        std::vector<Point> const diamond = Diamond(layout.m_view(point));
        svg.Polygon(diamond, "added");
        taken.push_back({{diamond[2].x, diamond[1].y}, {diamond[0].x, diamond[3].y}});
    }
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
void DrawLegend(Svg& svg, Content const& content, Point page) {
    constexpr double kMargin = 24.0, kSwatch = 24.0, kRow = 22.0;
    Point place{kMargin, page.y - 16 - kRow};
    auto const next = [&](std::string const& text) {
        double const width = kSwatch + 8 + Svg::TextWidth(text, Svg::kTextSize) + 14;
        if (place.x + width > page.x - kMargin / 2)
            place = {kMargin, place.y + kRow};
        Point const swatch = place;
        svg.Text({swatch.x + kSwatch + 8, swatch.y + 4}, text, "dimension-text");
        place.x += width;
        return swatch;
    };
    auto const patch = [&](Point at, std::string const& className) {
        svg.Rectangle({at.x, at.y - 7}, {kSwatch, 14}, className);
    };
    patch(next("convex loop"), "tint0");
    if (std::count(content.m_faults.begin(), content.m_faults.end(), true) > 0)
        patch(next("not convex or clockwise"), "fault");
    Point at = next("outline");
    svg.Segments({{at, {at.x + kSwatch, at.y}}}, "outline");
    if (!content.m_cuts.empty()) {
        at = next("bridge or cut");
        svg.Segments({{at, {at.x + kSwatch, at.y}}}, "cut");
    }
    if (!content.m_added.empty()) {
        at = next("added position");
        svg.Polygon(Diamond({at.x + kSwatch / 2, at.y}), "added");
    }
    if (!content.m_named.empty()) {
        at = next("named position");
        svg.Circle({at.x + kSwatch / 2, at.y}, 3.5, "named");
    }
}

} // namespace

void DrawConvexLoops(Svg& svg, CrossSection const& section, View const& view) {
    DrawLoops(svg, Content(section), view);
}

std::string LoopStyle() {
    return kStyle;
}

std::string LoopDefinitions() {
    return kHatch;
}

Picture DrawSection(CrossSection const& section, std::string const& title, std::string const& subtitle,
                    std::string const& unit) {
    Content const content(section);
    qel::BBox<2, double> const box = section.BBox();
    double const width = box.m_max[0] - box.m_min[0];
    double const height = box.m_max[1] - box.m_min[1];
    bool const drawable = std::isfinite(width) && std::isfinite(height) && std::max(width, height) > 1e-300;
    Layout const layout = drawable ? Layout(box, content) : Layout({{0, 0}, {8, 1}}, content);

    Svg svg(layout.m_page.x, layout.m_page.y, title + ": " + subtitle, StyleFor(content));
    svg.Raw(kHatch);
    svg.Text({24, 32}, title, "title");
    svg.Text({24, 54}, subtitle, "dimension-text");
    if (drawable) {
        DrawLoops(svg, content, layout.m_view);
        DrawDimensions(svg, layout, unit);
        DrawMarks(svg, content, layout);
        svg.ScaleBar({24, layout.m_page.y - 66}, layout.m_page.x / 5, layout.m_view.Scale(), unit);
        DrawLegend(svg, content, layout.m_page);
    } else {
        svg.Text({24, 90}, "Nothing can be drawn: the section has no finite extent.", "");
    }
    return {svg.Document(), drawable && width > 2.5 * height};
}

} // namespace example
