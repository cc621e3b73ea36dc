#ifndef QSV_TIN_INTERNAL_OUTLINE_JOIN_H
#define QSV_TIN_INTERNAL_OUTLINE_JOIN_H

#include "tin/internal/mesh.h"

namespace qsv {

// Joins vertex nVt, which lies beyond the outline, to the outer edge nEdge of triangle nTri, and makes the
// mesh Delaunay around it. With bWhole also to every outer edge next to it that the vertex sees, so that no
// notch is left. nTriCount is the number of triangles in use; the array may be longer.
void JoinToOutline(const Mesh& mesh, int& nTriCount, int nVt, int nTri, int nEdge, bool bWhole);

}   // namespace qsv

#endif
