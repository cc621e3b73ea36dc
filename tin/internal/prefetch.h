#ifndef QSV_TIN_INTERNAL_PREFETCH_H
#define QSV_TIN_INTERNAL_PREFETCH_H

namespace qsv {

// Asks the processor for the cache line at p ahead of its use; nothing where the compiler cannot say so.
inline void Prefetch([[maybe_unused]] const void* p)
{
#if defined(__GNUC__)
    __builtin_prefetch(p);
#endif
}

}   // namespace qsv

#endif
