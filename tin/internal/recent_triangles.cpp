#include "tin/internal/recent_triangles.h"

namespace qsv {

namespace {

// Points a cell before the grid is refined. Fewer cost memory, more cost steps.
constexpr int kPointsPerCell = 2;
constexpr int kMostCells = 4096;   // along a side

}   // namespace

RecentTriangles::RecentTriangles(const CXYZ& lower, const CXYZ& upper, int nFirstTri)
    : m_lower(lower), m_dWidth(upper.x - lower.x), m_dHeight(upper.y - lower.y)
{
    m_aTri.Add(nFirstTri);
}

void RecentTriangles::Remember(const CXYZ& p, int nTri)
{
    m_aTri[CellOf(p)] = nTri;
    if (++m_nRemembered > kPointsPerCell * m_aTri.GetSize() && m_nCells < kMostCells) {
        Refine();
    }
}

// Clamped, so that a coordinate that is not a number has a cell too.
int RecentTriangles::ColumnOf(double dOffset, double dExtent) const
{
    const double dColumn = dOffset / dExtent * m_nCells;
    if (!(dColumn > 0.0)) {
        return 0;
    }
    return dColumn < m_nCells ? static_cast<int>(dColumn) : m_nCells - 1;
}

int RecentTriangles::CellOf(const CXYZ& p) const
{
    return ColumnOf(p.y - m_lower.y, m_dHeight) * m_nCells + ColumnOf(p.x - m_lower.x, m_dWidth);
}

// Every cell becomes four, which begin with what it remembered.
void RecentTriangles::Refine()
{
    const int nFine = 2 * m_nCells;
    CArray<int> aFine;
    aFine.SetSize(nFine * nFine, -1);
    for (int r = 0; r < nFine; ++r) {
        for (int c = 0; c < nFine; ++c) {
            aFine[r * nFine + c] = m_aTri[(r / 2) * m_nCells + c / 2];
        }
    }
    MoveInto(m_aTri, aFine);
    m_nCells = nFine;
}

}   // namespace qsv
