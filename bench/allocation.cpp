#include "bench/allocation.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t g_nHeld = 0, g_nPeak = 0;   // these programs have one thread

// In front of every block: its size, in as many bytes as keep the block aligned for everything.
constexpr std::size_t kHeader = alignof(std::max_align_t);
static_assert(kHeader >= sizeof(std::size_t));

}   // namespace

void* operator new(std::size_t nSize)
{
    void* const pBlock = std::malloc(nSize + kHeader);
    if (pBlock == nullptr) throw std::bad_alloc();
    *static_cast<std::size_t*>(pBlock) = nSize;
    g_nHeld += nSize;
    g_nPeak = std::max(g_nPeak, g_nHeld);
    return static_cast<char*>(pBlock) + kHeader;
}

void operator delete(void* pMemory) noexcept
{
    if (pMemory == nullptr) return;
    void* const pBlock = static_cast<char*>(pMemory) - kHeader;
    g_nHeld -= *static_cast<std::size_t*>(pBlock);
    std::free(pBlock);
}

void operator delete(void* pMemory, std::size_t) noexcept
{
    operator delete(pMemory);
}

namespace bench {

std::size_t HeldBytes()
{
    return g_nHeld;
}

std::size_t PeakBytes()
{
    return g_nPeak;
}

void ResetPeak()
{
    g_nPeak = g_nHeld;
}

}   // namespace bench
