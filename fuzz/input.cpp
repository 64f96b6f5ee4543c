#include "target.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <sstream>
#include <thread>

namespace fuzz {

void Require(bool isTrue, char const* what) {
    if (isTrue)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::abort();
}

std::string OwnFile() {
    std::filesystem::path const shared = "/dev/shm";
    auto const folder = std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path();
    static auto const run = std::random_device()();
    std::ostringstream name;
    name << "sectrix_fuzz." << run << '.' << std::this_thread::get_id();
    return (folder / name.str()).string();
}

void Input::ReadScale() {
    int const byte = Byte();
    m_scale = (byte & 0x80) ? std::ldexp(1.0, 2 * (byte & 0x1F) - 32) : 1.0;
    m_shift = (byte & 0x40) ? 1000.0 * m_scale : 0.0;
}

std::uint64_t SeedIn(std::string const& bytes) {
    std::uint64_t seed = 0;
    for (char const byte : bytes.substr(0, 8))
        seed = seed * 256 + static_cast<unsigned char>(byte);
    return seed;
}

double Input::Coordinate() {
    double const oddities[] = {INFINITY, -INFINITY, NAN,  1e308,   -1e308, 1e200, 5e-324,  -0.0,
                               1e-6,     2e-6,      1e-7, 0.00009, 0.0001, 0.5,   1.0 / 3, 1e15};
    int const byte = Byte();
    if (byte < 0xE0)
        return (byte % 32) * m_scale + m_shift;
    if (byte < 0xF0)
        return oddities[byte - 0xE0] * m_scale;
    if (byte < 0xFC) // a little beside an integer
        return (byte - 0xF0 + Byte() * 1e-7) * m_scale + m_shift;
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i)
        bits = bits << 8 | static_cast<std::uint64_t>(Byte());
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace fuzz
