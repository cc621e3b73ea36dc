#ifndef QSV_TIN_INTERNAL_PLAN_INDEX_H
#define QSV_TIN_INTERNAL_PLAN_INDEX_H

#include <cstdint>

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// Finds, among the vertices entered so far, the one entered first that lies at a place within a tolerance.
// Same answers as a scan of them in the order of entry, in constant time when few lie close together.
//
// Vertices are binned into square cells of twice the tolerance, so that two places within it lie in the
// same or in neighbouring cells. With a tolerance of 0 or less every place is a cell of its own. Where cell
// numbers would be too large to be exact, all entries lie in one cell and the search is that scan.
//
// Lives inside one operation: it refers to the vertex array, and entries must not move meanwhile.
class PlanIndex
{
public:
    PlanIndex(const CArray<CXYZ>& aVertex, double dEPS);

    void Enter(int nVt);

    // The vertex entered first whose x and y differ by at most the tolerance and that fnAccept takes; -1.
    template <class ACCEPT>
    int FindFirst(double x, double y, ACCEPT fnAccept) const;
    int FindFirst(double x, double y) const;

private:
    enum class Binning { Grid, ByPlace, OneCell };
    struct Cell {
        std::int64_t x, y;
    };
    struct Entry {
        Cell cell;
        int nVt;
        int nNext;   // entry in the same bucket, -1 at the end
    };

    static Binning BinningFor(const CArray<CXYZ>& aVertex, double dEPS);
    Cell CellOf(double x, double y) const;
    int BucketOf(const Cell& cell) const;
    bool IsAtPlace(int nVt, double x, double y) const;
    void Rebucket();

    const CArray<CXYZ>& m_aVertex;
    const double m_dEPS;
    const Binning m_eBinning;
    CArray<Entry> m_aEntry;   // in the order of entry
    CArray<int> m_aBucket;    // first entry of each bucket, -1; a power of two of them
};

template <class ACCEPT>
int PlanIndex::FindFirst(double x, double y, ACCEPT fnAccept) const
{
    if (m_aEntry.IsEmpty()) {
        return -1;
    }
    const Cell centre = CellOf(x, y);
    const int nReach = m_eBinning == Binning::Grid ? 1 : 0;
    int nFirst = m_aEntry.GetSize();
    for (std::int64_t dx = -nReach; dx <= nReach; ++dx) {
        for (std::int64_t dy = -nReach; dy <= nReach; ++dy) {
            const Cell cell = {centre.x + dx, centre.y + dy};
            for (int e = m_aBucket[BucketOf(cell)]; e >= 0; e = m_aEntry[e].nNext) {
                const Entry& entry = m_aEntry[e];
                if (e < nFirst && entry.cell.x == cell.x && entry.cell.y == cell.y &&
                    IsAtPlace(entry.nVt, x, y) && fnAccept(entry.nVt)) {
                    nFirst = e;
                }
            }
        }
    }
    return nFirst < m_aEntry.GetSize() ? m_aEntry[nFirst].nVt : -1;
}

}   // namespace qsv

#endif
