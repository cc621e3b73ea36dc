#include <cmath>

#include "base/sort_key.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// The vertices by their direction from the centre of the plan range, -pi .. pi.
struct Directions {
    CXYZ centre;
    Array<double> aKey;   // ascending
    Array<int> aVertex;   // the vertex of each key
};

Directions SortByDirection(const CArray<CXYZ>& aVertex, const CXYZ& lower, const CXYZ& upper)
{
    Directions dir;
    dir.centre.SetXYZ((lower.x + upper.x) / 2.0, (lower.y + upper.y) / 2.0, (lower.z + upper.z) / 2.0);
    dir.aKey.SetSize(aVertex.GetSize(), -1);
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        dir.aKey[i] = std::atan2(aVertex[i].y - dir.centre.y, aVertex[i].x - dir.centre.x);
    }
    QuickSortKey(dir.aKey, dir.aVertex, 1);
    return dir;
}

// Of the vertices nFirst .. nEnd-1 of the sorted list, the one farthest from the centre, the first of
// equally far ones; -1 when all of them lie at the centre.
int FarthestOf(const CArray<CXYZ>& aVertex, const Directions& dir, int nFirst, int nEnd)
{
    int nFarthest = -1;
    double dFarthest = 0.0;
    for (int i = nFirst; i < nEnd; ++i) {
        const double dx = aVertex[dir.aVertex[i]].x - dir.centre.x;
        const double dy = aVertex[dir.aVertex[i]].y - dir.centre.y;
        if (dx * dx + dy * dy > dFarthest) {
            dFarthest = dx * dx + dy * dy;
            nFarthest = dir.aVertex[i];
        }
    }
    return nFarthest;
}

}   // namespace

// A star-shaped ring about the centre of the range: of every direction that occurs, the farthest vertex.
int CTin::MakeBoundaryFromPts()
{
    if (m_aVertex.GetSize() < 3 || !UpdatePtRange()) {
        return 0;
    }
    if (m_MaxXYZ.x - m_MinXYZ.x <= m_dEPS && m_MaxXYZ.y - m_MinXYZ.y <= m_dEPS) {
        return 0;
    }
    const Directions dir = SortByDirection(m_aVertex, m_MinXYZ, m_MaxXYZ);
    const int n = m_aVertex.GetSize();
    m_aBoundary.SetSize(0, -1);
    for (int nFirst = 0, nEnd = 0; nFirst < n; nFirst = nEnd) {
        for (nEnd = nFirst + 1; nEnd < n && dir.aKey[nEnd] == dir.aKey[nFirst]; ++nEnd) {}
        const int nVt = nEnd - nFirst == 1 ? dir.aVertex[nFirst] : FarthestOf(m_aVertex, dir, nFirst, nEnd);
        if (nVt >= 0) {
            m_aBoundary.Add(nVt);
        }
    }
    return m_aBoundary.GetSize() >= 3 ? 1 : 0;
}

namespace {

// Ring positions from which entries are taken out. Both links of a position step over what was removed.
class LiveRing
{
public:
    explicit LiveRing(int n) : m_nLive(n)
    {
        m_aNext.SetSize(n, -1);
        m_aPrev.SetSize(n, -1);
        for (int i = 0; i < n; ++i) {
            m_aNext[i] = i + 1 < n ? i + 1 : -1;
            m_aPrev[i] = i - 1;
        }
    }

    int Size() const { return m_nLive; }
    int First() const { return m_nFirst; }
    // The live position before i, -1 when i is the first: this direction does not wrap.
    int Before(int i) const { return m_aPrev[i]; }
    // The live position after i, -1 when i is the last.
    int After(int i) const { return m_aNext[i]; }
    int AfterCyclic(int i) const { return m_aNext[i] >= 0 ? m_aNext[i] : m_nFirst; }

    void Remove(int i)
    {
        (m_aPrev[i] >= 0 ? m_aNext[m_aPrev[i]] : m_nFirst) = m_aNext[i];
        if (m_aNext[i] >= 0) {
            m_aPrev[m_aNext[i]] = m_aPrev[i];
        }
        --m_nLive;
    }

private:
    CArray<int> m_aNext, m_aPrev;
    int m_nLive;
    int m_nFirst = 0;
};

}   // namespace

// Scans the ring for corners that do not turn counter-clockwise and takes them out; after each, the corner
// before is tested again. Graham, "An efficient algorithm for determining the convex hull of a finite
// planar set", 1972.
int CTin::MakeConvexHull()
{
    const int n = m_aBoundary.GetSize();
    if (n <= 3) {
        return n == 3 ? 1 : 0;
    }
    LiveRing ring(n);
    int i0 = 0, i1 = 1, i2 = 2;
    while (ring.Size() >= 3) {
        if (CheckTurn(m_aVertex[m_aBoundary[i0]], m_aVertex[m_aBoundary[i1]], m_aVertex[m_aBoundary[i2]]) ==
            -1) {
            if (i0 > i1) {
                break;   // round once, past the start
            }
            i0 = i1;
            i1 = i2;
            i2 = ring.AfterCyclic(i2);
            continue;
        }
        ring.Remove(i1);
        const int nBefore = ring.Before(i0);
        if (nBefore >= 0) {
            i1 = i0;
            i0 = nBefore;
        } else {
            i1 = i2;
            i2 = ring.AfterCyclic(i2);
        }
    }
    CArray<int> aHull;
    for (int i = ring.First(); i >= 0; i = ring.After(i)) {
        aHull.Add(m_aBoundary[i]);
    }
    m_aBoundary.Copy(aHull);
    return m_aBoundary.GetSize() >= 3 ? 1 : 0;
}

// A fan about the first ring vertex. Each diagonal is made Delaunay as soon as both its triangles stand;
// the link to the triangle that follows is written ahead, and cut off behind the last one.
int CTin::MakeTinForConvexHull()
{
    const int nTriangles = m_aBoundary.GetSize() - 2;
    m_aTri.SetSize(nTriangles, -1);
    for (int t = 0; t < nTriangles; ++t) {
        m_aTri[t] = MakeTriangle(m_aBoundary[0], m_aBoundary[t + 1], m_aBoundary[t + 2], t + 1, t - 1, -1);
        Optimization(t, 2);
    }
    m_aTri[nTriangles - 1].m_nNeighbor[0] = -1;
    return 1;
}
