#include "tin/internal/mesh_links.h"

#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"

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

int SlotOfNeighbor(const CTriangle& tri, int nTri, DirectedEdge edge)
{
    for (int k = 0; k < 3; ++k) {
        if (tri.m_nNeighbor[k] == nTri && tri.m_nVertex[PrevSlot(k)] == edge.nFrom &&
            tri.m_nVertex[k] == edge.nTo) {
            return k;
        }
    }
    return SlotOf(tri.m_nNeighbor, nTri);
}

void RedirectNeighbor(CArray<CTriangle>& aTri, int nTri, DirectedEdge edge, int nOld, int nNew)
{
    const int nSlot = IsIndexOf(aTri, nTri) ? SlotOfNeighbor(aTri[nTri], nOld, edge) : -1;
    if (nSlot >= 0) {
        aTri[nTri].m_nNeighbor[nSlot] = nNew;
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
