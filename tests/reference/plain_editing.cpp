// Links rebuilt, TINs joined, vertices taken out, walls and points added.
#include "plain_tin.h"

#include <algorithm>

namespace plain {

void Tin::UpdateTopology()
{
    for (Tri& t : tri) {
        for (int& n : t.n) n = -1;
    }
    for (int i = 0; i + 1 < tri.Size(); ++i) {
        for (int e = 0; e < 3; ++e) {
            const int a = tri[i].v[e], b = tri[i].v[(e + 1) % 3];
            for (int j = i + 1; j < tri.Size(); ++j) {
                for (int m : {1, 2, 0}) {
                    if (tri[j].v[(m + 2) % 3] != b || tri[j].v[m] != a) continue;
                    tri[i].n[(e + 1) % 3] = j;
                    tri[j].n[m] = i;
                    break;
                }
            }
        }
    }
}

Point Rotation::Apply(const Point& p) const
{
    return {m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z, m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z,
            m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z};
}

Rotation Rotation::Transposed() const
{
    return {{{m[0][0], m[1][0], m[2][0]}, {m[0][1], m[1][1], m[2][1]}, {m[0][2], m[1][2], m[2][2]}}};
}

Rotation RotForNV_Z(const Point& n)
{
    const double first = -std::atan2(std::sqrt(n.x * n.x + n.y * n.y), n.z), second = -std::atan2(n.y, n.x);
    const double c1 = std::cos(first), s1 = std::sin(first), c2 = std::cos(second), s2 = std::sin(second);
    return {{{c1 * c2, -c1 * s2, s1}, {s2, c2, 0}, {-s1 * c2, s1 * s2, c1}}};
}

namespace {

// Marks that triangles carry in their selection flag while a vertex is taken out.
enum Mark { kNone = 0, kFan = 1, kBeside = 2, kNew = 3 };

struct Edge {
    int a, b;
};

// The mean of the finite normals of the triangles with this mark; false when there is none.
bool MeanNormal(const Tin& tin, int mark, Point& mean)
{
    Point sum, normal;
    int count = 0;
    for (int t = 0; t < tin.tri.Size(); ++t) {
        if (tin.tri[t].sel != mark || !tin.GetNVec(t, normal) || !IsFinite(normal)) continue;
        sum = sum + normal;
        ++count;
    }
    if (count) mean = sum / count;
    return count > 0;
}

// Each round appends the first edge that starts at the ring's end; without one, puts the first edge that
// ends at its start in front.
List<int> ChainIntoRing(List<Edge> edge)
{
    List<int> ring;
    if (edge.empty()) return ring;
    ring = {edge[0].a, edge[0].b};
    edge.RemoveAt(0);
    for (bool grown = true; grown;) {
        grown = false;
        for (int i = 0; i < edge.Size() && !grown; ++i) {
            if (edge[i].a != ring.back()) continue;
            ring.push_back(edge[i].b);
            edge.RemoveAt(i);
            grown = true;
        }
        for (int i = 0; i < edge.Size() && !grown; ++i) {
            if (edge[i].b != ring.front()) continue;
            ring.insert(ring.begin(), edge[i].a);
            edge.RemoveAt(i);
            grown = true;
        }
    }
    if (ring.back() == ring.front()) ring.pop_back();
    return ring;
}

// Appends the triangles of the filling, linked to each other and to the triangles beside the hole.
void StitchFill(Tin& tin, const Tin& fill, const List<int>& ring)
{
    const int nt = tin.tri.Size();
    for (Tri t : fill.tri) {
        for (int& v : t.v) v = ring[v];
        for (int& n : t.n) n += n >= 0 ? nt : 0;
        t.sel = kNew;
        tin.tri.push_back(t);
    }
    for (int t = nt; t < tin.tri.Size(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const int a = tin.tri[t].v[(k + 2) % 3], b = tin.tri[t].v[k];
            for (int u = 0; u < nt && tin.tri[t].n[k] < 0; ++u) {
                Tri& beside = tin.tri[u];
                for (int m = 0; m < 3 && beside.sel == kBeside; ++m) {
                    if (beside.v[(m + 2) % 3] != b || beside.v[m] != a) continue;
                    if (beside.n[m] >= 0 && tin.tri[beside.n[m]].sel != kFan) continue;   // not at the hole
                    beside.n[m] = t;
                    tin.tri[t].n[k] = u;
                    break;
                }
            }
        }
    }
}

void RemoveVertex(Tin& tin, int vt)
{
    for (Tri& t : tin.tri) {
        for (int& v : t.v) v -= v >= vt;
    }
    List<List<int>*> lists = {&tin.boundary};
    for (BreakLine& bl : tin.breakLine) lists.push_back(&bl.idx);
    for (List<int>* list : lists) {
        list->erase(std::remove(list->begin(), list->end(), vt), list->end());
        for (int& i : *list) i -= i > vt;
    }
    if (vt < tin.vertex.Size()) tin.vertex.RemoveAt(vt);
}

void ClearMarks(Tin& tin)
{
    for (Tri& t : tin.tri) t.sel = kNone;
}

// Swapping around the hole; every vertex is turned while it lasts.
void OptimizeMarked(Tin& tin, const Rotation& rot)
{
    const List<Point> saved = tin.vertex;
    for (Point& p : tin.vertex) p = rot.Apply(p);
    for (int t = 0; t < tin.tri.Size(); ++t) {
        if (tin.tri[t].sel != kBeside && tin.tri[t].sel != kNew) continue;
        tin.tri[t].sel = kNone;
        for (int s = 0; s < 3; ++s) tin.Optimization(t, s);
    }
    tin.vertex = saved;
}

}   // namespace

int Tin::DelVertex(int vt)
{
    ClearMarks(*this);
    if (vt < 0 || vt >= vertex.Size()) return 1;
    List<Edge> edge;
    bool onOutline = false;
    for (int t = 0; t < tri.Size(); ++t) {
        int s = 0;
        while (s < 3 && tri[t].v[s] != vt) ++s;
        if (s == 3) continue;
        tri[t].sel = kFan;
        for (int n : tri[t].n) {
            if (n >= 0 && tri[n].sel != kFan) tri[n].sel = kBeside;
        }
        edge.push_back({tri[t].v[(s + 1) % 3], tri[t].v[(s + 2) % 3]});
        onOutline = onOutline || tri[t].n[s] < 0 || tri[t].n[(s + 1) % 3] < 0;
    }
    const List<int> ring = ChainIntoRing(edge);
    Point normal = {0, 0, 1}, fillNormal;
    if (!MeanNormal(*this, kBeside, normal)) MeanNormal(*this, kFan, normal);
    const Rotation rot = RotForNV_Z(normal);
    if (ring.Size() >= 3) {
        Tin fill;
        for (int i : ring) {
            fill.boundary.push_back(fill.vertex.Size());
            fill.vertex.push_back(rot.Apply(vertex[i]));
        }
        const int filled = fill.MakeTinForBoundary();
        for (Point& p : fill.vertex) p = rot.Transposed().Apply(p);
        if (filled ? !MeanNormal(fill, kNone, fillNormal) : !onOutline) {
            ClearMarks(*this);
            return 0;
        }
        const bool away = Inn(normal, fillNormal) / (Len(normal) * Len(fillNormal)) < 0;
        if (filled && !away) StitchFill(*this, fill, ring);
    }
    for (int t = 0; t < tri.Size();) {
        if (tri[t].sel != kFan || !DelTri(t)) ++t;
    }
    RemoveVertex(*this, vt);
    OptimizeMarked(*this, rot);
    ClearMarks(*this);
    return 1;
}

void Tin::AddVPlane(double z)
{
    const auto foot = [&](Point p) {
        p.z = z;
        for (int i = 0; i < vertex.Size(); ++i) {
            const Point d = p - vertex[i];
            if (std::fabs(d.x) <= eps && std::fabs(d.y) <= eps && std::fabs(d.z) <= eps) return i;
        }
        vertex.push_back(p);
        return vertex.Size() - 1;
    };
    const int n = tri.Size();
    for (int t = 0; t < n; ++t) {
        for (int j = 0; j < 3; ++j) {
            if (tri[t].n[j] >= 0) continue;
            const int Q = tri[t].v[(j + 2) % 3], P = tri[t].v[j];
            const int q = foot(vertex[Q]), p = foot(vertex[P]);
            AddTri(P, Q, q);
            AddTri(P, q, p);
        }
    }
    UpdateTopology();
}

}   // namespace plain
