#include "tin/internal/plan_insert.h"

#include "tin/internal/limits.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

constexpr int kUsualDepth = 64;   // of edges that wait; there is room for more when needed

}   // namespace

PlanInserter::PlanInserter(PlanMesh& mesh, WalkTraps* pTraps) : m_mesh(mesh), m_pTraps(pTraps)
{
    m_aWaiting.SetSize(kUsualDepth, -1);
}

// A triangle as it is, from a corner on.
PlanInserter::Split PlanInserter::Before(Corner first) const
{
    const Corner second = first.Next(), third = first.Prev();
    return {{m_mesh.RankAt(first), m_mesh.RankAt(second), m_mesh.RankAt(third)},
            {m_mesh.Across(first), m_mesh.Across(second), m_mesh.Across(third)}};
}

// Triangle nTri becomes the vertex and the edge that faces corner k of another, with what lies across that edge.
void PlanInserter::Fill(int nTri, int nRank, const Split& from, int k)
{
    m_mesh.SetRank(Corner(nTri, 0), nRank);
    m_mesh.SetRank(Corner(nTri, 1), from.nRank[NextSlot(k)]);
    m_mesh.SetRank(Corner(nTri, 2), from.nRank[PrevSlot(k)]);
    m_mesh.SetFirstSlot(nTri, 0);
    m_mesh.Link(Corner(nTri, 0), from.across[k]);
}

//              c                          c
//            /   \                      / | \          t  = nTri becomes (p, a, b)
//          /       \                  / t2|t1 \        t1 = new, (p, b, c)
//        /     p     \      -->     /   . p .   \      t2 = new, (p, c, a)
//      /               \          / .     t     . \    .
//    a ----------------- b      a ----------------- b
void PlanInserter::SplitInside(int nRank, int nTri)
{
    const Split old = Before(m_mesh.FirstCorner(nTri));
    const int t = nTri, t1 = PlanMesh::FirstSeatOf(nRank), t2 = t1 + 1;
    m_mesh.Number(t1);
    m_mesh.Number(t2);
    Fill(t, nRank, old, 2);
    Fill(t1, nRank, old, 0);
    Fill(t2, nRank, old, 1);
    m_mesh.Link(Corner(t, 2), Corner(t2, 1));
    m_mesh.Link(Corner(t1, 2), Corner(t, 1));
    m_mesh.Link(Corner(t2, 2), Corner(t1, 1));
    LegalizeAround(nRank, {t, t1, t2});
}

//            v2                         v2
//          /    \                     / | \            t  becomes (p, v2, v0)
//        /   t    \                 / t | t1\          t1 = new, (p, v1, v2)
//      /            \             /     |     \        u becomes (p, w0, w1), where w0 = v0
//    v0 ---- p ----- v1   -->   v0 ---- p ---- v1      t3 = new, (p, w1, w2), where w2 = v1
//      \            /             \     |     /        v2 is the corner that faces the edge;
//        \   u    /                 \ u | t3/          without u, p lies on the outside
//          \    /                     \ | /
//            w1                         w1
void PlanInserter::SplitOnEdge(int nRank, Corner faces)
{
    const int t = faces.Tri(), t1 = PlanMesh::FirstSeatOf(nRank), t3 = t1 + 1;
    const Split oldT = Before(faces);   // v2, v0, v1
    const Corner across = oldT.across[0];
    m_mesh.Number(t1);
    Fill(t, nRank, oldT, 2);
    Fill(t1, nRank, oldT, 1);
    m_mesh.Link(Corner(t, 2), Corner(t1, 1));
    if (across.IsOutside()) {
        m_mesh.Link(Corner(t, 1), across);
        m_mesh.Link(Corner(t1, 2), across);
        LegalizeAround(nRank, {t, t1});
        return;
    }
    const int u = across.Tri();
    const Split oldU = Before(across);   // w1, w2, w0
    m_mesh.Number(t3);
    Fill(u, nRank, oldU, 1);
    Fill(t3, nRank, oldU, 2);
    m_mesh.Link(Corner(u, 2), Corner(t, 1));
    m_mesh.Link(Corner(t3, 2), Corner(u, 1));
    m_mesh.Link(Corner(t1, 2), Corner(t3, 1));
    LegalizeAround(nRank, {t, t1, u, t3});
}

