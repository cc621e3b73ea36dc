#ifndef QSV_TIN_INTERNAL_OUTLINE_JOIN_H
#define QSV_TIN_INTERNAL_OUTLINE_JOIN_H

#include "tin/internal/mesh.h"

namespace qsv {

// Joins vertex nVt, which lies beyond the outline, to the outer edge nEdge of triangle nTri and, on both
// sides of it, to every further outer edge beyond whose line it lies by more than dTolerance. Returns the
// first of the new triangles, which are the last ones in use; nVt stands in slot 0 of each. nTriCount is
// the number of triangles in use; the array may be longer.
int JoinToOutline(const Mesh& mesh, int& nTriCount, int nVt, int nTri, int nEdge, double dTolerance);

}   // namespace qsv

#endif
