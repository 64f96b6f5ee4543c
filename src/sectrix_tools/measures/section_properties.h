#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cross_section.h"

#include <limits>

/// \file
/// The properties of a section as bridge engineers use them.

namespace qel::SectrixTools {

/// Area, moments and what follows from them, of one section as a figure in its plane, uncracked and of one
/// material.
///
/// All lengths are in the unit of the pool, areas in its square, and so on. x runs to the right and y upward. What
/// no figure alone gives is not here: the torsion constant, warping, shear areas and the shear centre need an
/// analysis of the walls, a cracked or composite section its materials.
///
/// A number that a section does not have is not a number: see `PropertiesOf`.
struct SectionProperties {
    /// Not a number: what stands for a property that a section does not have.
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    /// The area, holes taken off.
    double m_area = kNone;
    /// The length of the exterior loop.
    double m_outerPerimeter = kNone;
    /// The length of all interior loops together; 0 without any.
    double m_innerPerimeter = kNone;

    /// The first moment about the x axis of the coordinates: the integral of y.
    double m_firstMomentX = kNone;
    /// The first moment about the y axis of the coordinates: the integral of x.
    double m_firstMomentY = kNone;
    /// The centroid, in the coordinates of the pool.
    Vec<2, double> m_centroid{kNone, kNone};

    /// The second moment about the horizontal axis through the centroid: the integral of y squared.
    double m_ix = kNone;
    /// The second moment about the vertical axis through the centroid: the integral of x squared.
    double m_iy = kNone;
    /// The product of inertia about these axes: the integral of x times y.
    double m_ixy = kNone;
    /// The greatest second moment about an axis through the centroid.
    double m_i1 = kNone;
    /// The least one, about the axis perpendicular to that of the greatest.
    double m_i2 = kNone;
    /// The direction of the axis of the greatest, in radians counter-clockwise from x, above -pi/2 and up to pi/2;
    /// 0 where all directions are alike to within rounding.
    double m_angle = kNone;

    /// From the centroid up to the highest point.
    double m_top = kNone;
    /// From the centroid down to the lowest point.
    double m_bottom = kNone;
    /// From the centroid to the point furthest left.
    double m_left = kNone;
    /// From the centroid to the point furthest right.
    double m_right = kNone;

    /// The section modulus of the top: `m_ix` over `m_top`.
    double m_sectionModulusTop = kNone;
    /// The section modulus of the bottom: `m_ix` over `m_bottom`.
    double m_sectionModulusBottom = kNone;
    /// The section modulus of the left side: `m_iy` over `m_left`.
    double m_sectionModulusLeft = kNone;
    /// The section modulus of the right side: `m_iy` over `m_right`.
    double m_sectionModulusRight = kNone;

    /// The radius of gyration about the horizontal axis: the root of `m_ix` over `m_area`.
    double m_radiusX = kNone;
    /// The radius of gyration about the vertical axis: the root of `m_iy` over `m_area`.
    double m_radiusY = kNone;
};

/// The properties of a section from its exterior and interior loops. Nothing is built.
///
/// Every loop counts with the sign of its direction, as in the convex loops: the exterior loop runs
/// counter-clockwise and adds, an interior one runs clockwise and takes off. So an interior loop the other way
/// round is added instead; and where loops overlap or cross, a part counts as often as they run around it.
///
/// A section whose area is not positive beyond rounding, as with an exterior loop that runs clockwise, lies on one
/// line or has fewer than three points, has area, perimeters and first moments only. Vertices that are not in the
/// pool are passed over. A coordinate that is not finite leaves no number that it enters into.
///
/// Summed about the middle of the section, so that coordinates far from the origin cost no digits. The sums over a
/// polygon are those of Green's theorem. Costs one pass over the vertices.
SECTRIX_TOOLS_EXPORT SectionProperties PropertiesOf(Sectrix::CrossSection const& section);

/// The same from the convex loops, which are built if they are not yet, as a check of the one against the other.
/// The loops do not tell the outline from the holes, so there are no perimeters.
SECTRIX_TOOLS_EXPORT SectionProperties PropertiesOfConvexLoops(Sectrix::CrossSection const& section);

} // namespace qel::SectrixTools
