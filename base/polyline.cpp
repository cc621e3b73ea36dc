#include "base/polyline.h"

#include <algorithm>

CVertex::CVertex(int nCode) : m_nCode(nCode) {}

CPolyline::CPolyline(int nGrowBy, int nCode) : m_nCode(nCode)
{
    m_aVertex.SetSize(0, nGrowBy);
}

CPolyline::CPolyline(const CPolyline& src) : m_nCode(src.m_nCode), m_bClose(src.m_bClose)
{
    m_aVertex.Copy(src.m_aVertex);
}

CPolyline& CPolyline::operator=(const CPolyline& src)
{
    m_aVertex.Copy(src.m_aVertex);
    m_nCode = src.m_nCode;
    m_bClose = src.m_bClose;
    return *this;
}

CPolyline::~CPolyline() = default;

int CPolyline::GetVertexSize() const
{
    return m_aVertex.GetSize();
}

CVertex* CPolyline::GetVertex(unsigned i)
{
    return i < static_cast<unsigned>(m_aVertex.GetSize()) ? &m_aVertex[static_cast<int>(i)] : nullptr;
}

const CVertex* CPolyline::GetVertex(unsigned i) const
{
    return i < static_cast<unsigned>(m_aVertex.GetSize()) ? &m_aVertex[static_cast<int>(i)] : nullptr;
}

int CPolyline::AddVertex(CVertex& vertex)
{
    return m_aVertex.Add(vertex);
}

void CPolyline::DelAllVertex()
{
    m_aVertex.SetSize(0);
}

int CPolyline::GetCode() const
{
    return m_nCode;
}

void CPolyline::Close()
{
    m_bClose = 1;
}

int CPolyline::IsClose() const
{
    return m_bClose;
}

int CPolyline::CheckTurn() const
{
    double dSum = 0.0;   // twice the signed area, above 0 when counter-clockwise
    for (int i = 1; i + 1 < m_aVertex.GetSize(); ++i) {
        const CVertex &o = m_aVertex[0], &a = m_aVertex[i], &b = m_aVertex[i + 1];
        dSum += (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
    }
    return dSum > 0.0 ? -1 : dSum < 0.0 ? 1 : 0;
}

void CPolyline::Reverse()
{
    std::reverse(m_aVertex.GetData(), m_aVertex.GetData() + m_aVertex.GetSize());
}
