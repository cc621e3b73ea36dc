#include "tin/internal/plan.h"

#include <cmath>
#include <utility>

namespace qsv {

namespace {

bool IsBefore(double a, double b)
{
    return a < b || (std::isnan(b) && !std::isnan(a));
}

// Neighbours that stand the wrong way round change places.
template <class T, class IS_BEFORE>
void SortThree(T (&aItem)[3], IS_BEFORE fnIsBefore)
{
    for (const int i : {0, 1, 0}) {
        if (fnIsBefore(aItem[i + 1], aItem[i])) {
            std::swap(aItem[i], aItem[i + 1]);
        }
    }
}

}   // namespace

void SortThree(double (&aValue)[3])
{
    SortThree(aValue, IsBefore);
}

int MiddleOfThree(const double (&aValue)[3])
{
    int aPosition[] = {0, 1, 2};
    SortThree(aPosition, [&aValue](int i, int j) { return IsBefore(aValue[i], aValue[j]); });
    return aPosition[1];
}

bool IsSamePlace(double x1, double y1, double x2, double y2, double dEPS)
{
    const double dx = x1 - x2, dy = y1 - y2;
    return dx >= -dEPS && dx <= dEPS && dy >= -dEPS && dy <= dEPS;
}

double DoubledArea(const CXYZ& o, const CXYZ& a, const CXYZ& b)
{
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

Side SideOf(double dDoubledArea, double dEPS2)
{
    return dDoubledArea > dEPS2 ? Side::Left : dDoubledArea < -dEPS2 ? Side::Right : Side::On;
}

namespace {

bool IsOnInnerSide(const CXYZ& a, const CXYZ& b, double x, double y)
{
    const double ex = b.x - a.x, ey = b.y - a.y, dx = x - a.x, dy = y - a.y;
    const double dLeft = dy * ex - dx * ey;
    if (dLeft > 0.0) {
        return true;
    }
    // On the edge's line: no farther from a than b is. A triangle with area turns what lies before a away at
    // another edge.
    return dLeft == 0.0 && dy * dy + dx * dx <= ey * ey + ex * ex;
}

}   // namespace

bool IsInTriangle(const CXYZ& a, const CXYZ& b, const CXYZ& c, double x, double y)
{
    return IsOnInnerSide(a, b, x, y) && IsOnInnerSide(b, c, x, y) && IsOnInnerSide(c, a, x, y);
}

bool HeightOnPlane(const CXYZ& a, const CXYZ& b, const CXYZ& c, double x, double y, double& z)
{
    const double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
    const double wx = c.x - a.x, wy = c.y - a.y, wz = c.z - a.z;
    const double nx = wz * uy - wy * uz, ny = wx * uz - wz * ux, nz = wy * ux - wx * uy;
    if (nz == 0.0) {
        return false;
    }
    // The plane's constant goes through b, summed from z to x, and the height comes from a reciprocal: each
    // step rounds once, and heights must not depend on who computes them.
    const double d = -((b.z * nz + b.y * ny) + b.x * nx);
    z = ((d + x * nx) + y * ny) * (-1.0 / nz);
    return true;
}

double AngleAt(const CXYZ& o, const CXYZ& a, const CXYZ& b)
{
    const CXYZ u(a.x - o.x, a.y - o.y, 0.0), w(b.x - o.x, b.y - o.y, 0.0);
    return std::acos(u.Inn(w) / (u.Len() * w.Len()));
}

namespace {

// Exact sums of doubles (Shewchuk, "Adaptive Precision Floating-Point Arithmetic and Fast Robust
// Geometric Predicates", 1997): a number is kept as a sum of parts that do not overlap, smallest first,
// so its sign is that of the last part.
struct ExactSum {
    double aPart[32];
    int nParts = 0;

    void Add(double d)
    {
        int nKept = 0;
        for (int i = 0; i < nParts; ++i) {
            const double dSum = d + aPart[i];
            const double dPart = dSum - d;
            const double dError = (d - (dSum - dPart)) + (aPart[i] - dPart);
            if (dError != 0.0) {
                aPart[nKept++] = dError;
            }
            d = dSum;
        }
        if (d != 0.0) {
            aPart[nKept++] = d;
        }
        nParts = nKept;
    }

    // Adds the exact product: the halves of both factors multiply without rounding (Dekker 1971).
    void AddProduct(double a, double b)
    {
        const double dProduct = a * b;
        const double a1 = UpperHalf(a), a2 = a - a1, b1 = UpperHalf(b), b2 = b - b1;
        Add(a2 * b2 - (((dProduct - a1 * b1) - a2 * b1) - a1 * b2));
        Add(dProduct);
    }

    int Sign() const { return nParts == 0 ? 0 : aPart[nParts - 1] > 0.0 ? 1 : -1; }

private:
    static double UpperHalf(double d)
    {
        const double dShifted = 134217729.0 * d;   // 2^27 + 1
        return dShifted - (dShifted - d);
    }
};

}   // namespace

int ExactTurn(const CXYZ& o, const CXYZ& a, const CXYZ& b)
{
    const double dLeft = (a.x - o.x) * (b.y - o.y), dRight = (a.y - o.y) * (b.x - o.x);
    const double dArea = dLeft - dRight;
    const double dRounding =
        4.0e-16 * (std::fabs(dLeft) + std::fabs(dRight));   // Shewchuk's bound, rounded up
    if (dArea > dRounding || dArea < -dRounding || !std::isfinite(dRounding)) {
        return dArea > 0.0 ? 1 : dArea < 0.0 ? -1 : 0;
    }
    ExactSum sum;   // the determinant, multiplied out so that no difference is rounded
    sum.AddProduct(a.x, b.y);
    sum.AddProduct(-a.x, o.y);
    sum.AddProduct(-o.x, b.y);
    sum.AddProduct(-a.y, b.x);
    sum.AddProduct(a.y, o.x);
    sum.AddProduct(o.y, b.x);
    return sum.Sign();
}

}   // namespace qsv
