#include "tin/internal/mesh_links.h"
#include "tin/internal/mesh_walk.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

constexpr int kMostNewTriangles = 2;   // that one vertex adds

// What both kinds of split ask of their arguments; nTriCount records are in use.
bool CanSplit(const CArray<CXYZ>& aVertex, const CArray<CTriangle>& aTri, int nVt, int nTriCount, int nTri)
{
    return IsIndexOf(aVertex, nVt) && nTriCount <= aTri.GetSize() && nTri >= 0 && nTri < nTriCount;
}

void MakeRoom(CArray<CTriangle>& aTri, int nTriCount)
{
    if (aTri.GetSize() < nTriCount + kMostNewTriangles) {
        aTri.SetSize(nTriCount + kMostNewTriangles, -1);
    }
}

}   // namespace

int CTin::DivideTri(int nVt, int& nTriCount, int& nLastTri)
{
    if (!CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nLastTri)) {
        return 0;
    }
    int nState = 0, nSide = 0;
    const int nTri = FindTri(nLastTri, nVt, nState, nSide);
    if (nTri < 0 || nState == kOnVertex) {
        return 0;
    }
    nLastTri = nTri;
    if (nState == kInside) {
        DivideTriInside(nVt, nTriCount, nTri);
    } else {
        DivideTriOnSide(nVt, nTriCount, nTri, nSide);
    }
    return 1;
}

//              c                          c
//            /   \                      / | \          t  = nTri becomes (p, a, b)
//       s0 /       \ s2            s0 / t2|t1 \ s2     t1 = new, (p, b, c)
//        /     p     \      -->     /   . p .   \      t2 = new, (p, c, a)
//      /               \          / .     t     . \    s1 stays the neighbour of t
//    a ----------------- b      a ----------------- b
//             s1                         s1
void CTin::DivideTriInside(int nVt, int& nTriCount, int nTri)
{
    if (!CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nTri)) {
        return;
    }
    MakeRoom(m_aTri, nTriCount);
    const CTriangle old = m_aTri[nTri];
    const int a = old.m_nVertex[0], b = old.m_nVertex[1], c = old.m_nVertex[2];
    const int s0 = old.m_nNeighbor[0], s1 = old.m_nNeighbor[1], s2 = old.m_nNeighbor[2];
    const int t = nTri, t1 = nTriCount, t2 = nTriCount + 1;

    m_aTri[t] = MakeTriangle(nVt, a, b, t1, t2, s1);
    m_aTri[t].m_bSelect = old.m_bSelect;
    m_aTri[t1] = MakeTriangle(nVt, b, c, t2, t, s2);
    m_aTri[t2] = MakeTriangle(nVt, c, a, t, t1, s0);
    RedirectNeighbor(m_aTri, s0, {a, c}, t, t2);
    RedirectNeighbor(m_aTri, s2, {c, b}, t, t1);
    nTriCount += 2;

    Optimization(t, 0);
    Optimization(t1, 0);
    Optimization(t2, 0);
}

//            v2                         v2
//          /    \                     / | \            t  = nTri becomes (p, v2, v0)
//    s0  /   t    \  s2         s0  / t | t1\  s2      t1 = new, (p, v1, v2)
//      /            \             /     |     \        u becomes (p, w0, w1), where w0 = v0
//    v0 ---- p ----- v1   -->   v0 ---- p ---- v1      t3 = new, (p, w1, w2), where w2 = v1
//      \            /             \     |     /        v0 -> v1 is the edge that is split, from vertex
//        \   u    /                 \ u | t3/          slot nSide of t; without u, p lies on the outside
//          \    /                     \ | /
//            w1                         w1
void CTin::DivideTriOnSide(int nVt, int& nTriCount, int nTri, int nSide)
{
    if (!CanSplit(m_aVertex, m_aTri, nVt, nTriCount, nTri) || !IsSlot(nSide)) {
        return;
    }
    MakeRoom(m_aTri, nTriCount);
    const int k0 = nSide, k1 = NextSlot(nSide), k2 = PrevSlot(nSide);
    const CTriangle old = m_aTri[nTri];
    const int v0 = old.m_nVertex[k0], v1 = old.m_nVertex[k1], v2 = old.m_nVertex[k2];
    const int s0 = old.m_nNeighbor[k0], s2 = old.m_nNeighbor[k2];
    const int t = nTri, t1 = nTriCount, t3 = nTriCount + 1;
    const int u = NeighborAt(m_aTri, nTri, NeighborSlotOfEdge(nSide));

    m_aTri[t] = MakeTriangle(nVt, v2, v0, u, t1, s0);
    m_aTri[t].m_bSelect = old.m_bSelect;
    m_aTri[t1] = MakeTriangle(nVt, v1, v2, t, u < 0 ? -1 : t3, s2);
    RedirectNeighbor(m_aTri, s2, {v2, v1}, t, t1);
    if (u < 0) {
        nTriCount += 1;
        Optimization(t, 0);
        Optimization(t1, 0);
        return;
    }
    const CTriangle other = m_aTri[u];
    const int j0 = SlotOfNeighbor(other, t, {v1, v0});
    if (j0 < 0) {
        return;   // u does not link back: only a damaged mesh gets here
    }
    const int j1 = NextSlot(j0), j2 = PrevSlot(j0);
    const int w0 = other.m_nVertex[j0], w1 = other.m_nVertex[j1], w2 = other.m_nVertex[j2];
    m_aTri[u] = MakeTriangle(nVt, w0, w1, t3, t, other.m_nNeighbor[j1]);
    m_aTri[u].m_bSelect = other.m_bSelect;
    m_aTri[t3] = MakeTriangle(nVt, w1, w2, t1, u, other.m_nNeighbor[j2]);
    RedirectNeighbor(m_aTri, other.m_nNeighbor[j2], {w2, w1}, u, t3);
    nTriCount += 2;

    Optimization(t, 0);
    Optimization(t1, 0);
    Optimization(u, 0);
    Optimization(t3, 0);
}
