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

// Walks from triangle nStartTri towards (x, y), always across the first edge in slot order that has the
// point on its right (Devillers, Pion, Teillaud, "Walking in a triangulation", 2002). At most as many
// moves as triangles, so that a folded mesh cannot trap it.
Location WalkToPoint(const Mesh& mesh, int nStartTri, double x, double y);

}   // namespace qsv

#endif
