#ifndef QSV_TIN_INTERNAL_HULL_CANDIDATES_H
#define QSV_TIN_INTERNAL_HULL_CANDIDATES_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// Vertices, in index order, of which StarRing and ScanHull make the same hull as of all vertices: those near the hull,
// those almost in the direction of one of its corners and those close to the centre, where it is certain that the
// others take no part; else all. See docs/algorithms/construction.md. Linear, with little work for each vertex.
Array<int> HullCandidates(const CArray<CXYZ>& aVertex, const CXYZ& lower, const CXYZ& upper, double dEPS2);

}   // namespace qsv

#endif
