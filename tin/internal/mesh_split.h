#ifndef QSV_TIN_INTERNAL_MESH_SPLIT_H
#define QSV_TIN_INTERNAL_MESH_SPLIT_H

#include "tin/internal/edge_swap.h"
#include "tin/internal/mesh.h"

namespace qsv {

// The triangles around a vertex that was just put into the mesh, which stands in slot 0 of each: their
// edges opposite that slot are to be made Delaunay, in this order.
struct NewFan {
    int aTri[4];
    int nSize = 0;
};

// Splits triangle nTri into three at vertex nVt inside it. nTriCount is the number of triangles in use,
// advanced by those added; the array grows when it is full.
NewFan SplitInside(CArray<CTriangle>& aTri, int nVt, int& nTriCount, int nTri);

// Splits the triangles on both sides of edge nEdge of triangle nTri (one on the outside) at vertex nVt on
// that edge. The fan is empty when the other side does not link back: only a damaged mesh gets there.
NewFan SplitOnEdge(CArray<CTriangle>& aTri, int nVt, int& nTriCount, int nTri, int nEdge);

// Makes the edges opposite slot 0 of a fan's triangles Delaunay, in their order.
void LegalizeFan(const Mesh& mesh, const NewFan& fan, int nDepth, Turns eTurns = Turns::Rounded);

}   // namespace qsv

#endif
