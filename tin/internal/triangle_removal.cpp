#include "tin/internal/triangle_removal.h"

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

}   // namespace qsv
