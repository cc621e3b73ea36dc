#ifndef QSV_TIN_INTERNAL_EDGE_USES_H
#define QSV_TIN_INTERNAL_EDGE_USES_H

#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// One edge of one triangle, filed under its two vertices in ascending order.
struct EdgeUse {
    int nLow, nHigh;   // the vertices
    int nTri;
    int nEdge;      // the edge's first slot in nTri
    bool bUpward;   // it runs from nLow to nHigh there; so does an edge that ends where it starts
};

// All edges of all triangles, so sorted that those between the same two vertices stand together, in the
// order of triangles and slots. Vertex indices are compared, not looked up.
Array<EdgeUse> SortedEdgeUses(const CArray<CTriangle>& aTri);

// Position behind the last use of the edge whose first use stands at nFirst.
int EndOfEdge(const CArray<EdgeUse>& aUse, int nFirst);

}   // namespace qsv

#endif
