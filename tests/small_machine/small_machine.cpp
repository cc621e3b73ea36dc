// What a small machine needs for 100,000 points: triangulates them with a stack of 256 KiB and 64 MiB of memory
// beyond the points, and tells how much of both was used. Fails when that is not enough.
#include <malloc.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include <qsv_3dprocess.h>

namespace {

constexpr int kPoints = 100000;
constexpr std::size_t kMemory = std::size_t{64} << 20;
constexpr std::size_t kStack = std::size_t{256} << 10;

// Memory from operator new, from which the library takes all of it: in use now, and the most there ever was.
std::size_t nInUse = 0, nMost = 0;
constexpr std::size_t kHead = 16;   // in front of a block stands its size

}   // namespace

void* operator new(std::size_t nBytes)
{
    auto* const pBlock = static_cast<unsigned char*>(std::malloc(nBytes + kHead));
    if (!pBlock) throw std::bad_alloc();
    std::memcpy(pBlock, &nBytes, sizeof nBytes);
    nInUse += nBytes;
    nMost = std::max(nMost, nInUse);
    return pBlock + kHead;
}

void operator delete(void* p) noexcept
{
    if (!p) return;
    unsigned char* const pBlock = static_cast<unsigned char*>(p) - kHead;
    std::size_t nBytes = 0;
    std::memcpy(&nBytes, pBlock, sizeof nBytes);
    nInUse -= nBytes;
    std::free(pBlock);
}

void operator delete(void* p, std::size_t) noexcept
{
    operator delete(p);
}

namespace {

struct Case {
    const char* szName;
    void (*feed)(CTin& tin);
    CTin tin;
    int nResult;
};

double Random()
{
    static std::uint64_t n = 1;
    n = n * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(n >> 40) / 1024.0;
}

void Scattered(CTin& tin)
{
    for (int i = 0; i < kPoints; ++i) {
        const double x = Random(), y = Random();
        tin.AddPoint2(x, y, Random());
    }
}

// Ties everywhere: any two triangles of a square may be swapped.
void Grid(CTin& tin)
{
    for (int i = 0; i < kPoints; ++i) {
        tin.AddPoint2(i % 400, i / 400, i % 7);
    }
}

// From one end of a narrow strip to the other: fans of thin triangles, long chains of swaps.
void Strip(CTin& tin)
{
    for (int i = 0; i < kPoints; ++i) {
        tin.AddPoint2(i * 0.5, Random() / 16384.0, 0.0);
    }
}

// Lines across the surface, through its points.
void WithBreaklines(CTin& tin)
{
    Scattered(tin);
    for (int nLine = 0; nLine < 50; ++nLine) {
        CPolyline line;
        for (int i = 0; i < 100; ++i) {
            CVertex vertex;
            vertex.x = 160.0 * i + 3.0;
            vertex.y = 320.0 * nLine + Random() / 200.0;
            line.AddVertex(vertex);
        }
        tin.AddBreakLine2(line);
    }
}

// Lets this process take no more address space than it has, and so much more.
void LimitMemory(std::size_t nMore)
{
    unsigned long nPages = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (!file || std::fscanf(file, "%lu", &nPages) != 1) std::abort();
    std::fclose(file);
    const rlim_t nLimit = nPages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + nMore;
    const rlimit limit = {nLimit, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
}

void* Build(void* p)
{
    Case& c = *static_cast<Case*>(p);
    try {
        c.nResult = c.tin.CreateTin(0.05);
    } catch (const std::bad_alloc&) {
        c.nResult = -1;
    }
    return nullptr;
}

// Runs Build on a stack of its own between two pages that nothing may touch.
// @return bytes of it that were ever used
std::size_t BuildOnSmallStack(Case& c)
{
    constexpr unsigned char kUntouched = 0xA5;
    const std::size_t nPage = 65536;
    auto* const pMemory = static_cast<unsigned char*>(
        mmap(nullptr, kStack + 2 * nPage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (pMemory == MAP_FAILED) std::abort();
    unsigned char* const pStack = pMemory + nPage;
    mprotect(pMemory, nPage, PROT_NONE);
    mprotect(pStack + kStack, nPage, PROT_NONE);
    std::memset(pStack, kUntouched, kStack);
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, pStack, kStack);
    if (pthread_create(&thread, &attributes, Build, &c) != 0) std::abort();
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const unsigned char* const pDeepest =
        std::find_if(pStack, pStack + kStack, [](unsigned char n) { return n != kUntouched; });
    const auto nUsed = static_cast<std::size_t>(pStack + kStack - pDeepest);
    munmap(pMemory, kStack + 2 * nPage);
    return nUsed;
}

bool Run(Case& c)
{
    c.tin.BeginAddPoint(kPoints);
    c.feed(c.tin);
    c.tin.EndAddPoint();
    const int nFed = c.tin.GetPointSize();
    const std::size_t nBefore = nMost = nInUse;
    LimitMemory(kMemory + kStack + 131072);
    const std::size_t nStack = BuildOnSmallStack(c);
    const rlimit unlimited = {RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &unlimited);
    const std::size_t nHeap = nMost - nBefore;
    std::printf("%s: result %d, %d points, %d triangles, %.1f MiB (%.0f bytes a point), %zu bytes of stack\n",
                c.szName, c.nResult, nFed, c.tin.GetTriSize(), static_cast<double>(nHeap) / 1048576.0,
                static_cast<double>(nHeap) / nFed, nStack);
    return c.nResult == 1 && nHeap <= kMemory;
}

}   // namespace

int main()
{
    mallopt(M_ARENA_MAX, 1);   // a second arena would reserve address space that nothing uses
    bool bAll = true;
    Case aCase[] = {{"scattered", Scattered, {}, 0},
                    {"grid", Grid, {}, 0},
                    {"strip", Strip, {}, 0},
                    {"with breaklines", WithBreaklines, {}, 0}};
    for (Case& c : aCase) {
        bAll = Run(c) && bAll;
        c.tin.InitData();
    }
    return bAll ? 0 : 1;
}
