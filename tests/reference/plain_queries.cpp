// Questions to a finished TIN.
#include "plain_tin.h"

#include <algorithm>
#include <cfloat>

namespace plain {

int Tin::PtInTri(int t, double x, double y) const
{
    for (int i = 0; i < 3; ++i) {
        const Point &p = At(t, i), &next = At(t, i + 1);
        const double ex = next.x - p.x, ey = next.y - p.y, dx = x - p.x, dy = y - p.y;
        const double cross = dy * ex - dx * ey;
        if (!(cross >= 0)) return 0;
        if (cross == 0 && !(dy * dy + dx * dx <= ey * ey + ex * ex)) return 0;
    }
    return 1;
}

int Tin::PtInTin(double x, double y) const
{
    for (int t = 0; t < tri.Size(); ++t) {
        if (PtInTri(t, x, y)) return 1;
    }
    return 0;
}

int Tin::PtInTriIncludeBack(int t, double x, double y) const
{
    const double sense = CheckTurn(t) == 1 ? -1.0 : 1.0;
    for (int i = 0; i < 3; ++i) {
        const Point &p = At(t, i), &next = At(t, i + 1);
        const double ex = next.x - p.x, ey = next.y - p.y, dx = x - p.x, dy = y - p.y;
        if (!((dy * ex - dx * ey) * sense >= 0)) return 0;
    }
    return 1;
}

int Tin::PtInTinIncludeBack(double x, double y) const
{
    for (int t = 0; t < tri.Size(); ++t) {
        if (PtInTriIncludeBack(t, x, y)) return 1;
    }
    return 0;
}

int Tin::CalZonPlane(int t, double x, double y, double& z) const
{
    const Point &b = At(t, 1), u = b - At(t, 0), w = At(t, 2) - At(t, 0);
    const double nx = w.z * u.y - w.y * u.z, ny = w.x * u.z - w.z * u.x, nz = w.y * u.x - w.x * u.y;
    if (nz == 0) return 0;
    const double dd = -((b.z * nz + b.y * ny) + b.x * nx);
    z = ((dd + x * nx) + y * ny) * (-1.0 / nz);
    return 1;
}

int Tin::InterpolateForPlane(int start, double x, double y, double& z, int& t) const
{
    int state, side;
    t = FindTri(start, x, y, state, side);
    return t >= 0 && CalZonPlane(t, x, y, z);
}

int CalcFootOnLine(const Point& a, const Point& b, const Point& p, Point& foot, double& dist)
{
    const Point d = b - a;
    const double l2 = d.z * d.z + d.y * d.y + d.x * d.x;
    if (l2 == 0) return 0;
    const double t = ((p.x - a.x) * d.x + (p.y - a.y) * d.y + (p.z - a.z) * d.z) / l2;
    foot = {a.x + t * d.x, a.y + t * d.y, a.z + t * d.z};
    const Point g = foot - p;
    dist = std::sqrt(g.z * g.z + g.y * g.y + g.x * g.x);
    return 1;
}

int Tin::NearestOutsideTin(double x, double y, double& ox, double& oy, double& oz, double& dist) const
{
    const int n = boundary.Size();
    double best = DBL_MAX;
    int found = 0;
    Point nearest;
    const auto offer = [&](const Point& p) {
        const double s = (p.y - y) * (p.y - y) + (p.x - x) * (p.x - x);
        if (!(s < best)) return;
        best = s;
        nearest = p;
        ++found;
    };
    for (int i = 0; i < n; i += 2) {
        const Point &a = vertex[boundary[i]], &b = vertex[boundary[(i + 1) % n]];
        offer(a);
        offer(b);
        Point f;
        double unused;
        if (CalcFootOnLine(a, b, {x, y, 0.0}, f, unused) && f.x >= std::min(a.x, b.x) &&
            f.x <= std::max(a.x, b.x) && f.y >= std::min(a.y, b.y) && f.y <= std::max(a.y, b.y)) {
            offer(f);
        }
    }
    if (found < 1) return 0;
    ox = nearest.x;
    oy = nearest.y;
    oz = nearest.z;
    dist = std::sqrt(best);
    return 1;
}

int Tin::GetRange(int t, Point& low, Point& high) const
{
    if (!IsTri(t)) return 0;
    for (double Point::*axis : {&Point::x, &Point::y, &Point::z}) {
        const List<double> key = {At(t, 0).*axis, At(t, 1).*axis, At(t, 2).*axis};
        const List<int> order = SortedOrder(key, 1);
        low.*axis = key[order[0]];
        high.*axis = key[order[2]];
    }
    return 1;
}

namespace {

double Area(const Point& a, const Point& b, const Point& c)
{
    return Len((Out(a, b) + Out(b, c)) + Out(c, a)) * 0.5;
}

}   // namespace

double Tin::CalTriArea(int t) const
{
    return IsTri(t) ? Area(At(t, 0), At(t, 1), At(t, 2)) : 0.0;
}

double Tin::CalTriAreaXY(int t) const
{
    if (!IsTri(t)) return 0.0;
    const Point &a = At(t, 0), &b = At(t, 1), &c = At(t, 2);
    return Area({a.x, a.y, 0.0}, {b.x, b.y, 0.0}, {c.x, c.y, 0.0});
}

double Tin::CalAllArea() const
{
    double sum = 0.0;
    for (int t = 0; t < tri.Size(); ++t) sum = CalTriArea(t) + sum;
    return sum;
}

double Tin::CalAllAreaXY() const
{
    double sum = 0.0;
    for (int t = 0; t < tri.Size(); ++t) sum = CalTriAreaXY(t) + sum;
    return sum;
}

int Tin::GetNVec(int t, Point& normal) const
{
    if (!IsTri(t)) return 0;
    normal = Out(At(t, 1) - At(t, 0), At(t, 2) - At(t, 0));
    normal = normal / Len(normal);
    return 1;
}

int Tin::GetNVec(Point& normal) const
{
    normal = {0, 0, 1};
    if (tri.empty()) return 0;
    for (int t = 0; t < tri.Size(); ++t) {
        Point one;
        GetNVec(t, one);
        normal = normal + one;
    }
    normal = normal / tri.Size();
    normal = normal / Len(normal);
    return 1;
}

void Tin::GetNormals(List<Point>& ofTri, List<Point>& ofVertex) const
{
    ofTri.assign(tri.size(), Point());
    ofVertex.assign(vertex.size(), Point());
    List<int> uses(vertex.size());
    for (int t = 0; t < tri.Size(); ++t) {
        GetNVec(t, ofTri[t]);
        for (const int v : tri[t].v) {
            ofVertex[v] = ofVertex[v] + ofTri[t];
            ++uses[v];
        }
    }
    for (int v = 0; v < vertex.Size(); ++v) {
        if (uses[v] > 1) ofVertex[v] = ofVertex[v] / uses[v];
    }
}

}   // namespace plain
