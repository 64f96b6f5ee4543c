#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

/// \file
/// Outlines with holes for tests and measurements. Same seed, same shape.

namespace shapes {

/// In radians.
inline constexpr double kFullTurn = 6.283185307179586;

struct Point {
    double x, y;
};

/// Loops by their indices: the first is the outline, counter-clockwise, the others are holes, clockwise.
struct Shape {
    std::vector<Point> points;
    std::vector<std::vector<int>> loops;

    void AddLoop(std::vector<Point> const& corners, bool reversed = false) {
        std::vector<int> loop;
        for (auto const& corner : corners) {
            loop.push_back(static_cast<int>(points.size()));
            points.push_back(corner);
        }
        if (reversed)
            std::reverse(loop.begin(), loop.end());
        loops.push_back(loop);
    }
};

using Random = std::mt19937_64;

/// Portable where the standard's distributions are not: the same numbers with every library.
inline double Uniform(Random& random, double low, double high) {
    return low + (high - low) * static_cast<double>(random() >> 11) * 0x1p-53;
}

inline int Below(Random& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

/// The point of a circle around the origin. By sums and products alone: the sines of two systems differ in their
/// last bit.
inline Point OnCircle(double angle, double radius) {
    double const quarters = std::round(angle / (kFullTurn / 4)), rest = angle - quarters * (kFullTurn / 4);
    Point point = {radius, 0}, term = point;
    for (int i = 1; i < 20; ++i) { // the power series, whose terms turn by a quarter from one to the next
        term = {0.0 - term.y * rest / i, term.x * rest / i};
        point = {point.x + term.x, point.y + term.y};
    }
    for (auto turns = static_cast<long long>(quarters) & 3; turns > 0; --turns)
        point = {0.0 - point.y, point.x};
    return point;
}

inline std::vector<Point> Star(Random& random, std::size_t corners, double x, double y, double inner,
                               double outer) {
    std::vector<Point> star;
    for (std::size_t i = 0; i < corners; ++i) {
        double const angle = kFullTurn * static_cast<double>(i) / static_cast<double>(corners);
        auto const corner = OnCircle(angle, Uniform(random, inner, outer));
        star.push_back({x + corner.x, y + corner.y});
    }
    return star;
}

/// A star whose holes are small stars on a grid in its core, apart from each other.
inline Shape StarWithHoles(Random& random, std::size_t corners, std::size_t holes, std::size_t holeCorners = 6) {
    Shape shape;
    shape.AddLoop(Star(random, corners, 0, 0, 150, 200));
    auto const side = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(holes))));
    double const cell = side > 0 ? 200.0 / static_cast<double>(side) : 0;
    for (std::size_t i = 0; i < holes; ++i) {
        double const x = -100 + cell * (static_cast<double>(i % side) + 0.5);
        double const y = -100 + cell * (static_cast<double>(i / side) + 0.5);
        shape.AddLoop(Star(random, holeCorners, x, y, 0.1 * cell, 0.4 * cell), true);
    }
    return shape;
}

/// A bar with teeth upward.
inline Shape Comb(std::size_t teeth) {
    Shape shape;
    double const width = 2.0 * static_cast<double>(teeth);
    std::vector<Point> outline{{0, -5}, {width, -5}};
    for (std::size_t i = teeth; i-- > 0;) {
        double const x = 2.0 * static_cast<double>(i);
        outline.push_back({x + 1.5, 10.0 + static_cast<double>(i % 3)});
        outline.push_back({x + 0.5, 10.0 + static_cast<double>(i % 5)});
        if (i > 0)
            outline.push_back({x, 0});
    }
    shape.AddLoop(outline);
    return shape;
}

/// A band that winds inward.
inline Shape Spiral(std::size_t steps) {
    Shape shape;
    std::vector<Point> band;
    auto const at = [](std::size_t i, double offset) {
        double const angle = 0.5 * static_cast<double>(i);
        double const radius = 10.0 + (static_cast<double>(i) + offset) * 40.0 / 12.6;
        return OnCircle(angle, radius);
    };
    for (std::size_t i = 0; i < steps; ++i)
        band.push_back(at(i, 8.0));
    for (std::size_t i = steps; i-- > 0;)
        band.push_back(at(i, 2.0));
    shape.AddLoop(band);
    return shape;
}

