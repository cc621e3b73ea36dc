#ifndef QSV_TIN_INTERNAL_RECENT_TRIANGLES_H
#define QSV_TIN_INTERNAL_RECENT_TRIANGLES_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// Where to start a search from while points are inserted: a grid over the plan range that remembers in each
// cell the triangle of the point inserted there last. It gets finer as points come in, so that the walk from
// there stays a few triangles long. An answer is a hint: edge swaps may have moved the triangle a little.
class RecentTriangles
{
public:
    // All points to come lie in the range.
    RecentTriangles(const CXYZ& lower, const CXYZ& upper, int nFirstTri);

    int Near(const CXYZ& p) const { return m_aTri[CellOf(p)]; }
    void Remember(const CXYZ& p, int nTri);

private:
    int ColumnOf(double dOffset, double dExtent) const;
    int CellOf(const CXYZ& p) const;
    void Refine();

    const CXYZ m_lower;
    const double m_dWidth, m_dHeight;
    int m_nCells = 1;   // along each side
    int m_nRemembered = 0;
    CArray<int> m_aTri;
};

}   // namespace qsv

#endif
