#ifndef QSVTIN_TERRAIN_TRIANGLES_H
#define QSVTIN_TERRAIN_TRIANGLES_H

#include "qsv_3dprocess.h"

namespace qsvtin {

/// Corner k (0, 1, 2) of a triangle; its indices must be sound, here and below.
const CXYZ& CornerOf(const CTin& tin, int triangle, int k);

/// The slot that follows one, counter-clockwise. An edge from slot k has its neighbour where it ends, in NextSlot(k).
constexpr int NextSlot(int k)
{
    return (k + 1) % 3;
}

/// The slot of a vertex in a triangle; 3 when it has none.
int SlotOf(const CTriangle& tri, int vertex);

/// Twice the plan area of a triangle, below 0 when it runs clockwise.
double DoubledPlanArea(const CTin& tin, int triangle);

/// True for a triangle of a wall, and for one without any area: it has no height of its own in plan.
bool StandsUpright(const CTin& tin, int triangle);

}   // namespace qsvtin

#endif
