#include "tin/internal/outline_join.h"

#include <cmath>

#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"

namespace qsv {

namespace {

// An outer edge: of triangle nTri, from its vertex slot nEdge to the next. nTri is -1 when there is none.
struct OuterEdge {
    int nTri;
    int nEdge;
};

// From an outer edge to the next one along the outline, counter-clockwise, or to the one before: turns
// around the vertex that both share.
OuterEdge NextOuterEdge(const CArray<CTriangle>& aTri, const OuterEdge& from, bool bForward)
{
    const int nVt = aTri[from.nTri].m_nVertex[bForward ? NextSlot(from.nEdge) : from.nEdge];
    const Turn eTurn = bForward ? Turn::Clockwise : Turn::CounterClockwise;
    int nTri = from.nTri;
    for (int nSteps = 0; nSteps < aTri.GetSize(); ++nSteps) {
        const int nSlot = SlotOfVertex(aTri[nTri], nVt);
        if (nSlot < 0) {
            break;
        }
        const int nNext = NeighborAround(aTri, nTri, nSlot, eTurn);
        if (nNext < 0) {
            return {nTri, bForward ? nSlot : PrevSlot(nSlot)};
        }
        nTri = nNext;
    }
    return {-1, -1};
}

int Append(CArray<CTriangle>& aTri, int& nTriCount, const CTriangle& tri)
{
    aTri.SetAtGrow(nTriCount, tri);
    return nTriCount++;
}

// A triangle (p, b, a) on the outer edge a-b, outside on a-p and p-b.
//
//        a                 a
//        | \             / | \          .
//    p   |  g    -->   p  n|  g
//        | /             \ | /
//        b                 b
int RaiseTriangle(CArray<CTriangle>& aTri, int& nTriCount, int nVt, const OuterEdge& edge)
{
    const int b = aTri[edge.nTri].m_nVertex[NextSlot(edge.nEdge)], a = aTri[edge.nTri].m_nVertex[edge.nEdge];
    const int n = Append(aTri, nTriCount, MakeTriangle(nVt, b, a, -1, -1, edge.nTri));
    aTri[edge.nTri].m_nNeighbor[NeighborSlotOfEdge(edge.nEdge)] = n;
    return n;
}

// From the triangle n = (p, b, a) on, raises a triangle on each outer edge that follows on one side as long
// as p sees it. Forward, the edge after p-b is b-c, and the new triangle (p, c, b) borders n along p-b;
// backward, the edge before a-p is d-a, and the new triangle (p, a, d) borders n along a-p.
void RaiseAlong(const Mesh& mesh, int& nTriCount, int n, bool bForward, double dTolerance)
{
    const int nVt = mesh.aTri[n].m_nVertex[0];
    for (;;) {
        const OuterEdge next = NextOuterEdge(mesh.aTri, {n, bForward ? 0 : 2}, bForward);
        if (next.nTri < 0) {
            return;
        }
        const CXYZ& from = CornerAt(mesh, next.nTri, next.nEdge);
        const CXYZ& to = CornerAt(mesh, next.nTri, NextSlot(next.nEdge));
        const CXYZ& p = VertexAt(mesh.aVertex, nVt);
        const double dBeyond = -DoubledArea(from, to, p);
        const double dx = to.x - from.x, dy = to.y - from.y;
        if (!(dBeyond > dTolerance * std::sqrt(dx * dx + dy * dy)) || ExactTurn(from, to, p) >= 0) {
            return;   // hidden, or so nearly in line that only a flat sliver would be raised
        }
        const int nRaised = RaiseTriangle(mesh.aTri, nTriCount, nVt, next);
        mesh.aTri[nRaised].m_nNeighbor[bForward ? 0 : 1] = n;
        mesh.aTri[n].m_nNeighbor[bForward ? 1 : 0] = nRaised;
        n = nRaised;
    }
}

}   // namespace

int JoinToOutline(const Mesh& mesh, int& nTriCount, int nVt, int nTri, int nEdge, double dTolerance)
{
    const int nFirst = RaiseTriangle(mesh.aTri, nTriCount, nVt, {nTri, nEdge});
    RaiseAlong(mesh, nTriCount, nFirst, true, dTolerance);
    RaiseAlong(mesh, nTriCount, nFirst, false, dTolerance);
    return nFirst;
}

}   // namespace qsv
