#include "tin/internal/limits.h"
#include "tin/tin.h"
#include "tin/tin_model/missed_points.h"

int CTin::CreateTin(double dAngle)
{
    int nDone = m_aVertex.GetSize() >= 3 && MakeBoundaryFromPts() && MakeConvexHull() &&
                MakeTinForConvexHull() && Triangulation();
    if (nDone && !m_aBreakLine.IsEmpty()) {
        BreakLine();
    }
    if (nDone && dAngle > 0.0) {
        nDone = DelTriWithAngle(dAngle, 1);
    }
    if (!nDone) {
        InitData();
    }
    return nDone;
}

int CTin::Triangulation()
{
    if (m_aTri.IsEmpty()) {
        return 0;
    }
    const int nVertices = m_aVertex.GetSize();
    CArray<char> aOnHull;
    aOnHull.SetSize(nVertices, -1);
    for (int i = 0; i < m_aBoundary.GetSize(); ++i) {
        aOnHull[m_aBoundary[i]] = 1;
    }
    int nTriCount = m_aTri.GetSize();
    int nLastTri = 0;
    m_aTri.SetSize(qsv::kTrianglesPerVertex * nVertices, -1);
    m_nOptimDepth = 0;
    for (int nVt = 0; nVt < nVertices; ++nVt) {
        if (!aOnHull[nVt]) {
            DivideTri(nVt, nTriCount, nLastTri);
        }
    }
    qsv::InsertMissedPoints(*this, nTriCount);
    m_aTri.SetSize(nTriCount, -1);
    return 1;
}
