#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Files that verbs write, and their names.

namespace qel::SectrixCommand {

/// The path of a name in UTF-8, as all names are here, also where a system's own paths are not; `u8string` gives it
/// back.
inline std::filesystem::path PathOf(std::string const& name) {
    return std::filesystem::u8path(name);
}

/// Writes a file, over one that is there.
///
/// \throws std::runtime_error with the path and the system's reason.
void WriteFile(std::string const& path, std::string_view content);

/// A text as part of a file name that every system takes: lower-case letters and digits of ASCII, with dashes for
/// the rest; "section" where nothing is left.
std::string FileStem(std::string_view text);

/// For each file its name as `FileStem` gives it, without folder and ending, with a number behind it where several
/// would be one.
std::vector<std::string> FileStems(std::vector<std::string> const& files);

/// The name for the picture of a section.
///
/// \param stem     that of its document.
/// \param section  the place of the section in its set.
std::string PictureName(std::string const& stem, std::size_t section, std::string const& title);

} // namespace qel::SectrixCommand
