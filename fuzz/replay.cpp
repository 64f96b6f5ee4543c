#include "support/small_stack.h"
#include "target.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

// Runs files through a target, on threads with a small stack and on all of them at once, and prints a hash of all
// that came out.
//
//   replay threads target path...
//   replay threads target --random count
//
// A path is a file or a folder; the files of a folder are taken by their names, and what lies in folders below it
// is passed over, as is a path where nothing is. "all" as the target stands for each target with the folders of its
// name in the paths.

namespace {

struct Case {
    fuzz::Target m_target;
    std::string m_path;
    std::string m_bytes;
};

void AddFile(std::vector<Case>& cases, fuzz::Target const& target, std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    cases.push_back({target, path.string(), {std::istreambuf_iterator<char>(file), {}}});
}

void AddPath(std::vector<Case>& cases, fuzz::Target const& target, std::filesystem::path const& path) {
    if (!std::filesystem::exists(path))
        return;
    if (!std::filesystem::is_directory(path))
        return AddFile(cases, target, path);
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(path))
        if (entry.is_regular_file())
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (auto const& file : files)
        AddFile(cases, target, file);
}

/// So many inputs of up to 600 bytes, the same each time; every second one the seed of a shape where the target
/// takes these.
void AddRandom(std::vector<Case>& cases, fuzz::Target const& target, unsigned long count) {
    std::mt19937_64 random(1);
    for (unsigned long i = 0; i < count; ++i) {
        bool const isShape = target.m_takesShapes && i % 2;
        std::string bytes = isShape ? "shape" : "";
        for (auto size = isShape ? 8 : random() % 600; size > 0; --size)
            bytes += static_cast<char>(random() % 256);
        cases.push_back({target, "random " + std::to_string(i), bytes});
    }
}

/// FNV-1a, the same on every machine.
std::uint64_t Hash(std::uint64_t hash, std::string const& text) {
    for (char const byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211u;
    return hash;
}

std::uint64_t Run(std::vector<Case> const& cases, bool isLoud) {
    std::uint64_t hash = 14695981039346656037u;
    for (auto const& [target, path, bytes] : cases) {
        auto const result = target.m_run(bytes);
        hash = Hash(hash, result);
        if (isLoud)
            std::printf("%016llx %s\n", static_cast<unsigned long long>(Hash(0, result)), path.c_str());
    }
    return hash;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::vector<std::string> const words(arguments, arguments + argumentCount);
    if (words.size() < 4) {
        std::fprintf(stderr, "usage: %s threads target path...\n       %s threads target --random count\n",
                     arguments[0], arguments[0]);
        return 2;
    }
    bool const isAll = words[2] == "all";
    std::vector<Case> cases;
    for (auto const& target : fuzz::kTargets) {
        if (!isAll && words[2] != target.m_name)
            continue;
        if (words[3] == "--random") {
            AddRandom(cases, target, std::stoul(words.at(4)));
            continue;
        }
        for (std::size_t i = 3; i < words.size(); ++i)
            AddPath(cases, target, isAll ? words[i] + '/' + target.m_name : words[i]);
    }

    std::vector<std::uint64_t> hashes(std::stoul(words[1]));
    fuzz::OnSmallStacks(hashes.size(), [&](std::size_t thread) { hashes[thread] = Run(cases, thread == 0); });
    fuzz::Require(std::all_of(hashes.begin(), hashes.end(), [&](auto hash) { return hash == hashes[0]; }),
                  "all threads answer alike");
    std::printf("%016llx %zu inputs\n", static_cast<unsigned long long>(hashes.at(0)), cases.size());
    return cases.empty() ? 1 : 0;
}
