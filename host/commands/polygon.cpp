#include "host/commands/polygon.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/input/breakline_text.h"
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

Breakline ReadRing(const std::string& path)
{
    TextFile text(path);
    std::vector<BadLine> bad;
    const BreaklineFile file = ReadBreaklines(text, bad);
    if (!bad.empty()) {
        throw Failure(path + ":" + std::to_string(bad[0].line) + ": " + bad[0].reason + "; fix the line");
    }
    if (file.lines.size() != 1) {
        throw Failure(path + " holds " + std::to_string(file.lines.size()) +
                      " blocks; give one polygon, lines of x y z without an empty line between them");
    }
    return file.lines[0];
}

void RunPolygon(PolygonOptions options)
{
    CheckOutputs(options.outputs);
    const Breakline ring = ReadRing(options.file);
    Terrain terrain = FillPolygon(ring);
    UpdateStoredParts(terrain.tin);
    terrain.tin.UpdateNormal();
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(2);
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

void DeclarePolygon(CLI::App& app)
{
    const auto options = std::make_shared<PolygonOptions>();
    app.add_option("FILE", options->file, "text file with the corners of the polygon, a line of x y z each")
        ->required();
    DeclareOutputs(app, options->outputs);
    DeclareJson(app, options->json);
    SetExample(app, "  qsvtin polygon pond.txt -o pond.tin");
    app.callback([options] { RunPolygon(*options); });
}

}   // namespace qsvtin
