#include "target.h"

#include <algorithm>
#include <iterator>

// One target a program: the one that the build names.

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static auto const target =
        std::find_if(std::begin(fuzz::kTargets), std::end(fuzz::kTargets),
                     [](auto const& t) { return t.m_name == std::string(SECTRIX_FUZZ_TARGET); });
    target->m_run(std::string(reinterpret_cast<char const*>(data), size));
    return 0;
}
