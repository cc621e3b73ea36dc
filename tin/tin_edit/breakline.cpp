#include <algorithm>
#include <climits>
#include <cstdint>

#include "tin/internal/first_triangles.h"
#include "tin/internal/limits.h"
#include "tin/internal/line_walk.h"
#include "tin/internal/mesh_links.h"
#include "tin/internal/plan_index.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"
#include "tin/tin.h"

using namespace qsv;

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

int CTin::FindTriCrossingBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot)
{
    LinePlace at = {nSeg, nTri, nSlot};
    const bool bFound = TurnToCrossing({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, bl.m_aVertexIndex, at,
                                       m_nWalkDir, m_aTri.GetSize());
    nSeg = at.nSeg;
    nTri = at.nTri;
    nSlot = at.nSlot;
    return bFound ? 1 : 0;
}

int CTin::CheckStateOfBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot, CXYZ& ptCross)
{
    return static_cast<int>(
        MeetEdge({m_aVertex, m_aTri, m_dEPS, m_dEPS2}, bl.m_aVertexIndex, nSeg, nTri, nSlot, ptCross));
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
void SplitAtCrossing(CArray<CTriangle>& aTri, const CrossedEdge& edge, int nVtX)
{
    const int nT = edge.nT, nU = edge.nU;
    const int nInT = NextSlot(edge.nSlotP);   // slot of Q, and of the neighbour across P-Q
    const int nInU = NextSlot(edge.nSlotQ);   // slot of W, and of the neighbour across Q-W
    const int t1 = aTri.GetSize(), t2 = t1 + 1;
    const int nVtP = aTri[nT].m_nVertex[edge.nSlotP], nVtQ = aTri[nT].m_nVertex[nInT];
    const int nVtW = aTri[nU].m_nVertex[nInU];

    const int nN1 = aTri[nT].m_nNeighbor[nInT];
    RedirectNeighbor(aTri, nN1, {nVtQ, nVtP}, nT, t1);
    aTri.Add(MakeTriangle(nVtP, nVtQ, nVtX, nT, nN1, t2));
    aTri[nT].m_nVertex[nInT] = nVtX;
    aTri[nT].m_nNeighbor[nInT] = t1;

    const int nN2 = aTri[nU].m_nNeighbor[nInU];
    RedirectNeighbor(aTri, nN2, {nVtW, nVtQ}, nU, t2);
    aTri.Add(MakeTriangle(nVtX, nVtQ, nVtW, nU, t1, nN2));
    aTri[nU].m_nVertex[edge.nSlotQ] = nVtX;
    aTri[nU].m_nNeighbor[nInU] = t2;
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

// The first points of all breaklines, where enforcement begins.
Array<int> StartsOf(const CArray<CBreakLine>& aBreakLine)
{
    Array<int> aStart;
    for (int i = 0; i < aBreakLine.GetSize(); ++i) {
        if (!aBreakLine[i].m_aVertexIndex.IsEmpty()) {
            aStart.Add(aBreakLine[i].m_aVertexIndex[0]);
        }
    }
    return aStart;
}

// Makes breaklines chains of edges, one after the other.
class LineEnforcer
{
public:
    explicit LineEnforcer(CTin& tin)
        : m_tin(tin), m_mesh{tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2},
          m_first(tin.m_aTri, StartsOf(tin.m_aBreakLine), tin.m_aVertex.GetSize()),
          m_nFewestSteps(FewestSteps(tin.m_aTri.GetSize(), tin.m_aVertex.GetSize()))
    {
    }

    // Follows the line from its first point through the mesh and splits every edge it crosses, until the line
    // ends, leaves the TIN or cannot be followed further. What was split stays. Returns false when it could not
    // even be begun.
    bool Enforce(const CBreakLine& bl)
    {
        const CArray<int>& aLine = bl.m_aVertexIndex;
        LinePlace at = {0, 0, 0};
        if (aLine.IsEmpty() || !AllBelow(aLine, m_mesh.aVertex.GetSize()) || !FindStart(aLine[0], at) ||
            !Turn(aLine, at)) {
            return false;
        }
        const int nSegments = bl.m_bClose != 0 ? aLine.GetSize() : aLine.GetSize() - 1;
        // A segment crosses no edge of a sound mesh twice; links that were damaged could lead round for ever.
        std::int64_t nPassesLeft = static_cast<std::int64_t>(aLine.GetSize()) *
                                   (2 * static_cast<std::int64_t>(m_mesh.aTri.GetSize()) + 2);
        while (at.nSeg < nSegments && nPassesLeft-- > 0 && Advance(aLine, at)) {}
        return true;
    }

private:
    // A search may take as many steps as there are triangles, but at least this many: a number that does not
    // change while the first lines make the mesh larger.
    static int FewestSteps(int nTriangles, int nVertices)
    {
        const bool bFits = nTriangles < INT_MAX / kSearchStepsPerTriangle && nVertices < INT_MAX - nTriangles;
        return bFits ? kSearchStepsPerTriangle * nTriangles : 0;
    }

    // Vertices that came with the crossings are looked for among all triangles: only the lines of a damaged
    // TIN begin there.
    bool FindStart(int nVt, LinePlace& at)
    {
        if (!m_first.IsChosen(nVt)) {
            return FindFirstTriangleOf(m_mesh.aTri, nVt, m_mesh.aTri.GetSize(), at.nTri, at.nSlot);
        }
        at.nTri = m_first.Find(nVt);
        at.nSlot = at.nTri >= 0 ? SlotOfVertex(m_mesh.aTri[at.nTri], nVt) : -1;
        return at.nTri >= 0;
    }

    bool Turn(const CArray<int>& aLine, LinePlace& at)
    {
        return TurnToCrossing(m_mesh, aLine, at, m_tin.m_nWalkDir,
                              std::max(m_nFewestSteps, m_mesh.aTri.GetSize()));
    }

    // Across the edge opposite the pivot to the next one. Returns false where the line cannot go on.
    bool Advance(const CArray<int>& aLine, LinePlace& at)
    {
        CrossedEdge edge;
        if (!LookAcross(m_mesh.aTri, at.nTri, at.nSlot, edge)) {
            return false;
        }
        CXYZ ptCross;
        const Onward eOnward = MeetEdge(m_mesh, aLine, at.nSeg, edge.nU, edge.nSlotQ, ptCross);
        if (eOnward == Onward::DoesNotCross) {
            return false;
        }
        const int nVtW = m_mesh.aTri[edge.nU].m_nVertex[NextSlot(edge.nSlotQ)];
        SplitAtCrossing(m_mesh.aTri, edge, m_mesh.aVertex.Add(ptCross));
        const int t2 = m_mesh.aTri.GetUpperBound();
        m_first.Added(t2 - 1);
        m_first.Added(t2);
        if (eOnward == Onward::LeftOut) {   // through Q-W: t2, seen from X
            at.nTri = t2;
            at.nSlot = 0;
            return true;
        }
        if (eOnward == Onward::RightOut) {   // through W-R: what remains of U, seen from X
            at.nTri = edge.nU;
            at.nSlot = edge.nSlotQ;
            return true;
        }
        const int n = aLine.GetSize();
        at.nTri = edge.nU;   // at W: turn around it
        at.nSlot = NextSlot(edge.nSlotQ);
        at.nSeg += nVtW == aLine[(at.nSeg + 1) % n] ? 1 : 0;
        return at.nSeg >= n || Turn(aLine, at);
    }

    CTin& m_tin;
    const Mesh m_mesh;
    FirstTriangles m_first;
    const int m_nFewestSteps;
};

}   // namespace

int CTin::BreakLine1(CBreakLine& bl, int& nTriCount, int& nVtCount)
{
    m_aTri.SetSize(nTriCount, -1);
    m_aVertex.SetSize(nVtCount, -1);
    const bool bBegun = LineEnforcer(*this).Enforce(bl);
    nTriCount = m_aTri.GetSize();
    nVtCount = m_aVertex.GetSize();
    return bBegun ? 1 : 0;
}

int CTin::BreakLine()
{
    CheckBreakLineVt();
    if (m_aVertex.GetSize() < 3 || m_aTri.IsEmpty()) {
        return 0;
    }
    m_nWalkDir = 1;
    LineEnforcer enforcer(*this);
    for (int i = 0; i < m_aBreakLine.GetSize(); ++i) {
        enforcer.Enforce(m_aBreakLine[i]);
    }
    return 1;
}
