#include "tin/internal/lines.h"

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
