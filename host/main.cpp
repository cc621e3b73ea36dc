#include "host/commands/area.h"
#include "host/commands/build.h"
#include "host/commands/check.h"
#include "host/commands/command.h"
#include "host/commands/completion.h"
#include "host/commands/convert.h"
#include "host/commands/edit.h"
#include "host/commands/height.h"
#include "host/commands/info.h"
#include "host/commands/join.h"
#include "host/commands/manual.h"
#include "host/commands/pick.h"
#include "host/commands/polygon.h"
#include "host/commands/render.h"
#include "host/commands/view.h"
#include "host/failure.h"
#include "host/say.h"
#include "host/system.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <iostream>
#include <new>
#include <string>
#include <vector>

namespace {

constexpr std::array kCommands = {
    qsvtin::Command{"build", "Build a terrain from survey points and breaklines", qsvtin::DeclareBuild},
    qsvtin::Command{"polygon", "Build a TIN that fills one polygon", qsvtin::DeclarePolygon},
    qsvtin::Command{"info", "Tell what a TIN file holds", qsvtin::DeclareInfo},
    qsvtin::Command{"check", "Find every fault of a TIN file", qsvtin::DeclareCheck},
    qsvtin::Command{"height", "Tell heights of the surface", qsvtin::DeclareHeight},
    qsvtin::Command{"area", "Tell areas and volumes of the surface", qsvtin::DeclareArea},
    qsvtin::Command{"render", "Draw a TIN from any direction", qsvtin::DeclareRender},
    qsvtin::Command{"pick", "Tell what lies under a pixel of a drawn TIN", qsvtin::DeclarePick},
    qsvtin::Command{"view", "Write a page that shows a TIN in a browser", qsvtin::DeclareView},
    qsvtin::Command{"edit", "Insert and delete points, trim, hang walls, merge", qsvtin::DeclareEdit},
    qsvtin::Command{"convert", "Convert between TIN files, models and pictures", qsvtin::DeclareConvert},
    qsvtin::Command{"join", "Put the TINs of several files into one", qsvtin::DeclareJoin},
    qsvtin::Command{"manual", "Print the manual page", qsvtin::DeclareManual},
    qsvtin::Command{"completion", "Print a script that completes commands and options in a shell",
                    qsvtin::DeclareCompletion},
};

int Complain(const std::string& message, int status)
{
    qsvtin::Note(message);
    return status;
}

// What to type for the help that fits: that of the command, once one was named.
std::string HelpCommand(const CLI::App& app)
{
    const std::vector<CLI::App*> named = app.get_subcommands();
    return "qsvtin " + (named.empty() ? "" : named.front()->get_name() + " ") + "--help";
}

// A word that is no command would only be missed as one.
void RequireKnownCommand(int argc, char** argv)
{
    const std::string name = argc < 2 ? "" : argv[1];
    if (name == "-h" || name == "--help" || name == "--version") return;
    if (name.empty() || name.front() == '-') {
        throw qsvtin::Failure(
            (name.empty() ? "no command" : "there is no option " + name + " in front of a command") +
                "; name one such as build, see qsvtin --help",
            qsvtin::Failure::BadUsage);
    }
    if (std::none_of(kCommands.begin(), kCommands.end(),
                     [&](const qsvtin::Command& command) { return name == command.name; })) {
        throw qsvtin::Failure("there is no command " + name + "; see qsvtin --help",
                              qsvtin::Failure::BadUsage);
    }
}

// Unlike a number below 0, or the - for standard input.
bool IsLikeOption(const std::string& word)
{
    return word.size() > 1 && word[0] == '-' &&
           (word[1] == '-' || std::isalpha(static_cast<unsigned char>(word[1])) != 0);
}

// An option would take whatever follows for its value, even the next option.
void RequireValues(CLI::App& app, int argc, char** argv)
{
    if (IsLikeOption(argv[1])) return;   // --help
    const CLI::App& command = *app.get_subcommand(argv[1]);
    for (int i = 2; i + 1 < argc && argv[i] != std::string("--"); ++i) {
        const std::string name = argv[i], next = argv[i + 1];
        const CLI::Option* const option = IsLikeOption(name) ? command.get_option_no_throw(name) : nullptr;
        if (option != nullptr && option->get_items_expected_max() > 0 && IsLikeOption(next)) {
            throw qsvtin::Failure(name + " needs a value, but " + next +
                                      " follows; if that is the value, write " + option->get_name() + "=" +
                                      next,
                                  qsvtin::Failure::BadUsage);
        }
    }
}

// The arguments, last first, as they are parsed. A number such as -.5 would pass for an option.
std::vector<std::string> ArgumentsOf(int argc, char** argv)
{
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    for (std::string& argument : arguments) {
        if (argument.compare(0, 2, "-.") == 0) argument.insert(1, "0");
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

}   // namespace

int main(int argc, char** argv)
{
    qsvtin::PrepareConsole();
    CLI::App app("Terrain from survey points and breaklines", "qsvtin");
    qsvtin::ShapeHelp(app);
    app.set_version_flag("--version", QSVTIN_VERSION, "show the version");
    app.footer("qsvtin COMMAND --help tells more of each, with an example. To begin with:\n"
               "  qsvtin build points.txt --breaklines lines.txt -o site.tin -o site.png");
    app.allow_windows_style_options(false);   // a slash begins a path, on every system
    app.require_subcommand(1);
    try {
        for (const qsvtin::Command& command : kCommands) {
            CLI::App& declared = *app.add_subcommand(command.name, command.summary);
            declared.footer("");   // not that of the program
            declared.group("Commands");
            command.declare(qsvtin::CommandLine(declared));
        }
        RequireKnownCommand(argc, argv);
        RequireValues(app, argc, argv);
        app.parse(ArgumentsOf(argc, argv));
        return 0;
    } catch (const CLI::Success& request) {
        const int status = app.exit(request);   // help or version
        return std::cout.flush() ? status : Complain("cannot write the help", qsvtin::Failure::Failed);
    } catch (const CLI::ConversionError& error) {
        const std::string words =
            error.what();   // "Could not convert: --eps = abc"; all that is converted is numbers
        return Complain("no number: " + words.substr(words.find(": ") + 2) + "; see " + HelpCommand(app),
                        qsvtin::Failure::BadUsage);
    } catch (const CLI::ParseError& error) {
        return Complain(std::string(error.what()) + "; see " + HelpCommand(app), qsvtin::Failure::BadUsage);
    } catch (const qsvtin::Failure& failure) {
        return Complain(failure.what(), failure.status);
    } catch (const std::bad_alloc&) {
        return Complain("out of memory; take a part of the data", qsvtin::Failure::Failed);
    } catch (const std::exception& error) {
        return Complain(error.what(), qsvtin::Failure::Failed);
    }
}
