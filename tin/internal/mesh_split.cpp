#include "tin/internal/mesh_split.h"

#include "tin/internal/mesh_links.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

constexpr int kMostNewTriangles = 2;   // that one vertex adds

void MakeRoom(CArray<CTriangle>& aTri, int nTriCount)
{
    if (aTri.GetSize() < nTriCount + kMostNewTriangles) {
        aTri.SetSize(nTriCount + kMostNewTriangles, -1);
    }
}

// A triangle that changes in place keeps its selection flag.
void Replace(CTriangle& tri, CTriangle by)
{
    by.m_bSelect = tri.m_bSelect;
    tri = by;
}

}   // namespace

//              c                          c
//            /   \                      / | \          t  = nTri becomes (p, a, b)
//       s0 /       \ s2            s0 / t2|t1 \ s2     t1 = new, (p, b, c)
//        /     p     \      -->     /   . p .   \      t2 = new, (p, c, a)
//      /               \          / .     t     . \    s1 stays the neighbour of t
//    a ----------------- b      a ----------------- b
//             s1                         s1
NewFan SplitInside(CArray<CTriangle>& aTri, int nVt, int& nTriCount, int nTri)
{
    MakeRoom(aTri, nTriCount);
    const CTriangle old = aTri[nTri];
    const int a = old.m_nVertex[0], b = old.m_nVertex[1], c = old.m_nVertex[2];
    const int s0 = old.m_nNeighbor[0], s1 = old.m_nNeighbor[1], s2 = old.m_nNeighbor[2];
    const int t = nTri, t1 = nTriCount, t2 = nTriCount + 1;

    Replace(aTri[t], MakeTriangle(nVt, a, b, t1, t2, s1));
    aTri[t1] = MakeTriangle(nVt, b, c, t2, t, s2);
    aTri[t2] = MakeTriangle(nVt, c, a, t, t1, s0);
    RedirectNeighbor(aTri, s0, {a, c}, t, t2);
    RedirectNeighbor(aTri, s2, {c, b}, t, t1);
    nTriCount += 2;
    return {{t, t1, t2, -1}, 3};
}

//            v2                         v2
//          /    \                     / | \            t  = nTri becomes (p, v2, v0)
//    s0  /   t    \  s2         s0  / t | t1\  s2      t1 = new, (p, v1, v2)
//      /            \             /     |     \        u becomes (p, w0, w1), where w0 = v0
//    v0 ---- p ----- v1   -->   v0 ---- p ---- v1      t3 = new, (p, w1, w2), where w2 = v1
//      \            /             \     |     /        v0 -> v1 is the edge that is split, from vertex
//        \   u    /                 \ u | t3/          slot nEdge of t; without u, p lies on the outside
//          \    /                     \ | /
//            w1                         w1
NewFan SplitOnEdge(CArray<CTriangle>& aTri, int nVt, int& nTriCount, int nTri, int nEdge)
{
    MakeRoom(aTri, nTriCount);
    const int k0 = nEdge, k1 = NextSlot(nEdge), k2 = PrevSlot(nEdge);
    const CTriangle old = aTri[nTri];
    const int v0 = old.m_nVertex[k0], v1 = old.m_nVertex[k1], v2 = old.m_nVertex[k2];
    const int s0 = old.m_nNeighbor[k0], s2 = old.m_nNeighbor[k2];
    const int t = nTri, t1 = nTriCount, t3 = nTriCount + 1;
    const int u = NeighborAt(aTri, nTri, NeighborSlotOfEdge(nEdge));

    Replace(aTri[t], MakeTriangle(nVt, v2, v0, u, t1, s0));
    aTri[t1] = MakeTriangle(nVt, v1, v2, t, u < 0 ? -1 : t3, s2);
    RedirectNeighbor(aTri, s2, {v2, v1}, t, t1);
    if (u < 0) {
        nTriCount += 1;
        return {{t, t1, -1, -1}, 2};
    }
    const CTriangle other = aTri[u];
    const int j0 = SlotOfNeighbor(other, t, {v1, v0});
    if (j0 < 0) {
        return {{-1, -1, -1, -1}, 0};
    }
    const int j1 = NextSlot(j0), j2 = PrevSlot(j0);
    const int w0 = other.m_nVertex[j0], w1 = other.m_nVertex[j1], w2 = other.m_nVertex[j2];
    Replace(aTri[u], MakeTriangle(nVt, w0, w1, t3, t, other.m_nNeighbor[j1]));
    aTri[t3] = MakeTriangle(nVt, w1, w2, t1, u, other.m_nNeighbor[j2]);
    RedirectNeighbor(aTri, other.m_nNeighbor[j2], {w2, w1}, u, t3);
    nTriCount += 2;
    return {{t, t1, u, t3}, 4};
}

void LegalizeFan(const Mesh& mesh, const NewFan& fan, int nDepth, Turns eTurns)
{
    for (int i = 0; i < fan.nSize; ++i) {
        LegalizeEdge(mesh, fan.aTri[i], 0, nDepth, eTurns);
    }
}

}   // namespace qsv
