#include "host/view/view_picture.h"

#include "host/extension.h"
#include "host/failure.h"
#include "host/output/cairo_file.h"
#include "host/output/pen.h"
#include "host/view/overlay.h"
#include "host/view/surface_colours.h"
#include "host/view/view_margin.h"

namespace qsvtin {

namespace {

constexpr Rgb kSky = {0.80, 0.865, 0.925}, kHorizon = {0.985, 0.98, 0.965};

void DrawBackground(Pen& pen, const PictureOptions& options)
{
    cairo_pattern_t* const sky = cairo_pattern_create_linear(0.0, 0.0, 0.0, options.height);
    cairo_pattern_add_color_stop_rgb(sky, 0.0, kSky.r, kSky.g, kSky.b);
    cairo_pattern_add_color_stop_rgb(sky, 0.6, kHorizon.r, kHorizon.g, kHorizon.b);
    cairo_set_source(pen.Get(), sky);
    cairo_paint(pen.Get());
    cairo_pattern_destroy(sky);
}

void DrawSurface(Pen& pen, const Scene& scene, const PictureOptions& options, const Drawing& drawing)
{
    SurfaceStyle style;
    style.edges = options.edges;
    style.lineWidth = UnitOf(options) * drawing.scale;
    style.haze = kSky;
    style.hazeShare = options.view.perspective ? 0.35 : 0.0;
    const int width = drawing.scale * options.width, height = drawing.scale * options.height;
    std::vector<std::uint32_t> surface = ColourSurface(scene, drawing, style, width, height);
    pen.Pixels(surface, width, height,
               {0.0, 0.0, static_cast<double>(options.width), static_cast<double>(options.height)});
}

}   // namespace

ViewFrame FrameOf(const Scene& scene, const PictureOptions& options)
{
    std::vector<Position> content = GroundOf(scene);
    if (options.sphere) {
        const std::vector<Position> around = PlacesOn(scene, *options.sphere);
        content.insert(content.end(), around.begin(), around.end());
    }
    return ViewFrame(options.view, content, FramePart(options), options.width, options.height);
}

void CheckPicturePath(const std::string& path)
{
    const std::string extension = ExtensionOf(path);
    if (extension != ".png" && extension != ".svg" && extension != ".pdf") {
        throw Failure("cannot draw " + path + "; end its name in .png, .svg or .pdf", Failure::BadUsage);
    }
}

void WriteView(const Scene& scene, const PictureOptions& options, SafeFile& file)
{
    constexpr int kPrinted = 2;   // pixels of the surface for one of the page, in formats that are printed
    const bool pixels = ExtensionOf(file.Target()) == ".png";
    const ViewFrame frame = FrameOf(scene, options);
    const Drawing drawing = MakeDrawing(scene, frame, pixels ? 1 : kPrinted);
    const Sheet sheet{static_cast<double>(options.width), static_cast<double>(options.height)};
    WriteDrawing(file, sheet, [&](cairo_surface_t* surface) {
        const double unit = UnitOf(options);
        Pen pen(surface);
        DrawBackground(pen, options);
        DrawSurface(pen, scene, options, drawing);
        DrawLinesOnGround(pen, scene, frame, drawing, unit);
        if (options.sphere) DrawGridSphere(pen, scene, *options.sphere, frame, drawing, unit);
        DrawMargin(pen, scene, options);
    });
}

}   // namespace qsvtin
