// Lengths and angles of triangles, and the trimming and marking that go by them.
#include "plain_tin.h"

namespace plain {

namespace {

Point Flat(const Point& p)
{
    return {p.x, p.y, 0.0};
}

// The plan angle at a, between the directions to b and to c.
double PlanAngle(const Point& a, const Point& b, const Point& c)
{
    const Point u = Flat(b - a), w = Flat(c - a);
    return std::acos(Inn(u, w) / (Len(u) * Len(w)));
}

}   // namespace

double Tin::GetLength(int t, int k) const
{
    if (t < 1 || t >= tri.Size() || k < 0 || k > 2) return 0.0;
    return Len(At(t, k + 1) - At(t, k));
}

int Tin::GetAngleXY(int t, int s, double& angle) const
{
    angle = 0;
    if (!IsTri(t) || s < 0 || s > 2) return 0;
    angle = PlanAngle(At(t, s), At(t, s + 1), At(t, s + 2));
    return 1;
}

int Tin::DelTriWithAngle(double angle, int singleOutside)
{
    if (angle == 0.0 || std::isnan(angle)) return 1;
    for (int t = 0; t < tri.Size();) {
        int outside = 0;
        for (int n : tri[t].n) {
            outside += !IsTri(n);
        }
        bool deleted = false;
        if (outside == 1 || (outside > 1 && !singleOutside)) {
            for (int k = 0; k < 3 && !deleted; ++k) {
                double a1, a2;
                if (!IsTri(tri[t].n[k]) && GetAngleXY(t, (k + 2) % 3, a1) && GetAngleXY(t, k, a2) &&
                    !(a1 > angle && a2 > angle)) {
                    deleted = DelTri(t) != 0;
                }
            }
        }
        t = deleted ? 1 : t + 1;   // triangle 0 is looked at on the first pass only
    }
    return 1;
}

int Tin::SelectTriWithAngle(double angle)
{
    int count = 0;
    for (int t = 0; t < tri.Size(); ++t) {
        tri[t].sel = 0;
        for (int k = 0; k < 3; ++k) {
            double a1, a2;
            if (!IsTri(tri[t].n[k]) && GetAngleXY(t, k, a1) && GetAngleXY(t, (k + 2) % 3, a2) &&
                (a1 <= angle || a2 <= angle)) {
                tri[t].sel = 1;
            }
        }
        count += tri[t].sel;
    }
    return count;
}

int Tin::SelectTriWithLength(double length)
{
    int count = 0;
    for (int t = 0; t < tri.Size(); ++t) {
        tri[t].sel = 0;
        for (int k = 0; k < 3; ++k) {
            if (!IsTri(tri[t].n[k]) && GetLength(t, k) > length) tri[t].sel = 1;
        }
        count += tri[t].sel;
    }
    return count;
}

}   // namespace plain
