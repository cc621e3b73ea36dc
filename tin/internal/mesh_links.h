#ifndef QSV_TIN_INTERNAL_MESH_LINKS_H
#define QSV_TIN_INTERNAL_MESH_LINKS_H

#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// The slot of tri that holds vertex nVt, the lowest when it stands there twice; -1 when none does.
int SlotOfVertex(const CTriangle& tri, int nVt);

// An edge with its direction, from one vertex to another.
struct DirectedEdge {
    int nFrom;
    int nTo;
};

// The neighbour slot of tri that holds triangle nTri; -1 when none does. Flat slivers can border each other
// along two edges: of two such slots, the one whose edge runs as given in tri, else the lower one.
int SlotOfNeighbor(const CTriangle& tri, int nTri, DirectedEdge edge);

// In triangle nTri, when it exists, the neighbour slot that holds nOld across the given edge (as it runs
// in nTri) is set to nNew.
void RedirectNeighbor(CArray<CTriangle>& aTri, int nTri, DirectedEdge edge, int nOld, int nNew);

// A triangle from its vertices and neighbours in slot order, not selected.
CTriangle MakeTriangle(int nVt0, int nVt1, int nVt2, int nNb0, int nNb1, int nNb2);

}   // namespace qsv

#endif
