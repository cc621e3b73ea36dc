#ifndef QSV_TIN_INTERNAL_MESH_WALK_H
#define QSV_TIN_INTERNAL_MESH_WALK_H

#include "tin/internal/mesh.h"

namespace qsv {

// Where a walk through the mesh ended.
enum WalkState {
    kWalkGaveUp = -2,   // bad start, or too many moves
    kOutside = -1,      // beyond an outer edge
    kInside = 0,
    kOnVertex = 1,
    kOnEdge = 2
};

struct Location {
    int nTri = -1;              // the triangle; -1 in the states below 0
    int nState = kWalkGaveUp;   // a WalkState
    int nSide = 0;              // kOnVertex: vertex slot; kOnEdge, kOutside: the edge, by its first slot
};

// A walk on its way to (x, y).
struct Walk {
    double x, y;
    int nTri;       // where it stands
    int nMoves;     // made so far
    int nEarlier;   // where it stood after 1, 2, 4, 8, ... moves (Brent 1980)
};

inline Walk StartWalk(int nStartTri, double x, double y)
{
    return {x, y, nStartTri, 0, nStartTri};
}

// One step of a walk: looks at the triangle where it stands, which must exist. Returns true when it has moved
// on, false when it is over, and then where it ended.
bool StepWalk(const MeshView& mesh, Walk& walk, Location& found);

// Walks from triangle nStartTri towards (x, y), always across the first edge in slot order that has the
// point on its right (Devillers, Pion, Teillaud, "Walking in a triangulation", 2002). At most as many
// moves as triangles, so that a folded mesh cannot trap it.
Location WalkToPoint(const MeshView& mesh, int nStartTri, double x, double y);

}   // namespace qsv

#endif
