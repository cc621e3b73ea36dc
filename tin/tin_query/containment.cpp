#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::PtInTri(int nTri, const double& x, const double& y)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const int(&nVertex)[3] = m_aTri[nTri].m_nVertex;
    return IsInTriangle(VertexAt(m_aVertex, nVertex[0]), VertexAt(m_aVertex, nVertex[1]),
                        VertexAt(m_aVertex, nVertex[2]), x, y)
               ? 1
               : 0;
}

int CTin::PtInTin(const double& x, const double& y)
{
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        if (PtInTri(t, x, y) != 0) {
            return 1;
        }
    }
    return 0;
}

int CTin::PtInTriIncludeBack(int nTri, const double& x, const double& y)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const CTriangle& tri = m_aTri[nTri];
    const double dSense = CheckTurn(nTri) == 1 ? -1.0 : 1.0;
    for (int k = 0; k < 3; ++k) {
        const CXYZ& a = VertexAt(m_aVertex, tri.m_nVertex[k]);
        const CXYZ& b = VertexAt(m_aVertex, tri.m_nVertex[NextSlot(k)]);
        const double dLeft = (y - a.y) * (b.x - a.x) - (x - a.x) * (b.y - a.y);
        if (!(dLeft * dSense >= 0.0)) {   // a point anywhere on the edge's line passes this edge
            return 0;
        }
    }
    return 1;
}

int CTin::PtInTinIncludeBack(const double& x, const double& y)
{
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        if (PtInTriIncludeBack(t, x, y) != 0) {
            return 1;
        }
    }
    return 0;
}
