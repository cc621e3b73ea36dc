#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

void CTin::GetBoundary(CPolyline& poly)
{
    poly.DelAllVertex();
    for (int i = 0; i < m_aBoundary.GetSize(); ++i) {
        const CXYZ& p = VertexAt(m_aVertex, m_aBoundary[i]);
        CVertex vertex;
        vertex.x = p.x;
        vertex.y = p.y;
        vertex.z = p.z;
        poly.AddVertex(vertex);
    }
    poly.Close();
}

void CTin::UpdateBoundary()
{
    m_aBoundary.SetSize(0, -1);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            if (NeighborAt(m_aTri, t, k) < 0) {
                m_aBoundary.Add(m_aTri[t].m_nVertex[PrevSlot(k)]);
                m_aBoundary.Add(m_aTri[t].m_nVertex[k]);
            }
        }
    }
}

// In the form of pairs a vertex stands twice, so a triangle can have more than three places; the search
// ends with the boundary entry at which there are three.
int CTin::GetVtOnBoundary(int nTri, CArray<int>& aSlot, CArray<int>& aPos)
{
    aSlot.SetSize(0, -1);
    aPos.SetSize(0, -1);
    if (!IsIndexOf(m_aTri, nTri)) {
        return -1;
    }
    for (int j = 0; j < m_aBoundary.GetSize() && aSlot.GetSize() < 3; ++j) {
        for (int k = 0; k < 3; ++k) {
            if (m_aTri[nTri].m_nVertex[k] == m_aBoundary[j]) {
                aSlot.Add(k);
                aPos.Add(j);
            }
        }
    }
    return aSlot.GetSize();
}

int CTin::GetNumVtOnBoundary(int nTri)
{
    CArray<int> aSlot, aPos;
    return GetVtOnBoundary(nTri, aSlot, aPos);
}
