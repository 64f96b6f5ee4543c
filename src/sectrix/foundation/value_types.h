#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

/// \file
/// Points, matrices and boxes: plain aggregates of numbers, in which all geometry is stated.

namespace qel {

/// N numbers side by side; zero unless given: `Vec<2, double>{x, y}`.
template <std::size_t N, class T>
struct Vec {
    /// The numbers, axis by axis.
    T m_elements[N] = {};

    /// The number of an axis, counted from 0; not tested.
    constexpr T& operator[](std::size_t axis) { return m_elements[axis]; }
    /// The number of an axis, counted from 0; not tested.
    constexpr T const& operator[](std::size_t axis) const { return m_elements[axis]; }
};

/// An N by N matrix, the identity unless given.
///
/// The element at row r, column c stands at r * N + c. A point is a row vector, multiplied from the left: the
/// translation of a `Mat<3, double>` stands at 6 and 7, that of a `Mat<4, double>` at 12, 13 and 14.
template <std::size_t N, class T>
struct Mat {
    /// Row by row.
    std::array<T, N* N> m_elements = Identity();

    /// The element at a place, counted from 0; not tested.
    constexpr T& operator[](std::size_t place) { return m_elements[place]; }
    /// The element at a place, counted from 0; not tested.
    constexpr T const& operator[](std::size_t place) const { return m_elements[place]; }

    /// The elements of the identity.
    static constexpr std::array<T, N * N> Identity() {
        std::array<T, N * N> elements{};
        for (std::size_t axis = 0; axis < N; ++axis)
            elements[axis * N + axis] = T(1);
        return elements;
    }
};

/// An axis-parallel box with its borders, empty unless given.
template <std::size_t N, class T>
struct BBox {
    /// The least value per axis; +infinity in a new box.
    Vec<N, T> m_min = All(std::numeric_limits<T>::infinity());
    /// The greatest value per axis; -infinity in a new box.
    Vec<N, T> m_max = All(-std::numeric_limits<T>::infinity());

    /// True when, on any axis, the greatest value is not at least the least one.
    constexpr bool IsEmpty() const {
        for (std::size_t axis = 0; axis < N; ++axis)
            if (!(m_max[axis] >= m_min[axis]))
                return true;
        return false;
    }

    // Windows has macros called min and max, which the parentheses keep away.

    /// Grows the box until it holds `point`. A coordinate that is not a number moves no border.
    constexpr void Widen(Vec<N, T> const& point) {
        for (std::size_t axis = 0; axis < N; ++axis) {
            m_min[axis] = (std::min)(m_min[axis], point[axis]);
            m_max[axis] = (std::max)(m_max[axis], point[axis]);
        }
    }

    /// Grows the box until it holds `other`; an empty one adds nothing.
    constexpr void Widen(BBox const& other) {
        for (std::size_t axis = 0; axis < N; ++axis) {
            m_min[axis] = (std::min)(m_min[axis], other.m_min[axis]);
            m_max[axis] = (std::max)(m_max[axis], other.m_max[axis]);
        }
    }

    /// The same value on all axes.
    static constexpr Vec<N, T> All(T value) {
        Vec<N, T> vec;
        for (std::size_t axis = 0; axis < N; ++axis)
            vec[axis] = value;
        return vec;
    }
};

} // namespace qel
