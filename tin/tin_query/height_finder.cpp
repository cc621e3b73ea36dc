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

// Cells along the side of a block. The cells of a block stand side by side, and positions of one block are
// answered together: their triangles and vertices stay in the processor's cache meanwhile.
constexpr int kBlock = 8;
constexpr int kBlockCells = kBlock * kBlock;

// With fewer, starts are a little nearer, and making the finder takes more time than that saves.
constexpr int kTrianglesPerCell = 2;

// How many triangles are looked at to choose the cells.
constexpr int kSamples = 2048;

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

// Which cell is where. Cells are numbered block by block, in a block row by row.
struct CHeightFinder::Grid {
    explicit Grid(const CHeightFinder& finder)
        : dMinX(finder.m_dMinX), dMinY(finder.m_dMinY), dColumnsPerUnit(finder.m_dColumnsPerUnit),
          dRowsPerUnit(finder.m_dRowsPerUnit), nBlocksAcross(finder.m_nBlocksAcross),
          nColumns(finder.m_nBlocksAcross * kBlock), nRows(finder.m_nBlocksUp * kBlock)
    {
    }

    double ColumnAt(double x) const { return (x - dMinX) * dColumnsPerUnit; }
    double RowAt(double y) const { return (y - dMinY) * dRowsPerUnit; }
    int CellOf(int nColumn, int nRow) const
    {
        const auto row = static_cast<unsigned>(nRow), column = static_cast<unsigned>(nColumn);
        const unsigned block = row / kBlock * static_cast<unsigned>(nBlocksAcross) + column / kBlock;
        return static_cast<int>(block * kBlockCells + row % kBlock * kBlock + column % kBlock);
    }
    int CellAt(double x, double y) const
    {
        return CellOf(Clamped(ColumnAt(x), nColumns), Clamped(RowAt(y), nRows));
    }

    const double dMinX, dMinY, dColumnsPerUnit, dRowsPerUnit;
    const int nBlocksAcross, nColumns, nRows;
};

CHeightFinder::CHeightFinder(const CTin& tin) : m_tin(tin)
{
    ChooseCells();
    EnterTriangles();
    FillEmptyCells();
}

// About square cells over the range of some of the triangles; what lies outside counts to
// the outer cells.
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
        return;   // one block, of which one cell serves
    }
    const int nBlocks = 1 + nTriangles / (kTrianglesPerCell * kBlockCells);
    m_nBlocksAcross = 1 + Clamped(std::sqrt(nBlocks * (dWidth / dHeight)), nBlocks);
    m_nBlocksUp = 1 + nBlocks / m_nBlocksAcross;
    m_dMinX = lower.x;
    m_dMinY = lower.y;
    m_dColumnsPerUnit = m_nBlocksAcross * kBlock / dWidth;
    m_dRowsPerUnit = m_nBlocksUp * kBlock / dHeight;
}

namespace {

// The middle of three places is in the cell that its whole part names.
struct PlaceInGrid {
    float dColumn, dRow;
};

float ClampedPlace(double d, int nCount)
{
    return !(d > 0.0) ? 0.0f : static_cast<float>(d < nCount ? d : nCount);
}

}   // namespace

// Every cell remembers the last triangle whose middle lies in it. The places of the vertices in the grid stand in
// an array of their own meanwhile: triangles name them in no order, and a fifth of the memory is nearer at hand.
void CHeightFinder::EnterTriangles()
{
    const Grid grid(*this);
    const CArray<CXYZ>& aVertex = m_tin.m_aVertex;
    const int nVertices = aVertex.GetSize();
    const auto placeOf = [&grid](const CXYZ& p) {
        return PlaceInGrid{ClampedPlace(grid.ColumnAt(p.x), grid.nColumns),
                           ClampedPlace(grid.RowAt(p.y), grid.nRows)};
    };
    CArray<PlaceInGrid> aPlace;
    aPlace.SetSize(nVertices + 1, -1);
    for (int v = 0; v < nVertices; ++v) {
        aPlace[v] = placeOf(aVertex[v]);
    }
    aPlace[nVertices] = placeOf(VertexAt(aVertex, -1));   // for all that are missing
    m_aStart.SetSize(m_nBlocksAcross * m_nBlocksUp * kBlockCells, -1);
    std::fill_n(m_aStart.GetData(), m_aStart.GetSize(), -1);
    for (int t = 0; t < m_tin.m_aTri.GetSize(); ++t) {
        float dColumn = 0.0f, dRow = 0.0f;
        for (const int nVt : m_tin.m_aTri[t].m_nVertex) {
            const PlaceInGrid& place = aPlace[IsIndexOf(aVertex, nVt) ? nVt : nVertices];
            dColumn += place.dColumn;
            dRow += place.dRow;
        }
        constexpr float kThird = 1.0f / 3.0f;
        m_aStart[grid.CellOf(std::min(static_cast<int>(dColumn * kThird), grid.nColumns - 1),
                             std::min(static_cast<int>(dRow * kThird), grid.nRows - 1))] = t;
    }
}

