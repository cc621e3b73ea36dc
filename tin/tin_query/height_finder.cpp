#include "tin/height_finder.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "tin/internal/mesh_walk.h"
#include "tin/internal/plan.h"
#include "tin/internal/prefetch.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// Triangles a cell of the grid. With fewer, more cells are empty and starts are no nearer.
constexpr int kTrianglesPerCell = 6;

// How many triangles are looked at to choose the cells.
constexpr int kSamples = 2048;

// Cells along the side of a block. Positions of one block are answered together: even when each triangle and
// each vertex of so many cells lies on a page of memory of its own, the processor remembers where the pages are.
constexpr int kBlock = 8;

// How many walks go on in turns: enough for the memory of one to arrive while the others are at work.
constexpr int kLanes = 16;

MeshView MeshOf(const CTin& tin)
{
    return {tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2};
}

// A number clamped to 0 .. nCount-1; 0 when it is not a number.
int Clamped(double d, int nCount)
{
    if (!(d > 0.0)) {
        return 0;
    }
    return d < nCount ? static_cast<int>(d) : nCount - 1;
}

CHeightAnswer AnswerAt(const MeshView& mesh, int nTri, double x, double y)
{
    CHeightAnswer answer;
    answer.m_nTri = nTri;
    if (nTri >= 0) {
        answer.m_nResult = HeightOnPlane(CornerAt(mesh, nTri, 0), CornerAt(mesh, nTri, 1),
                                         CornerAt(mesh, nTri, 2), x, y, answer.m_dHeight)
                               ? 1
                               : 0;
    }
    return answer;
}

}   // namespace

CHeightFinder::CHeightFinder(const CTin& tin) : m_tin(tin)
{
    ChooseCells();
    m_aStart.SetSize(m_nColumns * m_nRows, -1);
    for (int c = 0; c < m_aStart.GetSize(); ++c) {
        m_aStart[c] = -1;
    }
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ& p = VertexAt(tin.m_aVertex, tin.m_aTri[t].m_nVertex[0]);
        m_aStart[RowOf(p.y) * m_nColumns + ColumnOf(p.x)] = t;
    }
    FillEmptyCells();
}

// About square cells over the range of some of the triangles; what lies outside counts to the outer cells.
void CHeightFinder::ChooseCells()
{
    const int nTriangles = m_tin.m_aTri.GetSize();
    CXYZ lower(DBL_MAX, DBL_MAX, DBL_MAX), upper(-DBL_MAX, -DBL_MAX, -DBL_MAX);
    for (int t = 0; t < nTriangles; t += 1 + nTriangles / kSamples) {
        for (int k = 0; k < 3; ++k) {
            WidenRange(CornerAt(MeshOf(m_tin), t, k), lower, upper);
        }
    }
    const double dWidth = upper.x - lower.x, dHeight = upper.y - lower.y;
    if (!(dWidth > 0.0 && dHeight > 0.0 && std::isfinite(dWidth) && std::isfinite(dHeight))) {
        return;   // one cell
    }
    const int nCells = std::max(1, nTriangles / kTrianglesPerCell);
    m_nColumns = 1 + Clamped(std::sqrt(nCells * (dWidth / dHeight)), nCells);
    m_nRows = 1 + nCells / m_nColumns;
    m_dMinX = lower.x;
    m_dMinY = lower.y;
    m_dColumnsPerUnit = m_nColumns / dWidth;
    m_dRowsPerUnit = m_nRows / dHeight;
}

// An empty cell takes its start from the cell before it in the row, or from the row before; the first ones, which
// have none before, from those after them.
void CHeightFinder::FillEmptyCells()
{
    for (int c = 1; c < m_aStart.GetSize(); ++c) {
        if (m_aStart[c] < 0) {
            m_aStart[c] = m_aStart[c % m_nColumns != 0 ? c - 1 : c - m_nColumns];
        }
    }
    for (int c = m_aStart.GetUpperBound(); c > 0; --c) {
        if (m_aStart[c - 1] < 0) {
            m_aStart[c - 1] = m_aStart[c];
        }
    }
}

int CHeightFinder::ColumnOf(double x) const
{
    return Clamped((x - m_dMinX) * m_dColumnsPerUnit, m_nColumns);
}

int CHeightFinder::RowOf(double y) const
{
    return Clamped((y - m_dMinY) * m_dRowsPerUnit, m_nRows);
}

