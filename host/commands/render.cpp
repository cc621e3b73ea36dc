#include "host/commands/render.h"

#include "host/extension.h"
#include "host/failure.h"
#include "host/input/survey.h"
#include "host/output/safe_file.h"
#include "host/say.h"
#include "host/view/drape.h"
#include "host/view/view_options.h"
#include "host/view/view_picture.h"

#include <memory>
#include <string>
#include <utility>
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

std::vector<Path> ReadPaths(const std::vector<std::string>& files, LengthUnit unit)
{
    std::vector<Path> paths;
    for (Breakline& line : ReadLines(files, unit).breaklines) {
        paths.push_back(std::move(line.points));
    }
    return paths;
}

void RunRender(const RenderOptions& options)
{
    PictureOptions picture = options.view.Picture();
    picture.edges = !options.noEdges;
    CheckPicturePath(options.output);
    RefuseInput(options.output, InputsOf(options));
    CheckTarget(options.output);
    Scene scene = options.view.ReadScene();
    const std::vector<Path> lines = ReadPaths(options.breaklines, scene.unit);
    scene.breaklines = Drape(scene, lines);
    if (!lines.empty() && scene.breaklines.empty()) {
        Note("no breakline of " + options.breaklines.front() +
             " lies on the terrain; are they of this place?");
    }
    if (!options.texture.empty()) scene.texture.emplace(options.texture);
    picture.title = OnOneLine(options.title.empty() ? StemOf(options.view.tin.file) : options.title);
    SafeFile file(options.output);
    WriteView(scene, picture, file);
    file.Finish();
    file.TakePlace();
}

}   // namespace

void DeclareRender(CLI::App& app)
{
    const auto options = std::make_shared<RenderOptions>();
    options->view.Declare(app);
    app.add_option("--breaklines", options->breaklines,
                   "lines to draw on the surface: " + BreaklineFiles() + "; may be repeated")
        ->allow_extra_args(false)
        ->type_name("FILE");
    app.add_option("--texture", options->texture,
                   "picture to drape over the surface, .png: north up, as wide and as high as the TIN")
        ->type_name("IMAGE");
    app.add_flag("--no-edges", options->noEdges, "leave out the edges of the triangles");
    app.add_option("--title", options->title, "title of the picture (the name of the file)")
        ->type_name("TEXT");
    app.add_option("-o,--output", options->output, "picture to write: .png, .svg or .pdf")
        ->required()
        ->type_name("OUT");
    SetExample(app, "  qsvtin render hill.tin --view 205,30 --perspective --exaggerate 2 -o hill.png");
    app.callback([options] { RunRender(*options); });
}

}   // namespace qsvtin
