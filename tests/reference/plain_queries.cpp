// Questions to a finished TIN that other procedures ask.
#include "plain_tin.h"

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

void Tin::GetRange(int t, Point& low, Point& high) const
{
    for (double Point::*axis : {&Point::x, &Point::y, &Point::z}) {
        const List<double> key = {At(t, 0).*axis, At(t, 1).*axis, At(t, 2).*axis};
        const List<int> order = SortedOrder(key, 1);
        low.*axis = key[order[0]];
        high.*axis = key[order[2]];
    }
}

int Tin::GetNVec(int t, Point& normal) const
{
    if (!IsTri(t)) return 0;
    normal = Out(At(t, 1) - At(t, 0), At(t, 2) - At(t, 0));
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
