#include "host/view/overlay.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

// Of a breakline: thinner where corners are so close together that a bold line would hide them.
double WidthOf(const std::vector<std::vector<Dot>>& lines)
{
    std::vector<double> lengths;
    for (const std::vector<Dot>& line : lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            lengths.push_back(std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y));
        }
    }
    if (lengths.empty()) return 0.0;
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return std::clamp(*middle / 3.0, 0.9, 2.2);
}

}   // namespace

void StrokeLines(Pen& pen, const std::vector<std::vector<Dot>>& lines, double width)
{
    for (const std::vector<Dot>& line : lines) {
        cairo_new_path(pen.Get());
        for (const Dot& dot : line) {
            cairo_line_to(pen.Get(), dot.x, dot.y);
        }
        pen.Stroke(width);
    }
}

void DrawLinesOnGround(Pen& pen, const Scene& scene, const ViewFrame& frame, const Drawing& drawing,
                       double unit)
{
    const std::vector<SeenLines> seen = PartByVisibility({scene.outline, scene.breaklines}, frame, drawing);
    pen.Colour(kInk, 0.75);
    StrokeLines(pen, seen[0].shown, 1.3 * unit);
    const double width = unit * WidthOf(seen[1].shown);
    pen.Colour(kWhite, 0.6);
    StrokeLines(pen, seen[1].shown, 2.0 * width);
    pen.Colour(kBreakline);
    StrokeLines(pen, seen[1].shown, width);
}

}   // namespace qsvtin
