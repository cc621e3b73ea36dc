#include "tin/internal/mesh_links.h"

#include "tin/internal/mesh.h"

namespace qsv {

namespace {

int SlotOf(const int (&aSlot)[3], int nValue)
{
    for (int k = 0; k < 3; ++k) {
        if (aSlot[k] == nValue) {
            return k;
        }
    }
    return -1;
}

}   // namespace

int SlotOfVertex(const CTriangle& tri, int nVt)
{
    return SlotOf(tri.m_nVertex, nVt);
}

int SlotOfNeighbor(const CTriangle& tri, int nTri)
{
    return SlotOf(tri.m_nNeighbor, nTri);
}

void RedirectNeighbor(CArray<CTriangle>& aTri, int nTri, int nOld, int nNew)
{
    if (!IsIndexOf(aTri, nTri)) {
        return;
    }
    for (int& nNeighbor : aTri[nTri].m_nNeighbor) {
        if (nNeighbor == nOld) {
            nNeighbor = nNew;
        }
    }
}

CTriangle MakeTriangle(int nVt0, int nVt1, int nVt2, int nNb0, int nNb1, int nNb2)
{
    CTriangle tri;
    tri.m_nVertex[0] = nVt0;
    tri.m_nVertex[1] = nVt1;
    tri.m_nVertex[2] = nVt2;
    tri.m_nNeighbor[0] = nNb0;
    tri.m_nNeighbor[1] = nNb1;
    tri.m_nNeighbor[2] = nNb2;
    return tri;
}

}   // namespace qsv
