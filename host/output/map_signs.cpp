#include "host/output/map_signs.h"

#include "host/output/round_steps.h"

#include <cmath>

namespace qsvtin {

namespace {

void DrawTints(Pen& pen, const Rect& bar, bool level)
{
    cairo_pattern_t* const tints = cairo_pattern_create_linear(0.0, bar.Bottom(), 0.0, bar.top);
    for (int i = 0; i <= 64; ++i) {
        const Rgb tint = HeightTint(level ? 0.5 : i / 64.0);
        cairo_pattern_add_color_stop_rgb(tints, i / 64.0, tint.r, tint.g, tint.b);
    }
    cairo_set_source(pen.Get(), tints);
    pen.Fill(bar);
    cairo_pattern_destroy(tints);
}

}   // namespace

void DrawHeightScale(Pen& pen, const Rect& bar, double low, double high, double unit)
{
    constexpr double kLabelSpacing = 36.0;
    DrawTints(pen, bar, !(high > low));
    pen.Colour(kInk);
    pen.Outline(bar, 1.1 * unit);
    pen.Font(16.0 * unit, true);
    pen.Text(bar.left, bar.top - 14.0 * unit, "Height");
    pen.Font(15.0 * unit);
    const double range = high - low, step = RoundStepAtLeast(range * kLabelSpacing * unit / bar.height);
    for (const double height : MultiplesBetween(low, high, step)) {
        const double share = range > 0.0 ? (height - low) / range : 0.5;
        const double y = bar.Bottom() - share * bar.height;
        pen.Line(bar.Right(), y, bar.Right() + 5.5 * unit, y);
        pen.Stroke(1.1 * unit);
        pen.Text(bar.Right() + 10.0 * unit, y + 5.3 * unit, WithDecimalsOf(step, height));
    }
}

void DrawLineSign(Pen& pen, double left, double y, const Rgb& colour, const std::string& meaning, double unit)
{
    pen.Colour(colour);
    pen.Line(left, y, left + 22.0 * unit, y);
    pen.Stroke(2.3 * unit);
    pen.Colour(kInk);
    pen.Font(15.0 * unit);
    pen.Text(left + 30.0 * unit, y + 5.3 * unit, meaning);
}

void DrawNorthArrow(Pen& pen, double x, double y, double turn, double height, double unit)
{
    const double radius = 34.0 * unit;
    const auto point = [&](double east, double north) {
        const double right = east * std::cos(turn) - north * std::sin(turn);
        const double up = east * std::sin(turn) + north * std::cos(turn);
        cairo_line_to(pen.Get(), x + radius * right, y - radius * height * up);
    };
    pen.Colour(kInk);
    for (const double side : {0.36, -0.36}) {
        cairo_new_path(pen.Get());   // text leaves a place behind
        point(0.0, 1.0);
        point(side, -0.8);
        point(0.0, -0.45);
        cairo_close_path(pen.Get());
        if (side > 0.0) cairo_fill_preserve(pen.Get());
        pen.Stroke(1.1 * unit);
    }
    // The letter keeps its distance from the tip, however flat the arrow lies.
    const double tipX = -radius * std::sin(turn), tipY = -radius * height * std::cos(turn);
    const double away = 1.0 + 14.0 * unit / std::hypot(tipX, tipY);
    pen.Font(17.0 * unit, true);
    pen.Text(x + away * tipX, y + away * tipY + 6.0 * unit, "N", Align::Centre);
}

}   // namespace qsvtin
