#include "mesh_report/mesh_picture.h"

#include "common/svg.h"
#include "mesh_report/isometry.h"
#include "mesh_report/painter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

namespace example {
namespace {

using qel::Sectrix::Mesh;
using qel::Sectrix::Position;

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
std::vector<Triangle> ShownTriangles(Mesh const& mesh) {
    std::vector<Triangle> triangles;
    auto const& positions = mesh.Positions();
    auto const& indices = mesh.Indices();
    auto const isShown = [&positions](std::int64_t corner) {
        auto const index = static_cast<std::size_t>(corner);
        return index < positions.size() && IsFinite(positions[index]);
    };
    auto const at = [&positions](std::int64_t corner) {
        return VectorTo(positions[static_cast<std::size_t>(corner)]);
    };
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        std::int64_t const a = indices[i], b = indices[i + 1], c = indices[i + 2];
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

void DrawMesh(Svg& svg, Mesh const& mesh, View const& view) {
    auto const triangles = ShownTriangles(mesh);
    auto const shown = EdgesShown(triangles);
    std::vector<Piece> pieces;
    for (Triangle const& triangle : triangles) {
        Piece& piece = pieces.emplace_back();
        piece.m_class = Tone(triangle.m_normal);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            auto const index = static_cast<std::size_t>(triangle.m_corners[corner]);
            piece.m_corners.push_back(VectorTo(mesh.Positions()[index]));
            piece.m_lines.push_back(shown.at(EdgeOf(triangle, corner)));
        }
    }
    constexpr double kPixelsOff = 0.02;
    Paint(svg, std::move(pieces), view, kPixelsOff / view.Scale());
}

/// Draws a mesh under a line of text, in a panel with room for `points`, and returns the way into it.
View DrawPanel(Svg& svg, Mesh const& mesh, std::string const& state, double left,
               std::vector<Point> const& points) {
    View const view = FitView(points, {left, kHeading + kMargin / 2}, {kPanelWidth, kPanelHeight});
    svg.Text({left, kHeading}, state + ": " + std::to_string(mesh.Positions().size()) + " positions", "sub");
    DrawMesh(svg, mesh, view);
    return view;
}

void DrawOthers(Svg& svg, std::vector<OtherFace> const& others, View const& view) {
    for (OtherFace const& face : others) {
        std::vector<Point> corners;
        for (Position const& corner : face)
            if (IsFinite(corner))
                corners.push_back(view(Isometric(VectorTo(corner))));
        if (!corners.empty())
            corners.push_back(corners.front());
        svg.Polyline(corners, "other");
    }
}

} // namespace

std::optional<std::string> DrawMeshes(Mesh const& mesh, Mesh const& merged, std::vector<OtherFace> const& others,
                                      std::string const& title) {
    if (mesh.Indices().size() / 3 > kMostTriangles)
        return std::nullopt;
    std::vector<Point> points;
    auto const add = [&points](std::vector<Position> const& positions) {
        for (Position const& position : positions)
            if (IsFinite(position))
                points.push_back(Isometric(VectorTo(position)));
    };
    add(mesh.Positions());
    std::for_each(others.begin(), others.end(), add);

    Svg svg(2 * kPanelWidth + 3 * kMargin, kHeading + kPanelHeight + 2 * kMargin, title, kStyle);
    svg.Text({kMargin, kMargin}, title, "title");
    DrawOthers(svg, others, DrawPanel(svg, mesh, "as imported", kMargin, points));
    double const right = 2 * kMargin + kPanelWidth;
    View const view = DrawPanel(svg, merged, "merged", right, points);
    svg.ScaleBar({right, kHeading + kPanelHeight + 1.4 * kMargin}, 200, view.Scale(), "units along the axes");
    return svg.Document();
}

} // namespace example
