#include "sectrix_tools/drawings/mesh_drawing.h"

#include "sectrix_tools/drawings/space/isometry.h"
#include "sectrix_tools/drawings/space/painter.h"
#include "sectrix_tools/drawings/svg/refusal.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

namespace qel::SectrixTools {

namespace {

using namespace Pictures;

/// More could not be told apart.
constexpr std::size_t kMostTriangles = 5000;
constexpr double kPanelWidth = 560.0;
constexpr double kPanelHeight = 560.0;
constexpr double kMargin = 40.0;
constexpr double kHeading = 64.0;
constexpr int kTones = 8;

constexpr char const* kStyle = ".title{font-size:18px;font-weight:bold}"
                               ".sub{font-size:13px;fill:#4a5663}"
                               ".t0{fill:#5f7488;stroke:#5f7488}.t1{fill:#70869b;stroke:#70869b}"
                               ".t2{fill:#8297ac;stroke:#8297ac}.t3{fill:#95a9bc;stroke:#95a9bc}"
                               ".t4{fill:#a9bbcc;stroke:#a9bbcc}.t5{fill:#bdcddb;stroke:#bdcddb}"
                               ".t6{fill:#d2dee8;stroke:#d2dee8}.t7{fill:#e8eff5;stroke:#e8eff5}"
                               ".back{fill:#e3c9a4;stroke:#e3c9a4}"
                               "polygon{stroke-width:.6;stroke-linejoin:round}"
                               ".edge{stroke:#1d3853;stroke-width:1;fill:none;stroke-linecap:round}"
                               ".other{stroke:#c8102e;stroke-width:1.2;fill:none;stroke-dasharray:5 3}";

struct Triangle {
    std::array<std::int64_t, 3> m_corners;
    /// Of length 1.
    Vector m_normal;
};

/// The triangles that have a place and an extent in a picture.
std::vector<Triangle> ShownTriangles(DrawnTriangles const& panel) {
    std::vector<Triangle> triangles;
    auto const isShown = [&panel](std::int64_t corner) {
        auto const place = static_cast<std::size_t>(corner);
        return place < panel.m_points.size() && HasPlace(panel.m_points[place]);
    };
    auto const at = [&panel](std::int64_t corner) { return panel.m_points[static_cast<std::size_t>(corner)]; };
    auto const& corners = panel.m_corners;
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
        std::int64_t const a = corners[i], b = corners[i + 1], c = corners[i + 2];
        if (!isShown(a) || !isShown(b) || !isShown(c))
            continue;
        Vector const normal = Unit(Cross(at(b) - at(a), at(c) - at(a)));
        if (Product(normal, normal) > 0)
            triangles.push_back({{a, b, c}, normal});
    }
    return triangles;
}

using Edge = std::pair<std::int64_t, std::int64_t>;

Edge EdgeOf(Triangle const& triangle, std::size_t side) {
    return std::minmax(std::int64_t{triangle.m_corners[side]}, std::int64_t{triangle.m_corners[(side + 1) % 3]});
}

/// For each edge, whether it is drawn: it has not two triangles, or these stand at an angle.
std::map<Edge, bool> EdgesShown(std::vector<Triangle> const& triangles) {
    constexpr double kCosineOfBend = 0.9;
    std::map<Edge, std::vector<Vector>> normals;
    for (Triangle const& triangle : triangles)
        for (std::size_t side = 0; side < 3; ++side)
            normals[EdgeOf(triangle, side)].push_back(triangle.m_normal);
    std::map<Edge, bool> shown;
    for (auto const& [edge, beside] : normals)
        shown[edge] = beside.size() != 2 || Product(beside[0], beside[1]) < kCosineOfBend;
    return shown;
}

std::string Tone(Vector const& normal) {
    Vector const light{0.25, 0.55, 0.797};
    if (Product(normal, kToViewer) < 0)
        return "back";
    double const brightness = 0.5 + 0.5 * Product(normal, light);
    return "t" + std::to_string(std::clamp(static_cast<int>(brightness * kTones), 0, kTones - 1));
}

/// Draws the triangles of a panel, nearer ones over those behind them.
void DrawSurface(Svg& svg, DrawnTriangles const& panel, View const& view) {
    auto const triangles = ShownTriangles(panel);
    auto const shown = EdgesShown(triangles);
    std::vector<Piece> pieces;
    for (Triangle const& triangle : triangles) {
        Piece& piece = pieces.emplace_back();
        piece.m_class = Tone(triangle.m_normal);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            piece.m_corners.push_back(panel.m_points[static_cast<std::size_t>(triangle.m_corners[corner])]);
            piece.m_lines.push_back(shown.at(EdgeOf(triangle, corner)));
        }
    }
    constexpr double kPixelsOff = 0.02;
    Paint(svg, std::move(pieces), view, kPixelsOff / view.Scale());
}

void DrawOtherFaces(Svg& svg, DrawnTriangles const& panel, View const& view) {
    for (auto const& face : panel.m_otherFaces) {
        std::vector<Point> corners;
        for (Vector const& corner : face)
            if (HasPlace(corner))
                corners.push_back(view(Isometric(corner)));
        if (!corners.empty())
            corners.push_back(corners.front());
        svg.Polyline(corners, "other");
    }
}

/// Where all points of all panels stand for the viewer.
std::vector<Point> SeenPoints(std::vector<DrawnTriangles> const& panels) {
    std::vector<Point> points;
    auto const add = [&points](std::vector<Vector> const& list) {
        for (Vector const& point : list)
            if (HasPlace(point))
                points.push_back(Isometric(point));
    };
    for (DrawnTriangles const& panel : panels) {
        add(panel.m_points);
        std::for_each(panel.m_otherFaces.begin(), panel.m_otherFaces.end(), add);
    }
    return points;
}

} // namespace

DrawnTriangles TrianglesOf(Sectrix::Mesh const& mesh, std::string const& caption) {
    DrawnTriangles triangles;
    triangles.m_caption = caption;
    for (auto const& position : mesh.Positions())
        triangles.m_points.push_back(VectorTo(position));
    triangles.m_corners = mesh.Indices();
    return triangles;
}

Drawing DrawTriangles(std::vector<DrawnTriangles> const& panels, std::string const& title,
                      std::string const& unit) {
    auto const points = SeenPoints(panels);
    if (points.empty())
        return NothingToDraw("no point has a place in a picture");
    Drawing drawing;
    auto const count = static_cast<double>(panels.size());
    Svg svg(count * kPanelWidth + (count + 1) * kMargin, kHeading + kPanelHeight + 2 * kMargin, title, kStyle);
    svg.Text({kMargin, kMargin}, title, "title");
    double left = kMargin;
    double scale = 1.0;
    for (DrawnTriangles const& panel : panels) {
        View const view = FitView(points, {left, kHeading + kMargin / 2}, {kPanelWidth, kPanelHeight});
        svg.Text({left, kHeading}, panel.m_caption, "sub");
        if (panel.m_corners.size() / 3 > kMostTriangles)
            drawing.m_findings.push_back(
                LeftOut("too-many-triangles", "more than " + std::to_string(kMostTriangles) +
                                                  " triangles are not drawn: " + panel.m_caption));
        else
            DrawSurface(svg, panel, view);
        DrawOtherFaces(svg, panel, view);
        scale = view.Scale();
        left += kPanelWidth + kMargin;
    }
    svg.ScaleBar({kMargin, kHeading + kPanelHeight + 1.4 * kMargin}, 200, scale, unit + " along the axes");
    drawing.m_svg = svg.Document();
    return drawing;
}

} // namespace qel::SectrixTools
