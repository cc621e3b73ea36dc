#include <utility>

#include "tin/internal/limits.h"
#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

CTin::CTin()
{
    InitData();
}

CTin::CTin(const CTin& src)
{
    InitData();
    *this = src;
}

CTin::CTin(CTin&& src) noexcept
    : m_strName(std::move(src.m_strName)), m_nSpare(src.m_nSpare), m_dEPS(src.m_dEPS), m_dEPS2(src.m_dEPS2),
      m_nAddPtCount(src.m_nAddPtCount), m_nOptimDepth(src.m_nOptimDepth), m_MinXYZ(src.m_MinXYZ),
      m_MaxXYZ(src.m_MaxXYZ), m_nWalkDir(src.m_nWalkDir)
{
    MoveInto(m_aVertex, src.m_aVertex);
    MoveInto(m_aTri, src.m_aTri);
    MoveInto(m_aDepthOrder, src.m_aDepthOrder);
    MoveInto(m_aTriNormal, src.m_aTriNormal);
    MoveInto(m_aVtNormal, src.m_aVtNormal);
    MoveInto(m_aBoundary, src.m_aBoundary);
    MoveInto(m_aBreakLine, src.m_aBreakLine);
}

CTin::~CTin() = default;

void CTin::InitData()
{
    m_strName = "0";
    m_nWalkDir = 1;
    m_aVertex.SetSize(0, -1);
    m_nOptimDepth = 0;
    m_aBoundary.SetSize(0, -1);
    m_aTri.SetSize(0, -1);
    m_MinXYZ.SetXYZ(0.0, 0.0, 0.0);
    m_MaxXYZ.SetXYZ(0.0, 0.0, 0.0);
    m_aBreakLine.SetSize(0, -1);
    m_nAddPtCount = 0;
    m_nSpare = 0;
    m_aDepthOrder.SetSize(0, -1);
    m_dEPS = kDefaultEPS;
    m_dEPS2 = kDefaultEPS * kDefaultEPS;
}

CTin& CTin::operator=(const CTin& src)
{
    if (this == &src) {
        return *this;
    }
    InitData();
    m_strName = src.m_strName;
    m_aVertex.Copy(src.m_aVertex);
    m_MinXYZ = src.m_MinXYZ;
    m_MaxXYZ = src.m_MaxXYZ;
    m_aBoundary.Copy(src.m_aBoundary);
    m_aTri.Copy(src.m_aTri);
    m_aDepthOrder.Copy(src.m_aDepthOrder);
    m_nOptimDepth = src.m_nOptimDepth;
    m_aBreakLine.Copy(src.m_aBreakLine);
    m_nSpare = src.m_nSpare;
    m_aTriNormal.Copy(src.m_aTriNormal);
    m_aVtNormal.Copy(src.m_aVtNormal);
    return *this;
}

int CTin::CopyTINInfo(CTin& src)
{
    if (m_aVertex.GetSize() < src.m_aVertex.GetSize()) {
        return 0;
    }
    m_aBoundary.Copy(src.m_aBoundary);
    m_aTri.Copy(src.m_aTri);
    m_aBreakLine.Copy(src.m_aBreakLine);
    return 1;
}

int CTin::GetPointSize()
{
    return m_aVertex.GetSize();
}

int CTin::GetTriSize()
{
    return m_aTri.GetSize();
}

int CTin::GetVertex(int nTri, double& x1, double& y1, double& z1, double& x2, double& y2, double& z2,
                    double& x3, double& y3, double& z3)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    const CTriangle& tri = m_aTri[nTri];
    const CXYZ& a = VertexAt(m_aVertex, tri.m_nVertex[0]);
    const CXYZ& b = VertexAt(m_aVertex, tri.m_nVertex[1]);
    const CXYZ& c = VertexAt(m_aVertex, tri.m_nVertex[2]);
    x1 = a.x, y1 = a.y, z1 = a.z;
    x2 = b.x, y2 = b.y, z2 = b.z;
    x3 = c.x, y3 = c.y, z3 = c.z;
    return 1;
}

CXYZ* CTin::GetVertex(int nTri, int nSlot)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        return nullptr;
    }
    const int nVt = m_aTri[nTri].m_nVertex[nSlot];
    return IsIndexOf(m_aVertex, nVt) ? &m_aVertex[nVt] : nullptr;
}

int CTin::GetNextTri(int nTri, int& nTri1, int& nTri2, int& nTri3)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0;
    }
    nTri1 = m_aTri[nTri].m_nNeighbor[0];
    nTri2 = m_aTri[nTri].m_nNeighbor[1];
    nTri3 = m_aTri[nTri].m_nNeighbor[2];
    return 1;
}
