#ifndef QSV_BASE_KEY_ORDER_H
#define QSV_BASE_KEY_ORDER_H

#include "platform/afx_array.h"

namespace qsv {

// The order into which QuickSortKey (base/sort_key.h) brings the keys, which stay where they are: aIndex[k] is the
// position of the k-th. Scratch memory of 16 bytes a key.
void OrderOfKeys(const CArray<double>& aKey, CArray<int>& aIndex, int nOrder);

}   // namespace qsv

#endif
