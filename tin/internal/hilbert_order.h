#ifndef QSV_TIN_INTERNAL_HILBERT_ORDER_H
#define QSV_TIN_INTERNAL_HILBERT_ORDER_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// The rank of each vertex in an order that keeps neighbours in plan together: along a curve through ever smaller
// quarters of a square that leaves each by one side for the next (Hilbert 1891). However unevenly vertices lie, equally
// many ranks are an equal part of them. All coordinates are finite and lie in the square of side dSide above lower.
Array<int> HilbertRanks(const CArray<CXYZ>& aVertex, const CXYZ& lower, double dSide);

}   // namespace qsv

#endif
