#include "tin/internal/ear_cutting.h"
#include "tin/internal/plan_index.h"
#include "tin/tin.h"

using namespace qsv;

// Fills the ring in m_aBoundary, which must run counter-clockwise.
int CTin::MakeTinForBoundary()
{
    CPolyline ring;
    GetBoundary(ring);
    if (ring.CheckTurn() >= 0 || !IsSimpleRing(m_aVertex, m_aBoundary, m_dEPS)) {
        return 0;
    }
    CArray<Ear> aEar;
    const bool bAllCut = CutEars(m_aVertex, m_aBoundary, m_dEPS2, aEar);
    for (int i = 0; i < aEar.GetSize(); ++i) {
        AddTri(aEar[i].a, aEar[i].b, aEar[i].c);
    }
    if (!bAllCut) {
        return 0;
    }
    UpdateTopology();
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            Optimization(t, k);
        }
    }
    return 1;
}

namespace {

// Makes the vertices and the boundary of an empty TIN from a polygon: what AddPoint does for each corner in
// turn, with an index instead of its scan.
void FeedRing(CTin& tin, const CArray<CXYZ>& aCorner)
{
    PlanIndex corners(aCorner, tin.m_dEPS);
    CArray<int> aVtOfCorner;
    aVtOfCorner.SetSize(aCorner.GetSize(), -1);
    for (int i = 0; i < aCorner.GetSize(); ++i) {
        const int nSame = corners.FindFirst(aCorner[i].x, aCorner[i].y);
        if (nSame >= 0) {
            aVtOfCorner[i] = aVtOfCorner[nSame];
        } else {
            aVtOfCorner[i] = tin.m_aVertex.Add(aCorner[i]);
            corners.Enter(i);
        }
        tin.m_aBoundary.Add(aVtOfCorner[i]);
    }
}

}   // namespace

// Where corners coincide there are fewer vertices than corners, and the ring is cut to as many entries. So a
// polygon whose last corner repeats its first loses just that one; any other repetition leaves a ring that
// touches itself and is refused.
int CTin::CreateTinForPolygon(CPolyline poly)
{
    InitData();
    if (poly.GetVertexSize() < 3) {
        return 0;
    }
    if (poly.CheckTurn() >= 0) {
        poly.Reverse();
    }
    CArray<CXYZ> aCorner;
    for (int i = 0; i < poly.GetVertexSize(); ++i) {
        const CVertex& v = *poly.GetVertex(static_cast<unsigned>(i));
        aCorner.Add(CXYZ(v.x, v.y, v.z));
    }
    FeedRing(*this, aCorner);
    m_aBoundary.SetSize(m_aVertex.GetSize(), -1);
    return MakeTinForBoundary();
}
