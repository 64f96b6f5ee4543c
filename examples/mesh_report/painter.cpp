#include "mesh_report/painter.h"

#include <algorithm>
#include <utility>

namespace example {
namespace {

struct Plane {
    /// Of length 1.
    Vector m_normal;
    double m_distance;
};

Plane PlaneOf(Piece const& piece) {
    Vector const normal =
        Unit(Cross(piece.m_corners[1] - piece.m_corners[0], piece.m_corners[2] - piece.m_corners[0]));
    return {normal, Product(normal, piece.m_corners[0])};
}

/// The part of a piece at which the heights of its corners are not negative.
Piece Cut(Piece const& piece, std::vector<double> const& heights) {
    Piece part;
    part.m_class = piece.m_class;
    auto const add = [&part](Vector const& corner, bool line) {
        part.m_corners.push_back(corner);
        part.m_lines.push_back(line);
    };
    for (std::size_t i = 0; i < heights.size(); ++i) {
        std::size_t const next = (i + 1) % heights.size();
        double const from = heights[i], to = heights[next];
        if (from >= 0)
            add(piece.m_corners[i], piece.m_lines[i] && !(from == 0 && to < 0));
        if (from * to < 0)
            add(Moved(piece.m_corners[i], piece.m_corners[next] - piece.m_corners[i], from / (from - to)),
                piece.m_lines[i] && to > 0);
    }
    return part;
}

void Draw(Svg& svg, Piece const& piece, View const& view) {
    std::vector<Point> corners;
    for (Vector const& corner : piece.m_corners)
        corners.push_back(view(Isometric(corner)));
    svg.Polygon(corners, piece.m_class);
    std::vector<std::pair<Point, Point>> lines;
    for (std::size_t i = 0; i < corners.size(); ++i)
        if (piece.m_lines[i])
            lines.emplace_back(corners[i], corners[(i + 1) % corners.size()]);
    svg.Segments(lines, "edge");
}

} // namespace

void Paint(Svg& svg, std::vector<Piece> pieces, View const& view, double room) {
    if (pieces.empty())
        return;
    // All the others are below the plane of one of them, above it, or within; what is on the viewer's side covers
    // it.
    Piece const& middle = pieces[pieces.size() / 2];
    Plane const plane = PlaneOf(middle);
    std::vector<Piece> below, within, above;
    for (Piece& piece : pieces) {
        std::vector<double> heights;
        for (Vector const& corner : piece.m_corners) {
            double const height = Product(plane.m_normal, corner) - plane.m_distance;
            heights.push_back(height > room || height < -room ? height : 0);
        }
        auto const [low, high] = std::minmax_element(heights.begin(), heights.end());
        // Rounding may put a corner far from the origin off the plane of its own piece, which must not come back.
        if (&piece == &middle || (*low >= 0 && *high <= 0)) {
            within.push_back(std::move(piece));
        } else if (*low >= 0) {
            above.push_back(std::move(piece));
        } else if (*high <= 0) {
            below.push_back(std::move(piece));
        } else {
            above.push_back(Cut(piece, heights));
            for (double& height : heights)
                height = -height;
            below.push_back(Cut(piece, heights));
        }
    }
    pieces.clear();
    bool const isFacing = Product(plane.m_normal, kToViewer) > 0;
    Paint(svg, std::move(isFacing ? below : above), view, room);
    for (Piece const& piece : within)
        Draw(svg, piece, view);
    Paint(svg, std::move(isFacing ? above : below), view, room);
}

} // namespace example
