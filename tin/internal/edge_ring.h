#ifndef QSV_TIN_INTERNAL_EDGE_RING_H
#define QSV_TIN_INTERNAL_EDGE_RING_H

#include "tin/internal/mesh_links.h"

namespace qsv {

// Joins edges into one ring of vertices. It starts with the first edge; in each round the first edge left
// that starts where the ring ends is appended, or, when there is none, the first that ends where the ring
// starts is put in front. Edges that join at neither end are left out, and the closing vertex is not
// repeated. An open chain counts as closed by the edge from its end to its start.
Array<int> ChainIntoRing(const CArray<DirectedEdge>& aEdge);

}   // namespace qsv

#endif
