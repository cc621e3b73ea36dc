#include "tin/internal/hull.h"
#include "tin/internal/hull_candidates.h"
#include "tin/internal/mesh_links.h"
#include "tin/tin.h"

using namespace qsv;

// The ring about the centre of the plan range.
int CTin::MakeBoundaryFromPts()
{
    if (m_aVertex.GetSize() < 3 || !UpdatePtRange()) {
        return 0;
    }
    if (m_MaxXYZ.x - m_MinXYZ.x <= m_dEPS && m_MaxXYZ.y - m_MinXYZ.y <= m_dEPS) {
        return 0;
    }
    m_aBoundary.Copy(StarRing(m_aVertex, HullCandidates(m_aVertex, m_MinXYZ, m_MaxXYZ, m_dEPS2),
                              MiddleOf(m_MinXYZ, m_MaxXYZ)));
    return m_aBoundary.GetSize() >= 3 ? 1 : 0;
}

int CTin::MakeConvexHull()
{
    m_aBoundary.Copy(ScanHull(m_aVertex, m_aBoundary, m_dEPS2));
    return m_aBoundary.GetSize() >= 3 ? 1 : 0;
}

// A fan about the first ring vertex. Each diagonal is made Delaunay as soon as both its triangles stand;
// the link to the triangle that follows is written ahead, and cut off behind the last one.
int CTin::MakeTinForConvexHull()
{
    const int nTriangles = m_aBoundary.GetSize() - 2;
    m_aTri.SetSize(nTriangles, -1);
    for (int t = 0; t < nTriangles; ++t) {
        m_aTri[t] = MakeTriangle(m_aBoundary[0], m_aBoundary[t + 1], m_aBoundary[t + 2], t + 1, t - 1, -1);
        Optimization(t, 2);
    }
    m_aTri[nTriangles - 1].m_nNeighbor[0] = -1;
    return 1;
}
