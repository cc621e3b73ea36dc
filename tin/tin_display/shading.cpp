#include "tin/internal/mesh.h"
#include "tin/tin.h"

using namespace qsv;

void CTin::UpdateNormal()
{
    m_aTriNormal.SetSize(0, -1);   // every element starts anew, as the zero vector
    m_aVtNormal.SetSize(0, -1);
    m_aTriNormal.SetSize(m_aTri.GetSize(), -1);
    m_aVtNormal.SetSize(m_aVertex.GetSize(), -1);
    CArray<int> aUses;
    aUses.SetSize(m_aVertex.GetSize(), -1);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        GetNVec(t, m_aTriNormal[t]);
        for (const int nVt : m_aTri[t].m_nVertex) {
            if (IsIndexOf(m_aVertex, nVt)) {
                m_aVtNormal[nVt] += m_aTriNormal[t];
                ++aUses[nVt];
            }
        }
    }
    for (int v = 0; v < m_aVtNormal.GetSize(); ++v) {
        if (aUses[v] > 1) {
            m_aVtNormal[v] /= aUses[v];
        }
    }
}

namespace {

// A plain comparison each way: a coordinate that is not a number stays one.
float Clamped(float t)
{
    if (t > 1.0f) {
        return 1.0f;
    }
    return t < 0.0f ? 0.0f : t;
}

}   // namespace

void CTin::UpdateTextureCoord()
{
    double dMinX, dMaxX, dMinY, dMaxY, dMinZ, dMaxZ;
    if (GetRange(dMinX, dMaxX, dMinY, dMaxY, dMinZ, dMaxZ) == 0) {
        return;
    }
    const double rx = 1.0 / (dMaxX - dMinX), ry = 1.0 / (dMaxY - dMinY);
    for (int v = 0; v < m_aVertex.GetSize(); ++v) {
        CXYZ& p = m_aVertex[v];
        p.tu = Clamped(static_cast<float>((p.x - dMinX) * rx));
        p.tv = Clamped(static_cast<float>((p.y - dMinY) * ry));
    }
}
