#ifndef QSV_TIN_INTERNAL_PLAN_INDEX_H
#define QSV_TIN_INTERNAL_PLAN_INDEX_H

#include <cstdint>

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// Finds, among the vertices entered so far, the one entered first that lies at a place within a tolerance.
// Same answers as a scan of them in the order of entry, in constant time when few lie close together.
//
// Vertices are binned into square cells of eight tolerances, so that most places have all that lies within
// the tolerance in their own cell. With a tolerance of 0 every place is a cell of its own. Places
// too far out for exact cell numbers share the outermost cells, where the search is that scan.
//
// Lives inside one operation: it refers to the vertex array, and entries must not move meanwhile.
class PlanIndex
{
public:
    PlanIndex(const CArray<CXYZ>& aVertex, double dEPS);

    // Makes room for so many entries.
    void Reserve(int nEntries);
    void Enter(int nVt);

    // The vertex entered first whose x and y differ by at most the tolerance and that fnAccept takes; -1.
    template <class ACCEPT>
    int FindFirst(double x, double y, ACCEPT fnAccept) const;
    int FindFirst(double x, double y) const;

private:
    // Cell numbers on one axis, both included.
    struct Span {
        std::int64_t nFirst, nLast;
    };
    struct Entry {
        std::uint32_t nHash;   // of the cell
        int nVt;
        int nNext;   // entry in the same bucket, a later one; -1 at the end
    };
    struct Bucket {
        int nFirst, nLast;   // entries, -1 when there is none
    };

    std::int64_t CellOf(double dCoordinate) const;
    Span CellsAround(double dCoordinate) const;
    const Bucket& BucketOf(std::uint32_t nHash) const;
    bool IsAtPlace(int nVt, double x, double y) const;
    void Append(int nEntry);
    static std::uint32_t HashOf(std::int64_t nCellX, std::int64_t nCellY);

    const CArray<CXYZ>& m_aVertex;
    const double m_dEPS;
    const double m_dCell;       // side of a cell; 0 when every place is one, or nothing coincides
    CArray<Entry> m_aEntry;     // in the order of entry
    CArray<Bucket> m_aBucket;   // a power of two of them
};

template <class ACCEPT>
int PlanIndex::FindFirst(double x, double y, ACCEPT fnAccept) const
{
    if (m_aEntry.IsEmpty() || !(m_dEPS >= 0.0)) {
        return -1;   // nothing coincides within such a tolerance, however many lie at one place
    }
    const Span columns = CellsAround(x), rows = CellsAround(y);
    int nFirst = m_aEntry.GetSize();
    for (std::int64_t nX = columns.nFirst; nX <= columns.nLast; ++nX) {
        for (std::int64_t nY = rows.nFirst; nY <= rows.nLast; ++nY) {
            const std::uint32_t nHash = HashOf(nX, nY);
            for (int e = BucketOf(nHash).nFirst; e >= 0 && e < nFirst; e = m_aEntry[e].nNext) {
                const Entry& entry = m_aEntry[e];
                if (entry.nHash == nHash && IsAtPlace(entry.nVt, x, y) && fnAccept(entry.nVt)) {
                    nFirst = e;
                }
            }
        }
    }
    return nFirst < m_aEntry.GetSize() ? m_aEntry[nFirst].nVt : -1;
}

}   // namespace qsv

#endif
