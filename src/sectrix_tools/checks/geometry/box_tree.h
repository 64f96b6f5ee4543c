#pragma once

#include "sectrix_tools/checks/geometry/point.h"

#include <cstddef>
#include <utility>
#include <vector>

/// \file
/// Finds the boxes of a list that may matter, without a look at all of them.

namespace qel::SectrixTools::Geometry {

/// A tree over boxes in the order in which they are given; boxes that lie side by side in it should do so in the
/// plane.
class BoxTree {
public:
    explicit BoxTree(std::vector<Box> boxes) {
        m_levels.push_back(std::move(boxes));
        while (m_levels.back().size() > kWidth) {
            auto const& below = m_levels.back();
            std::vector<Box> level((below.size() + kWidth - 1) / kWidth);
            for (std::size_t i = 0; i < below.size(); ++i)
                level[i / kWidth].Add(below[i]);
            m_levels.push_back(std::move(level));
        }
    }

    /// Calls `call(place)` for each box for which `matters(box)` holds, by place. `matters` must hold for a box
    /// that contains one for which it holds.
    template <class Matters, class Call>
    void Visit(Matters const& matters, Call const& call) const {
        Descend(m_levels.size() - 1, 0, m_levels.back().size(), matters, call);
    }

private:
    template <class Matters, class Call>
    void Descend(std::size_t level, std::size_t begin, std::size_t end, Matters const& matters,
                 Call const& call) const {
        for (std::size_t i = begin; i < end; ++i) {
            if (!matters(m_levels[level][i]))
                continue;
            if (level == 0)
                call(i);
            else
                Descend(level - 1, i * kWidth, std::min((i + 1) * kWidth, m_levels[level - 1].size()), matters,
                        call);
        }
    }

    /// How many boxes have one box around them on the next level.
    static std::size_t const kWidth = 8;

    /// The given boxes, then the boxes around them, each level an eighth of the one below.
    std::vector<std::vector<Box>> m_levels;
};

} // namespace qel::SectrixTools::Geometry
