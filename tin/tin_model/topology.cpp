#include <cfloat>

#include "tin/internal/mesh.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::AddTri(int nVt1, int nVt2, int nVt3)
{
    if (!IsIndexOf(m_aVertex, nVt1) || !IsIndexOf(m_aVertex, nVt2) || !IsIndexOf(m_aVertex, nVt3)) {
        return -1;
    }
    return m_aTri.Add(MakeTriangle(nVt1, nVt2, nVt3, -1, -1, -1));
}

int CTin::DelTri(int nTri)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    if (m_aTri.GetSize() == 1) {
        InitData();
        return 1;
    }
    if (m_aTriNormal.GetSize() == m_aTri.GetSize()) {
        m_aTriNormal.RemoveAt(nTri, 1);
    }
    m_aTri.RemoveAt(nTri, 1);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int& nNeighbor : m_aTri[t].m_nNeighbor) {
            if (nNeighbor == nTri) {
                nNeighbor = -1;
            } else if (nNeighbor > nTri) {
                --nNeighbor;
            }
        }
    }
    return 1;
}

int CTin::CheckTurn(CXYZ& p1, CXYZ& p2, CXYZ& p3)
{
    const double dArea = DoubledArea(p1, p2, p3);
    return dArea < -m_dEPS2 ? 1 : dArea > m_dEPS2 ? -1 : 0;
}

int CTin::CheckTurn(int nTri)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return -2;
    }
    CXYZ aCorner[3];
    for (int k = 0; k < 3; ++k) {
        aCorner[k] = VertexAt(m_aVertex, m_aTri[nTri].m_nVertex[k]);
    }
    return CheckTurn(aCorner[0], aCorner[1], aCorner[2]);
}

int CTin::FindTriWithPt(int nVt, int& nFrom, int& nTri, int& nSlot)
{
    if (nFrom < 0) {
        nFrom = 0;
    }
    for (nTri = nFrom; nTri < m_aTri.GetSize(); ++nTri) {
        for (nSlot = 0; nSlot < 3; ++nSlot) {
            if (m_aTri[nTri].m_nVertex[nSlot] == nVt) {
                nFrom = nTri + 1;
                return 1;
            }
        }
    }
    return 0;
}

int CTin::UpdateTinRange()
{
    if (m_aTri.IsEmpty()) {
        m_MinXYZ.SetXYZ(0.0, 0.0, 0.0);
        m_MaxXYZ.SetXYZ(0.0, 0.0, 0.0);
        return 0;
    }
    m_MinXYZ.SetXYZ(DBL_MAX, DBL_MAX, DBL_MAX);
    m_MaxXYZ.SetXYZ(-DBL_MAX, -DBL_MAX, -DBL_MAX);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (const int nVt : m_aTri[t].m_nVertex) {
            WidenRange(VertexAt(m_aVertex, nVt), m_MinXYZ, m_MaxXYZ);
        }
    }
    return 1;
}
