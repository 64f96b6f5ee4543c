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
    auto const size = dom.isArray() ? dom.size() : 0;
    auto const read = [&](std::uint64_t place) { return place < size ? dom[place].asDouble(0.0) : kNotGiven; };
    m_x = read(0);
    m_y = read(1);
    m_z = read(2);
    return true;
}

void Position::to(Dom& dom) const {
    for (double const coordinate : {m_x, m_y, m_z})
        dom.append() = Dom(coordinate);
}

} // namespace qel::Sectrix
