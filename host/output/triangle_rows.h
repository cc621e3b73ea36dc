#ifndef QSVTIN_OUTPUT_TRIANGLE_ROWS_H
#define QSVTIN_OUTPUT_TRIANGLE_ROWS_H

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

/// How much of the mean slope around its corners light sees on a triangle, the rest being its own: the ground is
/// smoother than its triangles, but a crease along a breakline is real.
constexpr double kSmoothShare = 0.65;

/// A place of a picture, y downwards.
struct Dot {
    double x = 0.0;
    double y = 0.0;
};

/// A quantity that changes linearly over a picture.
struct Plane {
    double atOrigin = 0.0;
    double alongX = 0.0;
    double alongY = 0.0;

    double At(double x, double y) const { return atOrigin + alongX * x + alongY * y; }
};

/// Twice the area of a triangle, above 0 when it runs clockwise in the picture.
inline double DoubledArea(const std::array<Dot, 3>& c)
{
    return (c[1].x - c[0].x) * (c[2].y - c[0].y) - (c[2].x - c[0].x) * (c[1].y - c[0].y);
}

/// The quantity that has these values at the corners; not finite when the triangle has no area.
inline Plane PlaneThrough(const std::array<Dot, 3>& c, const std::array<double, 3>& value)
{
    const double x1 = c[1].x - c[0].x, y1 = c[1].y - c[0].y, x2 = c[2].x - c[0].x, y2 = c[2].y - c[0].y;
    const double v1 = value[1] - value[0], v2 = value[2] - value[0], doubledArea = DoubledArea(c);
    const double alongX = (v1 * y2 - v2 * y1) / doubledArea, alongY = (v2 * x1 - v1 * x2) / doubledArea;
    return {value[0] - alongX * c[0].x - alongY * c[0].y, alongX, alongY};
}

/// A quantity over a triangle. A sliver's plane, tilted by rounding, does not leave the values of its corners.
struct Quantity {
    Plane plane;
    double lowest;
    double highest;

    Quantity(const std::array<Dot, 3>& corners, const std::array<double, 3>& values)
        : plane(PlaneThrough(corners, values)), lowest(std::min({values[0], values[1], values[2]})),
          highest(std::max({values[0], values[1], values[2]}))
    {
    }
    double At(double x, double y) const { return std::clamp(plane.At(x, y), lowest, highest); }
};

/// Where the edge between two corners crosses the middle of a row of samples. The upper corner always comes
/// first, so that both triangles of the edge find the same place to the bit.
inline double CrossingOfRow(const Dot& a, const Dot& b, double rowY)
{
    const bool inOrder = a.y < b.y || (a.y == b.y && a.x < b.x);
    const Dot &upper = inOrder ? a : b, &lower = inOrder ? b : a;
    return upper.x + (rowY - upper.y) / (lower.y - upper.y) * (lower.x - upper.x);
}

/// The first sample whose middle is not before a position; 0 .. count.
inline int FirstSampleFrom(double position, int count)
{
    return static_cast<int>(std::clamp(std::ceil(position - 0.5), 0.0, static_cast<double>(count)));
}

/// Calls visit(row, first column, column behind the last) for the samples of a triangle, row by row. A sample on
/// the edge of two triangles belongs to exactly one of them.
/// @param c  corners, in samples
template <class Visit>
void VisitRows(const std::array<Dot, 3>& c, int firstRow, int endRow, int width, Visit visit)
{
    const auto [top, bottom] = std::minmax({c[0].y, c[1].y, c[2].y});
    const int end = FirstSampleFrom(bottom, endRow);
    for (int row = std::max(firstRow, FirstSampleFrom(top, endRow)); row < end; ++row) {
        const double y = row + 0.5;
        double left = HUGE_VAL, right = -HUGE_VAL;
        for (std::size_t k = 0; k < 3; ++k) {
            const Dot &a = c[k], &b = c[(k + 1) % 3];
            if ((a.y <= y) == (b.y <= y)) continue;
            const double x = CrossingOfRow(a, b, y);
            left = std::min(left, x);
            right = std::max(right, x);
        }
        if (left > right) continue;
        const int first = FirstSampleFrom(left, width), behind = FirstSampleFrom(right, width);
        if (first < behind) visit(row, first, behind);
    }
}

}   // namespace qsvtin

#endif
