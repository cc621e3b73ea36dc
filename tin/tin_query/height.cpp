#include "tin/internal/mesh.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::CalZonPlane(int nTri, const double& x, const double& y, double& z)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const int(&nVertex)[3] = m_aTri[nTri].m_nVertex;
    const CXYZ& a = VertexAt(m_aVertex, nVertex[0]);
    const CXYZ& b = VertexAt(m_aVertex, nVertex[1]);
    const CXYZ u = b - a, w = VertexAt(m_aVertex, nVertex[2]) - a;
    const CXYZ n(w.z * u.y - w.y * u.z, w.x * u.z - w.z * u.x, w.y * u.x - w.x * u.y);
    if (n.z == 0.0) {
        return 0;
    }
    // The plane's constant goes through slot 1, summed from z to x, and the height comes from a reciprocal:
    // each step rounds once, and heights must not depend on who computes them.
    const double d = -((b.z * n.z + b.y * n.y) + b.x * n.x);
    z = ((d + x * n.x) + y * n.y) * (-1.0 / n.z);
    return 1;
}

int CTin::InterpolateForPlane(int nStartTri, const double& x, const double& y, double& z, int& nTri)
{
    int nState, nSide;
    nTri = FindTri(nStartTri, x, y, nState, nSide);
    return nTri >= 0 ? CalZonPlane(nTri, x, y, z) : 0;
}