// Across the edge Q-R of a wedge lies D, which on the outside is nowhere: no circle leaves that out, and with nothing
// is it convex. The test is IsOutsideCircle(R, P, Q, D), operation by operation; when det is 0, neither square is a
// number that could be the larger one.
template <bool WITH_TRAPS>
inline void PlanInserter::Foresee(const Apex& P, const Wedge& one, const Wedge& other, int nDepth,
                                  FacedEdge& edge, FacedEdge& otherEdge) const
{
    const Corner acrossOne = m_mesh.Across(one.apex), acrossOther = m_mesh.Across(other.apex);
    const int nD = m_mesh.RankAt(acrossOne), nDOther = m_mesh.RankAt(acrossOther);
    const PlanPlace &D = m_mesh.PlaceOf(nD), &DO = m_mesh.PlaceOf(nDOther);
    const Two Rx = {one.R.x, other.R.x}, Ry = {one.R.y, other.R.y};
    const Two bx = P.x - Rx, by = P.y - Ry;
    const Two cx = Two{one.Q.x, other.Q.x} - Rx, cy = Two{one.Q.y, other.Q.y} - Ry;
    const Two dx = Two{D.x, DO.x} - Rx, dy = Two{D.y, DO.y} - Ry;
    const Two det = bx * cy - by * cx;   // the doubled area
    const Two b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    const Two ox = (cy * b2 - by * c2) / (2.0 * det);
    const Two oy = (bx * c2 - cx * b2) / (2.0 * det);
    const Two r2 = ox * ox + oy * oy;
    const Two e2 = (dx - ox) * (dx - ox) + (dy - oy) * (dy - oy);
    // One by one: a processor waits when it reads together what was just written apart.
    const auto note = [&](FacedEdge& noted, int i, const Wedge& wedge, Corner across, int nFar) {
        noted.apex = wedge.apex;
        noted.across = across;
        noted.nQ = wedge.nQ;
        noted.nR = wedge.nR;
        noted.nD = nFar;
        noted.nDepth = nDepth;
        noted.bInCircle = !(e2[i] > r2[i]);
    };
    note(otherEdge, 1, other, acrossOther, nDOther);
    note(edge, 0, one, acrossOne, nD);
    if constexpr (WITH_TRAPS) {
        const Two length2 = 2.0 * (b2 + c2);   // not below the square of the longest edge
        const Two roundness = m_pTraps->Roundness(det, length2), room = m_pTraps->Room(det, length2);
        otherEdge.bTrap = !((roundness[1] > 0.0) & (room[1] > 0.0));
        edge.bTrap = !((roundness[0] > 0.0) & (room[0] > 0.0));
    }
}

// Whether what was foreseen is still true after other swaps. They leave a triangle that waits as it is: only the one
// across can have changed.
inline bool PlanInserter::StillHolds(const FacedEdge& edge) const
{
    return m_mesh.Across(edge.apex) == edge.across && m_mesh.RankAt(edge.across) == edge.nD;
}

