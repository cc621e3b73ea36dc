#ifndef QSV_TIN_INTERNAL_PLAN_SEARCH_H
#define QSV_TIN_INTERNAL_PLAN_SEARCH_H

#include "tin/internal/plan_walk.h"
#include "tin/internal/walk_traps.h"

namespace qsv {

// Finds out where the walk from a far triangle ends without walking there, wherever that is certain.
//
// A walk to a place stops only in a triangle that lets it stop. In a mesh of counter-clockwise triangles over a
// convex outline, of triangles that are no WalkTraps only those within the reach of the place can: usually the
// one that holds the place. All that are, and the traps that can stop it, are asked. When one triangle alone lets the
// walk stop, the walk ends there; when those that do all see one of their vertices at the place, the walk ends at a
// vertex.
class PlanSearch
{
public:
    PlanSearch(const PlanMesh& mesh, const WalkTraps& traps, const WalkTolerance& tolerance)
        : m_mesh(mesh), m_traps(traps), m_tolerance(tolerance)
    {
    }

    // To be called when the outline is no longer known to be convex.
    void DistrustOutline() { m_bTrusted = false; }

    // A quick walk to p, which need not end where the walk does. It stands in a triangle, at the corner that faces the
    // edge it is not to cross: the one it came in by.
    Corner Begin(const PlanPlace& p, int nTri) const;
    // Goes on to the next triangle, across the edge beyond which p lies farther; false where the walk ends.
    bool Step(const PlanPlace& p, Corner& at) const;

    // Where the walk to p from triangle nFar ends, at best found by a quick walk that stands at near. When at a vertex,
    // the triangle may be another one at that vertex.
    PlanLocation Find(const PlanPlace& p, Corner near, int nFar) const;

private:
    bool IsDeepInside(const PlanPlace& p, Corner corner) const;
    bool IsBeyondReach(const PlanPlace& a, const PlanPlace& b, const PlanPlace& p) const;
    PlanLocation Survey(const PlanPlace& p, int nTri) const;

    const PlanMesh& m_mesh;
    const WalkTraps& m_traps;
    const WalkTolerance m_tolerance;
    bool m_bTrusted = true;
};

}   // namespace qsv

#endif
