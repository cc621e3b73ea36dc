#include "host/commands/polygon.h"

#include "host/commands/options.h"
#include "host/exchange/exchange_file.h"
#include "host/failure.h"
#include "host/input/survey.h"
#include "host/output/writers.h"
#include "host/report/tin_report.h"
#include "host/say.h"
#include "host/system.h"
#include "host/terrain/mesh_to_tin.h"
#include "host/terrain/polygon.h"

#include <filesystem>
#include <memory>

namespace qsvtin {

namespace {

struct PolygonOptions {
    std::string file;
    OutputChoice outputs;
    bool json = false;
};

Breakline OnlyLineOf(const SurveyData& read, const std::string& path)
{
    if (read.breaklines.size() != 1) {
        throw Failure(
            path + " holds " + std::to_string(read.breaklines.size()) +
            " lines; give one polygon, in text the x y z of its corners without an empty line between");
    }
    return read.breaklines[0];
}

void RunPolygon(PolygonOptions options)
{
    CheckOutputs(options.outputs);
    for (const std::string& path : options.outputs.paths) {
        RefuseInput(path, {options.file});
    }
    const SurveyData read = ReadLines({options.file}, LengthUnit::Unknown);
    Terrain terrain = FillPolygon(OnlyLineOf(read, options.file));
    UpdateStoredParts(terrain.tin);
    terrain.tin.UpdateNormal();
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(2);
    write.unit = read.unit;
    if (write.title.empty()) write.title = PathOf(options.file).filename().u8string();
    write.title = OnOneLine(write.title);
    WriteAll(terrain, write, options.outputs.paths);

    const TinFacts facts = MeasureTerrain(terrain);
    TextReport text;
    AddFacts(facts, text);
    for (const std::string& path : options.outputs.paths) {
        text.Line("written", path);
    }
    Json json = JsonOf(facts);
    json["written"] = options.outputs.paths;
    Print(options.json ? TextOf(json) : text.Text());
}

}   // namespace

void DeclarePolygon(CommandLine command)
{
    const auto options = std::make_shared<PolygonOptions>();
    command.Argument(
        "FILE", options->file,
        "the corners of the polygon: a text file with a line of x y z each, or the one line of a file of "
        "another program: " +
            ExchangeExtensions());
    DeclareOutputs(command, options->outputs);
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin polygon pond.txt -o pond.tin");
    command.SetAction([options] { RunPolygon(*options); });
}

}   // namespace qsvtin
