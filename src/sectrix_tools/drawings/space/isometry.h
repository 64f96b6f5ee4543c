#pragma once

/// \file
/// Looking at a model along its space diagonal.

#include "sectrix/foundation/position.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <vector>

namespace qel::SectrixTools::Pictures {

/// A direction in space, or a point as its distance from the origin.
using Vector = Vec<3, double>;

/// Where the viewer stands.
constexpr Vector kToViewer{{1, 1, 1}};

Vector VectorTo(Sectrix::Position const& position);
Vector operator-(Vector const& a, Vector const& b);
double Product(Vector const& a, Vector const& b);
Vector Cross(Vector const& a, Vector const& b);
/// Of length 1; what has no length stays as it is.
Vector Unit(Vector const& vector);
/// From `from` the part `ratio` of the way `along`.
Vector Moved(Vector const& from, Vector const& along, double ratio);

/// Where a point stands for the viewer, z upward. Lengths along the axes of the model stay.
Point Isometric(Vector const& point);

/// True when the point has a place in a picture: its coordinates are numbers, and so near to the origin that no
/// product of some of them overflows.
bool HasPlace(Vector const& point);

/// The way of all these points into a rectangle of a picture. Points that coincide are given some room.
View FitView(std::vector<Point> const& points, Point corner, Point size);

} // namespace qel::SectrixTools::Pictures
