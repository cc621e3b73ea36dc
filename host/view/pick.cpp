#include "host/view/pick.h"

#include <array>
#include <utility>

namespace qsvtin {

namespace {

Position Minus(const CXYZ& a, const Position& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double Determinant(const Position& a, const Position& b, const Position& c)
{
    return a.x * (b.y * c.z - b.z * c.y) + a.y * (b.z * c.x - b.x * c.z) + a.z * (b.x * c.y - b.y * c.x);
}

bool ComesBefore(const Position& a, const Position& b)
{
    return a.x != b.x ? a.x < b.x : a.y != b.y ? a.y < b.y : a.z < b.z;
}

// On which side of the edge from a to b the line passes. The corners are taken in the same order from both
// triangles of the edge, so that the two answers are exactly opposite.
double SideOfEdge(const Position& direction, const Position& a, const Position& b)
{
    return ComesBefore(a, b) ? Determinant(direction, a, b) : -Determinant(direction, b, a);
}

}   // namespace

std::optional<Hit> PickAt(const Scene& scene, const ViewFrame& frame, double x, double y)
{
    const Sight sight = frame.Through(x, y);
    const Position along = {sight.to.x - sight.from.x, sight.to.y - sight.from.y, sight.to.z - sight.from.z};
    std::optional<Hit> hit;
    double nearest = 2.0;   // share of the way from the near plane to the far one; ends at 1
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        std::array<Position, 3> c;
        for (std::size_t k = 0; k < 3; ++k) {
            c[k] = Minus(scene.Corner(t, static_cast<int>(k)), sight.from);
        }
        const double u = SideOfEdge(along, c[1], c[2]), v = SideOfEdge(along, c[2], c[0]),
                     w = SideOfEdge(along, c[0], c[1]);
        if ((u < 0.0 || v < 0.0 || w < 0.0) && (u > 0.0 || v > 0.0 || w > 0.0)) continue;
        const double volume = u + v + w;
        if (volume == 0.0) continue;
        // A share of each corner: the place inside the triangle, which rounding cannot leave.
        const double a = u / volume, b = v / volume, d = w / volume;
        const Position at = {a * c[0].x + b * c[1].x + d * c[2].x, a * c[0].y + b * c[1].y + d * c[2].y,
                             a * c[0].z + b * c[1].z + d * c[2].z};
        const double share = (at.x * along.x + at.y * along.y + at.z * along.z) /
                             (along.x * along.x + along.y * along.y + along.z * along.z);
        if (share >= nearest) continue;
        nearest = share;
        hit = Hit{t, scene.ToSurvey({sight.from.x + at.x, sight.from.y + at.y, sight.from.z + at.z})};
    }
    return hit;
}

}   // namespace qsvtin
