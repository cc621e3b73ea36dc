#include "host/terrain/boundary.h"

#include "host/failure.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace qsvtin {

namespace {

struct Edge {
    Position from;
    Position to;
};

// A ring in plan, its edges in level strips so that a look at a place sees a few of them only.
class PlanRing
{
public:
    PlanRing(const std::vector<Position>& corners, const LocalOrigin& origin)
    {
        m_low = m_high = origin.ToLocal(corners.front()).y;
        for (const Position& corner : corners) {
            m_low = std::min(m_low, origin.ToLocal(corner).y);
            m_high = std::max(m_high, origin.ToLocal(corner).y);
        }
        m_strips.resize(corners.size());
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Edge edge{origin.ToLocal(corners[i]), origin.ToLocal(corners[(i + 1) % corners.size()])};
            const auto [low, high] = std::minmax(edge.from.y, edge.to.y);
            for (std::size_t strip = StripAt(low); strip <= StripAt(high); ++strip) {
                m_strips[strip].push_back(edge);
            }
        }
    }

    // Counts the edges that a ray to the east crosses.
    bool Encloses(double x, double y) const
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

private:
    std::size_t StripAt(double y) const
    {
        const double height = m_high - m_low;
        if (!(height > 0.0)) return 0;
        const auto strip =
            static_cast<std::size_t>((y - m_low) / height * static_cast<double>(m_strips.size()));
        return std::min(strip, m_strips.size() - 1);
    }

    double m_low = 0.0;
    double m_high = 0.0;
    std::vector<std::vector<Edge>> m_strips;
};

class Ground
{
public:
    Ground(const std::vector<BoundaryRing>& rings, const LocalOrigin& origin)
    {
        for (const BoundaryRing& ring : rings) {
            m_rings[static_cast<std::size_t>(ring.kind)].emplace_back(ring.line.points, origin);
        }
    }

    bool Holds(double x, double y) const
    {
        const auto inOne = [&](BoundaryRing::Kind kind) {
            const std::vector<PlanRing>& rings = m_rings[static_cast<std::size_t>(kind)];
            return std::any_of(rings.begin(), rings.end(),
                               [&](const PlanRing& ring) { return ring.Encloses(x, y); });
        };
        const bool unbounded = m_rings[static_cast<std::size_t>(BoundaryRing::Outer)].empty();
        if (!unbounded && !inOne(BoundaryRing::Outer)) return false;
        return !inOne(BoundaryRing::Void) || inOne(BoundaryRing::Island);
    }

private:
    std::array<std::vector<PlanRing>, 3> m_rings;   // by kind
};

}   // namespace

int CutToBoundaries(Terrain& terrain, const std::vector<BoundaryRing>& rings)
{
    if (rings.empty()) return 0;
    const Ground ground(rings, terrain.origin);
    CTin& tin = terrain.tin;
    int kept = 0;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ &a = CornerOf(tin, t, 0), &b = CornerOf(tin, t, 1), &c = CornerOf(tin, t, 2);
        if (!ground.Holds((a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0)) continue;
        tin.m_aTri[kept++] = tin.m_aTri[t];
    }
    const int cut = tin.m_aTri.GetSize() - kept;
    if (kept == 0) {
        throw Failure("the boundary in the survey leaves no triangle; do its coordinates match the points'?");
    }
    if (cut == 0) return 0;
    tin.m_aTri.SetSize(kept);
    tin.UpdateTopology();
    tin.UpdateBoundary();
    tin.UpdateTinRange();
    tin.UpdateNormal();
    return cut;
}

}   // namespace qsvtin
