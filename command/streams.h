#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

/// \file
/// What goes in and out: documents, results on standard output, trouble on standard error.

namespace qel::SectrixCommand {

/// The whole content of a file, or of standard input where the name is "-".
///
/// \throws std::runtime_error with the system's reason where it cannot be read, as for a folder.
std::string ReadInput(std::string const& name);

/// The reader of standard output has gone, as `head` does: nobody is left to be told.
struct NobodyReads : std::runtime_error {
    NobodyReads();
};

/// Writes to standard output, at once.
///
/// \throws NobodyReads for a broken pipe.
/// \throws std::runtime_error with the system's reason where it cannot be written, as on a full disk.
void Print(std::string_view text);

/// Tells the user on standard error, in a line that begins with the name of the program, what went wrong.
void Trouble(std::string_view message) noexcept;

/// Makes the standard streams carry bytes as they are, also where the system would end lines in its own way. Comes
/// before all reading and writing.
void CarryBytes() noexcept;

/// True where a standard stream is a terminal, before which a person sits.
bool IsTerminal(std::FILE* stream) noexcept;

} // namespace qel::SectrixCommand
