#include "tin/internal/hilbert_order.h"

#include <algorithm>
#include <array>
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

// How the curve lies in a square: it begins at the lower left and ends at the lower right corner, or this with the axes
// exchanged, or turned by half, or both.
enum Lie : unsigned { kAsIs = 0, kExchanged = 1, kTurned = 2, kBoth = kExchanged | kTurned };

//     1 - 2        The quarters of a square that the curve lies in as it is. In the first and in the last, the curve
//     |   |        lies with the axes exchanged, in the last turned as well.
//     0   3
constexpr int kBitsPerStep = 4;
constexpr unsigned kSmallPerSide = 1u << kBitsPerStep;

// For each of the 16 x 16 small squares of a square: its place along the curve, and how the curve lies in it.
struct Step {
    std::uint8_t nPlace, nLie;
};
using StepTable = std::array<Step, 4 * kSmallPerSide * kSmallPerSide>;

constexpr unsigned StepIndex(unsigned nLie, unsigned x, unsigned y)
{
    return (nLie * kSmallPerSide + x) * kSmallPerSide + y;
}

constexpr Step StepTo(unsigned nLie, unsigned x, unsigned y)
{
    unsigned nPlace = 0;
    for (unsigned nHalf = kSmallPerSide / 2; nHalf > 0; nHalf /= 2) {
        const unsigned nTurn = nLie & kTurned ? 1 : 0;
        const unsigned right = (x & nHalf ? 1 : 0) ^ nTurn, up = (y & nHalf ? 1 : 0) ^ nTurn;
        const unsigned a = nLie & kExchanged ? up : right, b = nLie & kExchanged ? right : up;
        const unsigned nQuarter = 2 * a + (a ^ b);
        nPlace = 4 * nPlace + nQuarter;
        nLie ^= nQuarter == 0 ? kExchanged : nQuarter == 3 ? kBoth : kAsIs;
    }
    return {static_cast<std::uint8_t>(nPlace), static_cast<std::uint8_t>(nLie)};
}

constexpr StepTable MakeSteps()
{
    StepTable aStep = {};
    for (unsigned nLie = kAsIs; nLie <= kBoth; ++nLie) {
        for (unsigned x = 0; x < kSmallPerSide; ++x) {
            for (unsigned y = 0; y < kSmallPerSide; ++y) {
                aStep[StepIndex(nLie, x, y)] = StepTo(nLie, x, y);
            }
        }
    }
    return aStep;
}

constexpr StepTable kSteps = MakeSteps();

// The place of a smallest quarter along the curve.
std::uint32_t PlaceAlongCurve(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t nPlace = 0, nLie = kAsIs;
    for (int nShift = kBitsPerAxis - kBitsPerStep; nShift >= 0; nShift -= kBitsPerStep) {
        const Step step =
            kSteps[StepIndex(nLie, (x >> nShift) % kSmallPerSide, (y >> nShift) % kSmallPerSide)];
        nPlace = nPlace << 2 * kBitsPerStep | step.nPlace;
        nLie = step.nLie;
    }
    return nPlace;
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
            PlaceAlongCurve(QuarterOf(v.x - square.x, dPerUnit), QuarterOf(v.y - square.y, dPerUnit));
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

Array<int> HilbertRanks(const CArray<CXYZ>& aVertex, const CXYZ& lower, double dSide)
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
