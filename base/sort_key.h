#ifndef QSV_BASE_SORT_KEY_H
#define QSV_BASE_SORT_KEY_H

#include "platform/afx_array.h"
#include "platform/export.h"

/// Sorts keys in place and tells where each came from.
/// @param aKey    the keys; sorted on return
/// @param aIndex  sized to match; aIndex[k] is the position at which the k-th sorted key stood
/// @param nOrder  1: ascending; any other value: descending
/// Equal keys keep their former order; keys that are not a number come last in either direction.
/// Cost: linear in the number of keys, but n log n where most differ in their last bits only; scratch memory of
/// 24 bytes a key. Where memory runs out it throws std::bad_alloc, and the keys stand as they did.
QSV_API void QuickSortKey(CArray<double>& aKey, CArray<int>& aIndex, int nOrder);

#endif
