#include "sectrix_tools/drawings/svg/svg.h"

#include "sectrix_tools/drawings/svg/markup.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qel::SectrixTools::Pictures {
namespace {

// Texts are of `Svg::kTextSize`.
constexpr char const* kStyle = "text{font:12px 'DejaVu Sans',Verdana,Arial,sans-serif;fill:#26323d}"
                               ".dimension{stroke:#6b7785;stroke-width:1;fill:none}"
                               ".dimension-text{fill:#4a5663;font-size:12px}"
                               ".bar{fill:#26323d}";

std::string Pair(Point point) {
    return Pixels(point.x) + ' ' + Pixels(point.y);
}

std::string PointList(std::vector<Point> const& points) {
    std::string list;
    for (Point const& point : points)
        list += (list.empty() ? "" : " ") + Pixels(point.x) + ',' + Pixels(point.y);
    return list;
}

std::string Attribute(char const* name, std::string const& value) {
    return std::string(" ") + name + "=\"" + value + '"';
}

/// The largest of 1, 2 and 5 times a power of ten that is at most `most`, which is positive.
double RoundLength(double most) {
    double const power = std::pow(10.0, std::floor(std::log10(most)));
    for (double const step : {5.0, 2.0})
        if (step * power <= most)
            return step * power;
    return power;
}

} // namespace

View::View(Point low, Point high, Point corner, Point size)
    : m_scale(1.0), m_model{low.x / 2 + high.x / 2, low.y / 2 + high.y / 2}, m_picture{corner.x + size.x / 2,
                                                                                       corner.y + size.y / 2} {
    auto const fit = [](double room, double extent) {
        return extent > 0 ? room / extent : std::numeric_limits<double>::infinity();
    };
    m_scale = std::min(fit(size.x, high.x - low.x), fit(size.y, high.y - low.y));
}

Point View::operator()(Point model) const {
    return {m_picture.x + (model.x - m_model.x) * m_scale, m_picture.y - (model.y - m_model.y) * m_scale};
}

Svg::Svg(double width, double height, std::string const& title, std::string const& style) {
    std::string const w = Pixels(width);
    std::string const h = Pixels(height);
    m_head = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + w + "\" height=\"" + h + "\" viewBox=\"0 0 " +
             w + ' ' + h + "\" role=\"img\">\n<title>" + Escape(title) + "</title>\n<style>" + kStyle + style +
             "</style>\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
}

void Svg::Raw(std::string const& markup) {
    m_body += markup + '\n';
}

void Svg::Polygon(std::vector<Point> const& corners, std::string const& className) {
    m_body += "<polygon" + Attribute("class", className) + Attribute("points", PointList(corners)) + "/>\n";
}

void Svg::Shape(std::vector<std::vector<Point>> const& rings, std::string const& className) {
    std::string path;
    for (auto const& ring : rings)
        path += 'M' + PointList(ring) + 'Z';
    m_body +=
        "<path" + Attribute("class", className) + Attribute("fill-rule", "evenodd") + Attribute("d", path) + "/>\n";
}

void Svg::Polyline(std::vector<Point> const& points, std::string const& className) {
    m_body += "<polyline" + Attribute("class", className) + Attribute("points", PointList(points)) + "/>\n";
}

void Svg::Segments(std::vector<std::pair<Point, Point>> const& segments, std::string const& className) {
    std::string path;
    for (auto const& [from, to] : segments)
        path += 'M' + Pair(from) + 'L' + Pair(to);
    if (!path.empty())
        m_body += "<path" + Attribute("class", className) + Attribute("d", path) + "/>\n";
}

void Svg::Rectangle(Point corner, Point size, std::string const& className) {
    m_body += "<rect" + Attribute("class", className) + Attribute("x", Pixels(corner.x)) +
              Attribute("y", Pixels(corner.y)) + Attribute("width", Pixels(size.x)) +
              Attribute("height", Pixels(size.y)) + "/>\n";
}

void Svg::Circle(Point centre, double radius, std::string const& className) {
    m_body += "<circle" + Attribute("class", className) + Attribute("cx", Pixels(centre.x)) +
              Attribute("cy", Pixels(centre.y)) + Attribute("r", Pixels(radius)) + "/>\n";
}

void Svg::Text(Point place, std::string const& text, std::string const& className, char const* anchor) {
    m_body += "<text" + Attribute("class", className) + Attribute("x", Pixels(place.x)) +
              Attribute("y", Pixels(place.y)) + Attribute("text-anchor", anchor) + '>' + Escape(text) + "</text>\n";
}

void Svg::UprightText(Point place, std::string const& text, std::string const& className) {
    m_body += "<text" + Attribute("class", className) +
              Attribute("transform", "translate(" + Pair(place) + ") rotate(-90)") +
              Attribute("text-anchor", "middle") + '>' + Escape(text) + "</text>\n";
}

void Svg::ScaleBar(Point left, double longest, double scale, std::string const& unit) {
    constexpr double kThickness = 5.0;
    double const length = RoundLength(longest / scale);
    Point const right{left.x + length * scale, left.y};
    Rectangle({left.x, left.y - kThickness / 2}, {right.x - left.x, kThickness}, "bar");
    // The second half in white with a dark border, so that the bar halves at sight.
    double const middle = left.x / 2 + right.x / 2;
    m_body += "<rect fill=\"#fff\"" + Attribute("x", Pixels(middle)) +
              Attribute("y", Pixels(left.y - kThickness / 2 + 1)) +
              Attribute("width", Pixels(std::max(0.0, right.x - middle - 1))) +
              Attribute("height", Pixels(kThickness - 2)) + "/>\n";
    Text({right.x + 8, right.y + 4}, Number(length) + ' ' + unit, "dimension-text");
}

void Svg::Dimension(Point from, Point to, std::string const& text) {
    constexpr double kTick = 4.0;
    bool const level = from.y == to.y;
    std::vector<std::pair<Point, Point>> lines{{from, to}};
    for (Point const end : {from, to}) {
        lines.push_back({{end.x - kTick, end.y + kTick}, {end.x + kTick, end.y - kTick}});
        if (level)
            lines.push_back({{end.x, end.y - 1.5 * kTick}, {end.x, end.y + 1.5 * kTick}});
        else
            lines.push_back({{end.x - 1.5 * kTick, end.y}, {end.x + 1.5 * kTick, end.y}});
    }
    Segments(lines, "dimension");
    Point const middle{from.x / 2 + to.x / 2, from.y / 2 + to.y / 2};
    if (level)
        Text({middle.x, middle.y - 6}, text, "dimension-text", "middle");
    else if (std::abs(to.y - from.y) < TextWidth(text, kTextSize) + 2 * kTick)
        Text({middle.x, std::min(from.y, to.y) - 12}, text, "dimension-text", "middle");
    else
        UprightText({middle.x - 6, middle.y}, text, "dimension-text");
}

std::string Svg::Document() const {
    return m_head + m_body + "</svg>\n";
}

double Svg::TextWidth(std::string const& text, double fontSize) {
    return 0.6 * fontSize * static_cast<double>(Length(text));
}

} // namespace qel::SectrixTools::Pictures
