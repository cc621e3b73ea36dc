#ifndef QSV_TIN_INTERNAL_PLAN_INSERT_H
#define QSV_TIN_INTERNAL_PLAN_INSERT_H

#include "tin/internal/plan_mesh.h"
#include "tin/internal/walk_traps.h"

namespace qsv {

// The splits and swaps of mesh_split.h and edge_swap.h on a PlanMesh: the same arithmetic, and the same triangles in
// the same slots, with the same numbers.
class PlanInserter
{
public:
    PlanInserter(PlanMesh& mesh, WalkTraps& traps);

    // Puts the vertex of a rank into triangle nTri, or on its edge nEdge. The new triangles take the vertex's seats.
    void SplitInside(int nRank, int nTri);
    void SplitOnEdge(int nRank, int nTri, int nEdge);

private:
    struct PendingEdge {
        int nTri;
        int nApex;
        int nDepth;
    };

    void Fill(int nTri, int nRank, const PlanTriangle& from, int a);
    bool SwapUnlessDelaunay(int nTri, int nApex, EdgeRef& other);
    void Legalize(int nTri);

    PlanMesh& m_mesh;
    WalkTraps& m_traps;
    CArray<PendingEdge> m_aPending;
};

}   // namespace qsv

#endif
