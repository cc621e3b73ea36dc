#ifndef QSV_TIN_INTERNAL_PLAN_WALK_H
#define QSV_TIN_INTERNAL_PLAN_WALK_H

#include "tin/internal/mesh_walk.h"
#include "tin/internal/plan_mesh.h"

namespace qsv {

// The walk of mesh_walk.h on a PlanMesh: the same arithmetic, the same steps, the same answers.

struct WalkTolerance {
    double dEPS;    // bounds coordinate differences
    double dEPS2;   // bounds doubled areas
};

// On which side of the edge from a to b a place lies, as a doubled area: above 0 to the right, outside.
inline double RightOf(const PlanPlace& a, const PlanPlace& b, const PlanPlace& p)
{
    return (b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y);
}

// Where a walk ended, as in Location: kOnVertex names the vertex by its corner, kOnEdge the edge by the corner that
// faces it.
struct PlanLocation {
    int nTri = -1;
    int nState = kWalkGaveUp;
    Corner corner = Corner::Outside();
    int nMoves = 0;
};

inline double Distance2(const PlanPlace& p, const PlanPlace& q)
{
    return (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y);
}

// What the walk does in a triangle: it stops, with a state as in Location, or goes on across the edge that the corner
// faces.
struct WalkAnswer {
    bool bStops;
    WalkState eState;
    Corner corner;
};
WalkAnswer AskTriangle(const PlanMesh& mesh, int nTri, const PlanPlace& p, const WalkTolerance& tolerance);

PlanLocation WalkToPoint(const PlanMesh& mesh, int nStartTri, const PlanPlace& p,
                         const WalkTolerance& tolerance);

}   // namespace qsv

#endif
