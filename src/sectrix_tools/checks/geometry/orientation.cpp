#include "sectrix_tools/checks/geometry/orientation.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <array>
#include <cmath>

namespace qel::SectrixTools::Geometry {

namespace {

int Sign(double value) {
    return (value > 0.0) - (value < 0.0);
}

/// What rounding took from the product of two doubles below 1e290 (Dekker's product): their halves of 26 bits, by
/// Veltkamp, have exact products. Not by `std::fma`, which is not exact in the C library of MinGW-w64.
double RoundingOf(double product, double a, double b) {
    auto const upperHalf = [](double value) {
        double const far = value * (0x1p27 + 1.0);
        return far - (far - value);
    };
    double const a1 = upperHalf(a), b1 = upperHalf(b), a2 = a - a1, b2 = b - b1;
    return a2 * b2 - (product - a1 * b1 - a2 * b1 - a1 * b2);
}

/// A sum of doubles that do not overlap, smallest first, none of it lost: an expansion.
class Expansion {
public:
    void AddProduct(double a, double b) {
        double const product = a * b;
        Add(RoundingOf(product, a, b));
        Add(product);
    }

    /// That of the largest component, since all smaller ones together are less.
    int Sign() const {
        for (std::size_t i = m_size; i-- > 0;)
            if (m_components[i] != 0.0)
                return Geometry::Sign(m_components[i]);
        return 0;
    }

private:
    /// Grows the expansion by one component: each sum goes on, what rounding took from it stays (Knuth's two-sum).
    void Add(double value) {
        for (std::size_t i = 0; i < m_size; ++i) {
            double const sum = m_components[i] + value;
            double const part = sum - m_components[i];
            m_components[i] = (m_components[i] - (sum - part)) + (value - part);
            value = sum;
        }
        m_components[m_size++] = value;
    }

    std::array<double, 12> m_components{};
    std::size_t m_size = 0;
};

/// (a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x), multiplied out; the products of c with itself cancel.
int ExactOrientation(Point const& a, Point const& b, Point const& c) {
    Expansion determinant;
    determinant.AddProduct(a.x, b.y);
    determinant.AddProduct(-a.x, c.y);
    determinant.AddProduct(-c.x, b.y);
    determinant.AddProduct(-a.y, b.x);
    determinant.AddProduct(a.y, c.x);
    determinant.AddProduct(c.y, b.x);
    return determinant.Sign();
}

} // namespace

int Orientation(Point const& a, Point const& b, Point const& c) {
    double const left = (a.x - c.x) * (b.y - c.y);
    double const right = (a.y - c.y) * (b.x - c.x);
    double const determinant = left - right;
    // Bound A of the paper on the rounding of this determinant, by the size of its two products.
    double const epsilon = 0x1p-53;
    double const bound = (3.0 + 16.0 * epsilon) * epsilon * (std::abs(left) + std::abs(right));
    if (std::abs(determinant) > bound)
        return Sign(determinant);
    return ExactOrientation(a, b, c);
}

} // namespace qel::SectrixTools::Geometry
