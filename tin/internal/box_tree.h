#ifndef QSV_TIN_INTERNAL_BOX_TREE_H
#define QSV_TIN_INTERNAL_BOX_TREE_H

#include "platform/afx_array.h"

namespace qsv {

// A range in plan.
struct PlanBox {
    double dMinX, dMaxX, dMinY, dMaxY;
};

// Whether two ranges have a point in common, bounds included. One with a bound that is not a number has none.
inline bool Touches(const PlanBox& a, const PlanBox& b)
{
    return a.dMinX <= b.dMaxX && a.dMaxX >= b.dMinX && a.dMinY <= b.dMaxY && a.dMaxY >= b.dMinY;
}

// The range of both.
PlanBox Joined(const PlanBox& a, const PlanBox& b);

// Finds those of many boxes that touch a given one, however different their sizes are. Boxes that lie together
// are packed into groups of eight, these into larger groups, and so on (Leutenegger, Lopez, Edgington, "STR: a
// simple and efficient algorithm for R-tree packing", 1997).
//
// Cost: n log n to build; a search looks at about as many groups as boxes it finds, and a few on the way.
class BoxTree
{
public:
    explicit BoxTree(const CArray<PlanBox>& aBox);

    // Calls fnVisit(i) for every box i that touches box, in no particular order.
    template <class VISIT>
    void ForEachTouching(const PlanBox& box, VISIT fnVisit) const
    {
        if (!m_aItem.IsEmpty()) {
            Visit(box, m_aLevel.GetUpperBound(), 0, fnVisit);
        }
    }

    static constexpr int kGroup = 8;

    // The numbers of all boxes that can be found, group after group: those which follow each other lie close
    // together.
    const CArray<int>& InTileOrder() const { return m_aItem; }

private:
    void SortIntoTiles(const CArray<PlanBox>& aBox);
    void AddLevel();

    // Level 0 holds the boxes, level k + 1 a group of up to eight of level k in each.
    template <class VISIT>
    void Visit(const PlanBox& box, int nLevel, int nNode, VISIT& fnVisit) const
    {
        if (!Touches(m_aNode[m_aLevel[nLevel] + nNode], box)) {
            return;
        }
        if (nLevel == 0) {
            fnVisit(m_aItem[nNode]);
            return;
        }
        const int nEnd = m_aLevel[nLevel] - m_aLevel[nLevel - 1];
        for (int n = nNode * kGroup; n < (nNode + 1) * kGroup && n < nEnd; ++n) {
            Visit(box, nLevel - 1, n, fnVisit);
        }
    }

    CArray<int> m_aItem;       // numbers of the boxes, in the order of level 0
    CArray<PlanBox> m_aNode;   // level by level
    CArray<int> m_aLevel;      // where each level begins in m_aNode; the last one has a single node
};

}   // namespace qsv

#endif
