#include "platform/large_pages.h"

#ifdef __linux__
#include <sys/mman.h>

#include <cerrno>
#include <cstdint>
#endif

void PreferLargePages([[maybe_unused]] void* pBlock, [[maybe_unused]] unsigned long long nBytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t kLargePage = 2u << 20;
    if (nBytes < 2 * kLargePage) {
        return;
    }
    const std::uintptr_t nAddress = reinterpret_cast<std::uintptr_t>(pBlock);
    const std::uintptr_t nFirst = (nAddress + kLargePage - 1) / kLargePage * kLargePage;
    const std::uintptr_t nEnd = (nAddress + static_cast<std::uintptr_t>(nBytes)) / kLargePage * kLargePage;
    const int nErrorBefore = errno;
    madvise(reinterpret_cast<void*>(nFirst), nEnd - nFirst, MADV_HUGEPAGE);   // advice: it may be turned down
    errno = nErrorBefore;
#endif
}
