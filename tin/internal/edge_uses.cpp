#include "tin/internal/edge_uses.h"

#include <algorithm>
#include <climits>
#include <new>

#include "tin/internal/slots.h"

namespace qsv {

namespace {

bool IsSameEdge(const EdgeUse& a, const EdgeUse& b)
{
    return a.nLow == b.nLow && a.nHigh == b.nHigh;
}

bool StandsBefore(const EdgeUse& a, const EdgeUse& b)
{
    if (a.nLow != b.nLow) {
        return a.nLow < b.nLow;
    }
    if (a.nHigh != b.nHigh) {
        return a.nHigh < b.nHigh;
    }
    return a.nTri != b.nTri ? a.nTri < b.nTri : a.nEdge < b.nEdge;
}

}   // namespace

Array<EdgeUse> SortedEdgeUses(const CArray<CTriangle>& aTri)
{
    if (aTri.GetSize() > INT_MAX / 3) {
        throw std::bad_alloc();   // more than an array holds
    }
    Array<EdgeUse> aUse;
    aUse.SetSize(3 * aTri.GetSize(), -1);
    for (int t = 0; t < aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const int nFrom = aTri[t].m_nVertex[k], nTo = aTri[t].m_nVertex[NextSlot(k)];
            aUse[3 * t + k] = {std::min(nFrom, nTo), std::max(nFrom, nTo), t, k, nFrom <= nTo};
        }
    }
    std::sort(aUse.GetData(), aUse.GetData() + aUse.GetSize(), StandsBefore);
    return aUse;
}

int EndOfEdge(const CArray<EdgeUse>& aUse, int nFirst)
{
    int nEnd = nFirst + 1;
    while (nEnd < aUse.GetSize() && IsSameEdge(aUse[nEnd], aUse[nFirst])) {
        ++nEnd;
    }
    return nEnd;
}

}   // namespace qsv
