#include "tin/internal/plan_insert.h"

#include "tin/internal/limits.h"
#include "tin/internal/slots.h"

namespace qsv {

PlanInserter::PlanInserter(PlanMesh& mesh, WalkTraps& traps) : m_mesh(mesh), m_traps(traps)
{
    m_aPending.SetSize(kMaxSwapDepth, -1);
}

// Triangle nTri becomes the vertex and edge a of another, with what lies across that edge.
void PlanInserter::Fill(int nTri, int nRank, const PlanTriangle& from, int a)
{
    PlanTriangle& tri = m_mesh[nTri];
    tri.aRank[0] = nRank;
    tri.aRank[1] = from.aRank[a];
    tri.aRank[2] = from.aRank[NextSlot(a)];
    m_mesh.Link(nTri, 1, from.aLink[a]);
}

//              c                          c
//            /   \                      / | \          t  = nTri becomes (p, a, b)
//          /       \                  / t2|t1 \        t1 = new, (p, b, c)
//        /     p     \      -->     /   . p .   \      t2 = new, (p, c, a)
//      /               \          / .     t     . \    .
//    a ----------------- b      a ----------------- b
void PlanInserter::SplitInside(int nRank, int nTri)
{
    const PlanTriangle old = m_mesh[nTri];
    const int t = nTri, t1 = PlanMesh::FirstSeatOf(nRank), t2 = t1 + 1;
    m_mesh.Number(t1);
    m_mesh.Number(t2);
    Fill(t, nRank, old, 0);
    Fill(t1, nRank, old, 1);
    Fill(t2, nRank, old, 2);
    m_mesh.Link(t, 0, EdgeRef(t2, 2));
    m_mesh.Link(t1, 0, EdgeRef(t, 2));
    m_mesh.Link(t2, 0, EdgeRef(t1, 2));
    for (const int nNew : {t, t1, t2}) {
        Legalize(nNew);
    }
}

//            v2                         v2
//          /    \                     / | \            t  = nTri becomes (p, v2, v0)
//        /   t    \                 / t | t1\          t1 = new, (p, v1, v2)
//      /            \             /     |     \        u becomes (p, w0, w1), where w0 = v0
//    v0 ---- p ----- v1   -->   v0 ---- p ---- v1      t3 = new, (p, w1, w2), where w2 = v1
//      \            /             \     |     /        v0 -> v1 is the edge that is split, from slot
//        \   u    /                 \ u | t3/          nEdge of t; without u, p lies on the outside
//          \    /                     \ | /
//            w1                         w1
void PlanInserter::SplitOnEdge(int nRank, int nTri, int nEdge)
{
    const EdgeRef across = m_mesh[nTri].aLink[nEdge];
    const int t = nTri, t1 = PlanMesh::FirstSeatOf(nRank), t3 = t1 + 1;
    {
        const PlanTriangle old = m_mesh[t];
        m_mesh.Number(t1);
        Fill(t, nRank, old, PrevSlot(nEdge));
        Fill(t1, nRank, old, NextSlot(nEdge));
        m_mesh.Link(t, 0, EdgeRef(t1, 2));
    }
    if (across.IsOutside()) {
        m_mesh.Link(t, 2, across);
        m_mesh.Link(t1, 0, across);
        Legalize(t);
        Legalize(t1);
        return;
    }
    const int u = across.Tri();
    const PlanTriangle old = m_mesh[u];
    m_mesh.Number(t3);
    Fill(u, nRank, old, NextSlot(across.Edge()));
    Fill(t3, nRank, old, PrevSlot(across.Edge()));
    m_mesh.Link(u, 0, EdgeRef(t, 2));
    m_mesh.Link(t3, 0, EdgeRef(u, 2));
    m_mesh.Link(t1, 0, EdgeRef(t3, 2));
    for (const int nNew : {t, t1, u, t3}) {
        Legalize(nNew);
    }
}

//            R                      R
//          / | \                  /   \       t = nTri, with P in its slot nApex
//       x /  |  \              x /  u  \      u = the other triangle at the edge Q-R
//        P  t|u  D     -->      P ------- D   x, y = the neighbours that change owner
//         \  |  / y              \  t  / y
//          \ | /                  \   /
//            Q                      Q
// The circle test is IsOutsideCircle(R, P, Q, D), the rest IsStrictlyConvex(P, Q, D, R), operation by operation.
bool PlanInserter::SwapUnlessDelaunay(int nTri, int nApex, EdgeRef& other)
{
    PlanTriangle& t = m_mesh[nTri];
    const int nToQ = NextSlot(nApex), nToR = PrevSlot(nApex);
    const PlanPlace P = m_mesh.Corner(t, nApex), Q = m_mesh.Corner(t, nToQ), R = m_mesh.Corner(t, nToR);
    const double bx = P.x - R.x, by = P.y - R.y;
    const double cx = Q.x - R.x, cy = Q.y - R.y;
    const double det = bx * cy - by * cx;   // the doubled area of t
    const double b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    other = t.aLink[nToQ];
    if (other.IsOutside()) {
        m_traps.Update(nTri, det, 2.0 * (b2 + c2));
        return false;
    }
    PlanTriangle& u = m_mesh[other.Tri()];
    const int nOfR = other.Edge(), nOfQ = NextSlot(nOfR), nOfD = PrevSlot(nOfR);
    const PlanPlace D = m_mesh.Corner(u, nOfD);
    const double dx = D.x - R.x, dy = D.y - R.y;
    const double ox = (cy * b2 - by * c2) / (2.0 * det);
    const double oy = (bx * c2 - cx * b2) / (2.0 * det);
    const double r2 = ox * ox + oy * oy;
    const double e2 = (dx - ox) * (dx - ox) + (dy - oy) * (dy - oy);
    const double ux = D.x - P.x, uy = D.y - P.y;
    const double wx = Q.x - P.x, wy = Q.y - P.y;
    const double vx = R.x - P.x, vy = R.y - P.y;
    if ((det != 0.0 && e2 > r2) || !(ux * wy - uy * wx < 0.0 && ux * vy - uy * vx > 0.0)) {
        m_traps.Update(nTri, det, 2.0 * (b2 + c2));   // the triangle stays
        return false;
    }
    const EdgeRef x = t.aLink[nToR], y = u.aLink[nOfQ];
    t.aRank[nToR] = u.aRank[nOfD];
    u.aRank[nOfQ] = t.aRank[nApex];
    m_mesh.Link(nTri, nToR, EdgeRef(other.Tri(), nOfQ));
    m_mesh.Link(nTri, nToQ, y);
    m_mesh.Link(other.Tri(), nOfR, x);
    return true;
}

// Makes the edge opposite slot 0 Delaunay, and then every edge that a swap exposes: Q-D of t with all that follows from it
// first, then D-R of u. Every swap makes one more triangle use P, so this ends.
void PlanInserter::Legalize(int nTri)
{
    PendingEdge* const pBottom = m_aPending.GetData();
    PendingEdge* pTop = pBottom;   // depths rise from entry to entry, so there is room for all
    PendingEdge edge = {nTri, 0, 0};
    for (;;) {
        EdgeRef other;
        if (edge.nDepth < kMaxSwapDepth && SwapUnlessDelaunay(edge.nTri, edge.nApex, other)) {
            ++edge.nDepth;
            *pTop++ = {other.Tri(), NextSlot(other.Edge()), edge.nDepth};
            continue;
        }
        if (pTop == pBottom) {
            return;
        }
        edge = *--pTop;
    }
}

}   // namespace qsv
