#include "sectrix_tools/checks/detail/nearest_key.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace qel::SectrixTools {

namespace {

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// How many letters must be put in, taken out or replaced, by Wagner and Fischer's table, of which one row is kept.
std::size_t Distance(std::string_view first, std::string_view second) {
    std::vector<std::size_t> row(second.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < first.size(); ++i) {
        auto diagonal = row[0]++;
        for (std::size_t j = 0; j < second.size(); ++j) {
            auto const replaced = diagonal + (Lower(first[i]) != Lower(second[j]));
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

char const* NearestKey(std::string_view key, std::vector<char const*> const& known) {
    char const* nearest = nullptr;
    std::size_t fewest = 0;
    for (std::string_view const candidate : known) {
        // Two fifths of the longer word, so that "Parameters" still means "Params" but "Comment" nothing.
        auto const longer = std::max(key.size(), candidate.size());
        auto const limit = longer * 2 / 5;
        if (longer - std::min(key.size(), candidate.size()) > limit)
            continue;
        auto const distance = Distance(key, candidate);
        if (distance <= limit && (!nearest || distance < fewest)) {
            nearest = candidate.data();
            fewest = distance;
        }
    }
    return nearest;
}

} // namespace qel::SectrixTools