/// Anything on a grid of small integers: collinear and repeated points, crossing edges, holes that touch, overlap,
/// nest or lie outside, indices twice in a loop and indices that are not there.
inline Shape Garbage(Random& random, int size, int grid) {
    Shape shape;
    for (int i = 0; i < size; ++i)
        shape.points.push_back(
            {static_cast<double>(Below(random, grid)), static_cast<double>(Below(random, grid))});
    int const loops = 1 + Below(random, 4);
    bool const strays = Below(random, 8) == 0;
    for (int l = 0; l < loops; ++l) {
        std::vector<int> loop;
        int const corners = Below(random, l == 0 ? size : 8);
        for (int i = 0; i < corners; ++i)
            loop.push_back(Below(random, size + (strays ? 2 : 0)) - (strays ? 1 : 0));
        shape.loops.push_back(loop);
    }
    return shape;
}

/// A rectangle on a grid of small integers with corners in the middle of its edges and rectangular holes that may
/// touch.
inline Shape GridPlate(Random& random, int side) {
    Shape shape;
    std::vector<Point> outline;
    for (int i = 0; i < side; ++i)
        outline.push_back({static_cast<double>(i), 0});
    for (int i = 0; i < side; ++i)
        outline.push_back({static_cast<double>(side), static_cast<double>(i)});
    for (int i = side; i > 0; --i)
        outline.push_back({static_cast<double>(i), static_cast<double>(side)});
    for (int i = side; i > 0; --i)
        outline.push_back({0, static_cast<double>(i)});
    shape.AddLoop(outline);
    for (int hole = Below(random, side); hole > 0; --hole) {
        double const x = Below(random, side), y = Below(random, side);
        double const w = 1 + Below(random, 2), h = 1 + Below(random, 2);
        shape.AddLoop({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}, true);
    }
    return shape;
}

/// A map-like coast: a circle whose radius wanders, with small islands of the same kind inside.
inline Shape Coast(Random& random, std::size_t corners, std::size_t islands) {
    auto const outline = [&random](std::size_t count, double x, double y, double radius) {
        std::vector<Point> line;
        double height = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            // A rough radius that wanders, and returns to where it began.
            double const t = static_cast<double>(i) / static_cast<double>(count);
            height += Uniform(random, -1.0, 1.0) / std::sqrt(static_cast<double>(count));
            double const wander = height * (1 - t) + OnCircle(25.0 * t * kFullTurn, 0.2).y;
            double const w = wander * wander; // a hyperbolic tangent, by its continued fraction
            double const bend = wander * (10395 + w * (1260 + w * 21)) / (10395 + w * (4725 + w * (210 + w)));
            auto const corner = OnCircle(kFullTurn * t, radius * (1.0 + 0.25 * bend));
            line.push_back({x + corner.x, y + corner.y});
        }
        return line;
    };
    Shape shape;
    shape.AddLoop(outline(corners, 0, 0, 1000));
    auto const side = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(islands))));
    double const cell = side > 0 ? 1000.0 / static_cast<double>(side) : 0;
    for (std::size_t i = 0; i < islands; ++i)
        shape.AddLoop(outline(8 + i % 17, -500 + cell * (static_cast<double>(i % side) + 0.5),
                              -500 + cell * (static_cast<double>(i / side) + 0.5), 0.3 * cell),
                      true);
    return shape;
}

/// A band along a space-filling curve of the given order, which has 2 * 4^order corners.
inline Shape Hilbert(int order) {
    std::size_t const count = std::size_t{1} << (2 * order);
    std::vector<Point> path;
    for (std::size_t d = 0; d < count; ++d) {
        std::size_t x = 0, y = 0, t = d;
        for (std::size_t s = 1; s < (std::size_t{1} << order); s *= 2) {
            std::size_t const rx = 1 & (t / 2), ry = 1 & (t ^ rx);
            if (ry == 0) {
                if (rx == 1) {
                    x = s - 1 - x;
                    y = s - 1 - y;
                }
                std::swap(x, y);
            }
            x += s * rx;
            y += s * ry;
            t /= 4;
        }
        path.push_back({static_cast<double>(x), static_cast<double>(y)});
    }
    std::vector<Point> right, left;
    for (std::size_t i = 0; i < count; ++i) {
        auto const& p = path[i > 0 ? i - 1 : 0];
        auto const& q = path[i + 1 < count ? i + 1 : i];
        double const dx = q.x - p.x, dy = q.y - p.y, length = std::sqrt(dx * dx + dy * dy);
        right.push_back({path[i].x + 0.3 * dy / length, path[i].y - 0.3 * dx / length});
        left.push_back({path[i].x - 0.3 * dy / length, path[i].y + 0.3 * dx / length});
    }
    right.insert(right.end(), left.rbegin(), left.rend());
    Shape shape;
    shape.AddLoop(right);
    return shape;
}

