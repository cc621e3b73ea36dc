#include "tin/internal/morton_order.h"

#include <algorithm>
#include <cstdint>

namespace qsv {

namespace {

constexpr int kBitsPerAxis = 16;
constexpr int kRadixBits = 11;
// Vertices in one smallest quarter that are told apart by a closer look, as long as there is room for one.
constexpr int kFewTogether = 16;
constexpr int kCloserLooks = 2;

struct Coded {
    std::uint32_t nCode;
    int nVt;
};

// Moves the lower 16 bits to the even places.
std::uint32_t Spread(std::uint32_t n)
{
    n = (n | (n << 8)) & 0x00FF00FFu;
    n = (n | (n << 4)) & 0x0F0F0F0Fu;
    n = (n | (n << 2)) & 0x33333333u;
    return (n | (n << 1)) & 0x55555555u;
}

std::uint32_t QuarterOf(double dOffset, double dQuartersPerUnit)
{
    constexpr double dMost = (1 << kBitsPerAxis) - 1;
    const double d = dOffset * dQuartersPerUnit;
    return d > 0.0 ? static_cast<std::uint32_t>(d < dMost ? d : dMost) : 0u;
}

// Stable, three rounds of 11 bits, for many; the second array is room to work in.
void SortByCode(Coded* pFirst, Coded* pRoom, int n)
{
    for (int nShift = 0; nShift < 32; nShift += kRadixBits) {
        int aStart[(1 << kRadixBits) + 1] = {};
        const std::uint32_t nMask = (1u << kRadixBits) - 1;
        for (int i = 0; i < n; ++i) {
            ++aStart[((pFirst[i].nCode >> nShift) & nMask) + 1];
        }
        for (std::uint32_t c = 0; c < nMask; ++c) {
            aStart[c + 1] += aStart[c];
        }
        for (int i = 0; i < n; ++i) {
            pRoom[aStart[(pFirst[i].nCode >> nShift) & nMask]++] = pFirst[i];
        }
        std::swap(pFirst, pRoom);
    }
    std::copy(pFirst, pFirst + n, pRoom);   // an odd number of rounds ends in the other array
}

struct Square {
    double x, y, dSide;
};

void SortAlongCurve(const CArray<CXYZ>& aVertex, Coded* pFirst, Coded* pRoom, int n, const Square& square,
                    int nLooks)
{
    const double dPerUnit = (1 << kBitsPerAxis) / square.dSide;
    for (int i = 0; i < n; ++i) {
        const CXYZ& v = aVertex[pFirst[i].nVt];
        pFirst[i].nCode =
            Spread(QuarterOf(v.x - square.x, dPerUnit)) | (Spread(QuarterOf(v.y - square.y, dPerUnit)) << 1);
    }
    if (n > 1000) {
        SortByCode(pFirst, pRoom, n);
    } else {
        std::sort(pFirst, pFirst + n, [](const Coded& a, const Coded& b) {
            return a.nCode != b.nCode ? a.nCode < b.nCode : a.nVt < b.nVt;
        });
    }
    for (int i = 0, nEnd = 0; i < n && nLooks > 0; i = nEnd) {
        for (nEnd = i + 1; nEnd < n && pFirst[nEnd].nCode == pFirst[i].nCode; ++nEnd) {}
        if (nEnd - i > kFewTogether) {
            const CXYZ& v = aVertex[pFirst[i].nVt];
            const Square quarter = {square.x + QuarterOf(v.x - square.x, dPerUnit) / dPerUnit,
                                    square.y + QuarterOf(v.y - square.y, dPerUnit) / dPerUnit,
                                    1.0 / dPerUnit};
            SortAlongCurve(aVertex, pFirst + i, pRoom, nEnd - i, quarter, nLooks - 1);
        }
    }
}

}   // namespace

Array<int> MortonRanks(const CArray<CXYZ>& aVertex, const CXYZ& lower, double dSide)
{
    const int n = aVertex.GetSize();
    CArray<Coded> aCoded, aRoom;
    aCoded.SetSize(n, -1);
    aRoom.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        aCoded[i].nVt = i;
    }
    SortAlongCurve(aVertex, aCoded.GetData(), aRoom.GetData(), n, {lower.x, lower.y, dSide}, kCloserLooks);
    Array<int> aRank;
    aRank.SetSize(n, -1);
    for (int i = 0; i < n; ++i) {
        aRank[aCoded[i].nVt] = i;
    }
    return aRank;
}

}   // namespace qsv
