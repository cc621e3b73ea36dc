// Polygons filled with triangles, points around a centre, and the list of outside edges.
#include "plain_tin.h"

#include <algorithm>
#include <cfloat>

namespace plain {

int RingTurn(const List<Point>& ring)
{
    double sum = 0;
    for (int i = 1; i + 1 < ring.Size(); ++i) {
        const Point u = ring[i] - ring[0], w = ring[i + 1] - ring[0];
        sum += u.x * w.y - u.y * w.x;
    }
    if (sum > 0) return -1;
    return sum < 0 ? 1 : 0;
}

namespace {

// Whether no two edges without a common end meet; the last edge is compared with the others twice.
bool IsSimple(const List<Point>& ring, double eps)
{
    const int n = ring.Size();
    for (int i = 0; i < n; ++i) {
        for (int j = (i + 1) % n + 1; j < n; ++j) {
            const int i1 = (i + 1) % n, j1 = (j + 1) % n;
            if (i == j || i == j1 || i1 == j || i1 == j1) continue;
            const Point &a = ring[i], &b = ring[i1], &c = ring[j], &d = ring[j1];
            double x, y, z;
            if (CalCrossPointXY(a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, d.x, d.y, x, y, z, eps)) return false;
        }
    }
    return true;
}

}   // namespace

int Tin::MakeTinForBoundary()
{
    List<Point> ring;
    for (int i : boundary) ring.push_back(vertex[i]);
    if (RingTurn(ring) >= 0 || !IsSimple(ring, eps)) return 0;
    List<int> rest = boundary;
    while (rest.Size() > 3) {
        const int m = rest.Size();
        double shortest = DBL_MAX;
        int ear = -1;
        for (int i = 0; i < m; ++i) {
            const Point &a = vertex[rest[i]], &b = vertex[rest[(i + 1) % m]], &c = vertex[rest[(i + 2) % m]];
            const double chord = (c.x - a.x) * (c.x - a.x) + (c.y - a.y) * (c.y - a.y);
            if (CheckTurn(a, b, c) < 1 && chord < shortest) {
                shortest = chord;
                ear = i;
            }
        }
        if (ear < 0) return 0;
        AddTri(rest[ear], rest[(ear + 1) % m], rest[(ear + 2) % m]);
        rest.RemoveAt((ear + 1) % m);
    }
    if (rest.Size() == 3) AddTri(rest[0], rest[1], rest[2]);
    UpdateTopology();
    for (int t = 0; t < tri.Size(); ++t) {
        for (int s = 0; s < 3; ++s) Optimization(t, s);
    }
    return 1;
}

int Tin::CreateTinForPolygon(std::vector<Point> poly)
{
    InitData();
    if (poly.size() < 3) return 0;
    if (RingTurn(List<Point>(poly.begin(), poly.end())) >= 0) std::reverse(poly.begin(), poly.end());
    for (const Point& p : poly) boundary.push_back(AddPoint(p.x, p.y, p.z));
    boundary.SetSize(vertex.Size());
    return MakeTinForBoundary();
}

// Breaklines that add vertices are outside what this one covers: such vertices stay in the angle plane.
int Tin::CreateTinObal()
{
    const List<Point> saved = vertex;
    Point sum;
    for (const Point& p : vertex) sum = sum + p;
    const double inv = 1.0 / vertex.Size();
    const Point centre = {sum.x * inv, sum.y * inv, sum.z * inv};
    for (Point& p : vertex) {
        const Point d = p - centre;
        const double r = Len(d);
        const Point u = r != 0 ? d / r : Point();
        p.x = u.x == 0 ? 0.0 : std::atan2(u.y, u.x);
        p.y = std::asin(u.z);
    }
    const int result = CreateTin(0);
    if (vertex.Size() < saved.Size()) vertex.SetSize(saved.Size());   // a failed build emptied the array
    for (int i = 0; i < saved.Size(); ++i) vertex[i] = saved[i];
    UpdatePtRange();
    return result;
}

}   // namespace plain
