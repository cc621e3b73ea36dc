#include "tin/internal/plan.h"
#include "tin/tin.h"

using namespace qsv;

void CTin::SetEPS(double eps)
{
    m_dEPS = eps;
    m_dEPS2 = eps * eps;
}

int CTin::AddPoint(double x, double y, double z)
{
    for (int i = 0; i < m_aVertex.GetSize(); ++i) {
        if (IsSamePlace(x, y, m_aVertex[i].x, m_aVertex[i].y, m_dEPS)) {
            return i;
        }
    }
    return m_aVertex.Add(CXYZ(x, y, z));
}

void CTin::BeginAddPoint(int nSize)
{
    m_aVertex.SetSize(nSize, -1);
    m_nAddPtCount = 0;
}

int CTin::AddPoint2(double x, double y, double z)
{
    const int nVt = m_nAddPtCount >= 0 ? m_nAddPtCount : 0;   // the host may have written the counter
    m_aVertex.SetAtGrow(nVt, CXYZ(x, y, z));
    m_nAddPtCount = nVt + 1;
    return nVt;
}

void CTin::EndAddPoint()
{
    m_aVertex.SetSize(m_nAddPtCount, -1);
    m_nAddPtCount = 0;
}

namespace {

// Makes a breakline record of a polyline. fnAddPoint feeds one point and returns its index. Returns false
// for a line of fewer than two vertices, after feeding a single one.
template <class ADD_POINT>
bool FeedLine(CPolyline& line, double dEPS, CBreakLine& bl, ADD_POINT fnAddPoint)
{
    int n = line.GetVertexSize();
    if (n <= 0) {
        return false;
    }
    const CVertex first = *line.GetVertex(0);
    if (n == 1) {
        fnAddPoint(first);
        return false;
    }
    const CVertex& last = *line.GetVertex(static_cast<unsigned>(n - 1));
    bl.m_bClose = line.IsClose() != 0 ? 1 : 0;
    if (IsSamePlace(first.x, first.y, last.x, last.y, dEPS)) {
        bl.m_bClose = 1;
        --n;
    }
    bl.m_aVertexIndex.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        bl.m_aVertexIndex[i] = fnAddPoint(*line.GetVertex(static_cast<unsigned>(i)));
    }
    return true;
}

}   // namespace

int CTin::AddBreakLine(CPolyline& line)
{
    CBreakLine bl;
    return FeedLine(line, m_dEPS, bl, [this](const CVertex& v) { return AddPoint(v.x, v.y, v.z); })
               ? m_aBreakLine.Add(bl)
               : -1;
}

int CTin::AddBreakLine2(CPolyline& line)
{
    CBreakLine bl;
    return FeedLine(line, m_dEPS, bl, [this](const CVertex& v) { return AddPoint2(v.x, v.y, v.z); })
               ? m_aBreakLine.Add(bl)
               : -1;
}

int CTin::UpdatePtRange()
{
    if (m_aVertex.IsEmpty()) {
        m_MinXYZ.SetXYZ(0.0, 0.0, 0.0);
        m_MaxXYZ.SetXYZ(0.0, 0.0, 0.0);
        return 0;
    }
    m_MinXYZ = m_MaxXYZ = m_aVertex[0];
    for (int i = 1; i < m_aVertex.GetSize(); ++i) {
        WidenRange(m_aVertex[i], m_MinXYZ, m_MaxXYZ);
    }
    return 1;
}
