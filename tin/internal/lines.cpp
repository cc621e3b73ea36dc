#include "tin/internal/lines.h"

#include <algorithm>
#include <cmath>

#include "tin/internal/limits.h"

namespace {

// Whether d lies between d1 and d2, widened by eps. A segment without extent along an axis is not tested
// there: the other axis decides.
bool IsWithin(double d, double d1, double d2, double eps)
{
    if (d1 < d2) {
        return d + eps >= d1 && d - eps <= d2;
    }
    if (d2 < d1) {
        return d + eps >= d2 && d - eps <= d1;
    }
    return true;
}

}   // namespace

int CalCrossPointXY(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                    double x4, double y4, double& x, double& y, double& z, int bLine1, int bLine2, double eps)
{
    const double a1 = y2 - y1, b1 = x1 - x2, c1 = a1 * x1 + b1 * y1;
    const double a2 = y4 - y3, b2 = x3 - x4, c2 = a2 * x3 + b2 * y3;
    const double det = a1 * b2 - a2 * b1;
    if (std::fabs(det) < qsv::kParallelDeterminant) {
        return 0;
    }
    const double r = 1.0 / det;   // one reciprocal for both coordinates
    x = (c1 * b2 - c2 * b1) * r;
    y = (a1 * c2 - a2 * c1) * r;
    z = x2 - x1 != 0.0 ? z2 + (x - x2) / (x2 - x1) * (z2 - z1) : z2 + (y - y2) / (y2 - y1) * (z2 - z1);
    if (bLine1 == 0 && !(IsWithin(x, x1, x2, eps) && IsWithin(y, y1, y2, eps))) {
        return 0;
    }
    if (bLine2 == 0 && !(IsWithin(x, x3, x4, eps) && IsWithin(y, y3, y4, eps))) {
        return 0;
    }
    return 1;
}

int CalcFootOnLine(double ax, double ay, double az, double bx, double by, double bz, double px, double py,
                   double pz, double& fx, double& fy, double& fz, double& dist)
{
    const double dx = bx - ax, dy = by - ay, dz = bz - az;
    const double dSquare = dz * dz + dy * dy + dx * dx;   // z first, as the distance below
    if (dSquare == 0.0) {
        return 0;
    }
    const double t = ((px - ax) * dx + (py - ay) * dy + (pz - az) * dz) / dSquare;
    fx = ax + t * dx;
    fy = ay + t * dy;
    fz = az + t * dz;
    const double ex = fx - px, ey = fy - py, ez = fz - pz;
    dist = std::sqrt(ez * ez + ey * ey + ex * ex);
    return 1;
}

namespace {

double HeightOnEdge(const CXYZ& a1, const CXYZ& a2, double x, double y)
{
    return a2.x != a1.x ? a2.z + (x - a2.x) / (a2.x - a1.x) * (a2.z - a1.z)
                        : a2.z + (y - a2.y) / (a2.y - a1.y) * (a2.z - a1.z);
}

// Whether d lies in the extent from d1 to d2 widened by dTol; always when there is no extent. The ends move
// here, while IsWithin moves the point: the two round differently.
bool IsInExtent(double d, double d1, double d2, double dTol)
{
    return d1 == d2 || (d >= std::min(d1, d2) - dTol && d <= std::max(d1, d2) + dTol);
}

bool IsInExtent(double x, double y, const CXYZ& a1, const CXYZ& a2, double dTol)
{
    return IsInExtent(x, a1.x, a2.x, dTol) && IsInExtent(y, a1.y, a2.y, dTol);
}

}   // namespace

int CrossEdgeHeights(const CXYZ& A1, const CXYZ& A2, const CXYZ& B1, const CXYZ& B2, double& x, double& y,
                     double& hA, double& hB, int bSkipA, int bSkipB, double dTol)
{
    const double ax = A1.x - A2.x, ay = A2.y - A1.y;
    const double bx = B1.x - B2.x, by = B2.y - B1.y;
    const double det = bx * ay - by * ax;
    if (std::fabs(det) < qsv::kParallelDeterminant) {
        return 0;
    }
    const double cA = A1.x * ay + A1.y * ax;
    const double cB = B1.x * by + B1.y * bx;
    const double r = 1.0 / det;   // one reciprocal for both coordinates
    x = (cA * bx - cB * ax) * r;
    y = (cB * ay - cA * by) * r;
    hA = HeightOnEdge(A1, A2, x, y);
    hB = HeightOnEdge(B1, B2, x, y);
    if (bSkipA == 0 && !IsInExtent(x, y, A1, A2, dTol)) {
        return 0;
    }
    if (bSkipB == 0 && !IsInExtent(x, y, B1, B2, dTol)) {
        return 0;
    }
    return 1;
}
