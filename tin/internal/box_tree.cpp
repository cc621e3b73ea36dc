#include "tin/internal/box_tree.h"

#include <algorithm>
#include <cmath>

#include "base/sort_key.h"

namespace qsv {

namespace {

bool IsAnywhere(const PlanBox& box)
{
    return box.dMinX <= box.dMaxX && box.dMinY <= box.dMaxY;
}

// Sorts the entries nFrom .. nEnd-1 of aItem by the key of each.
template <class KEY>
void SortBy(CArray<int>& aItem, int nFrom, int nEnd, KEY fnKey)
{
    CArray<double> aKey;
    CArray<int> aOrder, aSorted;
    aKey.SetSize(nEnd - nFrom, -1);
    aSorted.SetSize(nEnd - nFrom, -1);
    for (int i = nFrom; i < nEnd; ++i) {
        aKey[i - nFrom] = fnKey(aItem[i]);
    }
    QuickSortKey(aKey, aOrder, 1);
    for (int i = 0; i < aOrder.GetSize(); ++i) {
        aSorted[i] = aItem[nFrom + aOrder[i]];
    }
    for (int i = 0; i < aSorted.GetSize(); ++i) {
        aItem[nFrom + i] = aSorted[i];
    }
}

}   // namespace

PlanBox Joined(const PlanBox& a, const PlanBox& b)
{
    return {std::min(a.dMinX, b.dMinX), std::max(a.dMaxX, b.dMaxX), std::min(a.dMinY, b.dMinY),
            std::max(a.dMaxY, b.dMaxY)};
}

BoxTree::BoxTree(const CArray<PlanBox>& aBox)
{
    for (int i = 0; i < aBox.GetSize(); ++i) {
        if (IsAnywhere(aBox[i])) {
            m_aItem.Add(i);
        }
    }
    if (m_aItem.IsEmpty()) {
        return;
    }
    SortIntoTiles(aBox);
    m_aLevel.Add(0);
    for (int i = 0; i < m_aItem.GetSize(); ++i) {
        m_aNode.Add(aBox[m_aItem[i]]);
    }
    while (m_aNode.GetSize() - m_aLevel[m_aLevel.GetUpperBound()] > 1) {
        AddLevel();
    }
}

// Upright strips of about as many groups as there are strips, and from bottom to top within each.
void BoxTree::SortIntoTiles(const CArray<PlanBox>& aBox)
{
    const int n = m_aItem.GetSize();
    SortBy(m_aItem, 0, n, [&](int i) { return 0.5 * aBox[i].dMinX + 0.5 * aBox[i].dMaxX; });
    const int nStrip = kGroup * static_cast<int>(std::ceil(std::sqrt(static_cast<double>(n) / kGroup)));
    for (int nFrom = 0; nFrom < n; nFrom += nStrip) {
        SortBy(m_aItem, nFrom, std::min(n, nFrom + nStrip),
               [&](int i) { return 0.5 * aBox[i].dMinY + 0.5 * aBox[i].dMaxY; });
    }
}

void BoxTree::AddLevel()
{
    const int nBegin = m_aLevel[m_aLevel.GetUpperBound()], nEnd = m_aNode.GetSize();
    m_aLevel.Add(nEnd);
    for (int nFrom = nBegin; nFrom < nEnd; nFrom += kGroup) {
        PlanBox group = m_aNode[nFrom];
        for (int i = nFrom + 1; i < nEnd && i < nFrom + kGroup; ++i) {
            group = Joined(group, m_aNode[i]);
        }
        m_aNode.Add(group);
    }
}

}   // namespace qsv