namespace {

// Fills the gaps of a grid that stands row by row, from the entry before in the row or, for its first, in the row
// before; the entries ahead of the first filled one from that. fnTake(to, from) fills an entry that is a gap from
// one that is none, and does nothing else. Returns whether there is no gap left, that is, not only gaps.
template <class IS_GAP, class TAKE>
bool FillGaps(int nColumns, int nCount, IS_GAP fnIsGap, TAKE fnTake)
{
    const auto take = [&](int nTo, int nFrom) {
        if (fnIsGap(nTo) && !fnIsGap(nFrom)) {
            fnTake(nTo, nFrom);
        }
    };
    for (int i = 1; i < nCount; ++i) {
        if (i % nColumns == 0) {
            take(i, i - nColumns);
        }
        take(i, i - 1);
    }
    for (int i = nCount - 1; i > 0; --i) {
        take(i - 1, i);
    }
    return !fnIsGap(0);
}

}   // namespace

// In each block, and then whole blocks without any start, which are few where points are spread evenly.
void CHeightFinder::FillEmptyCells()
{
    const int nBlocks = m_nBlocksAcross * m_nBlocksUp;
    CArray<char> aFilled;
    aFilled.SetSize(nBlocks, -1);
    for (int b = 0; b < nBlocks; ++b) {
        int* const pStart = m_aStart.GetData() + kBlockCells * b;
        const bool bFilled = FillGaps(
            kBlock, kBlockCells, [&](int c) { return pStart[c] < 0; },
            [&](int nTo, int nFrom) { pStart[nTo] = pStart[nFrom]; });
        aFilled[b] = bFilled ? 1 : 0;
    }
    FillGaps(
        m_nBlocksAcross, nBlocks, [&](int b) { return aFilled[b] == 0; },
        [&](int nTo, int nFrom) {
            int* const pStart = m_aStart.GetData();
            std::copy_n(pStart + kBlockCells * nFrom, kBlockCells, pStart + kBlockCells * nTo);
            aFilled[nTo] = 1;
        });
}

int CHeightFinder::GetStartTri(double x, double y) const
{
    return m_aStart[Grid(*this).CellAt(x, y)];
}

CHeightAnswer CHeightFinder::Find(double x, double y) const
{
    const MeshView mesh = MeshOf(m_tin);
    return AnswerAt(mesh, WalkToPoint(mesh, GetStartTri(x, y), x, y).nTri, x, y);
}

// One position, its cell, and its place in the caller's list.
struct CHeightFinder::Asked {
    double x, y;
    int nCell;
    int nIndex;
};

// Positions one after the other: block by block, or as they come where those beside each other mostly share a block,
// as along the lines of a scan.
class CHeightFinder::Queue
{
public:
    Queue(const CHeightFinder& finder, const CArray<CXYZ>& aPlace) : m_grid(finder), m_aPlace(aPlace)
    {
        if (!AreInOrder()) {
            ListByBlock(finder.m_nBlocksAcross * finder.m_nBlocksUp);
        }
    }

    bool IsEmpty() const { return m_nNext == m_aPlace.GetSize(); }
    Asked Take()
    {
        const int n = m_nNext++;
        if (!m_aAsked.IsEmpty()) {
            return m_aAsked[n];
        }
        const CXYZ& place = m_aPlace[n];
        return {place.x, place.y, m_grid.CellAt(place.x, place.y), n};
    }

private:
    int BlockOf(int n) const { return m_grid.CellAt(m_aPlace[n].x, m_aPlace[n].y) / kBlockCells; }

