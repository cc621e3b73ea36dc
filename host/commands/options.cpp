#include "host/commands/options.h"

#include "host/exchange/exchange_file.h"
#include "host/failure.h"
#include "host/output/safe_file.h"
#include "host/output/writers.h"
#include "host/system.h"

#include <algorithm>
#include <filesystem>

namespace qsvtin {

void DeclareTin(CommandLine command, TinChoice& choice, const std::string& help)
{
    command.Argument("FILE", choice.file,
                     "TIN file of any form, or a file of another program: " + ExchangeExtensions());
    command.Option("--tin,--surface", choice.tin, "NUMBER|NAME", help);
}

void DeclareOutputs(CommandLine command, OutputChoice& outputs)
{
    command.RequiredOption("-o,--output", outputs.paths, "OUT",
                           "file to write, by its extension: " + KnownExtensions() + "; may be repeated");
    DeclareWriteOptions(command, outputs);
}

void DeclareWriteOptions(CommandLine command, OutputChoice& outputs)
{
    command.Option(
        "--format", outputs.form, "2|1|0",
        "form of TIN files: 2 a collection with texture coordinates, 1 a collection without, 0 one "
        "TIN without a name");
    command.Option("--name", outputs.options.name, "NAME",
                   "name of the TIN in a TIN file (that of the file)");
    command.Flag("--ascii", outputs.options.ascii, "write .ply and .stl as text");
    command.Option("--title", outputs.options.title, "TEXT",
                   "title of pictures and models (the name of the input)");
}

void CheckOutputs(const OutputChoice& outputs)
{
    constexpr std::size_t kLongestName = 255;
    if (outputs.form && (*outputs.form < 0 || *outputs.form > 2)) {
        throw Failure("--format must be 2, 1 or 0", Failure::BadUsage);
    }
    if (outputs.options.name.size() > kLongestName) {
        throw Failure("--name is too long; a TIN file has room for 255 bytes", Failure::BadUsage);
    }
    for (const std::string& path : outputs.paths) {
        WriterFor(path);
    }
    for (const std::string& path : outputs.paths) {
        CheckTarget(path);
    }
}

void RefuseInput(const std::string& output, const std::vector<std::string>& inputs)
{
    for (const std::string& input : inputs) {
        std::error_code missing;
        if (std::filesystem::equivalent(PathOf(output), PathOf(input), missing)) {
            throw Failure("-o " + output + " would overwrite the input; name another file",
                          Failure::BadUsage);
        }
    }
}

std::string BreaklineFiles()
{
    return "text file with blocks of x y z lines, an empty line or > between them, or a file of another "
           "program: " +
           ExchangeExtensions();
}

void DeclareUnits(CommandLine command, std::string& unit)
{
    command.Option(
        "--units", unit, "UNIT",
        "convert to this unit, such as meter, foot or USSurveyFoot, where the input states its own; "
        "other input is taken to be in it");
}

LengthUnit UnitFromOption(const std::string& name)
{
    const LengthUnit unit = UnitNamed(name);
    if (unit == LengthUnit::Unknown && !name.empty()) {
        throw Failure("--units " + name + " is no known unit; give one of " + UnitNames(), Failure::BadUsage);
    }
    return unit;
}

void DeclareJson(CommandLine command, bool& json)
{
    command.Flag("--json", json, "report as JSON");
}

std::string OnOneLine(std::string text)
{
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

}   // namespace qsvtin
