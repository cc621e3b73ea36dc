#include "tin/internal/mesh.h"
#include "tin/internal/mesh_split.h"
#include "tin/internal/mesh_walk.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// What every kind of split asks of its arguments; nTriCount records are in use.
bool CanSplit(const CArray<CXYZ>& aVertex, const CArray<CTriangle>& aTri, int nVt, int nTriCount, int nTri)
{
    return IsIndexOf(aVertex, nVt) && nTriCount <= aTri.GetSize() && nTri >= 0 && nTri < nTriCount;
}

}   // namespace

int CTin::DivideTri(int nVt, int& nTriCount, int& nLastTri)
{
    if (!CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nLastTri)) {
        return 0;
    }
    int nState = 0, nSide = 0;
    const int nTri = FindTri(nLastTri, nVt, nState, nSide);
    if (nTri < 0 || nTri >= nTriCount || nState == kOnVertex) {
        return 0;
    }
    nLastTri = nTri;
    if (nState == kInside) {
        DivideTriInside(nVt, nTriCount, nTri);
    } else {
        DivideTriOnSide(nVt, nTriCount, nTri, nSide);
    }
    return 1;
}

void CTin::DivideTriInside(int nVt, int& nTriCount, int nTri)
{
    if (CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nTri)) {
        LegalizeFan({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, SplitInside(m_aTri, nVt, nTriCount, nTri),
                    m_nOptimDepth);
    }
}

void CTin::DivideTriOnSide(int nVt, int& nTriCount, int nTri, int nSide)
{
    if (CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nTri) && IsSlot(nSide)) {
        LegalizeFan({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, SplitOnEdge(m_aTri, nVt, nTriCount, nTri, nSide),
                    m_nOptimDepth);
    }
}
