#ifndef QSV_TIN_INTERNAL_HULL_H
#define QSV_TIN_INTERNAL_HULL_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// The centre of a range.
CXYZ MiddleOf(const CXYZ& lower, const CXYZ& upper);

// A star-shaped ring about a centre: of every direction (by atan2, -pi .. pi) in which one of the vertices aFrom lies,
// the farthest of them, the first of equally far ones.
Array<int> StarRing(const CArray<CXYZ>& aVertex, const CArray<int>& aFrom, const CXYZ& centre);

// Scans a star-shaped ring for corners that do not turn counter-clockwise by more than dEPS2 of doubled area and takes
// them out; after each, the corner before is tested again. Graham, "An efficient algorithm for determining the convex
// hull of a finite planar set", 1972. What is left has fewer than 3 corners when the ring is no ring.
Array<int> ScanHull(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS2);

}   // namespace qsv

#endif
