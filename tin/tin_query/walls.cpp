#include "tin/internal/mesh.h"
#include "tin/internal/plan_index.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// The vertices at the foot of the walls: those that stand there already, else new ones.
class FootVertices
{
public:
    FootVertices(CArray<CXYZ>& aVertex, double z, double dEPS)
        : m_aVertex(aVertex), m_z(z), m_dEPS(dEPS), m_index(aVertex, dEPS)
    {
        for (int i = 0; i < aVertex.GetSize(); ++i) {
            m_index.Enter(i);
        }
    }

    // The vertex below (or above) vertex nVt.
    int Below(int nVt)
    {
        const CXYZ& top = VertexAt(m_aVertex, nVt);
        const CXYZ foot(top.x, top.y, m_z);
        const int nFound = m_index.FindFirst(foot.x, foot.y, [this](int i) { return IsAtHeight(i); });
        if (nFound >= 0) {
            return nFound;
        }
        const int nFoot = m_aVertex.Add(foot);
        m_index.Enter(nFoot);
        return nFoot;
    }

private:
    bool IsAtHeight(int nVt) const
    {
        const double dz = m_z - m_aVertex[nVt].z;
        return dz >= -m_dEPS && dz <= m_dEPS;
    }

    CArray<CXYZ>& m_aVertex;
    const double m_z;
    const double m_dEPS;
    PlanIndex m_index;
};

}   // namespace

// The wall below the outer edge from Q to P runs the other way round than its triangle t, so that it is
// seen from outside as t is seen from above.
//
//        (t)
//    Q ------- P
//    | 1   /   |      1 = (P, Q, Q'), 2 = (P, Q', P') where Q', P' are the feet
//    |   /   2 |
//    Q' ------ P'
void CTin::AddVPlane(double z)
{
    const int nTriangles = m_aTri.GetSize();
    FootVertices feet(m_aVertex, z, m_dEPS);
    for (int t = 0; t < nTriangles; ++t) {
        for (int k = 0; k < 3; ++k) {
            const int nNeighbor = m_aTri[t].m_nNeighbor[k];
            if (nNeighbor >= 0 && nNeighbor < nTriangles) {
                continue;
            }
            const int nVtP = m_aTri[t].m_nVertex[k], nVtQ = m_aTri[t].m_nVertex[PrevSlot(k)];
            const int nFootQ = feet.Below(nVtQ);
            const int nFootP = feet.Below(nVtP);
            AddTri(nVtP, nVtQ, nFootQ);
            AddTri(nVtP, nFootQ, nFootP);
        }
    }
    UpdateTopology();
}
