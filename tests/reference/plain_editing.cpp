// Links rebuilt, TINs joined, polygons filled, vertices taken out, walls and points added.
#include "plain_tin.h"

#include <cfloat>

namespace plain {

void Tin::UpdateTopology()
{
    for (Tri& t : tri) {
        t.n[0] = t.n[1] = t.n[2] = -1;
    }
    for (int i = 0; i + 1 < tri.Size(); ++i) {
        for (int e = 0; e < 3; ++e) {
            const int a = tri[i].v[e], b = tri[i].v[(e + 1) % 3];
            for (int j = i + 1; j < tri.Size(); ++j) {
                for (int m : {1, 2, 0}) {
                    if (tri[j].v[(m + 2) % 3] == b && tri[j].v[m] == a) {
                        tri[i].n[(e + 1) % 3] = j;
                        tri[j].n[m] = i;
                        break;
                    }
                }
            }
        }
    }
}

void Tin::AddTIN(const Tin& src)
{
    const List<Point> srcVertex = src.vertex;   // copies: src may be this TIN
    const List<Tri> srcTri = src.tri;
    const int nv = vertex.Size(), nt = tri.Size();
    for (const Point& p : srcVertex) vertex.push_back(p);
    for (Tri t : srcTri) {
        for (int k = 0; k < 3; ++k) {
            t.v[k] += nv;
            t.n[k] += t.n[k] >= 0 ? nt : 0;
        }
        t.sel = 0;
        tri.push_back(t);
    }
}

int Tin::CheckPtUsed(int vt) const
{
    for (const Tri& t : tri) {
        if (t.v[0] == vt || t.v[1] == vt || t.v[2] == vt) return 1;
    }
    return 0;
}

}   // namespace plain
