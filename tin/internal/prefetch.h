#ifndef QSV_TIN_INTERNAL_PREFETCH_H
#define QSV_TIN_INTERNAL_PREFETCH_H

#include "tin/internal/mesh.h"

namespace qsv {

// Asks the processor for the cache line at p ahead of its use; nothing where the compiler cannot say so.
inline void Prefetch([[maybe_unused]] const void* p)
{
#if defined(__GNUC__)
    __builtin_prefetch(p);
    __asm__ volatile("" : : "r"(p));   // else g++ 12 leaves out functions that do nothing but fetch
#endif
}

// A record may lie across two cache lines.
template <class RECORD>
void PrefetchRecord(const RECORD& record)
{
    Prefetch(&record);
    Prefetch(reinterpret_cast<const char*>(&record) + sizeof record - 1);
}

// The records of a triangle's vertices in an array that has one for each.
template <class RECORD>
void PrefetchCorners(const CArray<RECORD>& aRecord, const CTriangle& tri)
{
    for (const int nVt : tri.m_nVertex) {
        if (IsIndexOf(aRecord, nVt)) {
            PrefetchRecord(aRecord[nVt]);
        }
    }
}

}   // namespace qsv

#endif
