#ifndef QSV_TIN_INTERNAL_PLAN_INSERT_H
#define QSV_TIN_INTERNAL_PLAN_INSERT_H

#include <initializer_list>

#include "tin/internal/plan_mesh.h"
#include "tin/internal/two.h"
#include "tin/internal/walk_traps.h"

namespace qsv {

// The splits and swaps of mesh_split.h and edge_swap.h on a PlanMesh: the same arithmetic, and the same triangles in
// the same slots, with the same numbers.
class PlanInserter
{
public:
    // Keeps the list of traps, if there is one to keep.
    PlanInserter(PlanMesh& mesh, WalkTraps* pTraps);

    // Puts the vertex of a rank into triangle nTri, or on the edge that a corner faces. The new triangles take the
    // vertex's seats.
    void SplitInside(int nRank, int nTri);
    void SplitOnEdge(int nRank, Corner faces);

private:
    // The edge from Q to R that a corner faces, where the new vertex P lies, and what will become of it as the mesh
    // stands.
    struct FacedEdge {
        Corner apex;     // in slot 0
        Corner across;   // D lies there
        int nQ, nR, nD;
        int nDepth;       // of swaps that led here
        bool bInCircle;   // D lies inside or on the circle through the triangle
        bool bTrap;       // the triangle is a trap for walks
    };
    // A triangle before it is split.
    struct Split {
        int nRank[3];
        Corner across[3];
    };
    // P, its place once for each of two calculations.
    struct Apex {
        int nRank;
        Two x, y;
    };
    // A triangle with its apex at P, as SplitInside and SplitOnEdge make it and swaps do.
    struct Wedge {
        Corner apex;
        int nQ, nR;
        PlanPlace Q, R;
    };

    Split Before(Corner first) const;
    void Fill(int nTri, int nRank, const Split& from, int k);
    Apex ApexAt(int nRank) const
    {
        return {nRank, Both(m_mesh.PlaceOf(nRank).x), Both(m_mesh.PlaceOf(nRank).y)};
    }
    Wedge WedgeOf(Corner apex, int nQ, int nR) const
    {
        return {apex, nQ, nR, m_mesh.PlaceOf(nQ), m_mesh.PlaceOf(nR)};
    }
    Wedge WedgeOf(int nTri) const
    {
        return WedgeOf(Corner(nTri, 0), m_mesh.RankAt(Corner(nTri, 1)), m_mesh.RankAt(Corner(nTri, 2)));
    }
    template <bool WITH_TRAPS>
    void Foresee(const Apex& P, const Wedge& one, const Wedge& other, int nDepth, FacedEdge& edge,
                 FacedEdge& otherEdge) const;
    bool StillHolds(const FacedEdge& edge) const;
    template <bool WITH_TRAPS>
    bool SwapIfConvex(const Apex& P, FacedEdge& edge, FacedEdge& second);
    template <bool WITH_TRAPS>
    void Legalize(Apex P, const int* pTri, int nTriangles);
    void LegalizeAround(int nRank, std::initializer_list<int> tris);

    PlanMesh& m_mesh;
    WalkTraps* const m_pTraps;
    CArray<FacedEdge> m_aWaiting;   // a stack
};

}   // namespace qsv

#endif
