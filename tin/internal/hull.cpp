#include "tin/internal/hull.h"

#include <cmath>

#include "base/sort_key.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

// Of the vertices at the positions nFirst .. nEnd-1, the one farthest from the centre, the first of equally far ones;
// -1 when all of them lie at the centre.
int FarthestOf(const CArray<CXYZ>& aVertex, const CArray<int>& aSorted, int nFirst, int nEnd,
               const CXYZ& centre)
{
    int nFarthest = -1;
    double dFarthest = 0.0;
    for (int i = nFirst; i < nEnd; ++i) {
        const double dx = aVertex[aSorted[i]].x - centre.x;
        const double dy = aVertex[aSorted[i]].y - centre.y;
        if (dx * dx + dy * dy > dFarthest) {
            dFarthest = dx * dx + dy * dy;
            nFarthest = aSorted[i];
        }
    }
    return nFarthest;
}

}   // namespace

CXYZ MiddleOf(const CXYZ& lower, const CXYZ& upper)
{
    return CXYZ((lower.x + upper.x) / 2.0, (lower.y + upper.y) / 2.0, (lower.z + upper.z) / 2.0);
}

Array<int> StarRing(const CArray<CXYZ>& aVertex, const CArray<int>& aFrom, const CXYZ& centre)
{
    const int n = aFrom.GetSize();
    Array<double> aKey;
    Array<int> aSorted;
    aKey.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        aKey[i] = std::atan2(aVertex[aFrom[i]].y - centre.y, aVertex[aFrom[i]].x - centre.x);
    }
    QuickSortKey(aKey, aSorted, 1);
    for (int i = 0; i < n; ++i) {
        aSorted[i] = aFrom[aSorted[i]];
    }
    Array<int> aRing;
    for (int nFirst = 0, nEnd = 0; nFirst < n; nFirst = nEnd) {
        for (nEnd = nFirst + 1; nEnd < n && aKey[nEnd] == aKey[nFirst]; ++nEnd) {}
        const int nVt =
            nEnd - nFirst == 1 ? aSorted[nFirst] : FarthestOf(aVertex, aSorted, nFirst, nEnd, centre);
        if (nVt >= 0) {
            aRing.Add(nVt);
        }
    }
    return aRing;
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

Array<int> ScanHull(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS2)
{
    const int n = aRing.GetSize();
    if (n <= 3) {
        return Array<int>(aRing);
    }
    LiveRing ring(n);
    int i0 = 0, i1 = 1, i2 = 2;
    while (ring.Size() >= 3) {
        const double dArea = DoubledArea(aVertex[aRing[i0]], aVertex[aRing[i1]], aVertex[aRing[i2]]);
        if (SideOf(dArea, dEPS2) == Side::Left) {
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
    Array<int> aHull;
    for (int i = ring.First(); i >= 0; i = ring.After(i)) {
        aHull.Add(aRing[i]);
    }
    return aHull;
}

}   // namespace qsv
