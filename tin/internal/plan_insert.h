#ifndef QSV_TIN_INTERNAL_PLAN_INSERT_H
#define QSV_TIN_INTERNAL_PLAN_INSERT_H

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
    // The edge that a corner faces, where the new vertex P lies, and what will become of it as the mesh stands.
    struct FacedEdge {
        Corner apex;
        Corner across;
        int nFarRank;     // of the vertex across
        int nDepth;       // of swaps that led here
        bool bInCircle;   // that vertex lies inside or on the circle through the triangle
        bool bTrap;       // the triangle is a trap for walks
    };
    // A triangle before it is split.
    struct Split {
        int nRank[3];
        Corner across[3];
    };
    // The place of P, once for each of two calculations.
    struct Apex {
        Two x, y;
    };
    // A triangle with its apex at P.
    struct Wedge {
        Corner apex;
        const PlanPlace &Q, &R;
    };

    Split Before(Corner first) const;
    void Fill(int nTri, int nRank, const Split& from, int k);
    Apex ApexAt(int nRank) const { return {Both(m_mesh.PlaceOf(nRank).x), Both(m_mesh.PlaceOf(nRank).y)}; }
    Wedge WedgeAt(Corner apex) const
    {
        return {apex, m_mesh.PlaceAt(apex.Next()), m_mesh.PlaceAt(apex.Prev())};
    }
    void Foresee(const Apex& P, const Wedge& one, const Wedge& other, int nDepth, FacedEdge& edge,
                 FacedEdge& otherEdge) const;
    bool StillHolds(const FacedEdge& edge) const;
    bool SwapIfConvex(const Apex& P, FacedEdge& edge, FacedEdge& second);
    void Legalize(const Apex& P, const FacedEdge& edge);

    PlanMesh& m_mesh;
    WalkTraps* const m_pTraps;
    CArray<FacedEdge> m_aPending;   // a stack
};

}   // namespace qsv

#endif
