#pragma once

/// \file
/// Text and numbers for SVG and HTML, and whole files in and out.

#include <filesystem>
#include <string>

namespace example {

/// The text as it may stand between tags and within quoted attributes of SVG and HTML. Bytes that are not UTF-8,
/// and characters that XML forbids, become the replacement character.
std::string Escape(std::string const& text);

/// The number of characters of UTF-8 text.
std::size_t Length(std::string const& text);

/// The number with at most `digits` significant digits and no zeros that say nothing, such as "12.5" or "3e-07".
std::string Number(double value, int digits = 6);

/// The text in lower case for use in a file name: letters, digits and hyphens only; "section" when nothing is left.
std::string FileStem(std::string const& text);

/// Throws std::runtime_error with the path and the reason when the file cannot be read.
std::string ReadFile(std::filesystem::path const& path);

/// Throws std::runtime_error with the path and the reason when the file cannot be written.
void WriteFile(std::filesystem::path const& path, std::string const& content);

} // namespace example
