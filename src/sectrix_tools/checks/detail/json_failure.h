#pragma once

#include <cstddef>
#include <string>

/// \file
/// Why a text is no JSON, and where. Internal to the checks.

namespace qel::SectrixTools {

/// The first place at which a text cannot be read.
struct JsonFailure {
    /// A code of `kCodes`.
    char const* m_code;
    /// What was expected, in words.
    std::string m_message;
    /// The place in the text, counted from 0; its length where it ends too soon.
    std::size_t m_place;
};

/// Where and why a text that the reader of documents refuses is refused.
///
/// \param text    the text, without a zero byte.
/// \param reason  what the reader says, which stands in where nothing better is found.
JsonFailure FindJsonFailure(std::string const& text, std::string const& reason);

} // namespace qel::SectrixTools