//            R                      R
//          / | \                  /   \       t = the triangle at the apex, which has P in slot 0
//       x /  |  \ z            x /  u  \ z    u = the one across, turned to have P in slot 0
//        P  t|u  D     -->      P ------- D
//         \  |  / y              \  t  / y    x, y = the neighbours that change owner
//          \ | /                  \   /
//            Q                      Q         The test is IsStrictlyConvex(P, Q, D, R), operation by operation.
// Then P faces two edges: Q-D of t becomes the edge, D-R of u the second one.
template <bool WITH_TRAPS>
inline bool PlanInserter::SwapIfConvex(const Apex& P, FacedEdge& edge, FacedEdge& second)
{
    const PlanPlace Q = m_mesh.PlaceOf(edge.nQ), R = m_mesh.PlaceOf(edge.nR), D = m_mesh.PlaceOf(edge.nD);
    const Two ux = Both(D.x) - P.x, uy = Both(D.y) - P.y;
    const Two wx = Two{Q.x, R.x} - P.x, wy = Two{Q.y, R.y} - P.y;
    const Two turn = ux * wy - uy * wx;
    if (!(turn[0] < 0.0 && turn[1] > 0.0)) {
        return false;
    }
    const Corner t = edge.apex, u = edge.across.InSlot0();
    const Corner ofR = edge.across.Next(), ofQ = edge.across.Prev();
    const Corner x = m_mesh.Across(t.InSlot(1)), y = m_mesh.Across(ofR), z = m_mesh.Across(ofQ);
    m_mesh.TurnFirstSlot(u, ofQ.Slot());
    m_mesh.SetRank(u, P.nRank);
    m_mesh.SetRank(u.InSlot(1), edge.nD);
    m_mesh.SetRank(u.InSlot(2), edge.nR);
    m_mesh.SetRank(t.InSlot(2), edge.nD);
    m_mesh.Link(t, y);
    m_mesh.Link(t.InSlot(1), u.InSlot(2));
    m_mesh.Link(u, z);
    m_mesh.Link(u.InSlot(1), x);
    Foresee<WITH_TRAPS>(P, {t, edge.nQ, edge.nD, Q, D}, {u, edge.nD, edge.nR, D, R}, edge.nDepth + 1, edge,
                        second);
    return true;
}

// Makes the edges that triangles face from P Delaunay, one after the other, and then every edge that a swap exposes,
// the first of two with all that follows from it before the second. Every swap makes one more triangle use P, so this
// ends.
template <bool WITH_TRAPS>
void PlanInserter::Legalize(const Apex P, const int* pTri, int nTriangles)
{
    FacedEdge* pFirst = m_aWaiting.GetData();   // a stack, what comes first on top
    FacedEdge *pTop = pFirst + nTriangles, *pEnd = pFirst + m_aWaiting.GetSize();
    for (int i = 0; i < nTriangles; i += 2) {
        const int j = i + 1 < nTriangles ? i + 1 : i;
        Foresee<WITH_TRAPS>(P, WedgeOf(pTri[i]), WedgeOf(pTri[j]), 0, pTop[-1 - i], pTop[-1 - j]);
    }
    while (pTop != pFirst) {
        FacedEdge edge = *--pTop;
        if (!StillHolds(edge)) {
            const Wedge wedge = WedgeOf(edge.apex, edge.nQ, edge.nR);
            Foresee<WITH_TRAPS>(P, wedge, wedge, edge.nDepth, edge, edge);
        }
        while (edge.bInCircle && edge.nDepth < kMaxSwapDepth) {
            if (pTop == pEnd) {
                const int n = m_aWaiting.GetSize();
                m_aWaiting.SetSize(2 * n);
                pFirst = m_aWaiting.GetData();
                pTop = pFirst + n;
                pEnd = pTop + n;
            }
            if (!SwapIfConvex<WITH_TRAPS>(P, edge, *pTop)) {
                break;
            }
            ++pTop;
        }
        if constexpr (WITH_TRAPS) {
            m_pTraps->Update(edge.apex.Tri(), edge.bTrap);
        }
    }
}

void PlanInserter::LegalizeAround(int nRank, std::initializer_list<int> tris)
{
    const int n = static_cast<int>(tris.size());
    if (m_pTraps != nullptr) {
        Legalize<true>(ApexAt(nRank), tris.begin(), n);
    } else {
        Legalize<false>(ApexAt(nRank), tris.begin(), n);
    }
}

}   // namespace qsv
