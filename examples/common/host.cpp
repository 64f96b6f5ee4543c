#include "common/host.h"

#include <exception>
#include <iostream>
#include <stdexcept>

namespace example {

int RunHost(std::string const& name, std::string const& usage, int argc, char** argv,
            std::function<bool(std::vector<std::string> const& words)> const& run) {
    try {
        return run({argv + 1, argv + argc}) ? 0 : 1;
    } catch (std::invalid_argument const& error) {
        std::cerr << name << ": " << error.what() << '\n' << usage;
        return 2;
    } catch (std::exception const& error) {
        std::cerr << name << ": " << error.what() << '\n';
        return 1;
    }
}

} // namespace example
