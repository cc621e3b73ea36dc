#include <utility>

#include "tin/internal/mesh.h"
#include "tin/internal/normal.h"
#include "tin/internal/prefetch.h"
#include "tin/tin.h"

using namespace qsv;

// Adds up in the order of the triangles. The mark of a vertex's normal counts the triangles that use it meanwhile.
void CTin::UpdateNormal()
{
    constexpr int kAhead = 12;   // triangles: time enough for the memory of their vertices to arrive
    m_aTriNormal.SetSize(m_aTri.GetSize(), -1);
    m_aVtNormal.SetSize(0, -1);   // every sum starts anew, as the zero vector
    m_aVtNormal.SetSize(m_aVertex.GetSize(), -1);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        if (t + kAhead < m_aTri.GetSize()) {
            PrefetchCorners(m_aVertex, m_aTri[t + kAhead]);
            PrefetchCorners(m_aVtNormal, m_aTri[t + kAhead]);
        }
        const int(&nVertex)[3] = m_aTri[t].m_nVertex;
        const CXYZ normal = NormalOf(VertexAt(m_aVertex, nVertex[0]), VertexAt(m_aVertex, nVertex[1]),
                                     VertexAt(m_aVertex, nVertex[2]));
        m_aTriNormal[t] = normal;
        for (const int nVt : nVertex) {
            if (IsIndexOf(m_aVertex, nVt)) {
                CXYZ& sum = m_aVtNormal[nVt];
                sum.SetXYZ(sum.x + normal.x, sum.y + normal.y, sum.z + normal.z);
                ++sum.m_nMark;
            }
        }
    }
    for (int v = 0; v < m_aVtNormal.GetSize(); ++v) {
        const int nUses = std::exchange(m_aVtNormal[v].m_nMark, 0);
        if (nUses > 1) {
            m_aVtNormal[v] /= nUses;
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