    bool AreInOrder() const
    {
        int nChanges = 0, nLooked = 0;
        for (int i = 1; i < m_aPlace.GetSize(); i += 1 + m_aPlace.GetSize() / kSamples, ++nLooked) {
            nChanges += BlockOf(i) != BlockOf(i - 1) ? 1 : 0;
        }
        return 3 * nChanges <= nLooked;
    }

    // Sorts by counting, in linear time.
    void ListByBlock(int nBlocks)
    {
        const int nPlaces = m_aPlace.GetSize();
        CArray<int> aCell, aNext;   // cell of each position; where the next one of each block goes
        aCell.SetSize(nPlaces, -1);
        aNext.SetSize(nBlocks + 1, -1);
        for (int i = 0; i < nPlaces; ++i) {
            aCell[i] = m_grid.CellAt(m_aPlace[i].x, m_aPlace[i].y);
            ++aNext[aCell[i] / kBlockCells + 1];
        }
        for (int b = 1; b < aNext.GetSize(); ++b) {
            aNext[b] += aNext[b - 1];
        }
        m_aAsked.SetSize(nPlaces, -1);
        for (int i = 0; i < nPlaces; ++i) {
            m_aAsked[aNext[aCell[i] / kBlockCells]++] = {m_aPlace[i].x, m_aPlace[i].y, aCell[i], i};
        }
    }

    const Grid m_grid;
    const CArray<CXYZ>& m_aPlace;
    CArray<Asked> m_aAsked;   // none when the positions are taken as they come
    int m_nNext = 0;
};

namespace {

// A walk that goes on in turns with others: its triangle was asked for at its last turn.
struct Lane {
    Walk walk;
    int nIndex;
};

void AskForCorners(const MeshView& mesh, const Lane (&aLane)[kLanes], int nLanes)
{
    for (int n = 0; n < nLanes; ++n) {
        PrefetchCorners(mesh.aVertex, mesh.aTri[aLane[n].walk.nTri]);
    }
}

// Makes a step and asks for the next triangle. Returns false where the walk ends: then its answer is there.
bool TakeTurn(const MeshView& mesh, Lane& lane, CArray<CHeightAnswer>& aAnswer)
{
    Location found;
    if (StepWalk(mesh, lane.walk, found)) {
        PrefetchRecord(mesh.aTri[lane.walk.nTri]);
        return true;
    }
    aAnswer[lane.nIndex] = AnswerAt(mesh, found.nTri, lane.walk.x, lane.walk.y);
    return false;
}

}   // namespace

// In rounds: every lane asks for the corners of the triangle where it stands, then every lane takes its turn, or the
// next position when it has come to its end. The memory has the turns of all others to arrive.
int CHeightFinder::Find(const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer) const
{
    const MeshView mesh = MeshOf(m_tin);
    aAnswer.RemoveAll();
    aAnswer.SetSize(aPlace.GetSize(), -1);
    if (mesh.aTri.IsEmpty()) {
        return 0;
    }
    Queue queue(*this, aPlace);
    const auto takeNext = [&](Lane& lane) {
        const Asked asked = queue.Take();
        lane = {StartWalk(m_aStart[asked.nCell], asked.x, asked.y), asked.nIndex};
        PrefetchRecord(mesh.aTri[lane.walk.nTri]);
        PrefetchRecord(aAnswer[lane.nIndex]);
    };
    Lane aLane[kLanes];
    int nLanes = 0, nFound = 0;
    while (nLanes < kLanes && !queue.IsEmpty()) {
        takeNext(aLane[nLanes++]);
    }
    while (nLanes > 0) {
        AskForCorners(mesh, aLane, nLanes);
        for (int n = 0; n < nLanes; ++n) {
            if (TakeTurn(mesh, aLane[n], aAnswer)) {
                continue;
            }
            nFound += aAnswer[aLane[n].nIndex].m_nResult;
            if (!queue.IsEmpty()) {
                takeNext(aLane[n]);
            } else {
                aLane[n--] = aLane[--nLanes];   // the last lane takes this place, and its turn
            }
        }
    }
    return nFound;
}

int FindHeights(const CTin& tin, const CArray<CXYZ>& aPlace, CArray<CHeightAnswer>& aAnswer)
{
    return CHeightFinder(tin).Find(aPlace, aAnswer);
}
