#include "tin/internal/vertex_walk.h"

#include "tin/internal/mesh.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"

namespace qsv {

int NeighborAround(const CArray<CTriangle>& aTri, int nTri, int nSlot, Turn eTurn)
{
    return NeighborAt(aTri, nTri, eTurn == Turn::Clockwise ? NextSlot(nSlot) : nSlot);
}

namespace {

// Moves to triangle nNext and the slot in which it uses the vertex that nTri has in nSlot.
bool StepTo(const CArray<CTriangle>& aTri, int nNext, int& nTri, int& nSlot)
{
    const int nVt = aTri[nTri].m_nVertex[nSlot];
    nTri = nNext;
    const int nNextSlot = nNext >= 0 ? SlotOfVertex(aTri[nNext], nVt) : -1;
    nSlot = nNextSlot >= 0 ? nNextSlot : nSlot;
    return nNextSlot >= 0;
}

}   // namespace

bool StepAround(const CArray<CTriangle>& aTri, int& nTri, int& nSlot, Turn eTurn)
{
    return StepTo(aTri, NeighborAround(aTri, nTri, nSlot, eTurn), nTri, nSlot);
}

bool StepAroundOrBack(const CArray<CTriangle>& aTri, int& nTri, int& nSlot, int& nWalkDir)
{
    const Turn eTurn = nWalkDir != 0 ? Turn::Clockwise : Turn::CounterClockwise;
    int nNext = NeighborAround(aTri, nTri, nSlot, eTurn);
    if (nNext < 0) {
        nWalkDir = nWalkDir != 0 ? 0 : 1;
        nNext = NeighborAround(aTri, nTri, nSlot,
                               eTurn == Turn::Clockwise ? Turn::CounterClockwise : Turn::Clockwise);
    }
    return StepTo(aTri, nNext, nTri, nSlot);
}

bool FindFirstTriangleOf(const CArray<CTriangle>& aTri, int nVt, int nTriCount, int& nTri, int& nSlot)
{
    for (nTri = 0; nTri < nTriCount && nTri < aTri.GetSize(); ++nTri) {
        for (nSlot = 0; nSlot < 3; ++nSlot) {
            if (aTri[nTri].m_nVertex[nSlot] == nVt) {
                return true;
            }
        }
    }
    return false;
}

}   // namespace qsv
