#include "tin/internal/edge_swap.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

// m_nOptimDepth is the level to start from; the levels below are counted by LegalizeEdge, which returns
// to this one.
void CTin::Optimization(int nTri, int nSide)
{
    if (IsIndexOf(m_aTri, nTri) && IsSlot(nSide)) {
        LegalizeEdge({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri, nSide, m_nOptimDepth);
    }
}

int CTin::CheckOptim(int nVtA, int nVtB, int nVtC, int nVtD)
{
    return IsOutsideCircle(m_aVertex, nVtA, nVtB, nVtC, nVtD) ? 1 : 0;
}

int CTin::SwapTri(int nTri, int nSide, int nTri2, int nSide2)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsIndexOf(m_aTri, nTri2) || !IsSlot(nSide) || !IsSlot(nSide2)) {
        return 0;
    }
    return SwapDiagonal({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri, nSide, nTri2, nSide2) ? 1 : 0;
}

int CTin::CheckSwapTri(int nVtP, int nVtQ, int nVtD, int nVtR)
{
    return IsStrictlyConvex(m_aVertex, nVtP, nVtQ, nVtD, nVtR) ? 1 : 0;
}
