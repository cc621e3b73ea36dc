#include "tin/internal/bulk_insertion.h"
#include "tin/tin.h"
#include "tin/tin_model/careful_build.h"

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
    if (m_aTri.IsEmpty() || nVertices > qsv::kMostVerticesInserted) {
        return 0;
    }
    m_nOptimDepth = 0;
    const int nLeftOut =
        qsv::InsertVertices({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, m_aBoundary, m_MinXYZ, m_MaxXYZ);
    if (nLeftOut != 0 && qsv::HasMissedVertex(*this, m_aTri.GetSize())) {
        qsv::BuildCarefully(*this);
    }
    return m_aTri.IsEmpty() ? 0 : 1;
}
