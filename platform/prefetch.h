#ifndef QSV_PLATFORM_PREFETCH_H
#define QSV_PLATFORM_PREFETCH_H

namespace qsv {

// Asks for the memory of a record that will be read soon, so that it is on its way while something else is
// computed. Only a hint: nothing is read, and a compiler that knows no such thing does nothing.
template <class RECORD>
inline void Prefetch(const RECORD* pRecord)
{
#if defined(__GNUC__)
    const char* const pFirst = reinterpret_cast<const char*>(pRecord);
    __builtin_prefetch(pFirst);
    __builtin_prefetch(pFirst + sizeof(RECORD) - 1);   // the record may lie across two cache lines
#else
    static_cast<void>(pRecord);
#endif
}

}   // namespace qsv

#endif
