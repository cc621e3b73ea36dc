#ifndef QSV_TIN_INTERNAL_REGION_INDEX_H
#define QSV_TIN_INTERNAL_REGION_INDEX_H

#include "base/xyz.h"
#include "platform/afx_array.h"

namespace qsv {

// Tells which of many rectangles hold a place, while rectangles come and go: a grid of grids in a hash table (Eitz,
// Lixu 2007). A rectangle goes into the grid whose cells are two to four times as long as its longer side, so that it
// meets four cells at most; a place is looked for in one cell of each grid that has any.
//
//     +---------------+---------------+
//     |       +-------|---+           |
//     |       |       |   |           |
//     +-------+-------+---+-----------+
//     |       +-------|---+           |
//     |               |               |
//     +---------------+---------------+
class RegionIndex
{
public:
    // For rectangles and places in the square from its lower corner on.
    RegionIndex(const CXYZ& lower, double dSide);

    struct Region {
        double dMinX, dMinY, dMaxX, dMaxY;
    };

    // An item is known by a number of the caller's, small numbers being the best. What lies beyond the square is cut
    // off.
    void Add(int nItem, const Region& region);
    void Remove(int nItem);

    // Calls the action with each item whose cells hold the place, until it returns false; returns false then.
    template <class ACTION>
    bool ForEachNear(double x, double y, ACTION fnAction) const
    {
        for (int nLevel = 0; nLevel < kLevels; ++nLevel) {
            if (m_aOnLevel[nLevel] == 0) {
                continue;
            }
            const int nX = CellOf(x - m_lower.x, nLevel), nY = CellOf(y - m_lower.y, nLevel);
            for (int n = m_aFirst[BucketOf(nX, nY, nLevel)]; n >= 0; n = m_aEntry[n].nNext) {
                const Entry& entry = m_aEntry[n];
                if (entry.nX == nX && entry.nY == nY && entry.nLevel == nLevel && !fnAction(n / kMostCells)) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    static constexpr int kLevels = 30;   // cells are then counted by an int
    static constexpr int kMostCells = 4;
    static constexpr int kNone = -1;

    // That a rectangle meets a cell; those of an item stand side by side.
    struct Entry {
        int nX, nY;
        int nLevel;
        int nNext;   // in its bucket
    };

    int LevelFor(double dExtent) const;
    int CellOf(double dOffset, int nLevel) const;
    int BucketOf(int nX, int nY, int nLevel) const;
    void Enter(int nEntry);
    void Widen();

    const CXYZ m_lower;
    const double m_dSide;
    int m_nExponent = 0;   // the side is below 2 to this
    int m_aOnLevel[kLevels] = {};
    int m_nEntries = 0;
    CArray<int> m_aFirst;   // by bucket
    CArray<Entry> m_aEntry;
};

}   // namespace qsv

#endif
