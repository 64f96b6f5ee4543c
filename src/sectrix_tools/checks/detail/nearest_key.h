#pragma once

#include <string>
#include <string_view>
#include <vector>

/// \file
/// The key that was meant by one that nobody reads. Internal to the checks.

namespace qel::SectrixTools {

/// The one of `known` that takes the fewest changes of a letter to become `key`, capitals apart; null where all are
/// too far from it to have been meant.
char const* NearestKey(std::string_view key, std::vector<char const*> const& known);

} // namespace qel::SectrixTools
