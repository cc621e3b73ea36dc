#include "tin/internal/mesh_walk.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::FindTri(int nStartTri, const double& x, const double& y, int& nState, int& nSide)
{
    const Location found = WalkToPoint({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nStartTri, x, y);
    nState = found.nState;
    nSide = found.nSide;
    return found.nTri;
}

int CTin::FindTri(int nStartTri, int nVt, int& nState, int& nSide)
{
    const CXYZ& p = VertexAt(m_aVertex, nVt);
    return FindTri(nStartTri, p.x, p.y, nState, nSide);
}
