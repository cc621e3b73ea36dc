#include "tin/internal/plan_search.h"

#include "tin/internal/slots.h"

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
        m_found = {nTri, answer.eState, answer.nSide};
        return answer.eState !=
               kOnEdge;   // two triangles share an edge: which comes first depends on the way
    }
    const Location& Found() const { return m_found; }

private:
    Location m_found;
};

}   // namespace

bool PlanSearch::Step(const PlanPlace& p, int& nTri) const
{
    const PlanTriangle& tri = m_mesh[nTri];
    const PlanPlace &a = m_mesh.Corner(tri, 0), &b = m_mesh.Corner(tri, 1), &c = m_mesh.Corner(tri, 2);
    const double aBeyond[3] = {RightOf(a, b, p), RightOf(b, c, p), RightOf(c, a, p)};
    int k = aBeyond[1] > aBeyond[0] ? 1 : 0;
    k = aBeyond[2] > aBeyond[k] ? 2 : k;
    if (!(aBeyond[k] > m_tolerance.dEPS2) || tri.aLink[k].IsOutside()) {
        return false;
    }
    nTri = tri.aLink[k].Tri();
    return true;
}

Location PlanSearch::Find(const PlanPlace& p, int nNear, int nFar) const
{
    if (m_bTrusted && !m_traps.HasFlat()) {
        int nTri = nNear;
        for (int i = 0; i < kMostSteps && Step(p, nTri); ++i) {}
        if (m_traps.Count() == 0 && IsDeepInside(p, nTri)) {
            return {nTri, kInside, 0};
        }
        const Location found = Survey(p, nTri);
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

bool PlanSearch::IsDeepInside(const PlanPlace& p, int nTri) const
{
    const PlanTriangle& tri = m_mesh[nTri];
    const PlanPlace &a = m_mesh.Corner(tri, 0), &b = m_mesh.Corner(tri, 1), &c = m_mesh.Corner(tri, 2);
    return IsBeyondReach(a, b, p) && IsBeyondReach(b, c, p) && IsBeyondReach(c, a, p);
}

// Asks all triangles within the reach of p, the one that holds p first, and all traps. No triangle when they do
// not tell where the walk ends. Close to the outline a walk could leave the mesh, unless it ends at a vertex:
// that comes to the same.
Location PlanSearch::Survey(const PlanPlace& p, int nTri) const
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
        const PlanTriangle& tri = m_mesh[aSeen[i]];
        for (int k = 0; k < 3; ++k) {
            if (IsBeyondReach(m_mesh.Corner(tri, k), m_mesh.Corner(tri, NextSlot(k)), p)) {
                continue;
            }
            bAtOutline = bAtOutline || tri.aLink[k].IsOutside();
            if (!tri.aLink[k].IsOutside() && !isSeen(tri.aLink[k].Tri())) {
                if (nSeen == kMostSurveyed) {
                    return {};
                }
                aSeen[nSeen++] = tri.aLink[k].Tri();
            }
        }
    }
    for (int i = 0; i < m_traps.Count(); ++i) {
        const int t = m_traps.TriangleAt(i);
        if (!isSeen(t) && !stops.Add(t, AskTriangle(m_mesh, t, p, m_tolerance))) {
            return {};
        }
    }
    return bAtOutline && stops.Found().nState != kOnVertex ? Location() : stops.Found();
}

}   // namespace qsv
