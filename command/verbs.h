#pragma once

namespace CLI {
class App;
}

/// \file
/// The verbs of the program. Each stands in a file of its own, which is named after it.

namespace qel::SectrixCommand {

/// Adds one verb to the program: its options and, as the callback of its subcommand, its work. The callback puts
/// the exit status into `status`: 0 for success, 1 where errors were found, 2 for input that cannot be read. What
/// it throws ends the program with a message and the status 2.
using AddVerb = void(CLI::App& program, int& status);

AddVerb AddCheck;
AddVerb AddCut;
AddVerb AddProperties;
AddVerb AddDraw;
AddVerb AddBlend;
AddVerb AddSolid;
AddVerb AddMesh;
AddVerb AddRecords;

} // namespace qel::SectrixCommand
