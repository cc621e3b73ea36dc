// The order in which a TIN is painted, lowest first, and the picking that goes by it.
#include "plain_tin.h"

#include <algorithm>

namespace plain {

void Tin::UpdateDepth2()
{
    const int n = tri.Size();
    if (n < 1) return;
    List<double> key;
    List<Point> low(tri.size()), high(tri.size());
    for (int t = 0; t < n; ++t) {
        key.push_back((At(t, 2).z + At(t, 1).z) + At(t, 0).z);
        GetRange(t, low[t], high[t]);
    }
    List<int> order = SortedOrder(key, 1);
    for (int i = 0; i < n; ++i) {
        int swaps = 0;
        for (int j = i + 1; j < n;) {
            const int p = order[i], q = order[j];
            const bool mayHide = low[p].x <= high[q].x && high[p].x >= low[q].x && low[p].y <= high[q].y &&
                                 high[p].y >= low[q].y && high[p].z >= low[q].z;
            if (!mayHide || IsAbobe(q, p) || IsBelow(p, q) || !Obscures(p, q)) {
                ++j;
                continue;
            }
            std::swap(order[i], order[j]);
            if (++swaps >= n) break;
            j = i + 1;
        }
    }
    depthOrder = order;
}

namespace {

// Whether no corner of triangle t1 lies beyond the plane of t2, against the plane's normal turned up or down.
int NoCornerBeyond(const Tin& tin, int t1, int t2, bool up)
{
    const Point& origin = tin.At(t2, 0);
    Point normal = Out(tin.At(t2, 1) - origin, tin.At(t2, 2) - origin);
    if (up ? normal.z < 0 : normal.z > 0) normal = {-normal.x, -normal.y, -normal.z};
    for (int k = 0; k < 3; ++k) {
        if (Inn(normal, tin.At(t1, k) - origin) < 0) return 0;
    }
    return 1;
}

}   // namespace

int Tin::IsAbobe(int t1, int t2) const
{
    return NoCornerBeyond(*this, t1, t2, true);
}

int Tin::IsBelow(int t1, int t2) const
{
    return NoCornerBeyond(*this, t1, t2, false);
}

int Tin::Obscures(int t1, int t2) const
{
    for (int k = 0; k < 3; ++k) {
        for (int m = 0; m < 3; ++m) {
            const int a1 = tri[t1].v[k], a2 = tri[t1].v[(k + 1) % 3];
            const int b1 = tri[t2].v[m], b2 = tri[t2].v[(m + 1) % 3];
            if (a1 == b1 || a1 == b2 || a2 == b1 || a2 == b2) continue;
            double x, y, hA, hB;
            if (CrossEdgeHeights(vertex[a1], vertex[a2], vertex[b1], vertex[b2], x, y, hA, hB, eps) &&
                hA > hB) {
                return 1;
            }
        }
    }
    const auto holds = [this](int outer, int inner) {
        for (int k = 0; k < 3; ++k) {
            if (!PtInTri(outer, At(inner, k).x, At(inner, k).y)) return false;
        }
        return true;
    };
    return holds(t2, t1) || holds(t1, t2);
}

namespace {

double HeightAt(const Point& p1, const Point& p2, double x, double y)
{
    return p2.x != p1.x ? p2.z + (x - p2.x) / (p2.x - p1.x) * (p2.z - p1.z)
                        : p2.z + (y - p2.y) / (p2.y - p1.y) * (p2.z - p1.z);
}

bool WithinExtent(const Point& p1, const Point& p2, double x, double y, double tol)
{
    if (p1.x != p2.x && !(x >= std::min(p1.x, p2.x) - tol && x <= std::max(p1.x, p2.x) + tol)) return false;
    return p1.y == p2.y || (y >= std::min(p1.y, p2.y) - tol && y <= std::max(p1.y, p2.y) + tol);
}

}   // namespace

int CrossEdgeHeights(const Point& a1, const Point& a2, const Point& b1, const Point& b2, double& x, double& y,
                     double& hA, double& hB, double tol)
{
    const double d = (b1.x - b2.x) * (a2.y - a1.y) - (b2.y - b1.y) * (a1.x - a2.x);
    if (std::fabs(d) < 1e-12) return 0;
    const double inv = 1.0 / d;
    const double cA = a1.x * (a2.y - a1.y) + a1.y * (a1.x - a2.x);
    const double cB = b1.x * (b2.y - b1.y) + b1.y * (b1.x - b2.x);
    x = (cA * (b1.x - b2.x) - cB * (a1.x - a2.x)) * inv;
    y = (cB * (a2.y - a1.y) - cA * (b2.y - b1.y)) * inv;
    hA = HeightAt(a1, a2, x, y);
    hB = HeightAt(b1, b2, x, y);
    return WithinExtent(a1, a2, x, y, tol) && WithinExtent(b1, b2, x, y, tol);
}

}   // namespace plain