/// A rectangle with rectangular holes in rows and columns; holes of one row or column line up exactly.
inline Shape Plate(std::size_t columns, std::size_t rows) {
    Shape shape;
    auto const rectangle = [](double x, double y, double w, double h) {
        return std::vector<Point>{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}};
    };
    shape.AddLoop(rectangle(0, 0, static_cast<double>(columns), static_cast<double>(rows)));
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            shape.AddLoop(rectangle(static_cast<double>(column) + 0.25, static_cast<double>(row) + 0.25, 0.5, 0.5),
                          true);
    return shape;
}

/// A circle with one notch.
inline Shape NotchedCircle(std::size_t corners) {
    Shape shape;
    std::vector<Point> circle;
    for (std::size_t i = 0; i < corners; ++i) {
        double const angle = kFullTurn * static_cast<double>(i) / static_cast<double>(corners);
        double const radius = i == corners / 3 ? 500 : 1000;
        circle.push_back(OnCircle(angle, radius));
    }
    shape.AddLoop(circle);
    return shape;
}

/// A circle whose holes are small stars on a grid in its core.
inline Shape CircleWithHoles(Random& random, std::size_t corners, std::size_t holes) {
    auto shape = StarWithHoles(random, corners, holes);
    for (std::size_t i = 0; i < corners; ++i) {
        double const angle = kFullTurn * static_cast<double>(i) / static_cast<double>(corners);
        shape.points[i] = OnCircle(angle, 200);
    }
    return shape;
}

/// A girder of two flanges and a web, with haunches.
inline Shape Girder() {
    Shape shape;
    shape.AddLoop({{0, 0},
                   {26, 0},
                   {26, 8},
                   {17, 17},
                   {17, 40},
                   {23, 46},
                   {23, 54},
                   {3, 54},
                   {3, 46},
                   {9, 40},
                   {9, 17},
                   {0, 8}});
    return shape;
}

/// A girder of nine vertices, which has a slab and a web.
inline Shape NineGirder() {
    Shape shape;
    shape.AddLoop({{0, 0}, {4, 0}, {4, 1}, {2.5, 1.25}, {2.5, 4}, {3, 5}, {1, 5}, {1.5, 4}, {1.5, 1.25}});
    return shape;
}

/// A bridge deck with cantilevers over chamfered cells side by side.
inline Shape Box(int cells) {
    Shape shape;
    double const width = cells * 5 + 2;
    shape.AddLoop(
        {{2, 0}, {width - 2, 0}, {width, 2.2}, {width + 3, 2.4}, {width + 3, 2.7}, {-3, 2.7}, {-3, 2.4}, {0, 2.2}});
    for (int cell = 0; cell < cells; ++cell) {
        double const x = 1.3 + cell * 5;
        shape.AddLoop({{x + .5, .3},
                       {x + 3.5, .3},
                       {x + 4, .8},
                       {x + 4, 1.9},
                       {x + 3.5, 2.3},
                       {x + .5, 2.3},
                       {x, 1.9},
                       {x, .8}},
                      true);
    }
    return shape;
}

/// A comb whose teeth are long, thin and leaning.
inline Shape LeaningComb(std::size_t teeth) {
    Shape shape;
    double const width = 2.0 * static_cast<double>(teeth);
    std::vector<Point> outline{{0, -5}, {width, -5}};
    for (std::size_t i = teeth; i-- > 0;) {
        double const x = 2.0 * static_cast<double>(i);
        outline.push_back({x + 1.5 + 0.5 * width, 0.5 * width});
        outline.push_back({x, 0});
    }
    shape.AddLoop(outline);
    return shape;
}

} // namespace shapes
