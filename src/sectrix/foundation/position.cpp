#include "sectrix/foundation/position.h"
#include "sectrix/foundation/detail/position_arithmetic.h"
#include "sectrix/interfaces/dom.h"

namespace qel::Sectrix {

namespace {

constexpr double kNotGiven = std::numeric_limits<double>::infinity();

} // namespace

Position::Position(double x, double y, double z, Matrix const& matrix)
    : Position(Transformed(x, y, z, matrix.m_elements)) {}

bool Position::IsValid() const {
    // Only numbers below +infinity are less than it: what is not a number compares false, so it is invalid too.
    return m_x < kNotGiven && m_y < kNotGiven && m_z < kNotGiven;
}

bool Position::Near(Position const& other) const {
    return AreNear(*this, other);
}

double Position::Distance2(Position const& other) const {
    return SquaredDistance(*this, other);
}

bool Position::from(Dom const& dom) {
    auto const size = dom.size();
    m_x = size >= 1 ? dom[0].asDouble(0.0) : kNotGiven;
    m_y = size >= 2 ? dom[1].asDouble(0.0) : kNotGiven;
    m_z = size >= 3 ? dom[2].asDouble(0.0) : kNotGiven;
    return true;
}

void Position::to(Dom& dom) const {
    dom.append() = m_x;
    dom.append() = m_y;
    dom.append() = m_z;
}

} // namespace qel::Sectrix
