#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// Moves to triangle nNext and the slot in which it uses the vertex that nTri has in nSlot.
int StepTo(const CArray<CTriangle>& aTri, int nNext, int& nTri, int& nSlot)
{
    const int nVt = aTri[nTri].m_nVertex[nSlot];
    nTri = nNext;
    if (nNext < 0) {
        return 0;
    }
    const int nNextSlot = SlotOfVertex(aTri[nNext], nVt);
    if (nNextSlot < 0) {
        return 0;
    }
    nSlot = nNextSlot;
    return 1;
}

}   // namespace

int CTin::FindFirstTriWithPt(int nVt, int& nTri, int& nSlot, int nTriCount)
{
    return FindFirstTriangleOf(m_aTri, nVt, nTriCount, nTri, nSlot) ? 1 : 0;
}

int CTin::FindNextTriWithPt(int& nTri, int& nSlot)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        return 0;
    }
    const Turn eTurn = m_nWalkDir != 0 ? Turn::Clockwise : Turn::CounterClockwise;
    int nNext = NeighborAround(m_aTri, nTri, nSlot, eTurn);
    if (nNext < 0) {   // the outside: turn round, once
        m_nWalkDir = m_nWalkDir != 0 ? 0 : 1;
        nNext = NeighborAround(m_aTri, nTri, nSlot,
                               eTurn == Turn::Clockwise ? Turn::CounterClockwise : Turn::Clockwise);
    }
    return StepTo(m_aTri, nNext, nTri, nSlot);
}

int CTin::FindNextTriWithPt2(int& nTri, int& nSlot, int nDir)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        return 0;
    }
    const Turn eTurn = nDir != 0 ? Turn::Clockwise : Turn::CounterClockwise;
    return StepTo(m_aTri, NeighborAround(m_aTri, nTri, nSlot, eTurn), nTri, nSlot);
}
