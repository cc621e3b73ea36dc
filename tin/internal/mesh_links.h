#ifndef QSV_TIN_INTERNAL_MESH_LINKS_H
#define QSV_TIN_INTERNAL_MESH_LINKS_H

#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// The slot of tri that holds vertex nVt, the lowest when it stands there twice; -1 when none does.
int SlotOfVertex(const CTriangle& tri, int nVt);

// The neighbour slot of tri that holds triangle nTri, the lowest when it stands there twice; -1.
int SlotOfNeighbor(const CTriangle& tri, int nTri);

// In triangle nTri, when it exists, every neighbour slot that holds nOld is set to nNew.
void RedirectNeighbor(CArray<CTriangle>& aTri, int nTri, int nOld, int nNew);

// A triangle from its vertices and neighbours in slot order, not selected.
CTriangle MakeTriangle(int nVt0, int nVt1, int nVt2, int nNb0, int nNb1, int nNb2);

}   // namespace qsv

#endif
