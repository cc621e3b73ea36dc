#include "tin/internal/line_walk.h"

#include <cstdint>

#include "tin/internal/lines.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"

namespace qsv {

namespace {

// One step of a breakline: from place A to vertex B.
struct Segment {
    int nVtB;
    const CXYZ &a, &b;

    Segment(const CArray<CXYZ>& aVertex, const CArray<int>& aLine, int nSeg)
        : nVtB(aLine[nSeg + 1 < aLine.GetSize() ? nSeg + 1 : 0]), a(VertexAt(aVertex, aLine[nSeg])),
          b(VertexAt(aVertex, nVtB))
    {
    }

    // Side of p seen along the segment from o, which need not be the segment's own start.
    Side SideAlong(const CXYZ& o, const CXYZ& p, double dEPS2) const
    {
        const double dx = b.x - a.x, dy = b.y - a.y;
        return SideOf(dx * (p.y - o.y) - dy * (p.x - o.x), dEPS2);
    }
};

// Where a search stands: all that its further course depends on.
struct SearchState {
    LinePlace at;
    int nWalkDir;

    bool operator==(const SearchState& other) const
    {
        return at.nTri == other.at.nTri && at.nSlot == other.at.nSlot && at.nSeg == other.at.nSeg &&
               nWalkDir == other.nWalkDir;
    }
};

// Notices that a search goes round: it remembers one state at a time, after 1, 2, 4, ... steps (Brent, "An
// improved Monte Carlo factorization algorithm", 1980).
class RoundFinder
{
public:
    // To be called after every step. Returns the length of the round once it is known, else 0.
    int After(const SearchState& state)
    {
        ++m_nSteps;
        if (state == m_was) {
            return m_nSteps;
        }
        if (m_nSteps == m_nSpan) {
            m_was = state;
            m_nSteps = 0;
            m_nSpan *= 2;
        }
        return 0;
    }

private:
    SearchState m_was = {{-1, -1, -1}, -1};
    int m_nSteps = 0;
    std::int64_t m_nSpan = 1;
};

}   // namespace

bool TurnToCrossing(const Mesh& mesh, const CArray<int>& aLine, LinePlace& at, int& nWalkDir, int nStepLimit)
{
    if (!IsIndexOf(mesh.aTri, at.nTri) || !IsSlot(at.nSlot) || !IsIndexOf(aLine, at.nSeg)) {
        return false;
    }
    RoundFinder rounds;
    for (int nStepsLeft = nStepLimit;;) {
        const Segment seg(mesh.aVertex, aLine, at.nSeg);
        const int nSlotQ = NextSlot(at.nSlot), nSlotR = PrevSlot(at.nSlot);
        const CXYZ& p = CornerAt(mesh, at.nTri, at.nSlot);
        const Side eQ = seg.SideAlong(p, CornerAt(mesh, at.nTri, nSlotQ), mesh.dEPS2);
        const Side eR = seg.SideAlong(p, CornerAt(mesh, at.nTri, nSlotR), mesh.dEPS2);
        if (eQ == Side::Right && eR == Side::Left) {
            return true;
        }
        const bool bAlongPQ = eQ == Side::On && eR == Side::Left;
        const bool bAlongPR = eQ == Side::Right && eR == Side::On;
        if (bAlongPQ || bAlongPR) {
            at.nSlot = bAlongPQ ? nSlotQ : nSlotR;
            if (mesh.aTri[at.nTri].m_nVertex[at.nSlot] == seg.nVtB && ++at.nSeg >= aLine.GetSize()) {
                return false;
            }
        }
        if (!StepAroundOrBack(mesh.aTri, at.nTri, at.nSlot, nWalkDir) || --nStepsLeft <= 0) {
            return false;
        }
        const int nRound = rounds.After({at, nWalkDir});
        if (nRound > 0) {
            nStepsLeft %= nRound;
            if (nStepsLeft == 0) {
                return false;
            }
        }
    }
}

Onward MeetEdge(const Mesh& mesh, const CArray<int>& aLine, int nSeg, int nTri, int nSlot, CXYZ& ptCross)
{
    if (!IsIndexOf(mesh.aTri, nTri) || !IsSlot(nSlot) || !IsIndexOf(aLine, nSeg)) {
        return Onward::DoesNotCross;
    }
    const Segment seg(mesh.aVertex, aLine, nSeg);
    const CXYZ& e1 = CornerAt(mesh, nTri, nSlot);
    const CXYZ& w = CornerAt(mesh, nTri, NextSlot(nSlot));
    const CXYZ& e2 = CornerAt(mesh, nTri, PrevSlot(nSlot));
    if (!CalCrossPointXY(seg.a.x, seg.a.y, seg.a.z, seg.b.x, seg.b.y, seg.b.z, e1.x, e1.y, e2.x, e2.y,
                         ptCross.x, ptCross.y, ptCross.z, 0, 0, mesh.dEPS)) {
        return Onward::DoesNotCross;
    }
    switch (seg.SideAlong(seg.a, w, mesh.dEPS2)) {
    case Side::Left: return Onward::LeftOut;
    case Side::Right: return Onward::RightOut;
    case Side::On: break;
    }
    return Onward::AtOpposite;
}

}   // namespace qsv
