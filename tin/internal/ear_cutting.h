#ifndef QSV_TIN_INTERNAL_EAR_CUTTING_H
#define QSV_TIN_INTERNAL_EAR_CUTTING_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// A ring is a list of vertex indices around a polygon, the last joining the first.

// Whether no two edges of the ring meet within dEPS, those that share a ring position left aside. A ring
// that passes through the same place twice is not simple.
bool IsSimpleRing(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS);

// Three vertices that follow each other on a ring; the triangle that cuts off the middle one.
struct Ear {
    int a, b, c;
};

// Cuts the ring into triangles: again and again the corner that does not turn clockwise and has the
// shortest chord from a to c in plan, the first such corner of the ring when several are equally short.
// Whether the chord runs inside the ring is not tested. Returns false when corners remain of which none
// can be cut; aEar receives the ears cut so far, in order.
// Cost: n log n (ear clipping after Meisters, "Polygons have ears", 1975, with a heap of the candidates).
bool CutEars(const CArray<CXYZ>& aVertex, const CArray<int>& aRing, double dEPS2, CArray<Ear>& aEar);

}   // namespace qsv

#endif
