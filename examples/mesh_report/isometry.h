#pragma once

/// \file
/// Looking at a model along its space diagonal.

#include "common/svg.h"
#include "sectrix/foundation/position.h"

#include <array>
#include <vector>

namespace example {

/// A direction in space, or a point as its distance from the origin.
using Vector = std::array<double, 3>;

/// Where the viewer stands.
constexpr Vector kToViewer{1, 1, 1};

Vector VectorTo(qel::Sectrix::Position const& position);
Vector operator-(Vector const& a, Vector const& b);
double Product(Vector const& a, Vector const& b);
Vector Cross(Vector const& a, Vector const& b);
/// Of length 1; what has no length stays as it is.
Vector Unit(Vector const& vector);
/// From `from` the part `ratio` of the way `along`.
Vector Moved(Vector const& from, Vector const& along, double ratio);

/// Where a point stands for the viewer, z upward. Lengths along the axes of the model stay.
Point Isometric(Vector const& point);

/// True when all coordinates are numbers and not infinite, so that there is a place in a picture.
bool IsFinite(qel::Sectrix::Position const& position);

/// The way of all these points into a rectangle of a picture. Points that coincide are given some room.
View FitView(std::vector<Point> const& points, Point corner, Point size);

} // namespace example
