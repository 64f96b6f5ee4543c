#pragma once

/// \file
/// What the `main` of each example host does.

#include <functional>
#include <string>
#include <vector>

namespace example {

/// The exit code of a host: 0 when `run` returns true; 1 when it returns false or throws; 2 when it throws
/// std::invalid_argument, for a command line that asks for nothing sensible. What is thrown goes to the standard
/// error stream, behind the name of the host, and with 2 the usage follows.
/// \param run  the host itself, given the words of the command line behind the program.
int RunHost(std::string const& name, std::string const& usage, int argc, char** argv,
            std::function<bool(std::vector<std::string> const& words)> const& run);

} // namespace example
