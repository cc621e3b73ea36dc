#include "host/terrain/plan_ring.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

PlanRing::PlanRing(const std::vector<Position>& corners) : m_strips(corners.size())
{
    const auto [lowest, highest] = std::minmax_element(
        corners.begin(), corners.end(), [](const Position& a, const Position& b) { return a.y < b.y; });
    m_low = lowest->y;
    m_high = highest->y;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Edge edge{corners[i], corners[(i + 1) % corners.size()]};
        const auto [low, high] = std::minmax(edge.from.y, edge.to.y);
        for (std::size_t strip = StripAt(low); strip <= StripAt(high); ++strip) {
            m_strips[strip].push_back(edge);
        }
    }
}

bool PlanRing::Encloses(double x, double y) const
{
    if (!(y >= m_low && y <= m_high)) return false;
    bool inside = false;
    for (const Edge& e : m_strips[StripAt(y)]) {
        if ((e.from.y > y) == (e.to.y > y)) continue;
        const double crossing = e.from.x + (y - e.from.y) * (e.to.x - e.from.x) / (e.to.y - e.from.y);
        if (crossing > x) inside = !inside;
    }
    return inside;
}

std::size_t PlanRing::StripAt(double y) const
{
    const double height = m_high - m_low;
    if (!(height > 0.0)) return 0;
    const auto strip = static_cast<std::size_t>((y - m_low) / height * static_cast<double>(m_strips.size()));
    return std::min(strip, m_strips.size() - 1);
}

double EnclosedArea(const std::vector<Position>& corners)
{
    double doubled = 0.0;   // by triangles from the first corner, so that large coordinates cost no digits
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const Position &a = corners[0], &b = corners[i], &c = corners[i + 1];
        doubled += (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    }
    return std::fabs(doubled) / 2.0;
}

}   // namespace qsvtin
