#pragma once

#include <string>

/// \file
/// Text and numbers as markup has them.

namespace qel::SectrixTools::Pictures {

/// The text as it may stand between tags and within quoted attributes of SVG. Bytes that are not UTF-8, and
/// characters that XML forbids, become the replacement character.
std::string Escape(std::string const& text);

/// The number of characters of UTF-8 text.
std::size_t Length(std::string const& text);

/// The number with at most `digits` significant digits and no zeros that say nothing, such as "12.5" or "3e-07". No
/// locale has a say in it.
std::string Number(double value, int digits = 6);

/// The number with two digits behind the point, enough for a place on a page in pixels.
std::string Pixels(double value);

} // namespace qel::SectrixTools::Pictures
