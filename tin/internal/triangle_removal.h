#ifndef QSV_TIN_INTERNAL_TRIANGLE_REMOVAL_H
#define QSV_TIN_INTERNAL_TRIANGLE_REMOVAL_H

#include "base/xyz.h"
#include "platform/afx_array.h"
#include "tin/triangle.h"

namespace qsv {

// Takes triangles out in one pass; what remains keeps its order. The same as deleting them one at a time:
// links to them become -1, all others move down, and a normal goes with each triangle that is deleted while
// there are as many normals as triangles. The deletion of the only triangle left takes no normal.
// @param aDeletion  for every triangle the number of its deletion, from 1 to nDeleted; 0 where it stays
void RemoveTriangles(CArray<CTriangle>& aTri, CArray<CXYZ>& aTriNormal, const CArray<int>& aDeletion,
                     int nDeleted);

// The same for a few triangles, given in ascending order, which are deleted in this order.
void RemoveFewTriangles(CArray<CTriangle>& aTri, CArray<CXYZ>& aTriNormal, const CArray<int>& aGone);

}   // namespace qsv

#endif
