#include "base/key_order.h"
#include "tin/internal/mesh.h"
#include "tin/internal/occlusion.h"
#include "tin/internal/painting_order.h"
#include "tin/internal/plan.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

enum SortMode { kLowestVertex = 0, kHighestVertex = 1, kSumOfHeights = 2 };

// Heights side by side: corners are met in no order of the vertices, and this much of them is near at hand.
Array<double> Heights(const CArray<CXYZ>& aVertex)
{
    Array<double> aHeight;
    aHeight.SetSize(aVertex.GetSize(), -1);
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        aHeight[i] = aVertex[i].z;
    }
    return aHeight;
}

double SortKey(const CArray<double>& aHeight, const CTriangle& tri, int nMode)
{
    double z[3];
    for (int k = 0; k < 3; ++k) {
        z[k] = IsIndexOf(aHeight, tri.m_nVertex[k]) ? aHeight[tri.m_nVertex[k]] : 0.0;
    }
    if (nMode == kSumOfHeights) {
        return (z[2] + z[1]) + z[0];   // 2, 1, 0: the rounding decides how near-equal triangles sort
    }
    SortThree(z);
    return nMode == kLowestVertex ? z[0] : z[2];
}

void SortTriangles(const CTin& tin, int nMode, CArray<int>& aOrder, int nOrder)
{
    CArray<double> aKey;
    aKey.SetSize(tin.m_aTri.GetSize(), -1);
    {
        const Array<double> aHeight = Heights(tin.m_aVertex);
        for (int t = 0; t < aKey.GetSize(); ++t) {
            aKey[t] = SortKey(aHeight, tin.m_aTri[t], nMode);
        }
    }
    OrderOfKeys(aKey, aOrder, nOrder);
}

}   // namespace

void CTin::UpdateDepth()
{
    if (!m_aTri.IsEmpty()) {
        SortTriangles(*this, kSumOfHeights, m_aDepthOrder, 1);
    }
}

void CTin::UpdateDepth2()
{
    if (!m_aTri.IsEmpty()) {
        SortTriangles(*this, kSumOfHeights, m_aDepthOrder, 1);
        RefinePaintingOrder({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, m_aDepthOrder);
    }
}

int CTin::GetSortList(int nMode, CArray<int>& aList, int nOrder)
{
    aList.SetSize(0, -1);
    aList.SetSize(m_aTri.GetSize(), -1);
    if (m_aTri.IsEmpty()) {
        return 1;
    }
    if (nMode < kLowestVertex || nMode > kSumOfHeights) {
        return 0;
    }
    SortTriangles(*this, nMode, aList, nOrder);
    return 1;
}

int CTin::IsAbobe(int nTri1, int nTri2)
{
    return IsIndexOf(m_aTri, nTri1) && IsIndexOf(m_aTri, nTri2) &&
                   IsAbovePlane(FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri1),
                                FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri2))
               ? 1
               : 0;
}

int CTin::IsBelow(int nTri1, int nTri2)
{
    return IsIndexOf(m_aTri, nTri1) && IsIndexOf(m_aTri, nTri2) &&
                   IsBelowPlane(FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri1),
                                FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri2))
               ? 1
               : 0;
}

int CTin::Obscures(int nTri1, int nTri2)
{
    return IsIndexOf(m_aTri, nTri1) && IsIndexOf(m_aTri, nTri2) &&
                   qsv::Obscures(FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri1),
                                 FacetOf({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, nTri2), m_dEPS)
               ? 1
               : 0;
}
