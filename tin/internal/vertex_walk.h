#ifndef QSV_TIN_INTERNAL_VERTEX_WALK_H
#define QSV_TIN_INTERNAL_VERTEX_WALK_H

#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// The way round a vertex v in slot k of a triangle. Of the two edges that touch v, the one that leaves it
// lies across neighbour slot k+1, the one that ends at it across neighbour slot k.
//
//            \  ccw  /            counter-clockwise: across the edge that ends at v (slot k)
//             \     /             clockwise: across the edge that leaves v (slot k+1)
//       slot k \ t / slot k+1
//               \ /
//                v
enum class Turn { CounterClockwise, Clockwise };

// The triangle next to nTri around its vertex in slot nSlot; -1 at the outside.
int NeighborAround(const CArray<CTriangle>& aTri, int nTri, int nSlot, Turn eTurn);

// One step around the vertex in slot nSlot of triangle nTri. Returns false, with nTri -1 at the outside, or with
// nSlot as it was where the next triangle does not use the vertex.
bool StepAround(const CArray<CTriangle>& aTri, int& nTri, int& nSlot, Turn eTurn);

// The same in the direction that nWalkDir says: clockwise unless it is 0. At the outside the direction is
// reversed (1 or 0), at most once a step.
bool StepAroundOrBack(const CArray<CTriangle>& aTri, int& nTri, int& nSlot, int& nWalkDir);

// First of the triangles 0 .. nTriCount-1 that uses nVt. Returns whether there is one; nTri and nSlot stand
// where the search ended.
bool FindFirstTriangleOf(const CArray<CTriangle>& aTri, int nVt, int nTriCount, int& nTri, int& nSlot);

}   // namespace qsv

#endif
