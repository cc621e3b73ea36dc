#ifndef QSV_TIN_INTERNAL_PLAN_RECEIVER_H
#define QSV_TIN_INTERNAL_PLAN_RECEIVER_H

#include "tin/internal/plan.h"
#include "tin/internal/plan_insert.h"
#include "tin/internal/plan_walk.h"

namespace qsv {

constexpr int kIsInMesh = -1;   // in place of the rank of a vertex that is to come

inline void MarkAsInMesh(CArray<int>& aRank, const CArray<int>& aVt)
{
    for (int i = 0; i < aVt.GetSize(); ++i) {
        aRank[aVt[i]] = kIsInMesh;
    }
}

// A vertex that joins an outer edge without lying exactly on its line bends the outline in or out.
inline bool BendsOutline(const PlanMesh& mesh, const PlanPlace& p, Corner faces)
{
    const PlanPlace &a = mesh.PlaceAt(faces.Next()), &b = mesh.PlaceAt(faces.Prev());
    return mesh.Across(faces).IsOutside() &&
           ExactTurn(CXYZ(a.x, a.y, 0.0), CXYZ(b.x, b.y, 0.0), CXYZ(p.x, p.y, 0.0)) != 0;
}

// Inserts vertex after vertex into the triangle where its walk ended.
class PlanReceiver
{
public:
    PlanReceiver(PlanMesh& mesh, WalkTraps* pTraps, int nLastTri)
        : m_mesh(mesh), m_inserter(mesh, pTraps), m_nLastTri(nLastTri)
    {
    }

    // False when the vertex is left out.
    bool Insert(int nRank, const PlanLocation& at)
    {
        if (at.nTri < 0 || at.nState == kOnVertex) {
            ++m_nLeftOut;
            return false;
        }
        m_nLastTri = at.nTri;
        if (at.nState == kInside) {
            m_inserter.SplitInside(nRank, at.nTri);
        } else {
            m_bBent = m_bBent || BendsOutline(m_mesh, m_mesh.PlaceOf(nRank), at.corner);
            m_inserter.SplitOnEdge(nRank, at.corner);
        }
        return true;
    }

    int LastTri() const { return m_nLastTri; }
    bool IsBent() const { return m_bBent; }
    int LeftOut() const { return m_nLeftOut; }

private:
    PlanMesh& m_mesh;
    PlanInserter m_inserter;
    int m_nLastTri;
    int m_nLeftOut = 0;
    bool m_bBent = false;
};

}   // namespace qsv

#endif
