#include "sectrix/foundation/position.h"
#include "sectrix/foundation/detail/position_arithmetic.h"
#include "sectrix/interfaces/dom.h"

#include <algorithm>

namespace qel::Sectrix {

Position::Position(double x, double y, double z, Matrix const& matrix)
    : Position(Transformed(x, y, z, matrix.m_elements)) {}

bool Position::IsValid() const {
    // Only numbers below +infinity are less than it: what is not a number compares false, so it is invalid too.
    double const notGiven = std::numeric_limits<double>::infinity();
    return m_x < notGiven && m_y < notGiven && m_z < notGiven;
}

bool Position::Near(Position const& other) const {
    return AreNear(*this, other);
}

double Position::Distance2(Position const& other) const {
    return SquaredDistance(*this, other);
}

bool Position::from(Dom const& dom) {
    *this = Position();
    double* const coordinates[] = {&m_x, &m_y, &m_z};
    std::uint64_t const count = dom.isArray() ? std::min<std::uint64_t>(dom.size(), 3) : 0;
    for (std::uint64_t i = 0; i < count; ++i)
        *coordinates[i] = dom[i].asDouble(0.0);
    return true;
}

void Position::to(Dom& dom) const {
    for (double const coordinate : {m_x, m_y, m_z})
        dom.append() = Dom(coordinate);
}

} // namespace qel::Sectrix
