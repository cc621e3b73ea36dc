#include "host/view/view_picture.h"

#include "host/extension.h"
#include "host/failure.h"
#include "host/numbers.h"
#include "host/output/cairo_file.h"
#include "host/output/pen.h"
#include "host/output/round_steps.h"
#include "host/view/surface_colours.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

constexpr Rgb kSky = {0.80, 0.865, 0.925}, kHorizon = {0.985, 0.98, 0.965};

// Lengths beside the surface follow the size of the picture, down to what can still be read.
double UnitOf(const PictureOptions& options)
{
    return std::max(0.55, std::min(options.width / 1600.0, options.height / 1000.0));
}

Rect FramePart(const PictureOptions& options)
{
    const double unit = UnitOf(options), width = options.width, height = options.height;
    const double margin = std::min(48.0 * unit, 0.1 * std::min(width, height));
    const double title = std::min(112.0 * unit, 0.25 * height), legend = std::min(150.0 * unit, 0.25 * width);
    return {margin, title, width - margin - legend, height - title - margin};
}

void DrawBackground(Pen& pen, const PictureOptions& options)
{
    cairo_pattern_t* const sky = cairo_pattern_create_linear(0.0, 0.0, 0.0, options.height);
    cairo_pattern_add_color_stop_rgb(sky, 0.0, kSky.r, kSky.g, kSky.b);
    cairo_pattern_add_color_stop_rgb(sky, 0.6, kHorizon.r, kHorizon.g, kHorizon.b);
    cairo_set_source(pen.Get(), sky);
    cairo_paint(pen.Get());
    cairo_pattern_destroy(sky);
}

void DrawSurface(Pen& pen, const Scene& scene, const PictureOptions& options, int pixels)
{
    PictureOptions fine = options;
    fine.width *= pixels;
    fine.height *= pixels;
    const ViewFrame frame = FrameOf(scene, fine);
    SurfaceStyle style;
    style.edges = options.edges;
    style.lineWidth = UnitOf(fine);
    style.haze = kSky;
    style.hazeShare = options.view.perspective ? 0.35 : 0.0;
    std::vector<std::uint32_t> surface =
        ColourSurface(scene, MakeDrawing(scene, frame), style, fine.width, fine.height);
    cairo_surface_t* const picture =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(surface.data()),
                                            CAIRO_FORMAT_ARGB32, fine.width, fine.height, 4 * fine.width);
    cairo_save(pen.Get());
    cairo_scale(pen.Get(), 1.0 / pixels, 1.0 / pixels);
    cairo_set_source_surface(pen.Get(), picture, 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(pen.Get()), CAIRO_FILTER_NEAREST);
    cairo_paint(pen.Get());
    cairo_restore(pen.Get());
    cairo_surface_finish(picture);   // the pixels end with this function; cairo copies what it still needs
    cairo_surface_destroy(picture);
}

std::string DescribeView(const Scene& scene, const PictureOptions& options)
{
    const View& view = options.view;
    std::string text = std::to_string(scene.groundTriangles) + " triangles";
    if (!view.IsPlan()) {
        text += ",  seen from " + Shortest(view.azimuth) + "\u00B0, " + Shortest(view.elevation) +
                "\u00B0 above the horizon";
    }
    if (scene.exaggeration != 1.0) text += ",  heights \u00D7 " + Shortest(scene.exaggeration);
    return text;
}

void DrawTitle(Pen& pen, const Scene& scene, const PictureOptions& options)
{
    const double unit = UnitOf(options), left = 48.0 * unit, width = options.width - 2.0 * left;
    pen.Colour(kInk);
    pen.Font(30.0 * unit, true);
    pen.Text(left, 58.0 * unit, pen.Fitted(options.title, width));
    pen.Colour(kSoftInk);
    pen.Font(17.0 * unit);
    pen.Text(left, 86.0 * unit, pen.Fitted(DescribeView(scene, options), width));
}

