#include "host/commands/render.h"

#include "host/commands/ground_lines.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/output/safe_file.h"
#include "host/view/view_options.h"
#include "host/view/view_picture.h"

#include <memory>
#include <string>
#include <vector>

namespace qsvtin {

namespace {

struct RenderOptions {
    ViewOptions view;
    std::vector<std::string> breaklines;
    std::string texture;
    bool noEdges = false;
    std::string title;
    std::string output;
};

std::vector<std::string> InputsOf(const RenderOptions& options)
{
    std::vector<std::string> inputs = options.breaklines;
    inputs.push_back(options.view.tin.file);
    inputs.push_back(options.texture);
    return inputs;
}

void RunRender(const RenderOptions& options)
{
    PictureOptions picture = options.view.Picture();
    picture.edges = !options.noEdges;
    CheckPicturePath(options.output);
    RefuseInput(options.output, InputsOf(options));
    CheckTarget(options.output);
    Scene scene = options.view.ReadScene();
    scene.breaklines = ReadGroundLines(scene, options.breaklines);
    if (!options.texture.empty()) scene.texture.emplace(options.texture);
    picture.title = OnOneLine(options.title.empty() ? StemOf(options.view.tin.file) : options.title);
    SafeFile file(options.output);
    WriteView(scene, picture, file);
    file.Finish();
    file.TakePlace();
}

}   // namespace

void DeclareRender(CommandLine command)
{
    const auto options = std::make_shared<RenderOptions>();
    options->view.Declare(command);
    command.Option("--breaklines", options->breaklines, "FILE",
                   "lines to draw on the surface: " + BreaklineFiles() + "; may be repeated");
    command.Option("--texture", options->texture, "IMAGE",
                   "picture to drape over the surface, .png: north up, as wide and as high as the TIN");
    command.Flag("--no-edges", options->noEdges, "leave out the edges of the triangles");
    command.Option("--title", options->title, "TEXT", "title of the picture (the name of the file)");
    command.RequiredOption("-o,--output", options->output, "OUT", "picture to write: .png, .svg or .pdf");
    command.SetExample("  qsvtin render hill.tin --view 205,30 --perspective --exaggerate 2 -o hill.png");
    command.SetAction([options] { RunRender(*options); });
}

}   // namespace qsvtin
