#include "host/view/view_margin.h"

#include "host/numbers.h"
#include "host/output/map_signs.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

std::string DescribeView(const Scene& scene, const PictureOptions& options)
{
    const View& view = options.view;
    std::string text =
        std::to_string(scene.groundTriangles) + (scene.groundTriangles == 1 ? " triangle" : " triangles");
    if (!view.IsPlan()) {
        text += ",  seen from " + Shortest(view.azimuth) + "\u00B0, " + Shortest(view.elevation) +
                "\u00B0 above the horizon";
    }
    if (scene.exaggeration != 1.0) text += ",  heights \u00D7 " + Shortest(scene.exaggeration);
    if (options.sphere) text += ",  angles on a sphere of radius " + Shortest(options.sphere->radius);
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

void DrawLegend(Pen& pen, const Scene& scene, const PictureOptions& options)
{
    const double unit = UnitOf(options), left = options.width - 126.0 * unit;
    const double length = std::min(300.0 * unit, 0.36 * options.height);
    // Half way up, but clear of the arrow below.
    const double bottom = std::min((options.height + length) / 2.0, options.height - 205.0 * unit);
    const Rect bar{left, bottom - length, 20.0 * unit, length};
    if (!scene.texture) DrawHeightScale(pen, bar, scene.low, scene.high, unit);
    const double y = scene.texture ? bar.top : bar.Bottom() + 34.0 * unit;
    if (!scene.breaklines.empty()) DrawLineSign(pen, left, y, kBreakline, "breakline", unit);
}

}   // namespace

double UnitOf(const PictureOptions& options)
{
    return std::max(0.6, std::min(options.width / 1600.0, options.height / 1000.0));
}

Rect FramePart(const PictureOptions& options)
{
    const double unit = UnitOf(options), width = options.width, height = options.height;
    const double margin = std::min(48.0 * unit, 0.1 * std::min(width, height));
    const double title = std::min(112.0 * unit, 0.25 * height), legend = std::min(150.0 * unit, 0.25 * width);
    return {margin, title, width - margin - legend, height - title - margin};
}

void DrawMargin(Pen& pen, const Scene& scene, const PictureOptions& options)
{
    const double unit = UnitOf(options), degree = std::acos(-1.0) / 180.0;
    DrawTitle(pen, scene, options);
    DrawLegend(pen, scene, options);
    DrawNorthArrow(pen, options.width - 92.0 * unit, options.height - 84.0 * unit,
                   (options.view.azimuth - 180.0) * degree,
                   std::max(0.25, std::sin(options.view.elevation * degree)), unit);
}

}   // namespace qsvtin
