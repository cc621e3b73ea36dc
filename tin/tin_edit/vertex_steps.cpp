#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::FindFirstTriWithPt(int nVt, int& nTri, int& nSlot, int nTriCount)
{
    return FindFirstTriangleOf(m_aTri, nVt, nTriCount, nTri, nSlot) ? 1 : 0;
}

int CTin::FindNextTriWithPt(int& nTri, int& nSlot)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        return 0;
    }
    return StepAroundOrBack(m_aTri, nTri, nSlot, m_nWalkDir) ? 1 : 0;
}

int CTin::FindNextTriWithPt2(int& nTri, int& nSlot, int nDir)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        return 0;
    }
    return StepAround(m_aTri, nTri, nSlot, nDir != 0 ? Turn::Clockwise : Turn::CounterClockwise) ? 1 : 0;
}