int CHeightFinder::GetStartTri(double x, double y) const
{
    return m_aStart[RowOf(y) * m_nColumns + ColumnOf(x)];
}

CHeightAnswer CHeightFinder::Find(double x, double y) const
{
    const MeshView mesh = MeshOf(m_tin);
    return AnswerAt(mesh, WalkToPoint(mesh, GetStartTri(x, y), x, y).nTri, x, y);
}

// One position and its place in the caller's list.
struct CHeightFinder::Asked {
    double x, y;
    int nIndex;
};

// Sorts positions by the block of cells they lie in, in linear time.
void CHeightFinder::SortByPlace(const CArray<CXYZ>& aPlace, CArray<Asked>& aAsked) const
{
    const int nAcross = m_nColumns / kBlock + 1;
    const auto blockOf = [&](const CXYZ& p) {
        return RowOf(p.y) / kBlock * nAcross + ColumnOf(p.x) / kBlock;
    };
    CArray<int> aBlock, aNext;   // block of each position; where the next one of each block goes
    aBlock.SetSize(aPlace.GetSize(), -1);
    aNext.SetSize(nAcross * (m_nRows / kBlock + 1) + 1, -1);
    for (int i = 0; i < aPlace.GetSize(); ++i) {
        aBlock[i] = blockOf(aPlace[i]);
        ++aNext[aBlock[i] + 1];
    }
    for (int b = 1; b < aNext.GetSize(); ++b) {
        aNext[b] += aNext[b - 1];
    }
    aAsked.SetSize(aPlace.GetSize(), -1);
    for (int i = 0; i < aPlace.GetSize(); ++i) {
        aAsked[aNext[aBlock[i]]++] = {aPlace[i].x, aPlace[i].y, i};
    }
}

namespace {

// A walk that goes on in turns with others. Its triangle is asked for, then that one's corners, then it makes
// its step: at each turn what it needs has had the others' turns to arrive.
struct Lane {
    Walk walk;
    int nIndex;
    bool bCornersAskedFor;
};

// A record may lie across two cache lines.
template <class RECORD>
void PrefetchRecord(const RECORD& record)
{
    Prefetch(&record);
    Prefetch(reinterpret_cast<const char*>(&record) + sizeof record - 1);
}

void AskForCorners(const MeshView& mesh, Lane& lane)
{
    for (const int nVt : mesh.aTri[lane.walk.nTri].m_nVertex) {
        if (IsIndexOf(mesh.aVertex, nVt)) {
            PrefetchRecord(mesh.aVertex[nVt]);
        }
    }
    lane.bCornersAskedFor = true;
}

}   // namespace

int CHeightFinder::Find(const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer) const
{
    const MeshView mesh = MeshOf(m_tin);
    aAnswer.RemoveAll();
    aAnswer.SetSize(aPlace.GetSize(), -1);
    if (mesh.aTri.IsEmpty()) {
        return 0;
    }
    CArray<Asked> aAsked;
    SortByPlace(aPlace, aAsked);
    int nNext = 0, nFound = 0;
    const auto takeNext = [&](Lane& lane) {
        const Asked& asked = aAsked[nNext++];
        lane = {StartWalk(GetStartTri(asked.x, asked.y), asked.x, asked.y), asked.nIndex, false};
        PrefetchRecord(mesh.aTri[lane.walk.nTri]);
        PrefetchRecord(aAnswer[lane.nIndex]);
    };
    Lane aLane[kLanes];
    int nLanes = 0;
    while (nLanes < kLanes && nNext < aAsked.GetSize()) {
        takeNext(aLane[nLanes++]);
    }
    for (int n = 0; nLanes > 0; n = n + 1 < nLanes ? n + 1 : 0) {
        Lane& lane = aLane[n];
        Location found;
        if (!lane.bCornersAskedFor) {
            AskForCorners(mesh, lane);
        } else if (StepWalk(mesh, lane.walk, found)) {
            PrefetchRecord(mesh.aTri[lane.walk.nTri]);
            lane.bCornersAskedFor = false;
        } else {
            aAnswer[lane.nIndex] = AnswerAt(mesh, found.nTri, lane.walk.x, lane.walk.y);
            nFound += aAnswer[lane.nIndex].m_nResult;
            if (nNext < aAsked.GetSize()) {
                takeNext(lane);
            } else {
                lane = aLane[--nLanes];
            }
        }
    }
    return nFound;
}

int FindHeights(const CTin& tin, const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer)
{
    return CHeightFinder(tin).Find(aPlace, aAnswer);
}
