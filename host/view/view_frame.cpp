#include "host/view/view_frame.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

// Distance of the eye from the centre, in radii of the ground. At 3 the ground takes up 40 degrees of the view.
constexpr double kPerspectiveDistance = 3.0, kParallelDistance = 1e5;

double Radians(double degrees)
{
    return degrees * (std::acos(-1.0) / 180.0);
}

double RadiusOf(const std::vector<Position>& ground)
{
    double radius = 0.0;
    for (const Position& p : ground) {
        radius = std::max(radius, std::hypot(p.x, p.y, p.z));
    }
    return radius > 0.0 ? radius : 1.0;
}

struct Bounds {
    double left = HUGE_VAL;
    double right = -HUGE_VAL;
    double bottom = HUGE_VAL;
    double top = -HUGE_VAL;
};

// What the ground covers on the near plane.
Bounds CoverOf(CProjection& projection, const std::vector<Position>& ground)
{
    Bounds cover;
    for (const Position& p : ground) {
        double x = 0.0, y = 0.0, depth = 0.0;
        int inside = 0;
        projection.Transform(p.x, p.y, p.z, x, y, depth, inside, 0);
        cover.left = std::min(cover.left, x);
        cover.right = std::max(cover.right, x);
        cover.bottom = std::min(cover.bottom, y);
        cover.top = std::max(cover.top, y);
    }
    return cover;
}

}   // namespace

ViewFrame::ViewFrame(const View& view, const std::vector<Position>& ground, const Rect& frame, int width,
                     int height)
    : m_width(width), m_height(height)
{
    const double radius = RadiusOf(ground);
    const double distance = (view.perspective ? kPerspectiveDistance : kParallelDistance) * radius;
    const double nearest = distance - 1.01 * radius, farthest = distance + 1.01 * radius;
    m_projection.InitMatrix(MODEL_MATRIX);
    m_projection.RotateZ(Radians(view.azimuth - 180.0));
    m_projection.RotateX(Radians(view.elevation - 90.0));
    m_projection.Translate(0.0, 0.0, -distance);

    m_projection.SetPrjMatrix(-radius, radius, radius, -radius, nearest, farthest);
    m_projection.BeginTrans(0);
    const Bounds cover = CoverOf(m_projection, ground);
    const double leastExtent = 1e-6 * radius;   // a wall seen from its end has none
    m_pixels = std::min(frame.width / std::max(cover.right - cover.left, leastExtent),
                        frame.height / std::max(cover.top - cover.bottom, leastExtent));
    m_left = (cover.left + cover.right) / 2.0 - (frame.left + frame.width / 2.0) / m_pixels;
    m_top = (cover.bottom + cover.top) / 2.0 + (frame.top + frame.height / 2.0) / m_pixels;

    m_projection.SetPrjMatrix(m_left, m_left + width / m_pixels, m_top, m_top - height / m_pixels, nearest,
                              farthest);
    m_projection.BeginTrans(1);
}

Seen ViewFrame::ToPicture(const Position& at) const
{
    auto& projection = const_cast<CProjection&>(m_projection);   // Transform only reads
    double x = 0.0, y = 0.0;
    Seen seen;
    int inside = 0;
    projection.Transform(at.x, at.y, at.z, x, y, seen.depth, inside, 0);
    seen.x = (x - m_left) * m_pixels;
    seen.y = (m_top - y) * m_pixels;
    const double* const m = m_projection.m_ModelMatrix;
    seen.distance = -(m[8] * at.x + m[9] * at.y + m[10] * at.z + m[11]);
    return seen;
}

Sight ViewFrame::Through(double x, double y) const
{
    auto& projection = const_cast<CProjection&>(m_projection);   // Inverse only reads
    const double nearX = m_left + x / m_pixels, nearY = m_top - y / m_pixels;
    Sight sight;
    projection.Inverse(nearX, nearY, -1.0, sight.from.x, sight.from.y, sight.from.z);
    projection.Inverse(nearX, nearY, 1.0, sight.to.x, sight.to.y, sight.to.z);
    return sight;
}

}   // namespace qsvtin
