#include <climits>
#include <cstdint>

#include "tin/internal/limits.h"
#include "tin/internal/lines.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/internal/plan_index.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// One step of a breakline: from vertex A to vertex B.
struct Segment {
    int nVtA, nVtB;
    CXYZ a, b;
};

// Segment nSeg of a line of n points; the last one joins the line's end to its start.
Segment SegmentAt(const CArray<CXYZ>& aVertex, const CBreakLine& bl, int nSeg)
{
    const int n = bl.m_aVertexIndex.GetSize();
    Segment seg;
    seg.nVtA = bl.m_aVertexIndex[nSeg];
    seg.nVtB = bl.m_aVertexIndex[(nSeg + 1) % n];
    seg.a = VertexAt(aVertex, seg.nVtA);
    seg.b = VertexAt(aVertex, seg.nVtB);
    return seg;
}

// Side of p seen along the segment from o, which need not be the segment's own start.
Side SideAlong(const Segment& seg, const CXYZ& o, const CXYZ& p, double dEPS2)
{
    const double dx = seg.b.x - seg.a.x, dy = seg.b.y - seg.a.y;
    return SideOf(dx * (p.y - o.y) - dy * (p.x - o.x), dEPS2);
}

bool AllBelow(const CArray<int>& aIndex, int nEnd)
{
    for (int i = 0; i < aIndex.GetSize(); ++i) {
        if (aIndex[i] < 0 || aIndex[i] >= nEnd) {
            return false;
        }
    }
    return true;
}

}   // namespace

int CTin::BreakLine()
{
    CheckBreakLineVt();
    if (m_aVertex.GetSize() < 3 || m_aTri.IsEmpty()) {
        return 0;
    }
    m_nWalkDir = 1;
    int nTriCount = m_aTri.GetSize(), nVtCount = m_aVertex.GetSize();
    if (nTriCount < INT_MAX / kBreakLineTriangleFactor && nVtCount < INT_MAX - nTriCount) {
        m_aTri.SetSize(kBreakLineTriangleFactor * nTriCount, -1);
        m_aVertex.SetSize(nVtCount + nTriCount, -1);
    }
    for (int i = 0; i < m_aBreakLine.GetSize(); ++i) {
        BreakLine1(m_aBreakLine[i], nTriCount, nVtCount);
    }
    m_aTri.SetSize(nTriCount, -1);
    m_aVertex.SetSize(nVtCount, -1);
    return 1;
}

// A breakline point that was left out because it coincides with another vertex refers to that one from
// here on: of all that coincide, the one that comes first in the triangles.
void CTin::CheckBreakLineVt()
{
    if (m_aBreakLine.IsEmpty()) {
        return;
    }
    CArray<char> aEntered;
    aEntered.SetSize(m_aVertex.GetSize(), -1);
    PlanIndex used(m_aVertex, m_dEPS);
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (const int nVt : m_aTri[t].m_nVertex) {
            if (IsIndexOf(m_aVertex, nVt) && !aEntered[nVt]) {
                aEntered[nVt] = 1;
                used.Enter(nVt);
            }
        }
    }
    for (int i = 0; i < m_aBreakLine.GetSize(); ++i) {
        CArray<int>& aIndex = m_aBreakLine[i].m_aVertexIndex;
        for (int j = 0; j < aIndex.GetSize(); ++j) {
            const int nVt = IsIndexOf(m_aVertex, aIndex[j])
                                ? used.FindFirst(m_aVertex[aIndex[j]].x, m_aVertex[aIndex[j]].y)
                                : -1;
            if (nVt >= 0) {
                aIndex[j] = nVt;
            }
        }
    }
}

