#pragma once

#include "sectrix/foundation/export.h"

#include <limits>

/// \file
/// The 3D point of extrusions and meshes, and the form in which a host hands in a transform.

namespace qel {

class Dom;

namespace Sectrix {

/// A 4 by 4 transform that the host owns: `Matrix{elements}`, or for a `Mat<4, double>`,
/// `Matrix{mat.m_elements.data()}`.
class Matrix {
public:
    /// Sixteen doubles in the element order of `Mat<4, double>`, which must stay as they are while a call reads
    /// them.
    double const* m_elements = nullptr;
};

/// A 3D point, or the absence of one: a coordinate of +infinity says that it was not given.
///
/// A plain value; moving one is copying it. All its operations work on any coordinates, infinite and not-a-number
/// included, and none fails.
class SECTRIX_EXPORT Position {
public:
    /// The invalid position, all coordinates +infinity.
    Position() = default;
    /// The row vector (x, y, z, 1) times `matrix`, divided by the fourth component of the product. That component
    /// is not tested: where it is 0 the coordinates become infinite or not a number.
    Position(double x, double y, double z, Matrix const& matrix);

    /// The x coordinate.
    double X() const { return m_x; }
    /// The y coordinate.
    double Y() const { return m_y; }
    /// The z coordinate.
    double Z() const { return m_z; }
    /// Replaces x, untested.
    void SetX(double value) { m_x = value; }
    /// Replaces y, untested.
    void SetY(double value) { m_y = value; }
    /// Replaces z, untested.
    void SetZ(double value) { m_z = value; }

    /// False when a coordinate is +infinity or not a number; -infinity is valid.
    bool IsValid() const;
    /// True when the distance to `other` is below 0.0001, or not a number because both have the same infinite
    /// coordinate or one has a coordinate that is not a number.
    bool Near(Position const& other) const;
    /// The squared distance.
    double Distance2(Position const& other) const;

    /// Takes x, y and z from the elements of `dom`, and returns true whatever `dom` is.
    ///
    /// A coordinate without an element becomes +infinity, one whose element is no number 0; further elements are
    /// passed over. What is no array, an object among them, gives the invalid position.
    bool from(Dom const& dom);
    /// Appends x, y and z to `dom`, an array or a fresh node; valid or not.
    void to(Dom& dom) const;

private:
    double m_x = std::numeric_limits<double>::infinity();
    double m_y = std::numeric_limits<double>::infinity();
    double m_z = std::numeric_limits<double>::infinity();
};

} // namespace Sectrix
} // namespace qel
