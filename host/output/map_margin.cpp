#include "host/output/map_margin.h"

#include "host/output/map_signs.h"
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
    constexpr double kUnit = 0.52;   // of the signs, in points
    const double left = page.legend.left + 20.0, length = std::clamp(0.55 * page.map.height, 110.0, 260.0);
    const Rect bar{left, page.legend.top + 16.0, 13.0, length};
    DrawHeightScale(pen, bar, view.low.z, view.high.z, kUnit);
    double y = bar.Bottom() + 24.0;
    if (!view.lines.empty()) {
        DrawLineSign(pen, left, y, kBreakline, "breakline", kUnit);
        y += 15.0;
    }
    if (!view.crossings.empty()) {
        pen.Mark(left + 6.0, y, 1.9, kCrossing);
        pen.Colour(kInk);
        pen.Text(left + 16.0, y + 2.8, "crossing");
    }
    DrawNorthArrow(pen, left + 6.5, page.map.Bottom() - 16.0, 0.0, 1.0, kUnit);
}

void DrawFooter(Pen& pen, const PageLayout& page, double exaggeration)
{
    DrawScaleBar(pen, page);
    DrawNote(pen, page, exaggeration);
}

}   // namespace qsvtin