// Turns around the pivot, the vertex in slot nSlot of triangle nTri, until the segment leaves it through
// the opposite edge. On the way the pivot moves along edges that lie on the segment; where it reaches the
// segment's end, the next segment goes on.
int CTin::FindTriCrossingBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot)
{
    const int n = bl.m_aVertexIndex.GetSize();
    const int nStepLimit = m_aTri.GetSize();
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot) || nSeg < 0 || nSeg >= n) {
        return 0;
    }
    for (int nSteps = 0;;) {
        const Segment seg = SegmentAt(m_aVertex, bl, nSeg);
        const CTriangle& t = m_aTri[nTri];
        const int nSlotQ = NextSlot(nSlot), nSlotR = PrevSlot(nSlot);
        const CXYZ& p = VertexAt(m_aVertex, t.m_nVertex[nSlot]);
        const Side eQ = SideAlong(seg, p, VertexAt(m_aVertex, t.m_nVertex[nSlotQ]), m_dEPS2);
        const Side eR = SideAlong(seg, p, VertexAt(m_aVertex, t.m_nVertex[nSlotR]), m_dEPS2);
        if (eQ == Side::Right && eR == Side::Left) {
            return 1;
        }
        const bool bAlongPQ = eQ == Side::On && eR == Side::Left;
        const bool bAlongPR = eQ == Side::Right && eR == Side::On;
        if (bAlongPQ || bAlongPR) {
            nSlot = bAlongPQ ? nSlotQ : nSlotR;
            if (t.m_nVertex[nSlot] == seg.nVtB && ++nSeg >= n) {
                return 0;
            }
        }
        if (!FindNextTriWithPt(nTri, nSlot) || ++nSteps >= nStepLimit) {
            return 0;
        }
    }
}

// Meeting point of the segment and the edge E2-E1 of triangle nTri through which it enters, and where it
// leaves again. nSlot is the slot of E1; W is the vertex opposite the edge.
//   0 at W    1 through E1-W, W being on the left    2 through W-E2, W being on the right
//   3 it does not meet the edge: it ends before
int CTin::CheckStateOfBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot, CXYZ& ptCross)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot) || !IsIndexOf(bl.m_aVertexIndex, nSeg)) {
        return 3;
    }
    const Segment seg = SegmentAt(m_aVertex, bl, nSeg);
    const CTriangle& tri = m_aTri[nTri];
    const CXYZ& e1 = VertexAt(m_aVertex, tri.m_nVertex[nSlot]);
    const CXYZ& w = VertexAt(m_aVertex, tri.m_nVertex[NextSlot(nSlot)]);
    const CXYZ& e2 = VertexAt(m_aVertex, tri.m_nVertex[PrevSlot(nSlot)]);
    if (!CalCrossPointXY(seg.a.x, seg.a.y, seg.a.z, seg.b.x, seg.b.y, seg.b.z, e1.x, e1.y, e2.x, e2.y,
                         ptCross.x, ptCross.y, ptCross.z, 0, 0, m_dEPS)) {
        return 3;
    }
    switch (SideAlong(seg, seg.a, w, m_dEPS2)) {
    case Side::Left: return 1;
    case Side::Right: return 2;
    case Side::On: break;
    }
    return 0;
}

