#include "host/view/painter.h"

#include "host/view/painting_order.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

struct Point {
    double x;   // in samples
    double y;
};

// Where the edge between two corners crosses the middle of a row of samples. The upper corner always comes
// first, so that both triangles of the edge find the same place to the bit.
double CrossingOfRow(const Point& a, const Point& b, double rowY)
{
    const bool inOrder = a.y < b.y || (a.y == b.y && a.x < b.x);
    const Point &upper = inOrder ? a : b, &lower = inOrder ? b : a;
    return upper.x + (rowY - upper.y) / (lower.y - upper.y) * (lower.x - upper.x);
}

int FirstSampleFrom(double position, int count)
{
    return static_cast<int>(std::clamp(std::ceil(position - 0.5), 0.0, static_cast<double>(count)));
}

void FillRow(const std::array<Point, 3>& c, int row, int triangle, Band& band)
{
    const double y = row + 0.5;
    double left = HUGE_VAL, right = -HUGE_VAL;
    for (std::size_t k = 0; k < 3; ++k) {
        const Point &a = c[k], &b = c[(k + 1) % 3];
        if ((a.y <= y) == (b.y <= y)) continue;
        const double x = CrossingOfRow(a, b, y);
        left = std::min(left, x);
        right = std::max(right, x);
    }
    if (left > right) return;
    const int first = FirstSampleFrom(left, band.width), last = FirstSampleFrom(right, band.width);
    const auto start = band.owners.begin() + static_cast<std::ptrdiff_t>(row - band.firstRow) * band.width;
    if (first < last) std::fill(start + first, start + last, triangle);
}

}   // namespace

Drawing MakeDrawing(const Scene& scene, const ViewFrame& frame)
{
    Drawing drawing;
    for (int v = 0; v < scene.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = scene.tin.m_aVertex[v];
        drawing.vertices.push_back(frame.ToPicture({p.x, p.y, p.z}));
    }
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        const int* const corner = scene.tin.m_aTri[t].m_nVertex;
        drawing.triangles.push_back({corner[0], corner[1], corner[2]});
    }
    drawing.order = OrderForPainting(scene, drawing.vertices);
    return drawing;
}

void Paint(const Drawing& drawing, int samples, Band& band)
{
    band.owners.assign(static_cast<std::size_t>(band.width) * static_cast<std::size_t>(band.rows), -1);
    const int endRow = band.firstRow + band.rows;
    for (const int t : drawing.order) {
        const std::array<int, 3>& triangle = drawing.triangles[static_cast<std::size_t>(t)];
        std::array<Point, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) {
            const Seen& seen = drawing.vertices[static_cast<std::size_t>(triangle[k])];
            corners[k] = {samples * seen.x, samples * seen.y};
        }
        const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
        const int last = FirstSampleFrom(bottom, endRow);
        for (int row = std::max(band.firstRow, FirstSampleFrom(top, endRow)); row < last; ++row) {
            FillRow(corners, row, t, band);
        }
    }
}

}   // namespace qsvtin
