#include "target.h"

// One target a program: the one that the build names.

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::targets::SECTRIX_FUZZ_TARGET.m_run(std::string(reinterpret_cast<char const*>(data), size));
    return 0;
}
