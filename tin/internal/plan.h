#ifndef QSV_TIN_INTERNAL_PLAN_H
#define QSV_TIN_INTERNAL_PLAN_H

#include "base/xyz.h"

namespace qsv {

// Lowers lower and raises upper, axis by axis, so that the range holds p. A coordinate that is not a
// number changes nothing.
inline void WidenRange(const CXYZ& p, CXYZ& lower, CXYZ& upper)
{
    lower.x = p.x < lower.x ? p.x : lower.x;
    lower.y = p.y < lower.y ? p.y : lower.y;
    lower.z = p.z < lower.z ? p.z : lower.z;
    upper.x = p.x > upper.x ? p.x : upper.x;
    upper.y = p.y > upper.y ? p.y : upper.y;
    upper.z = p.z > upper.z ? p.z : upper.z;
}

// Sorts three numbers as QuickSortKey does in ascending order: equal ones (0 and -0 are equal) keep their
// order, those that are not a number come last. For ranges of single triangles, without its arrays.
void SortThree(double (&aValue)[3]);
// The position of the one that comes second in that order.
int MiddleOfThree(const double (&aValue)[3]);

// The rest are tests of points in plan. Heights take no part.

// Whether two places differ by at most dEPS in x and in y, bounds included.
bool IsSamePlace(double x1, double y1, double x2, double y2, double dEPS);

// Doubled signed area of the triangle o, a, b: above 0 when it runs counter-clockwise.
double DoubledArea(const CXYZ& o, const CXYZ& a, const CXYZ& b);

// On which side of the line from a to b a doubled area puts a point. A value that is not a number
// counts as on the line.
enum class Side { Right, On, Left };
Side SideOf(double dDoubledArea, double dEPS2);

// Whether (x, y) lies in the counter-clockwise triangle a, b, c, edges included; compares exactly with 0. A
// clockwise triangle holds no point of its interior.
bool IsInTriangle(const CXYZ& a, const CXYZ& b, const CXYZ& c, double x, double y);

// Height at (x, y) of the plane through three points; false, with z as it was, when the plane is vertical.
bool HeightOnPlane(const CXYZ& a, const CXYZ& b, const CXYZ& c, double x, double y, double& z);

// Angle at vertex o between the directions to a and b, 0 .. pi, from the quotient of dot product and
// lengths; not a number when a direction has no length.
double AngleAt(const CXYZ& o, const CXYZ& a, const CXYZ& b);

// Exact sign of the doubled area of o, a, b: 1 counter-clockwise, -1 clockwise, 0 on one line, whatever
// the rounding of DoubledArea. For coordinates whose products stay within the range of a double.
int ExactTurn(const CXYZ& o, const CXYZ& a, const CXYZ& b);

}   // namespace qsv

#endif
