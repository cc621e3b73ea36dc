#include "host/terrain/boundary.h"

#include "host/failure.h"
#include "host/query/box_tree.h"
#include "host/terrain/edge_rings.h"
#include "host/terrain/plan_ring.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace qsvtin {

namespace {

Position CentreOf(const CTin& tin, int triangle)
{
    const CXYZ &a = CornerOf(tin, triangle, 0), &b = CornerOf(tin, triangle, 1),
               &c = CornerOf(tin, triangle, 2);
    return {(a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0, 0.0};
}

Box BoxAt(const Position& p)
{
    return {p.x, p.x, p.y, p.y};
}

BoxTree TreeOfCentres(const CTin& tin)
{
    std::vector<Box> boxes;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        boxes.push_back(BoxAt(CentreOf(tin, t)));
    }
    return BoxTree(boxes);
}

// Rings that lie in others come after them.
std::vector<const BoundaryRing*> FromOutside(const std::vector<BoundaryRing>& rings)
{
    std::vector<std::pair<double, const BoundaryRing*>> sized;
    for (const BoundaryRing& ring : rings) {
        sized.emplace_back(EnclosedArea(ring.line.points), &ring);
    }
    std::stable_sort(sized.begin(), sized.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<const BoundaryRing*> ordered;
    for (const auto& [area, ring] : sized) {
        ordered.push_back(ring);
    }
    return ordered;
}

// What the rings leave.
class Ground
{
public:
    Ground(const CTin& tin, const LocalOrigin& origin)
        : m_tin(tin), m_origin(origin), m_edgeRings(tin, origin),
          m_inOuter(static_cast<std::size_t>(tin.m_aTri.GetSize())), m_inHole(m_inOuter)
    {
    }

    // Rings must come from the outside inwards.
    void Add(const BoundaryRing& ring)
    {
        const bool isOuter = ring.kind == BoundaryRing::Outer;
        std::vector<bool>& marks = isOuter ? m_inOuter : m_inHole;
        m_bounded = m_bounded || isOuter;
        const auto found = m_edgeRings.TrianglesWithin(ring.line.points);
        for (const int t : found ? *found : WithCentreIn(ring)) {
            marks[static_cast<std::size_t>(t)] = ring.kind != BoundaryRing::Island;
        }
    }

    bool Holds(int triangle) const
    {
        const auto t = static_cast<std::size_t>(triangle);
        return (!m_bounded || m_inOuter[t]) && !m_inHole[t];
    }

private:
    std::vector<int> WithCentreIn(const BoundaryRing& ring)
    {
        std::vector<Position> corners = ring.line.points;
        Box around = BoxAt(m_origin.ToLocal(corners.front()));
        for (Position& corner : corners) {
            corner = m_origin.ToLocal(corner);
            around.Extend(BoxAt(corner));
        }
        const PlanRing plan(corners);
        if (!m_centres) m_centres = TreeOfCentres(m_tin);
        std::vector<int> within;
        m_centres->VisitTouching(around, [&](int t) {
            const Position centre = CentreOf(m_tin, t);
            if (plan.Encloses(centre.x, centre.y)) within.push_back(t);
        });
        return within;
    }

    const CTin& m_tin;
    const LocalOrigin& m_origin;
    const EdgeRings m_edgeRings;
    std::optional<BoxTree> m_centres;   // of the triangles, once they are asked for
    bool m_bounded = false;
    std::vector<bool> m_inOuter;   // of each triangle, here and below
    std::vector<bool> m_inHole;
};

}   // namespace

int CutToBoundaries(Terrain& terrain, const std::vector<BoundaryRing>& rings)
{
    if (rings.empty()) return 0;
    CTin& tin = terrain.tin;
    Ground ground(tin, terrain.origin);
    for (const BoundaryRing* const ring : FromOutside(rings)) {
        ground.Add(*ring);
    }
    int kept = 0;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (ground.Holds(t)) tin.m_aTri[kept++] = tin.m_aTri[t];
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