namespace {

// A segment on its way from the pivot P out of triangle T into triangle U, through the edge Q-R.
struct CrossedEdge {
    int nT, nSlotP;   // T and the slot of P in it
    int nU, nSlotQ;   // U and the slot of Q in it, which is also the neighbour slot that holds T
};

// Looks across the edge opposite the pivot. Returns false at the outside, or where U does not link back.
bool LookAcross(const CArray<CTriangle>& aTri, int nT, int nSlotP, CrossedEdge& edge)
{
    const int nU = NeighborAt(aTri, nT, NeighborSlotOpposite(nSlotP));
    const DirectedEdge edgeRQ = {aTri[nT].m_nVertex[PrevSlot(nSlotP)], aTri[nT].m_nVertex[NextSlot(nSlotP)]};
    const int nSlotQ = nU >= 0 ? SlotOfNeighbor(aTri[nU], nT, edgeRQ) : -1;
    edge = {nT, nSlotP, nU, nSlotQ};
    return nSlotQ >= 0;
}

// Splits the triangles on both sides of the crossed edge at vertex X on it.
//
//             R                        R
//           / | \                    / | \         T  becomes (P, X, R)
//         /   |   \                /   |   \       t1 = new, (P, Q, X)
//       P   T | U   W     -->    P --- X --- W     U  becomes (X, W, R)
//         \   |   /                \ t1|t2 /       t2 = new, (X, Q, W)
//       N1  \ | /  N2            N1  \ | /  N2
//             Q                        Q
void SplitAtCrossing(CArray<CTriangle>& aTri, const CrossedEdge& edge, int nVtX, int& nTriCount)
{
    const int nT = edge.nT, nU = edge.nU;
    const int nInT = NextSlot(edge.nSlotP);   // slot of Q, and of the neighbour across P-Q
    const int nInU = NextSlot(edge.nSlotQ);   // slot of W, and of the neighbour across Q-W
    const int t1 = nTriCount, t2 = nTriCount + 1;
    const int nVtP = aTri[nT].m_nVertex[edge.nSlotP], nVtQ = aTri[nT].m_nVertex[nInT];
    const int nVtW = aTri[nU].m_nVertex[nInU];

    const int nN1 = aTri[nT].m_nNeighbor[nInT];
    RedirectNeighbor(aTri, nN1, {nVtQ, nVtP}, nT, t1);
    aTri.SetAtGrow(t1, MakeTriangle(nVtP, nVtQ, nVtX, nT, nN1, t2));
    aTri[nT].m_nVertex[nInT] = nVtX;
    aTri[nT].m_nNeighbor[nInT] = t1;

    const int nN2 = aTri[nU].m_nNeighbor[nInU];
    RedirectNeighbor(aTri, nN2, {nVtW, nVtQ}, nU, t2);
    aTri.SetAtGrow(t2, MakeTriangle(nVtX, nVtQ, nVtW, nU, t1, nN2));
    aTri[nU].m_nVertex[edge.nSlotQ] = nVtX;
    aTri[nU].m_nNeighbor[nInU] = t2;
    nTriCount += 2;
}

}   // namespace

// Follows the line from its first point through the mesh and splits every edge it crosses, until the line
// ends, leaves the TIN or cannot be followed further. What was split stays.
int CTin::BreakLine1(CBreakLine& bl, int& nTriCount, int& nVtCount)
{
    const int n = bl.m_aVertexIndex.GetSize();
    int nTri = 0, nSlot = 0, nSeg = 0;
    if (n < 1 || !AllBelow(bl.m_aVertexIndex, nVtCount) ||
        !FindFirstTriWithPt(bl.m_aVertexIndex[0], nTri, nSlot, nTriCount) ||
        !FindTriCrossingBL(bl, nSeg, nTri, nSlot)) {
        return 0;
    }
    const int nSegments = bl.m_bClose != 0 ? n : n - 1;
    // A segment crosses no edge of a sound mesh twice; links that were damaged could lead round for ever.
    std::int64_t nPassesLeft = static_cast<std::int64_t>(n) * (2 * static_cast<std::int64_t>(nTriCount) + 2);
    while (nSeg < nSegments && nPassesLeft-- > 0) {
        CrossedEdge edge;
        if (!LookAcross(m_aTri, nTri, nSlot, edge)) {
            return 1;
        }
        CXYZ ptCross;
        const int nState = CheckStateOfBL(bl, nSeg, edge.nU, edge.nSlotQ, ptCross);
        if (nState == 3) {
            return 1;
        }
        const int nVtW = m_aTri[edge.nU].m_nVertex[NextSlot(edge.nSlotQ)];
        m_aVertex.SetAtGrow(nVtCount, ptCross);
        SplitAtCrossing(m_aTri, edge, nVtCount++, nTriCount);
        if (nState == 1) {   // on through E1-W, which is Q-W: t2, seen from X
            nTri = nTriCount - 1;
            nSlot = 0;
        } else if (nState == 2) {   // on through W-E2, which is W-R: what remains of U, seen from X
            nTri = edge.nU;
            nSlot = edge.nSlotQ;
        } else {   // at W: turn around it
            nTri = edge.nU;
            nSlot = NextSlot(edge.nSlotQ);
            nSeg += nVtW == bl.m_aVertexIndex[(nSeg + 1) % n] ? 1 : 0;
            if (nSeg < n && !FindTriCrossingBL(bl, nSeg, nTri, nSlot)) {
                return 1;
            }
        }
    }
    return 1;
}
