#include "streams.h"

#include "printable.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace qel::SectrixCommand {
namespace {

[[noreturn]] void ThrowReason() {
    throw std::runtime_error(std::strerror(errno));
}

} // namespace

NobodyReads::NobodyReads() : std::runtime_error("nobody reads standard output") {}

std::string ReadInput(std::string const& name) {
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> opened;
    std::FILE* file = stdin;
    if (name != "-") {
        opened.reset(std::fopen(name.c_str(), "rb"));
        if (!opened)
            ThrowReason();
        file = opened.get();
    }
    std::string content;
    std::array<char, 1 << 16> block;
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), file)) > 0)
        content.append(block.data(), count);
    if (std::ferror(file)) // such as that it is a folder
        ThrowReason();
    return content;
}

void Print(std::string_view text) {
    bool const isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
#ifdef _WIN32
    bool const isBroken = errno == EPIPE || errno == EINVAL; // so Windows calls a pipe that is being closed
#else
    bool const isBroken = errno == EPIPE;
#endif
    if (!isWritten && isBroken)
        throw NobodyReads();
    if (!isWritten)
        throw std::runtime_error(std::string("standard output: ") + std::strerror(errno));
}

void Trouble(std::string_view message) noexcept {
    try {
        std::string const line = "sectrix: " + Printable(message) + '\n';
        std::fwrite(line.data(), 1, line.size(), stderr);
    } catch (std::bad_alloc const&) {
        std::fputs("sectrix: out of memory\n", stderr);
    }
}

void CarryBytes() noexcept {
#ifdef _WIN32
    for (std::FILE* const stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    std::setvbuf(stderr, nullptr, _IONBF, 0); // which is so on other systems
#endif
}

bool IsTerminal(std::FILE* stream) noexcept {
#ifdef _WIN32
    return _isatty(_fileno(stream)) != 0;
#else
    return isatty(fileno(stream)) == 1;
#endif
}

} // namespace qel::SectrixCommand
