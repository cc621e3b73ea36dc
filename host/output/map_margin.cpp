#include "host/output/map_margin.h"

#include "host/output/round_steps.h"

#include <algorithm>
#include <vector>

namespace qsvtin {

namespace {

// A bar with a round length, about a fifth of the map long, in fields of a round length.
void DrawScaleBar(Pen& pen, const PageLayout& page)
{
    constexpr double kHeight = 4.5;
    const double scale = page.toPage.scale;
    const double length = RoundStepAtLeast(0.14 * page.map.width / scale);
    const double field = RoundStepAtLeast(length / 5.0);
    const double left = page.footer.left, top = page.footer.top + 8.0;
    const Rect bar{left, top, length * scale, kHeight};
    pen.Colour(kWhite);
    pen.Fill(bar);
    pen.Colour(kInk);
    for (double from = 0.0; from < length * (1.0 - 1e-9); from += 2.0 * field) {
        pen.Fill({left + from * scale, top, std::min(field, length - from) * scale, kHeight});
    }
    pen.Outline(bar, 0.6);
    pen.Font(7.0);
    pen.Text(left, bar.Bottom() + 9.0, "0", Align::Centre);
    pen.Text(bar.Right(), bar.Bottom() + 9.0, WithDecimalsOf(length, length), Align::Centre);
}

void DrawNote(Pen& pen, const PageLayout& page, double exaggeration)
{
    std::string note = "lit from the north-west";
    if (exaggeration > 1.0) note += ", heights \u00D7 " + WithDecimalsOf(1.0, exaggeration);
    pen.Font(7.0);
    pen.Colour(kSoftInk);
    pen.Text(page.map.Right(), page.footer.top + 13.0, note, Align::Right);
}

// Colours of the heights, highest above, with round heights beside them.
double DrawHeightScale(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr double kWidth = 13.0, kLabelSpacing = 26.0;
    const double length = std::clamp(0.55 * page.map.height, 110.0, 260.0);
    const Rect bar{page.legend.left + 20.0, page.legend.top + 16.0, kWidth, length};
    pen.Colour(kInk);
    pen.Font(8.0, true);
    pen.Text(bar.left, page.legend.top + 8.0, "Height");

    cairo_pattern_t* const tints = cairo_pattern_create_linear(0.0, bar.Bottom(), 0.0, bar.top);
    for (int i = 0; i <= 64; ++i) {
        const Rgb tint = HeightTint(view.high.z > view.low.z ? i / 64.0 : 0.5);
        cairo_pattern_add_color_stop_rgb(tints, i / 64.0, tint.r, tint.g, tint.b);
    }
    cairo_set_source(pen.Get(), tints);
    pen.Fill(bar);
    cairo_pattern_destroy(tints);
    pen.Colour(kInk);
    pen.Outline(bar, 0.6);

    const double range = view.high.z - view.low.z;
    const double step = RoundStepAtLeast(range * kLabelSpacing / length);
    pen.Font(7.5);
    for (const double height : MultiplesBetween(view.low.z, view.high.z, step)) {
        const double y =
            range > 0.0 ? bar.Bottom() - (height - view.low.z) / range * length : bar.top + length / 2.0;
        pen.Line(bar.Right(), y, bar.Right() + 3.0, y);
        pen.Stroke(0.6);
        pen.Text(bar.Right() + 6.0, y + 2.7, WithDecimalsOf(step, height));
    }
    return bar.Bottom();
}

// North is up: an arrow at the foot of the column beside the map.
void DrawNorthArrow(Pen& pen, const PageLayout& page)
{
    constexpr double kLength = 30.0, kHalfWidth = 5.5;
    const double x = page.legend.left + 26.5, foot = page.map.Bottom() - 2.0, tip = foot - kLength;
    pen.Colour(kInk);
    cairo_move_to(pen.Get(), x, tip);
    cairo_line_to(pen.Get(), x + kHalfWidth, foot);
    cairo_line_to(pen.Get(), x, foot - 7.0);
    cairo_close_path(pen.Get());
    cairo_fill_preserve(pen.Get());
    cairo_line_to(pen.Get(), x - kHalfWidth, foot);
    cairo_line_to(pen.Get(), x, foot - 7.0);
    pen.Stroke(0.6);
    pen.Font(8.5, true);
    pen.Text(x, tip - 4.0, "N", Align::Centre);
}

}   // namespace

void DrawTitle(Pen& pen, const PlanView& view, const PageLayout& page)
{
    pen.Colour(kInk);
    pen.Font(15.0, true);
    pen.Text(page.title.left, page.title.top + 13.0, pen.Fitted(view.title, page.title.width));
    pen.Colour(kSoftInk);
    pen.Font(8.5);
    pen.Text(page.title.left, page.title.top + 29.0, pen.Fitted(view.counts, page.title.width));
}

void DrawFrame(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr double kTickSpacing = 85.0, kCross = 3.0, kTickLabelOverhang = 4.0;
    const double scale = page.toPage.scale;
    const double step = RoundStepAtLeast(kTickSpacing / scale);
    const LocalOrigin& origin = view.origin;
    const double west = page.mapWest + origin.x, north = page.mapNorth + origin.y;
    const std::vector<double> eastings = MultiplesBetween(west, west + page.map.width / scale, step);
    const std::vector<double> northings = MultiplesBetween(north - page.map.height / scale, north, step);

    pen.Colour(kInk, 0.55);
    for (const double easting : eastings) {
        for (const double northing : northings) {
            const double x = page.toPage.X(easting - origin.x), y = page.toPage.Y(northing - origin.y);
            pen.Line(x - kCross, y, x + kCross, y);
            pen.Line(x, y - kCross, x, y + kCross);
        }
    }
    pen.Stroke(0.4);
    pen.Colour(kInk);
    pen.Font(7.0);
    for (const double easting : eastings) {
        const double x = page.toPage.X(easting - origin.x);
        pen.Line(x, page.map.Bottom(), x, page.map.Bottom() + 3.5);
        pen.Stroke(0.6);
        pen.Text(x, page.map.Bottom() + 11.5, WithDecimalsOf(step, easting), Align::Centre);
    }
    for (const double northing : northings) {
        const double y = page.toPage.Y(northing - origin.y);
        pen.Line(page.map.left - 3.5, y, page.map.left, y);
        pen.Stroke(0.6);
        const std::string label = WithDecimalsOf(step, northing);
        if (y - pen.TextWidth(label) / 2.0 > page.map.top - kTickLabelOverhang)
            pen.TextUpwards(page.map.left - 6.0, y, label);
    }
    pen.Outline(page.map, 0.9);
}

void DrawLegend(Pen& pen, const PlanView& view, const PageLayout& page)
{
    const double left = page.legend.left + 20.0;
    double y = DrawHeightScale(pen, view, page) + 24.0;
    pen.Font(8.0);
    if (!view.lines.empty()) {
        pen.Colour(kBreakline);
        pen.Line(left, y, left + 13.0, y);
        pen.Stroke(1.2);
        pen.Colour(kInk);
        pen.Text(left + 19.0, y + 2.8, "breakline");
        y += 15.0;
    }
    if (!view.crossings.empty()) {
        pen.Mark(left + 6.5, y, 1.9, kCrossing);
        pen.Colour(kInk);
        pen.Text(left + 19.0, y + 2.8, "crossing");
    }
    DrawNorthArrow(pen, page);
}

void DrawFooter(Pen& pen, const PageLayout& page, double exaggeration)
{
    DrawScaleBar(pen, page);
    DrawNote(pen, page, exaggeration);
}

}   // namespace qsvtin
