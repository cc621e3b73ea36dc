#include <climits>

#include "tin/internal/limits.h"
#include "tin/tin.h"
#include "tin/tin_model/careful_build.h"
#include "tin/tin_model/insertion.h"

namespace {

// Unless all has gone well, takes away what was made of the vertices that were there at the beginning.
class UnfinishedMesh
{
public:
    explicit UnfinishedMesh(CTin& tin) : m_tin(tin), m_nVertices(tin.m_aVertex.GetSize()) {}
    ~UnfinishedMesh()
    {
        if (!m_bFinished) {
            m_tin.m_aTri.SetSize(0, -1);
            m_tin.m_aBoundary.SetSize(0, -1);
            m_tin.m_aVertex.SetSize(m_nVertices, -1);
        }
    }
    UnfinishedMesh(const UnfinishedMesh&) = delete;
    UnfinishedMesh& operator=(const UnfinishedMesh&) = delete;

    void Finish() { m_bFinished = true; }

private:
    CTin& m_tin;
    const int m_nVertices;
    bool m_bFinished = false;
};

}   // namespace

int CTin::CreateTin(double dAngle)
{
    UnfinishedMesh mesh(*this);   // memory may run out on the way
    int nDone = m_aVertex.GetSize() >= 3 && MakeBoundaryFromPts() && MakeConvexHull() &&
                MakeTinForConvexHull() && Triangulation();
    if (nDone && !m_aBreakLine.IsEmpty()) {
        BreakLine();
    }
    if (nDone && dAngle > 0.0) {
        nDone = DelTriWithAngle(dAngle, 1);
    }
    mesh.Finish();
    if (!nDone) {
        InitData();
    }
    return nDone;
}

// Points that lie in line but for rounding can lie beyond the hull, whose corners in line were dropped, or
// leave slivers that are flat within the tolerance, which catch the searches and fold the mesh. Most
// surveys have none; where a vertex was missed for such a reason, the mesh is made again with care.
int CTin::Triangulation()
{
    const int nVertices = m_aVertex.GetSize();
    if (m_aTri.IsEmpty() || nVertices > INT_MAX / qsv::kTrianglesPerVertex) {
        return 0;
    }
    CArray<char> aOnHull;
    aOnHull.SetSize(nVertices, -1);
    for (int i = 0; i < m_aBoundary.GetSize(); ++i) {
        aOnHull[m_aBoundary[i]] = 1;
    }
    const int nFanCount = m_aTri.GetSize();
    m_aTri.SetSize(qsv::kTrianglesPerVertex * nVertices, -1);
    m_nOptimDepth = 0;
    qsv::Inserter inserter(*this, nFanCount);
    for (int nVt = 0; nVt < nVertices; ++nVt) {
        if (!aOnHull[nVt]) {
            inserter.Insert(nVt);
        }
    }
    if (qsv::HasMissedVertex(*this, inserter.TriangleCount())) {
        qsv::BuildCarefully(*this);
    } else {
        m_aTri.SetSize(inserter.TriangleCount(), -1);
    }
    return m_aTri.IsEmpty() ? 0 : 1;
}
