// Breaklines made into triangle edges by splitting every edge they cross.
#include <algorithm>

#include "plain_tin.h"

namespace plain {

namespace {

// Whether p lies between a and b, widened by eps; an extent of nothing holds everything.
bool InExtent(double p, double a, double b, double eps)
{
    if (a < b) return p + eps >= a && p - eps <= b;
    if (b < a) return p + eps >= b && p - eps <= a;
    return true;
}

// Above 0 when p lies left of the direction from a to b through o, below 0 when right.
double SideOf(const Point& p, const Point& o, const Point& a, const Point& b)
{
    return (b.x - a.x) * (p.y - o.y) - (b.y - a.y) * (p.x - o.x);
}

}   // namespace

int CalCrossPointXY(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                    double x4, double y4, double& x, double& y, double& z, double eps)
{
    const double a1 = y2 - y1, b1 = x1 - x2, c1 = a1 * x1 + b1 * y1;
    const double a2 = y4 - y3, b2 = x3 - x4, c2 = a2 * x3 + b2 * y3;
    const double det = a1 * b2 - a2 * b1;
    if (std::fabs(det) < 1e-12) return 0;
    const double inv = 1.0 / det;
    x = (c1 * b2 - c2 * b1) * inv;
    y = (a1 * c2 - a2 * c1) * inv;
    z = x2 - x1 != 0 ? z2 + (x - x2) / (x2 - x1) * (z2 - z1) : z2 + (y - y2) / (y2 - y1) * (z2 - z1);
    return InExtent(x, x1, x2, eps) && InExtent(y, y1, y2, eps) && InExtent(x, x3, x4, eps) &&
           InExtent(y, y3, y4, eps);
}

int Tin::EnforceBreakLines()
{
    CheckBreakLineVt();
    if (vertex.Size() < 3 || tri.empty()) return 0;
    walkDir = 1;
    fewestSteps = 5 * tri.Size();
    int triCount = tri.Size(), vtCount = vertex.Size();
    for (const BreakLine& bl : breakLine) {
        BreakLine1(bl, triCount, vtCount);
    }
    return 1;
}

void Tin::CheckBreakLineVt()
{
    for (BreakLine& bl : breakLine) {
        for (int& index : bl.idx) {
            if (index < 0 || index >= vertex.Size()) continue;
            const Point p = vertex[index];
            bool found = false;
            for (int t = 0; t < tri.Size() && !found; ++t) {
                for (int k = 0; k < 3 && !found; ++k) {
                    const Point& q = At(t, k);
                    if (std::fabs(p.x - q.x) <= eps && std::fabs(p.y - q.y) <= eps) {
                        index = tri[t].v[k];
                        found = true;
                    }
                }
            }
        }
    }
}

int Tin::FindFirstTriWithPt(int vt, int& t, int& slot, int triCount) const
{
    for (t = 0; t < triCount; ++t) {
        for (slot = 0; slot < 3; ++slot) {
            if (tri[t].v[slot] == vt) return 1;
        }
    }
    return 0;
}

// One step around a vertex; at the outside the direction turns, once.
int Tin::FindNextTriWithPt(int& t, int& slot)
{
    const Tri& from = tri[t];
    if (!IsTri(from.n[walkDir == 1 ? (slot + 1) % 3 : slot])) walkDir = walkDir == 1 ? 0 : 1;
    return FindNextTriWithPt2(t, slot, walkDir);
}

int Tin::FindNextTriWithPt2(int& t, int& slot, int dir) const
{
    const int vt = tri[t].v[slot];
    t = tri[t].n[dir ? (slot + 1) % 3 : slot];
    if (!IsTri(t)) return 0;
    for (int k = 0; k < 3; ++k) {
        if (tri[t].v[k] == vt) {
            slot = k;
            return 1;
        }
    }
    return 0;
}

int Tin::FindTriCrossingBL(const BreakLine& bl, int& seg, int& t, int& slot)
{
    const int n = bl.idx.Size(), limit = std::max(fewestSteps, tri.Size());
    if (limit == 0) return 0;
    for (int steps = 0;;) {
        const Point &a = vertex[bl.idx[seg]], &b = vertex[bl.idx[(seg + 1) % n]];
        const double sideQ = SideOf(At(t, slot + 1), At(t, slot), a, b);
        const double sideR = SideOf(At(t, slot + 2), At(t, slot), a, b);
        if (sideQ < -eps2 && sideR > eps2) return 1;
        const bool toQ = sideQ >= -eps2 && sideQ <= eps2 && sideR > eps2;
        const bool toR = sideR >= -eps2 && sideR <= eps2 && sideQ < -eps2;
        if (toQ || toR) {
            slot = (slot + (toQ ? 1 : 2)) % 3;
            if (tri[t].v[slot] == bl.idx[(seg + 1) % n] && ++seg >= n) return 0;
        }
        if (!FindNextTriWithPt(t, slot)) return 0;
        if (++steps >= limit) return 0;
    }
}

int Tin::CheckStateOfBL(const BreakLine& bl, int seg, int t, int slot, Point& cross) const
{
    const Point &a = vertex[bl.idx[seg]], &b = vertex[bl.idx[(seg + 1) % bl.idx.Size()]];
    const Point &e1 = At(t, slot), &w = At(t, slot + 1), &e2 = At(t, slot + 2);
    if (!CalCrossPointXY(a.x, a.y, a.z, b.x, b.y, b.z, e1.x, e1.y, e2.x, e2.y, cross.x, cross.y, cross.z,
                         eps)) {
        return 3;
    }
    const double side = SideOf(w, a, a, b);
    if (side > eps2) return 1;
    return side < -eps2 ? 2 : 0;
}

int Tin::BreakLine1(const BreakLine& bl, int& triCount, int& vtCount)
{
    const int n = bl.idx.Size();
    for (int index : bl.idx) {
        if (index < 0 || index >= vtCount) return 0;
    }
    int t, s, seg = 0;
    if (n < 1 || !FindFirstTriWithPt(bl.idx[0], t, s, triCount) || !FindTriCrossingBL(bl, seg, t, s)) {
        return 0;
    }
    for (long long passes = n * (2LL * triCount + 2); passes > 0; --passes) {
        if (seg >= n || (!bl.closed && seg >= n - 1)) return 1;
        const int s1 = (s + 1) % 3, P = tri[t].v[s], Q = tri[t].v[s1], u = tri[t].n[(s + 2) % 3];
        if (!IsTri(u)) return 1;
        const int k = LinkSlot(u, t, tri[t].v[(s + 2) % 3], Q);
        if (k < 0) return 1;
        const int k1 = (k + 1) % 3, W = tri[u].v[k1];
        Point cross;
        const int state = CheckStateOfBL(bl, seg, u, k, cross);
        if (state == 3) return 1;
        const int X = vtCount++;
        if (X >= vertex.Size()) vertex.SetSize(X + 1);
        vertex[X] = cross;

        const int t1 = triCount, t2 = triCount + 1;
        triCount += 2;
        if (t2 >= tri.Size()) tri.SetSize(t2 + 1);
        const int n1 = tri[t].n[s1];
        Relink(n1, t, t1, Q, P);
        tri[t1] = Tri{{P, Q, X}, {t, n1, t2}, 0};
        tri[t].v[s1] = X;
        tri[t].n[s1] = t1;

        const int n2 = tri[u].n[k1];
        Relink(n2, u, t2, W, Q);
        tri[t2] = Tri{{X, Q, W}, {u, t1, n2}, 0};
        tri[u].v[k] = X;
        tri[u].n[k1] = t2;

        if (state == 1) {
            t = t2;
            s = 0;
        } else if (state == 2) {
            t = u;
            s = k;
        } else {
            if (W == bl.idx[(seg + 1) % n]) ++seg;
            t = u;
            s = k1;
            if (seg < n && !FindTriCrossingBL(bl, seg, t, s)) return 1;
        }
    }
    return 1;
}

}   // namespace plain
