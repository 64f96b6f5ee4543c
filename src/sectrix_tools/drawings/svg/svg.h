#pragma once

/// \file
/// Drawings in SVG: shapes, the way from model coordinates to a picture, a scale bar and dimensions.

#include <string>
#include <utility>
#include <vector>

namespace qel::SectrixTools::Pictures {

struct Point {
    double x = 0.0;
    double y = 0.0;
};

/// The way from a model, with y upward, to a picture in pixels, with y downward: the model's box goes, undistorted
/// and centred, into a rectangle of the picture.
class View {
public:
    /// \param low, high      the corners of the model's box: finite, and apart on at least one axis.
    /// \param corner, size   the upper left corner and the extent of the rectangle.
    View(Point low, Point high, Point corner, Point size);

    Point operator()(Point model) const;
    /// Pixels a unit of the model.
    double Scale() const { return m_scale; }

private:
    double m_scale;
    /// The centre of the model's box and its place in the picture.
    Point m_model;
    Point m_picture;
};

/// An SVG document under construction. All coordinates are pixels; each shape names a class of the style sheet,
/// which gives it its colours and strokes. What is added later covers what was added before.
class Svg {
public:
    /// \param title  what a reader who does not see the picture is told.
    /// \param style  the style sheet, beside that of `Text`, `ScaleBar` and `Dimension`.
    Svg(double width, double height, std::string const& title, std::string const& style);

    /// Adds markup as it stands, for instance the definition of a pattern.
    void Raw(std::string const& markup);
    void Polygon(std::vector<Point> const& corners, std::string const& className);
    /// Rings of corners as one shape; a ring within another is a hole in it.
    void Shape(std::vector<std::vector<Point>> const& rings, std::string const& className);
    void Polyline(std::vector<Point> const& points, std::string const& className);
    /// Many separate segments as one shape.
    void Segments(std::vector<std::pair<Point, Point>> const& segments, std::string const& className);
    void Rectangle(Point corner, Point size, std::string const& className);
    void Circle(Point centre, double radius, std::string const& className);
    /// A line of text, escaped here. Without a class of its own it is small and dark. \param anchor  the part of
    /// the text that stands at `place`: "start", "middle" or "end".
    void Text(Point place, std::string const& text, std::string const& className, char const* anchor = "start");
    /// Text that reads upward, centred at `place`.
    void UprightText(Point place, std::string const& text, std::string const& className);

    /// A bar of a round length, at most `longest` pixels, with its length written at its right.
    /// \param left   its left end.
    /// \param scale  pixels a unit of the model, positive.
    void ScaleBar(Point left, double longest, double scale, std::string const& unit);
    /// A dimension line between two points that stand side by side or one above the other, with its text beside it.
    void Dimension(Point from, Point to, std::string const& text);

    /// The whole document.
    std::string Document() const;

    /// The size in pixels of a text without a class of its own, and of numbers.
    static constexpr double kTextSize = 12.0;
    /// About how wide a text of this size is.
    static double TextWidth(std::string const& text, double fontSize);

private:
    std::string m_head;
    std::string m_body;
};

} // namespace qel::SectrixTools::Pictures
