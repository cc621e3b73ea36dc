#include "host/commands/render.h"

#include "host/extension.h"
#include "host/failure.h"
#include "host/output/safe_file.h"
#include "host/view/view_options.h"
#include "host/view/view_picture.h"

#include <filesystem>
#include <memory>
#include <string>

namespace qsvtin {

namespace {

struct RenderOptions {
    ViewOptions view;
    bool noEdges = false;
    std::string title;
    std::string output;
};

void RunRender(const RenderOptions& options)
{
    PictureOptions picture = options.view.Picture();
    picture.edges = !options.noEdges;
    const std::string& path = options.output;
    CheckPicturePath(path);
    std::error_code missing;
    if (std::filesystem::equivalent(path, options.view.tin.file, missing)) {
        throw Failure("-o " + path + " would overwrite the input; name another file", Failure::BadUsage);
    }
    CheckTarget(path);
    const Scene scene = options.view.ReadScene();
    picture.title = OnOneLine(options.title.empty() ? StemOf(options.view.tin.file) : options.title);
    SafeFile file(path);
    WriteView(scene, picture, file);
    file.Finish();
    file.TakePlace();
}

}   // namespace

void DeclareRender(CLI::App& app)
{
    const auto options = std::make_shared<RenderOptions>();
    options->view.Declare(app);
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
