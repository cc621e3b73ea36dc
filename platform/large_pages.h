#ifndef QSV_PLATFORM_LARGE_PAGES_H
#define QSV_PLATFORM_LARGE_PAGES_H

#include "platform/export.h"

/// Asks the system for large pages behind a block of memory that was just allocated, where it has them (Linux:
/// transparent huge pages). The arrays of a large TIN are met in no order, and with small pages a processor spends
/// more time on finding the pages than on reading them. Blocks below 4 MiB are left alone. Nothing depends on it.
QSV_API void PreferLargePages(void* pBlock, unsigned long long nBytes);

#endif
