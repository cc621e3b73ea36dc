#include "tin/internal/triangle_removal.h"

#include <algorithm>

#include "tin/internal/mesh.h"

namespace qsv {

namespace {

// Where there were fewer normals than triangles, the counts can become equal on the way. From that deletion
// on the normals stand for the triangles that were left just before it.
void RemoveNormals(CArray<CXYZ>& aTriNormal, const CArray<int>& aDeletion, int nDeleted)
{
    const int nTriangles = aDeletion.GetSize();
    const int nSpared = nTriangles - aTriNormal.GetSize();   // deletions until the counts are equal
    const int nLast = nDeleted == nTriangles ? nDeleted - 1 : nDeleted;
    if (nSpared < 0 || nSpared >= nLast) {
        return;
    }
    int nAt = 0, nKept = 0;
    for (int t = 0; t < nTriangles; ++t) {
        const int nDeletion = aDeletion[t];
        if (nDeletion != 0 && nDeletion <= nSpared) {
            continue;   // went before there was a normal for it
        }
        if (nDeletion == 0 || nDeletion > nLast) {
            aTriNormal[nKept++] = aTriNormal[nAt];
        }
        ++nAt;
    }
    aTriNormal.SetSize(nKept, -1);
}

}   // namespace

void RemoveTriangles(CArray<CTriangle>& aTri, CArray<CXYZ>& aTriNormal, const CArray<int>& aDeletion,
                     int nDeleted)
{
    RemoveNormals(aTriNormal, aDeletion, nDeleted);
    CArray<int> aNewIndex;
    aNewIndex.SetSize(aTri.GetSize(), -1);
    int nKept = 0;
    for (int t = 0; t < aTri.GetSize(); ++t) {
        aNewIndex[t] = aDeletion[t] == 0 ? nKept++ : -1;
    }
    for (int t = 0; t < aTri.GetSize(); ++t) {
        if (aNewIndex[t] < 0) {
            continue;
        }
        CTriangle& tri = aTri[aNewIndex[t]] = aTri[t];
        for (int& nNeighbor : tri.m_nNeighbor) {
            if (IsIndexOf(aNewIndex, nNeighbor)) {
                nNeighbor = aNewIndex[nNeighbor];
            } else if (nNeighbor >= 0) {
                nNeighbor -= nDeleted;   // leads nowhere, and goes on doing so
            }
        }
    }
    aTri.SetSize(nKept, -1);
}

namespace {

// Numbers 0 .. nCount-1 without a few of them. How many of those are below another number is kept for spans of
// numbers: that little stays near at hand, while numbers are asked about in no order.
class WithoutFew
{
public:
    WithoutFew(int nCount, const CArray<int>& aGone) : m_aGone(aGone)
    {
        m_aBelow.SetSize(nCount / kSpan + 1, -1);
        int nBelow = 0;
        for (int span = 0; span < m_aBelow.GetSize(); ++span) {
            m_aBelow[span] = nBelow;
            while (nBelow < aGone.GetSize() && aGone[nBelow] / kSpan == span) {
                ++nBelow;
                m_aBelow[span] = kMixed;
            }
        }
    }

    // The place of n among those that are left; -1 when it is not.
    int PlaceOf(int n) const
    {
        const int nBelow = m_aBelow[static_cast<int>(static_cast<unsigned>(n) / kSpan)];
        return nBelow != kMixed ? n - nBelow : ExactPlaceOf(n);
    }

private:
    static constexpr int kSpan = 1024;
    static constexpr int kMixed = -1;   // one of the few is in this span

    int ExactPlaceOf(int n) const
    {
        const int* const pFirst = m_aGone.GetData();
        const int* const pEnd = pFirst + m_aGone.GetSize();
        const int* const pFound = std::lower_bound(pFirst, pEnd, n);
        return pFound != pEnd && *pFound == n ? -1 : n - static_cast<int>(pFound - pFirst);
    }

    const CArray<int>& m_aGone;
    CArray<int> m_aBelow;
};

}   // namespace

void RemoveFewTriangles(CArray<CTriangle>& aTri, CArray<CXYZ>& aTriNormal, const CArray<int>& aGone)
{
    const int nTriangles = aTri.GetSize(), nDeleted = aGone.GetSize();
    const WithoutFew left(nTriangles, aGone);
    if (!aTriNormal.IsEmpty()) {
        CArray<int> aDeletion;
        aDeletion.SetSize(nTriangles, -1);
        for (int i = 0; i < nDeleted; ++i) {
            aDeletion[aGone[i]] = i + 1;
        }
        RemoveNormals(aTriNormal, aDeletion, nDeleted);
    }
    int nKept = 0, nNextGone = 0;
    for (int t = 0; t < nTriangles; ++t) {
        if (nNextGone < nDeleted && t == aGone[nNextGone]) {
            ++nNextGone;
            continue;
        }
        CTriangle& tri = aTri[nKept++] = aTri[t];
        for (int& nNeighbor : tri.m_nNeighbor) {
            if (nNeighbor >= nTriangles) {
                nNeighbor -= nDeleted;   // leads nowhere, and goes on doing so
            } else if (nNeighbor >= 0) {
                nNeighbor = left.PlaceOf(nNeighbor);
            }
        }
    }
    aTri.SetSize(nKept, -1);
}

}   // namespace qsv
