#ifndef QSV_TIN_INTERNAL_LIMITS_H
#define QSV_TIN_INTERNAL_LIMITS_H

namespace qsv {

// Default planar tolerance: a micrometre when the unit is the metre, far below what a survey resolves
// and far above the rounding of coordinates up to a few thousand kilometres.
constexpr double kDefaultEPS = 1e-6;

// In exact arithmetic swapping ends by itself; rounding can make two swaps undo each other. Past this
// depth an edge is left as it is: the mesh stays valid, only less optimal.
constexpr int kMaxSwapDepth = 10000;

// Two plan lines whose determinant is smaller are taken as parallel. A fixed number, not a tolerance of
// the TIN: it keeps the reciprocal of the determinant from overflowing.
constexpr double kParallelDeterminant = 1e-12;

// A triangulation of n points has fewer than 2n triangles, so an array of this many records a vertex is
// never outgrown while points are inserted.
constexpr int kTrianglesPerVertex = 2;

// The search of a breakline that cannot end is given up after as many steps as there are triangles, but not
// before so many times those there were at first: the direction it has by then is that of the next search.
constexpr int kSearchStepsPerTriangle = 5;

}   // namespace qsv

#endif
