#include "sectrix_tools/drawings/space/painter.h"

#include <algorithm>
#include <utility>

namespace qel::SectrixTools::Pictures {
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

/// The painter's algorithm along a binary space partition: what lies beyond a plane is painted before what lies in
/// it, and that before what lies on the viewer's side.
class Painter {
public:
    Painter(Svg& svg, View const& view, double room) : m_svg(svg), m_view(view), m_room(room) {}

    void Paint(std::vector<Piece> pieces) {
        if (pieces.empty())
            return;
        std::size_t const middle = pieces.size() / 2;
        Plane const plane = PlaneOf(pieces[middle]);
        Sides sides;
        for (std::size_t i = 0; i < pieces.size(); ++i)
            Sort(std::move(pieces[i]), plane, i == middle, sides);
        pieces.clear();
        bool const isFacing = Product(plane.m_normal, kToViewer) > 0;
        Paint(std::move(isFacing ? sides.m_below : sides.m_above));
        for (Piece const& piece : sides.m_within)
            Draw(m_svg, piece, m_view);
        Paint(std::move(isFacing ? sides.m_above : sides.m_below));
    }

private:
    struct Sides {
        std::vector<Piece> m_below, m_within, m_above;
    };

    /// Puts a piece on its side of the plane, or each part of it on its own.
    /// \param isMiddle  the plane is that of the piece. Rounding may put a corner far from the origin off it all the
    ///                  same, and it must not come back.
    void Sort(Piece piece, Plane const& plane, bool isMiddle, Sides& sides) {
        std::vector<double> heights;
        for (Vector const& corner : piece.m_corners) {
            double const height = Product(plane.m_normal, corner) - plane.m_distance;
            heights.push_back(height > m_room || height < -m_room ? height : 0);
        }
        auto const [low, high] = std::minmax_element(heights.begin(), heights.end());
        if (isMiddle || (*low >= 0 && *high <= 0)) {
            sides.m_within.push_back(std::move(piece));
        } else if (*low >= 0 || (*high > 0 && m_cutsLeft == 0 && *high > -*low)) {
            sides.m_above.push_back(std::move(piece));
        } else if (*high <= 0 || m_cutsLeft == 0) {
            sides.m_below.push_back(std::move(piece));
        } else {
            --m_cutsLeft;
            sides.m_above.push_back(Cut(piece, heights));
            for (double& height : heights)
                height = -height;
            sides.m_below.push_back(Cut(piece, heights));
        }
    }

    Svg& m_svg;
    View const& m_view;
    double const m_room;
    /// Surfaces that all reach through each other would be cut into as many pieces as the square of their number.
    int m_cutsLeft = 20000;
};

} // namespace

void Paint(Svg& svg, std::vector<Piece> pieces, View const& view, double room) {
    Painter(svg, view, room).Paint(std::move(pieces));
}

} // namespace qel::SectrixTools::Pictures
