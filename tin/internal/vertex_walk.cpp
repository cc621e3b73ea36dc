#include "tin/internal/vertex_walk.h"

#include "tin/internal/slots.h"

namespace qsv {

int NeighborAround(const CArray<CTriangle>& aTri, int nTri, int nSlot, Turn eTurn)
{
    return NeighborAt(aTri, nTri, eTurn == Turn::Clockwise ? NextSlot(nSlot) : nSlot);
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
