#include "tin/internal/plan_search.h"

namespace qsv {

namespace {

constexpr int kMostSteps = 1000;
constexpr int kMostSurveyed = 40;   // triangles; where more meet, the walk decides

// Collects where a walk to a place could stop.
class Stops
{
public:
    // False when the answers so far do not tell where the walk ends.
    bool Add(int nTri, const WalkAnswer& answer)
    {
        if (!answer.bStops) {
            return true;
        }
        if (m_found.nTri >= 0 && !(m_found.nState == kOnVertex && answer.eState == kOnVertex)) {
            return false;
        }
        m_found = {nTri, answer.eState, answer.corner};
        // Two triangles share an edge: which comes first depends on the way.
        return answer.eState != kOnEdge;
    }
    const PlanLocation& Found() const { return m_found; }

private:
    PlanLocation m_found;
};

}   // namespace

Corner PlanSearch::Begin(const PlanPlace& p, int nTri) const
{
    const Corner at(nTri, 0), across = m_mesh.Across(at);
    const bool bBeyond = RightOf(m_mesh.PlaceAt(at.Next()), m_mesh.PlaceAt(at.Prev()), p) > m_tolerance.dEPS2;
    return bBeyond && !across.IsOutside() ? across : at;
}

bool PlanSearch::Step(const PlanPlace& p, Corner& at) const
{
    const Corner next = at.Next(), prev = at.Prev();
    const PlanPlace& a = m_mesh.PlaceAt(at);
    const double dFacingPrev = RightOf(a, m_mesh.PlaceAt(next), p),
                 dFacingNext = RightOf(m_mesh.PlaceAt(prev), a, p);
    const Corner across = m_mesh.Across(dFacingPrev > dFacingNext ? prev : next);
    if (!(dFacingPrev > m_tolerance.dEPS2 || dFacingNext > m_tolerance.dEPS2) || across.IsOutside()) {
        return false;
    }
    at = across;
    return true;
}

PlanLocation PlanSearch::Find(const PlanPlace& p, Corner near, int nFar) const
{
    if (m_bTrusted && !m_traps.HasFlat()) {
        for (int i = 0; i < kMostSteps && Step(p, near); ++i) {}
        if (IsDeepInside(p, near) && !m_traps.AnyNear(p)) {
            return {near.Tri(), kInside, near};
        }
        const PlanLocation found = Survey(p, near.Tri());
        if (found.nTri >= 0) {
            return found;
        }
    }
    return WalkToPoint(m_mesh, nFar, p, m_tolerance);
}

// Whether a place on the inner side of the edge from a to b is farther than the reach from it.
bool PlanSearch::IsBeyondReach(const PlanPlace& a, const PlanPlace& b, const PlanPlace& p) const
{
    const double ex = b.x - a.x, ey = b.y - a.y;
    const double s = RightOf(a, b, p);
    return s < -m_tolerance.dEPS2 && s * s > m_traps.Reach() * m_traps.Reach() * (ex * ex + ey * ey);
}

bool PlanSearch::IsDeepInside(const PlanPlace& p, Corner corner) const
{
    const PlanPlace &a = m_mesh.PlaceAt(corner), &b = m_mesh.PlaceAt(corner.Next()),
                    &c = m_mesh.PlaceAt(corner.Prev());
    return IsBeyondReach(a, b, p) && IsBeyondReach(b, c, p) && IsBeyondReach(c, a, p);
}

// Asks all triangles within the reach of p, the one that holds p first, and the traps. No triangle when they do
// not tell where the walk ends. Close to the outline a walk could leave the mesh, unless it ends at a vertex:
// that comes to the same.
PlanLocation PlanSearch::Survey(const PlanPlace& p, int nTri) const
{
    int aSeen[kMostSurveyed] = {nTri};
    int nSeen = 1;
    const auto isSeen = [&aSeen, &nSeen](int t) {
        int i = 0;
        while (i < nSeen && aSeen[i] != t) {
            ++i;
        }
        return i < nSeen;
    };
    Stops stops;
    bool bAtOutline = false;
    for (int i = 0; i < nSeen; ++i) {
        if (!stops.Add(aSeen[i], AskTriangle(m_mesh, aSeen[i], p, m_tolerance))) {
            return {};
        }
        for (int k = 0; k < 3; ++k) {
            const Corner corner(aSeen[i], k), across = m_mesh.Across(corner);
            if (IsBeyondReach(m_mesh.PlaceAt(corner.Next()), m_mesh.PlaceAt(corner.Prev()), p)) {
                continue;
            }
            bAtOutline = bAtOutline || across.IsOutside();
            if (!across.IsOutside() && !isSeen(across.Tri())) {
                if (nSeen == kMostSurveyed) {
                    return {};
                }
                aSeen[nSeen++] = across.Tri();
            }
        }
    }
    const bool bTold = m_traps.ForEachNear(
        p, [&](int t) { return isSeen(t) || stops.Add(t, AskTriangle(m_mesh, t, p, m_tolerance)); });
    if (!bTold) {
        return {};
    }
    return bAtOutline && stops.Found().nState != kOnVertex ? PlanLocation() : stops.Found();
}

}   // namespace qsv
