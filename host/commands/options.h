#ifndef QSVTIN_COMMANDS_OPTIONS_H
#define QSVTIN_COMMANDS_OPTIONS_H

#include "host/commands/command_line.h"
#include "host/input/tins.h"
#include "host/output/write_options.h"

#include <optional>
#include <string>
#include <vector>

namespace qsvtin {

/// Which TIN of which file a command works on.
struct TinChoice {
    std::string file;
    std::string tin;   ///< number or name; empty: the first
};

/// Declares the file as the first argument, and --tin with this help.
void DeclareTin(CommandLine command, TinChoice& choice,
                const std::string& help = "the TIN to take, by its number or name (the first)");

/// Files to write, and what the user chose about them.
struct OutputChoice {
    std::vector<std::string> paths;
    WriteOptions options;
    std::optional<int> form;   ///< as given, else the command decides
};

/// Declares -o, --format, --name, --ascii and --title.
void DeclareOutputs(CommandLine command, OutputChoice& outputs);
/// Declares the options without -o, for a command whose last argument is the file to write.
void DeclareWriteOptions(CommandLine command, OutputChoice& outputs);

/// Finds out before any work is done whether the outputs can be written. @throws Failure when not
void CheckOutputs(const OutputChoice& outputs);

/// @throws Failure (bad usage) when the output is one of the inputs
void RefuseInput(const std::string& output, const std::vector<std::string>& inputs);

/// What the option --breaklines of all commands takes, for their help.
std::string BreaklineFiles();

/// Declares --units.
void DeclareUnits(CommandLine command, std::string& unit);
/// The unit of that name; Unknown for none. @throws Failure (bad usage) for a name of no unit
LengthUnit UnitFromOption(const std::string& name);

/// Declares --json.
void DeclareJson(CommandLine command, bool& json);

/// One line, whatever the text holds: a title also becomes a comment in text formats.
std::string OnOneLine(std::string text);

}   // namespace qsvtin

#endif