// Colours of the heights, highest above, with round heights beside them.
void DrawHeightScale(Pen& pen, const Scene& scene, const PictureOptions& options)
{
    const double unit = UnitOf(options), range = scene.high - scene.low;
    const double length = std::min(300.0 * unit, 0.45 * options.height);
    const Rect bar{options.width - 104.0 * unit, (options.height - length) / 2.0, 20.0 * unit, length};
    cairo_pattern_t* const tints = cairo_pattern_create_linear(0.0, bar.Bottom(), 0.0, bar.top);
    for (int i = 0; i <= 64; ++i) {
        const Rgb tint = HeightTint(range > 0.0 ? i / 64.0 : 0.5);
        cairo_pattern_add_color_stop_rgb(tints, i / 64.0, tint.r, tint.g, tint.b);
    }
    cairo_set_source(pen.Get(), tints);
    pen.Fill(bar);
    cairo_pattern_destroy(tints);
    pen.Colour(kInk);
    pen.Outline(bar, unit);
    pen.Font(16.0 * unit, true);
    pen.Text(bar.left, bar.top - 14.0 * unit, "Height");
    pen.Font(15.0 * unit);
    const double step = RoundStepAtLeast(range * 42.0 * unit / length);
    for (const double height : MultiplesBetween(scene.low, scene.high, step)) {
        const double y =
            range > 0.0 ? bar.Bottom() - (height - scene.low) / range * length : bar.top + length / 2.0;
        pen.Line(bar.Right(), y, bar.Right() + 5.0 * unit, y);
        pen.Stroke(unit);
        pen.Text(bar.Right() + 9.0 * unit, y + 5.3 * unit, WithDecimalsOf(step, height));
    }
}

// An arrow on the ground that points to the north, lying as the ground does.
void DrawNorthArrow(Pen& pen, const PictureOptions& options)
{
    const double unit = UnitOf(options), radius = 34.0 * unit, degree = std::acos(-1.0) / 180.0;
    const double turn = (options.view.azimuth - 180.0) * degree;
    const double flat = std::max(0.25, std::sin(options.view.elevation * degree));
    const double x = options.width - 88.0 * unit, y = options.height - 84.0 * unit;
    const auto point = [&](double east, double north) {
        const double right = east * std::cos(turn) - north * std::sin(turn);
        const double up = east * std::sin(turn) + north * std::cos(turn);
        cairo_line_to(pen.Get(), x + radius * right, y - radius * flat * up);
    };
    pen.Colour(kInk);
    cairo_new_path(pen.Get());   // text leaves a place behind
    point(0.0, 1.0);
    point(0.36, -0.8);
    point(0.0, -0.45);
    cairo_close_path(pen.Get());
    cairo_fill_preserve(pen.Get());
    pen.Stroke(unit);
    point(0.0, 1.0);
    point(-0.36, -0.8);
    point(0.0, -0.45);
    cairo_close_path(pen.Get());
    pen.Stroke(unit);
    pen.Font(17.0 * unit, true);
    pen.Text(x - 1.42 * radius * std::sin(turn), y - 1.42 * radius * flat * std::cos(turn) + 4.0 * unit, "N",
             Align::Centre);
}

}   // namespace

ViewFrame FrameOf(const Scene& scene, const PictureOptions& options)
{
    return ViewFrame(options.view, GroundOf(scene), FramePart(options), options.width, options.height);
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
    const bool pixels = ExtensionOf(file.Target()) == ".png";
    WriteDrawing(file, options.width, options.height, 1.0, [&](cairo_surface_t* surface) {
        Pen pen(surface);
        DrawBackground(pen, options);
        DrawSurface(pen, scene, options, pixels ? 1 : 2);
        DrawTitle(pen, scene, options);
        DrawHeightScale(pen, scene, options);
        DrawNorthArrow(pen, options);
    });
}

}   // namespace qsvtin
