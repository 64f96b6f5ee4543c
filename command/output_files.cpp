#include "output_files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>
#include <stdexcept>

namespace qel::SectrixCommand {

void WriteFile(std::string const& path, std::string_view content) {
    errno = 0;
    std::ofstream stream(PathOf(path), std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream)
        throw std::runtime_error(path + ": " + std::strerror(errno));
}

std::string FileStem(std::string_view text) {
    constexpr std::size_t kMost = 60; // well below what any file system takes
    std::string stem;
    for (char const byte : text) {
        bool const isUpper = byte >= 'A' && byte <= 'Z';
        if (isUpper || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9'))
            stem += static_cast<char>(isUpper ? byte - 'A' + 'a' : byte);
        else if (!stem.empty() && stem.back() != '-')
            stem += '-';
    }
    stem.resize(std::min(stem.size(), kMost));
    while (!stem.empty() && stem.back() == '-')
        stem.pop_back();
    return stem.empty() ? "section" : stem;
}

std::vector<std::string> FileStems(std::vector<std::string> const& files) {
    std::set<std::string> taken;
    std::vector<std::string> stems;
    for (std::string const& file : files) {
        std::string const stem = FileStem(PathOf(file).stem().u8string());
        std::string unique = stem;
        for (int number = 2; !taken.insert(unique).second; ++number)
            unique = stem + '-' + std::to_string(number);
        stems.push_back(unique);
    }
    return stems;
}

std::string PictureName(std::string const& stem, std::size_t section, std::string const& title) {
    return stem + '_' + std::to_string(section + 1) + '_' + FileStem(title) + ".svg";
}

} // namespace qel::SectrixCommand
