// Points in, triangles out: input, location, hull, insertion, edge swapping.
#include "plain_tin.h"

#include <algorithm>
#include <cfloat>

namespace plain {

List<int> SortedOrder(const List<double>& key, int order)
{
    List<int> index;
    for (int i = 0; i < key.Size(); ++i) {
        index.push_back(i);
    }
    std::stable_sort(index.begin(), index.end(), [&](int a, int b) {
        if (std::isnan(key[a]) || std::isnan(key[b])) return !std::isnan(key[a]) && std::isnan(key[b]);
        return order == 1 ? key[a] < key[b] : key[a] > key[b];
    });
    return index;
}

void Tin::InitData()
{
    const List<Point> keptNormals = triNormal;
    *this = Tin();
    triNormal = keptNormals;
}

void Tin::SetEPS(double e)
{
    eps = e;
    eps2 = e * e;
}

int Tin::AddPoint(double x, double y, double z)
{
    for (int i = 0; i < vertex.Size(); ++i) {
        if (std::fabs(x - vertex[i].x) <= eps && std::fabs(y - vertex[i].y) <= eps) return i;
    }
    vertex.push_back({x, y, z});
    return vertex.Size() - 1;
}

void Tin::AddBreakLine(const std::vector<Point>& line, int closed)
{
    BreakLine bl;
    bl.closed = closed;
    std::size_t count = line.size();
    if (std::fabs(line.back().x - line.front().x) <= eps &&
        std::fabs(line.back().y - line.front().y) <= eps) {
        --count;
        bl.closed = 1;
    }
    for (std::size_t i = 0; i < count; ++i) {
        bl.idx.push_back(AddPoint(line[i].x, line[i].y, line[i].z));
    }
    breakLine.push_back(bl);
}

void Tin::UpdatePtRange()
{
    minXYZ = maxXYZ = vertex.empty() ? Point() : vertex[0];
    for (const Point& p : vertex) {
        for (double Point::*axis : {&Point::x, &Point::y, &Point::z}) {
            if (p.*axis < minXYZ.*axis) minXYZ.*axis = p.*axis;
            if (p.*axis > maxXYZ.*axis) maxXYZ.*axis = p.*axis;
        }
    }
}

int Tin::AddTri(int a, int b, int c)
{
    for (int i : {a, b, c}) {
        if (i < 0 || i >= vertex.Size()) return -1;
    }
    tri.push_back(Tri{{a, b, c}, {-1, -1, -1}, 0});
    return tri.Size() - 1;
}

int Tin::DelTri(int t)
{
    if (!IsTri(t)) return 0;
    if (tri.Size() == 1) {
        InitData();
        return 1;
    }
    if (triNormal.Size() == tri.Size()) triNormal.RemoveAt(t);
    tri.RemoveAt(t);
    for (Tri& other : tri) {
        for (int& n : other.n) {
            if (n == t) {
                n = -1;
            } else if (n > t) {
                --n;
            }
        }
    }
    return 1;
}

int Tin::CheckTurn(const Point& p1, const Point& p2, const Point& p3) const
{
    const double c = (p2.x - p1.x) * (p3.y - p1.y) - (p2.y - p1.y) * (p3.x - p1.x);
    if (c < -eps2) return 1;
    return c > eps2 ? -1 : 0;
}

int Tin::FindTri(int start, double x, double y, int& state, int& side) const
{
    state = -2;
    side = 0;
    if (!IsTri(start)) return -1;
    int t = start;
    for (int moves = 0;;) {
        int k = 0;
        for (; k < 3; ++k) {
            const Point &a = At(t, k), &b = At(t, k + 1);
            const double dx = x - a.x, dy = y - a.y, ex = b.x - a.x, ey = b.y - a.y;
            const double s = ey * dx - ex * dy;
            if (s > eps2) {
                break;   // to the right of this edge: leave the triangle across it
            }
            if (s >= -eps2 && s <= eps2) {
                if (std::fabs(dx) <= eps && std::fabs(dy) <= eps) {
                    state = 1;
                    side = k;
                    return t;
                }
                if (std::fabs(x - b.x) <= eps && std::fabs(y - b.y) <= eps) {
                    state = 1;
                    side = (k + 1) % 3;
                    return t;
                }
                if (ex * dx >= 0 && ey * dy >= 0 && dx * dx + dy * dy <= ex * ex + ey * ey) {
                    state = 2;
                    side = k;
                    return t;
                }
            }
        }
        if (k == 3) {
            state = 0;
            return t;
        }
        t = tri[t].n[(k + 1) % 3];
        if (!IsTri(t)) {
            state = -1;
            side = k;
            return -1;
        }
        if (++moves >= tri.Size()) return -1;
    }
}

int Tin::CreateTin(double angle)
{
    if (vertex.Size() < 3 || !MakeBoundaryFromPts() || !MakeConvexHull() || !MakeTinForConvexHull() ||
        !Triangulation()) {
        InitData();
        return 0;
    }
    if (!breakLine.empty()) EnforceBreakLines();
    if (!(angle > 0)) return 1;
    if (!DelTriWithAngle(angle, 1)) {
        InitData();
        return 0;
    }
    return 1;
}

int Tin::MakeBoundaryFromPts()
{
    if (vertex.Size() < 3) return 0;
    UpdatePtRange();
    if (maxXYZ.x - minXYZ.x <= eps && maxXYZ.y - minXYZ.y <= eps) return 0;
    const double cx = (minXYZ.x + maxXYZ.x) / 2, cy = (minXYZ.y + maxXYZ.y) / 2;
    List<double> key;
    for (const Point& p : vertex) {
        key.push_back(std::atan2(p.y - cy, p.x - cx));
    }
    const List<int> order = SortedOrder(key, 1);
    const int n = order.Size();
    boundary.clear();
    for (int i = 0; i < n;) {
        if (key[order[i]] != key[order[(i + 1) % n]]) {
            boundary.push_back(order[i++]);
            continue;
        }
        const double runKey =
            key[order[i]];   // several points in one direction: the farthest stands for them
        double farthest = 0;
        int taken = -1;
        for (; i < n && key[order[i]] == runKey; ++i) {
            const double dx = vertex[order[i]].x - cx, dy = vertex[order[i]].y - cy;
            if (dx * dx + dy * dy > farthest) {
                farthest = dx * dx + dy * dy;
                taken = order[i];
            }
        }
        if (taken >= 0) boundary.push_back(taken);
    }
    return boundary.Size() >= 3;
}

int Tin::MakeConvexHull()
{
    const int n = boundary.Size();
    if (n <= 3) return n == 3;
    List<int> work = boundary;
    int live = n, i0 = 0, i1 = 1, i2 = 2;
    const auto nextLive = [&](int i) {
        do {
            i = (i + 1) % n;
        } while (work[i] < 0);
        return i;
    };
    for (;;) {
        if (CheckTurn(vertex[work[i0]], vertex[work[i1]], vertex[work[i2]]) == -1) {
            if (i0 > i1) break;
            i0 = i1;
            i1 = i2;
            i2 = nextLive(i2);
            continue;
        }
        work[i1] = -1;
        if (--live < 3) return 0;
        int p = i0 - 1;
        while (p >= 0 && work[p] < 0) --p;
        if (p >= 0) {
            i1 = i0;
            i0 = p;
        } else {
            i1 = i2;
            i2 = nextLive(i2);
        }
    }
    boundary.clear();
    for (int i : work) {
        if (i >= 0) boundary.push_back(i);
    }
    return 1;
}

int Tin::MakeTinForConvexHull()
{
    const int count = boundary.Size() - 2;
    tri.SetSize(count);
    for (int t = 0; t < count; ++t) {
        tri[t] = Tri{{boundary[0], boundary[t + 1], boundary[t + 2]}, {t + 1, t - 1, -1}, 0};
        Optimization(t, 2);
    }
    tri[count - 1].n[0] = -1;
    return 1;
}

int Tin::Triangulation()
{
    if (tri.empty()) return 0;
    int count = tri.Size(), last = 0;
    tri.SetSize(2 * vertex.Size());
    optimDepth = 0;
    for (int i = 0; i < vertex.Size(); ++i) {
        if (std::find(boundary.begin(), boundary.end(), i) == boundary.end()) DivideTri(i, count, last);
    }
    tri.SetSize(count);
    return 1;
}

int Tin::DivideTri(int vt, int& triCount, int& lastTri)
{
    int state, side;
    const int t = FindTri(lastTri, vertex[vt].x, vertex[vt].y, state, side);
    if (t < 0 || state < 0 || state == 1) return 0;
    lastTri = t;
    for (int changed : state == 0 ? SplitInside(vt, triCount, t) : SplitOnSide(vt, triCount, t, side)) {
        Optimization(changed, 0);
    }
    return 1;
}

// The slot of triangle t that holds `of` across the edge from a to b; without one, the first that holds it.
int Tin::LinkSlot(int t, int of, int a, int b) const
{
    int first = -1;
    for (int k = 2; k >= 0; --k) {
        if (tri[t].n[k] != of) continue;
        if (tri[t].v[(k + 2) % 3] == a && tri[t].v[k] == b) return k;
        first = k;
    }
    return first;
}

void Tin::Relink(int t, int from, int to, int a, int b)
{
    const int slot = IsTri(t) ? LinkSlot(t, from, a, b) : -1;
    if (slot >= 0) tri[t].n[slot] = to;
}

// Triangle t becomes three that meet at p. Returns them in the order in which they are to be optimised.
std::vector<int> Tin::SplitInside(int p, int& triCount, int t)
{
    const int t1 = triCount, t2 = triCount + 1;
    if (tri.Size() < triCount + 2) tri.SetSize(triCount + 2);
    const Tri old = tri[t];
    const int a = old.v[0], b = old.v[1], c = old.v[2];
    tri[t] = Tri{{p, a, b}, {t1, t2, old.n[1]}, old.sel};
    tri[t1] = Tri{{p, b, c}, {t2, t, old.n[2]}, 0};
    tri[t2] = Tri{{p, c, a}, {t, t1, old.n[0]}, 0};
    Relink(old.n[0], t, t2, a, c);
    Relink(old.n[2], t, t1, c, b);
    triCount += 2;
    return {t, t1, t2};
}

// The edge of t from slot k to slot k+1 is broken at p, in t and in the triangle across it.
std::vector<int> Tin::SplitOnSide(int p, int& triCount, int t, int k)
{
    const Tri old = tri[t];
    const int *v = old.v, *s = old.n;
    const int k1 = (k + 1) % 3, k2 = (k + 2) % 3, u = s[k1], t1 = triCount, t3 = triCount + 1;
    const bool hasU = IsTri(u);
    if (tri.Size() < triCount + (hasU ? 2 : 1)) tri.SetSize(triCount + (hasU ? 2 : 1));
    tri[t] = Tri{{p, v[k2], v[k]}, {hasU ? u : -1, t1, s[k]}, old.sel};
    tri[t1] = Tri{{p, v[k1], v[k2]}, {t, hasU ? t3 : -1, s[k2]}, 0};
    Relink(s[k2], t, t1, v[k2], v[k1]);
    if (!hasU) {
        triCount += 1;
        return {t, t1};
    }
    const Tri oldU = tri[u];   // two flat triangles can share two edges: the other one leads to t1 by now
    const int *w = oldU.v, *m = oldU.n;
    const int j = LinkSlot(u, t, v[k1], v[k]);
    if (j < 0) {
        return {};
    }
    const int j1 = (j + 1) % 3, j2 = (j + 2) % 3;
    tri[u] = Tri{{p, w[j], w[j1]}, {t3, t, m[j1]}, oldU.sel};
    tri[t3] = Tri{{p, w[j1], w[j2]}, {t1, u, m[j2]}, 0};
    Relink(m[j2], u, t3, w[j2], w[j1]);
    triCount += 2;
    return {t, t1, u, t3};
}

void Tin::Optimization(int t, int s)
{
    if (optimDepth >= 10000) return;
    const int P = tri[t].v[s], Q = tri[t].v[(s + 1) % 3], R = tri[t].v[(s + 2) % 3],
              u = tri[t].n[(s + 2) % 3];
    if (!IsTri(u)) return;
    const int j = LinkSlot(u, t, R, Q);
    if (j < 0) return;
    const int D = tri[u].v[(j + 1) % 3];
    if (CheckOptim(R, P, Q, D) || !SwapTri(t, s, u, j)) return;
    ++optimDepth;
    Optimization(t, s);
    Optimization(u, j);
    --optimDepth;
}

int Tin::CheckOptim(int A, int B, int C, int D) const
{
    const Point b = vertex[B] - vertex[A], c = vertex[C] - vertex[A], d = vertex[D] - vertex[A];
    const double det = b.x * c.y - b.y * c.x;
    if (det == 0) return 0;
    const double bb = b.x * b.x + b.y * b.y, cc = c.x * c.x + c.y * c.y;
    const double ox = (c.y * bb - b.y * cc) / (2 * det), oy = (b.x * cc - c.x * bb) / (2 * det);
    const double r2 = ox * ox + oy * oy;
    const double e2 = (d.x - ox) * (d.x - ox) + (d.y - oy) * (d.y - oy);
    return e2 > r2;
}

int Tin::CheckSwapTri(int P, int Q, int D, int R) const
{
    const Point u = vertex[D] - vertex[P], w = vertex[Q] - vertex[P], v = vertex[R] - vertex[P];
    return u.x * w.y - u.y * w.x < 0 && u.x * v.y - u.y * v.x > 0;
}

int Tin::SwapTri(int t, int s, int u, int j)
{
    const int P = tri[t].v[s], Q = tri[t].v[(s + 1) % 3], R = tri[t].v[(s + 2) % 3];
    const int k = (s + 2) % 3, m = (j + 1) % 3, D = tri[u].v[m];
    if (!CheckSwapTri(P, Q, D, R)) return 0;
    tri[t].v[k] = D;
    tri[u].v[j] = P;
    const int x = tri[t].n[s], y = tri[u].n[m];
    tri[t].n[s] = u;
    tri[t].n[k] = y;
    tri[u].n[m] = t;
    tri[u].n[j] = x;
    Relink(y, u, t, D, Q);
    Relink(x, t, u, P, R);
    return 1;
}

}   // namespace plain
