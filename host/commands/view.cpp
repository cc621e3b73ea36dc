#include "host/commands/view.h"

#include "host/commands/ground_lines.h"
#include "host/commands/options.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/output/writers.h"
#include "host/terrain/loaded.h"
#include "host/viewer/page.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

namespace qsvtin {

namespace {

struct ViewPageOptions {
    TinChoice choice;
    std::vector<std::string> breaklines;
    double exaggeration = 1.0;
    std::string title;
    std::string output;
};

void CheckOptions(const ViewPageOptions& options)
{
    if (!HasViewer()) {
        throw Failure(
            "this qsvtin was built without the viewer; install npm, configure with -DQSV_VIEWER=ON and "
            "build it again, or draw a picture with qsvtin render");
    }
    if (ExtensionOf(options.output) != ".html") {
        throw Failure("-o " + options.output + ": the page is HTML; end its name in .html",
                      Failure::BadUsage);
    }
    if (!(options.exaggeration >= 1.0 && options.exaggeration <= 10.0)) {
        throw Failure("--exaggerate must be from 1 to 10", Failure::BadUsage);
    }
    std::vector<std::string> inputs = options.breaklines;
    inputs.push_back(options.choice.file);
    RefuseInput(options.output, inputs);
    CheckTarget(options.output);
}

std::vector<Breakline> LinesOnGround(const TinFile& file, int tin, const std::vector<std::string>& files)
{
    std::vector<Breakline> lines;
    if (files.empty()) return lines;
    Scene scene = MakeScene(file.tins[tin], 1.0, std::nullopt);
    scene.unit = file.unit;
    for (const Path& path : ReadGroundLines(scene, files)) {
        Breakline& line = lines.emplace_back();
        std::transform(path.begin(), path.end(), std::back_inserter(line.points),
                       [&](const Position& at) { return scene.ToSurvey(at); });
    }
    return lines;
}

void RunView(const ViewPageOptions& options)
{
    CheckOptions(options);
    const TinFile file = ReadTins(options.choice.file);
    const int chosen = ChooseTin(file, options.choice.tin);
    RequireUsable(file, chosen);
    PageOptions page{options.title, options.exaggeration, LinesOnGround(file, chosen, options.breaklines)};
    if (page.title.empty()) page.title = StemOf(options.choice.file);
    const Terrain terrain = LocalTerrain(file.tins[chosen], true);
    WriteFiles({{options.output, [&](SafeFile& to) { WritePage(terrain, page, to); }}});
}

}   // namespace

void DeclareView(CommandLine command)
{
    const auto options = std::make_shared<ViewPageOptions>();
    DeclareTin(command, options->choice);
    command.Option("--breaklines", options->breaklines, "FILE",
                   "lines to draw on the surface: " + BreaklineFiles() + "; may be repeated");
    command.Option("--exaggerate", options->exaggeration, "FACTOR",
                   "factor for heights when the page opens (1)");
    command.Option("--title", options->title, "TEXT", "title of the page (the name of the file)");
    command.RequiredOption("-o,--output", options->output, "OUT", "page to write: .html");
    command.SetExample("  qsvtin view site.tin --breaklines lines.txt -o site.html && xdg-open site.html");
    command.SetAction([options] { RunView(*options); });
}

}   // namespace qsvtin
