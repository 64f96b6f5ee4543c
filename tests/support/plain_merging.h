#pragma once

#include "sectrix/mesh/mesh.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

/// \file
/// The merging copy of a mesh step by step. It shares no code with the library and judges it.

namespace plain {

using namespace qel::Sectrix;

using Positions = std::vector<Position>;
using Indices = std::vector<std::int64_t>;

/// Compares bits, so that what is not a number equals itself.
inline bool Holds(Mesh const& mesh, Positions const& positions, Indices const& indices) {
    return mesh.Indices() == indices && mesh.Positions().size() == positions.size() &&
           std::equal(positions.begin(), positions.end(), mesh.Positions().begin(),
                      [](Position const& a, Position const& b) { return std::memcmp(&a, &b, sizeof a) == 0; });
}

/// Its rules are variables, so that a broken one can show that the judge sees it.
struct Merging {
    double tolerance = 1e-8;
    bool nearWhereNotANumber = true, first = true, dropsUnused = true;

    bool Agrees(Mesh const& mesh) const {
        Positions kept;
        Indices remap, merged;
        for (auto const& position : mesh.Positions()) {
            std::int64_t index = -1;
            for (std::size_t j = 0; j < kept.size() && (index < 0 || !first); ++j)
                if (double const square = position.Distance2(kept[j]);
                    std::isnan(square) ? nearWhereNotANumber : square < tolerance)
                    index = static_cast<std::int64_t>(j);
            bool used = !dropsUnused;
            for (auto entry : mesh.Indices())
                used = used || static_cast<std::int32_t>(entry) == static_cast<std::int32_t>(remap.size());
            if (index < 0 && used) {
                index = static_cast<std::int64_t>(kept.size());
                kept.push_back(position);
            }
            remap.push_back(index);
        }
        for (auto entry : mesh.Indices())
            if (auto const place = static_cast<std::size_t>(entry); place < remap.size() && remap[place] >= 0)
                merged.push_back(remap[place]);
        return Holds(Mesh(mesh, true), kept, merged);
    }
};

} // namespace plain
