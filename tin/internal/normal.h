#ifndef QSV_TIN_INTERNAL_NORMAL_H
#define QSV_TIN_INTERNAL_NORMAL_H

#include "base/xyz.h"

namespace qsv {

// Unit normal of the triangle a, b, c, upwards when it runs counter-clockwise; not finite without area. Rounds as
// (b - a) x (c - a), divided by its length, does with the operators of CXYZ.
CXYZ NormalOf(const CXYZ& a, const CXYZ& b, const CXYZ& c);

}   // namespace qsv

#endif
