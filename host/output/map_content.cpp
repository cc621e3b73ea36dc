#include "host/output/map_content.h"

#include "host/output/relief.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace qsvtin {

namespace {

// Draws the edges that answer, in strokes of limited length, which cairo handles fastest.
template <class Wanted>
void StrokeEdges(Pen& pen, const PlanView& view, const PlanToPicture& toPage, double width, Wanted wanted)
{
    constexpr int kEdgesAStroke = 200;
    int pending = 0;
    for (std::size_t t = 0; t < view.triangles.size(); ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            const int neighbor = view.neighbors[t][k];
            if (neighbor >= 0 && static_cast<std::size_t>(neighbor) < t)
                continue;   // drawn from the other side
            if (!wanted(t, neighbor)) continue;
            const Position& a = view.vertices[static_cast<std::size_t>(view.triangles[t][k])];
            const Position& b = view.vertices[static_cast<std::size_t>(view.triangles[t][(k + 1) % 3])];
            pen.Line(toPage.X(a.x), toPage.Y(a.y), toPage.X(b.x), toPage.Y(b.y));
            if (++pending % kEdgesAStroke == 0) pen.Stroke(width);
        }
    }
    pen.Stroke(width);
}

// Width of a breakline: thinner where its segments are so short on the page that a bold line would hide them.
double BreaklineWidth(const PlanView& view, const PageLayout& page)
{
    std::vector<double> lengths;
    for (const std::vector<Position>& line : view.lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            lengths.push_back(page.toPage.scale *
                              std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y));
        }
    }
    if (lengths.empty()) return 0.0;
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return std::clamp(*middle / 9.0, 0.45, 1.1);
}

}   // namespace

void DrawSurface(Pen& pen, const PlanView& view, const PageLayout& page, double pixelsPerPoint,
                 double exaggeration)
{
    const int width = static_cast<int>(std::ceil(page.map.width * pixelsPerPoint));
    const int height = static_cast<int>(std::ceil(page.map.height * pixelsPerPoint));
    const PlanToPicture toPixels{page.mapWest, page.mapNorth, page.toPage.scale * pixelsPerPoint};
    Relief relief = DrawRelief(view, toPixels, width, height, exaggeration);
    pen.Pixels(relief.pixels, width, height,
               {page.map.left, page.map.top, width / pixelsPerPoint, height / pixelsPerPoint});
}

void DrawEdges(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr int kShades = 4;
    constexpr double kFirstArea = 7.0, kFullArea = 60.0, kFullAlpha = 0.34;   // square points
    std::vector<int> shades(view.triangles.size());
    for (std::size_t t = 0; t < shades.size(); ++t) {
        const double area = PlanArea(view, t) * page.toPage.scale * page.toPage.scale;
        const double share = std::sqrt(std::max(0.0, (area - kFirstArea) / (kFullArea - kFirstArea)));
        shades[t] = static_cast<int>(std::ceil(std::min(1.0, share) * kShades));
    }
    for (int shade = 1; shade <= kShades; ++shade) {
        pen.Colour(kInk, kFullAlpha * shade / kShades);
        StrokeEdges(pen, view, page.toPage, 0.35, [&](std::size_t t, int neighbor) {
            const int other = neighbor < 0 ? 0 : shades[static_cast<std::size_t>(neighbor)];
            return std::max(shades[t], other) == shade;
        });
    }
    pen.Colour(kInk, 0.8);
    StrokeEdges(pen, view, page.toPage, 0.5, [](std::size_t, int neighbor) { return neighbor < 0; });
}

void DrawBreaklines(Pen& pen, const PlanView& view, const PageLayout& page)
{
    const double lineWidth = BreaklineWidth(view, page);
    const auto strokeAll = [&](double width) {
        for (const std::vector<Position>& line : view.lines) {
            for (const Position& p : line) {
                cairo_line_to(pen.Get(), page.toPage.X(p.x), page.toPage.Y(p.y));
            }
            pen.Stroke(width);
        }
    };
    pen.Colour(kWhite, 0.7);
    strokeAll(2.2 * lineWidth);
    pen.Colour(kBreakline);
    strokeAll(lineWidth);
    for (const Position& crossing : view.crossings) {
        pen.Mark(page.toPage.X(crossing.x), page.toPage.Y(crossing.y), 1.7 * lineWidth, kCrossing);
    }
}

}   // namespace qsvtin
