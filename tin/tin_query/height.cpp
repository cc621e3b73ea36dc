#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::CalZonPlane(int nTri, const double& x, const double& y, double& z)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const int(&nVertex)[3] = m_aTri[nTri].m_nVertex;
    return HeightOnPlane(VertexAt(m_aVertex, nVertex[0]), VertexAt(m_aVertex, nVertex[1]),
                         VertexAt(m_aVertex, nVertex[2]), x, y, z)
               ? 1
               : 0;
}

int CTin::InterpolateForPlane(int nStartTri, const double& x, const double& y, double& z, int& nTri)
{
    int nState, nSide;
    nTri = FindTri(nStartTri, x, y, nState, nSide);
    return nTri >= 0 ? CalZonPlane(nTri, x, y, z) : 0;
}
