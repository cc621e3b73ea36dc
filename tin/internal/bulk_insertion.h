#ifndef QSV_TIN_INTERNAL_BULK_INSERTION_H
#define QSV_TIN_INTERNAL_BULK_INSERTION_H

#include "tin/internal/mesh.h"

namespace qsv {

// Above this the numbers of corners would not fit 32 bits.
constexpr int kMostVerticesInserted = (1 << 28) - 1;

// Inserts all vertices but those of the outline into the triangles over the outline. The same triangles, numbering and
// links as inserting one vertex after the other in index order, each searched for by the walk from the triangle
// of the one before; only faster. See docs/algorithms/construction.md.
//
// mesh.aTri is the triangulation of the ring aOutline, and becomes that of all vertices; lower and upper are the
// range of the vertices. Returns the number of vertices that were left out: those at the place of another one, or
// that a walk gave up or found outside.
//
// For n vertices in no order O(n log n); memory beyond the result 90 bytes a vertex.
int InsertVertices(const Mesh& mesh, const CArray<int>& aOutline, const CXYZ& lower, const CXYZ& upper);

}   // namespace qsv

#endif
