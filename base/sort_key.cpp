#include "base/sort_key.h"

#include <algorithm>
#include <cmath>

namespace {

struct Entry {
    double dKey;
    int nFrom;
};

// Positions break ties, so that an unstable sort, which needs no buffer, gives the stable order.
bool StandsBefore(const Entry& a, const Entry& b, bool bAscending)
{
    const bool bNanA = std::isnan(a.dKey), bNanB = std::isnan(b.dKey);
    if (bNanA != bNanB) {
        return bNanB;
    }
    if (!bNanA && a.dKey != b.dKey) {
        return bAscending ? a.dKey < b.dKey : b.dKey < a.dKey;
    }
    return a.nFrom < b.nFrom;
}

}   // namespace

void QuickSortKey(CArray<double>& aKey, CArray<int>& aIndex, int nOrder)
{
    const int n = aKey.GetSize();
    CArray<Entry> aEntry;
    aEntry.SetSize(n);
    for (int i = 0; i < n; ++i) {
        aEntry[i] = {aKey[i], i};
    }
    const bool bAscending = nOrder == 1;
    std::sort(aEntry.GetData(), aEntry.GetData() + n,
              [bAscending](const Entry& a, const Entry& b) { return StandsBefore(a, b, bAscending); });
    aIndex.SetSize(n);
    for (int i = 0; i < n; ++i) {
        aKey[i] = aEntry[i].dKey;
        aIndex[i] = aEntry[i].nFrom;
    }
}
