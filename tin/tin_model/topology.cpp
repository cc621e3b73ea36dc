#include <cfloat>
#include <cmath>

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

namespace {

struct Range {
    CXYZ lower = CXYZ(DBL_MAX, DBL_MAX, DBL_MAX), upper = CXYZ(-DBL_MAX, -DBL_MAX, -DBL_MAX);
};

// Corner by corner. Of a 0 and a -0 that bound the range the one met first stays.
Range RangeOfCorners(const CArray<CXYZ>& aVertex, const CArray<CTriangle>& aTri)
{
    Range range;
    for (int t = 0; t < aTri.GetSize(); ++t) {
        for (const int nVt : aTri[t].m_nVertex) {
            WidenRange(VertexAt(aVertex, nVt), range.lower, range.upper);
        }
    }
    return range;
}

bool IsNegativeZero(double d)
{
    return d == 0.0 && std::signbit(d);
}

// The same, each vertex once and in their order, which passes over the memory once. Returns false where the order
// could show: where there is a -0.
bool RangeOfUsed(const CArray<CXYZ>& aVertex, const CArray<CTriangle>& aTri, Range& range)
{
    CArray<char> aUsed;
    aUsed.SetSize(aVertex.GetSize(), -1);
    for (int t = 0; t < aTri.GetSize(); ++t) {
        for (const int nVt : aTri[t].m_nVertex) {
            if (IsIndexOf(aVertex, nVt)) {
                aUsed[nVt] = 1;
            } else {
                WidenRange(VertexAt(aVertex, nVt), range.lower, range.upper);
            }
        }
    }
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        const CXYZ& p = aVertex[i];
        if (aUsed[i] != 0) {
            WidenRange(p, range.lower, range.upper);
            if (IsNegativeZero(p.x) || IsNegativeZero(p.y) || IsNegativeZero(p.z)) {
                return false;
            }
        }
    }
    return true;
}

}   // namespace

int CTin::UpdateTinRange()
{
    Range range;
    if (m_aTri.IsEmpty()) {
        range.lower = range.upper = CXYZ();
    } else if (m_aTri.GetSize() < m_aVertex.GetSize() || !RangeOfUsed(m_aVertex, m_aTri, range)) {
        range = RangeOfCorners(m_aVertex, m_aTri);
    }
    m_MinXYZ.SetXYZ(range.lower.x, range.lower.y, range.lower.z);
    m_MaxXYZ.SetXYZ(range.upper.x, range.upper.y, range.upper.z);
    return m_aTri.IsEmpty() ? 0 : 1;
}
