#include "tin/internal/edge_swap.h"

#include "tin/internal/limits.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

bool IsOutsideCircle(const CArray<CXYZ>& aVertex, int nVtA, int nVtB, int nVtC, int nVtD)
{
    const CXYZ &A = VertexAt(aVertex, nVtA), &B = VertexAt(aVertex, nVtB);
    const CXYZ &C = VertexAt(aVertex, nVtC), &D = VertexAt(aVertex, nVtD);
    const double bx = B.x - A.x, by = B.y - A.y;
    const double cx = C.x - A.x, cy = C.y - A.y;
    const double dx = D.x - A.x, dy = D.y - A.y;
    const double det = bx * cy - by * cx;
    if (det == 0.0) {
        return false;
    }
    // Two divisions, not one reciprocal: cocircular points of a grid then come out exactly cocircular.
    const double b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    const double ox = (cy * b2 - by * c2) / (2.0 * det);
    const double oy = (bx * c2 - cx * b2) / (2.0 * det);
    const double r2 = ox * ox + oy * oy;
    const double e2 = (dx - ox) * (dx - ox) + (dy - oy) * (dy - oy);
    return e2 > r2;
}

bool IsStrictlyConvex(const CArray<CXYZ>& aVertex, int nVtP, int nVtQ, int nVtD, int nVtR, Turns eTurns)
{
    const CXYZ &P = VertexAt(aVertex, nVtP), &Q = VertexAt(aVertex, nVtQ);
    const CXYZ &D = VertexAt(aVertex, nVtD), &R = VertexAt(aVertex, nVtR);
    if (eTurns == Turns::Exact) {
        return ExactTurn(P, D, Q) < 0 && ExactTurn(P, D, R) > 0;
    }
    const double ux = D.x - P.x, uy = D.y - P.y;
    const double wx = Q.x - P.x, wy = Q.y - P.y;
    const double vx = R.x - P.x, vy = R.y - P.y;
    return ux * wy - uy * wx < 0.0 && ux * vy - uy * vx > 0.0;
}

//            R                      R
//          / | \                  /   \       t = nTri, with P in its slot nApex
//       x /  |  \              x /  u  \      u = nOther, sharing the edge Q-R with t
//        P  t|u  D     -->      P ------- D   x, y = the neighbours that change owner
//         \  |  / y              \  t  / y
//          \ | /                  \   /
//            Q                      Q
bool SwapDiagonal(const Mesh& mesh, int nTri, int nApex, int nOther, int nOtherSlot, Turns eTurns)
{
    CTriangle &t = mesh.aTri[nTri], &u = mesh.aTri[nOther];
    const int nToOther = NeighborSlotOpposite(nApex);   // slot of t that holds u; vertex R
    const int nFar = NextSlot(nOtherSlot);              // slot of u with vertex D; u's slot nOtherSlot: Q
    const int nVtP = t.m_nVertex[nApex], nVtQ = t.m_nVertex[NextSlot(nApex)];
    const int nVtR = t.m_nVertex[nToOther], nVtD = u.m_nVertex[nFar];
    if (!IsStrictlyConvex(mesh.aVertex, nVtP, nVtQ, nVtD, nVtR, eTurns)) {
        return false;
    }
    const int nX = t.m_nNeighbor[nApex];   // across R-P
    const int nY = u.m_nNeighbor[nFar];    // across Q-D
    t.m_nVertex[nToOther] = nVtD;
    u.m_nVertex[nOtherSlot] = nVtP;
    t.m_nNeighbor[nApex] = nOther;
    t.m_nNeighbor[nToOther] = nY;
    u.m_nNeighbor[nFar] = nTri;
    u.m_nNeighbor[nOtherSlot] = nX;
    RedirectNeighbor(mesh.aTri, nY, {nVtD, nVtQ}, nOther, nTri);
    RedirectNeighbor(mesh.aTri, nX, {nVtP, nVtR}, nTri, nOther);
    return true;
}

namespace {

// Swaps the edge opposite slot nApex of triangle nTri unless it is Delaunay, outside or not convex.
// Returns the other triangle and the slot in it from which its new outer edge is seen.
bool SwapUnlessDelaunay(const Mesh& mesh, int nTri, int nApex, int& nOther, int& nOtherSlot, Turns eTurns)
{
    const CTriangle& t = mesh.aTri[nTri];
    const int nToOther = NeighborSlotOpposite(nApex);
    nOther = NeighborAt(mesh.aTri, nTri, nToOther);
    if (nOther < 0) {
        return false;
    }
    const int nVtP = t.m_nVertex[nApex], nVtQ = t.m_nVertex[NextSlot(nApex)], nVtR = t.m_nVertex[nToOther];
    nOtherSlot = SlotOfNeighbor(mesh.aTri[nOther], nTri, {nVtR, nVtQ});
    if (nOtherSlot < 0) {
        return false;
    }
    const int nVtD = mesh.aTri[nOther].m_nVertex[NextSlot(nOtherSlot)];
    return !IsOutsideCircle(mesh.aVertex, nVtR, nVtP, nVtQ, nVtD) &&
           SwapDiagonal(mesh, nTri, nApex, nOther, nOtherSlot, eTurns);
}

struct PendingEdge {
    int nTri;
    int nApex;
    int nDepth;
};

// The triangles on both sides of the edge.
void Announce(const CArray<CTriangle>& aTri, const PendingEdge& edge, CornerWatcher& watcher)
{
    watcher.WillLookAt(edge.nTri);
    const int nOther = NeighborAt(aTri, edge.nTri, NeighborSlotOpposite(edge.nApex));
    if (nOther >= 0) {
        watcher.WillLookAt(nOther);
    }
}

}   // namespace

// After a swap the edges Q-D of t and D-R of u are tested, t's with all that follows from it first. The
// edges still to be tested wait on a list of our own: 10,000 levels of calls would not fit a small stack.
void LegalizeEdge(const Mesh& mesh, int nTri, int nApex, int nDepth, Turns eTurns, CornerWatcher* pWatcher)
{
    // Every swap makes a triangle use P that did not, so a sound mesh cannot swap more often than this;
    // links that were damaged could go round for ever.
    int nSwapsLeft = mesh.aTri.GetSize();
    CArray<PendingEdge> aPending;
    PendingEdge edge = {nTri, nApex, nDepth};
    for (;;) {
        int nOther = -1, nOtherSlot = -1;
        if (pWatcher != nullptr) {
            Announce(mesh.aTri, edge, *pWatcher);
        }
        if (edge.nDepth < kMaxSwapDepth && nSwapsLeft > 0 &&
            SwapUnlessDelaunay(mesh, edge.nTri, edge.nApex, nOther, nOtherSlot, eTurns)) {
            --nSwapsLeft;
            aPending.Add({nOther, nOtherSlot, edge.nDepth + 1});
            ++edge.nDepth;
            continue;
        }
        if (aPending.IsEmpty()) {
            return;
        }
        edge = aPending[aPending.GetUpperBound()];
        aPending.SetSize(aPending.GetUpperBound());
    }
}

}   // namespace qsv
