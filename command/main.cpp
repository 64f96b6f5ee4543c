#include "printable.h"
#include "streams.h"
#include "verbs.h"

#include "sectrix/version.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <clocale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// \file
/// The program `sectrix`.

namespace {

using namespace qel::SectrixCommand;

/// The arguments without the mark "--". What would be taken for something else than the file that it names, behind
/// the mark what begins with a dash and everywhere a name in brackets, which the parser reads as a list, is written
/// as a path.
std::vector<std::string> Words(int argc, char** argv) {
    std::vector<std::string> words;
    bool isBehindMark = false;
    for (int i = 1; i < argc; ++i) {
        std::string word = argv[i];
        if (word == "--" && !isBehindMark) {
            isBehindMark = true;
            continue;
        }
        if (word[0] == '[' || (isBehindMark && word[0] == '-' && word != "-"))
            word.insert(0, "./");
        words.push_back(std::move(word));
    }
    return words;
}

/// Does what the arguments ask for; the exit status.
int Run(std::vector<std::string> words) {
    CLI::App program(
        "Checks, measures, draws and blends sections of bridges and tunnels, and makes solids of them.", "sectrix");
    program.set_version_flag("--version", std::string("sectrix ") + qel::Sectrix::kVersion,
                             "Print the version and exit");
    program.set_help_flag("-h,--help", "Print this help and exit");
    program.allow_windows_style_options(false); // a path may begin with a slash anywhere
    program.get_formatter()->label("SUBCOMMAND", "VERB");
    program.require_subcommand(0, 1);
    program.footer("sectrix VERB --help tells the options of a verb.");

    int status = 0;
    for (AddVerb* add : {AddCheck, AddCut, AddProperties, AddDraw, AddBlend, AddSolid, AddMesh, AddRecords})
        add(program, status);
    try {
        if (words.empty())
            throw CLI::RequiredError("a verb");
        auto const isMeant = [&](CLI::App const* verb) { return verb->get_name() == words[0]; };
        if (words[0][0] != '-' && program.get_subcommands(isMeant).empty())
            throw CLI::ArgumentMismatch("there is no verb " + words[0]);
        std::reverse(words.begin(), words.end()); // as the parser wants them
        program.parse(std::move(words));
    } catch (CLI::Success const& asked) { // for help or the version
        std::ostringstream text;
        program.exit(asked, text, text);
        Print(text.str());
    } catch (CLI::ParseError const& error) {
        Trouble(error.what());
        Trouble("run it with --help for more information");
        return 2;
    }
    return status;
}

} // namespace

int main(int argc, char** argv) {
    CarryBytes();
    std::setlocale(LC_CTYPE, "C.UTF-8"); // how wide a character is, whatever the user's language
    try {
        return Run(Words(argc, argv));
    } catch (NobodyReads const&) {
        return 2;
    } catch (std::bad_alloc const&) {
        Trouble("out of memory");
    } catch (std::exception const& error) {
        Trouble(error.what());
    }
    return 2;
}
