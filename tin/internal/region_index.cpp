#include "tin/internal/region_index.h"

#include <cmath>
#include <cstdint>

namespace qsv {

namespace {

constexpr int kFewestBuckets = 64;

double Clamp(double d, double dLeast, double dMost)
{
    return d < dLeast ? dLeast : d > dMost ? dMost : d;
}

}   // namespace

RegionIndex::RegionIndex(const CXYZ& lower, double dSide) : m_lower(lower), m_dSide(dSide)
{
    std::frexp(dSide, &m_nExponent);
}

// The last one whose cells are more than twice as long.
int RegionIndex::LevelFor(double dExtent) const
{
    if (!(dExtent > 0.0)) {
        return kLevels - 1;
    }
    int nExponent = 0;
    std::frexp(dExtent, &nExponent);
    const int nLevel = m_nExponent - (nExponent + 1);
    return nLevel < 0 ? 0 : nLevel < kLevels ? nLevel : kLevels - 1;
}

// The cells of level 0 are as long as the power of two above the side, those of each level half as long as before.
// Scaling is exact: what lies between two places is in a cell between theirs.
int RegionIndex::CellOf(double dOffset, int nLevel) const
{
    return static_cast<int>(std::ldexp(Clamp(dOffset, 0.0, m_dSide), nLevel - m_nExponent));
}

int RegionIndex::BucketOf(int nX, int nY, int nLevel) const
{
    std::uint64_t n = static_cast<std::uint64_t>(nX) << 32 | static_cast<std::uint32_t>(nY);
    n = (n + static_cast<std::uint64_t>(nLevel)) * 0x9E3779B97F4A7C15u;   // Fibonacci hashing (Knuth 1973)
    n ^= n >> 32;
    return static_cast<int>(n & static_cast<std::uint64_t>(m_aFirst.GetUpperBound()));
}

void RegionIndex::Add(int nItem, const Region& region)
{
    const double dExtent = std::fmax(region.dMaxX - region.dMinX, region.dMaxY - region.dMinY);
    const int nLevel = LevelFor(dExtent), nFirst = kMostCells * nItem;
    while (m_aEntry.GetSize() < nFirst + kMostCells) {
        m_aEntry.Add({0, 0, kNone, kNone});
    }
    if (m_nEntries + kMostCells > m_aFirst.GetSize()) {
        Widen();
    }
    const int nMinX = CellOf(region.dMinX - m_lower.x, nLevel),
              nMaxX = CellOf(region.dMaxX - m_lower.x, nLevel);
    const int nMinY = CellOf(region.dMinY - m_lower.y, nLevel),
              nMaxY = CellOf(region.dMaxY - m_lower.y, nLevel);
    int nEntry = nFirst;
    for (int y = nMinY; y <= nMaxY; ++y) {
        for (int x = nMinX; x <= nMaxX; ++x, ++nEntry) {
            m_aEntry[nEntry] = {x, y, nLevel, kNone};
            Enter(nEntry);
        }
    }
    m_aOnLevel[nLevel] += nEntry - nFirst;
    m_nEntries += nEntry - nFirst;
}

// Puts an entry in front of its bucket.
void RegionIndex::Enter(int nEntry)
{
    Entry& entry = m_aEntry[nEntry];
    int& nFront = m_aFirst[BucketOf(entry.nX, entry.nY, entry.nLevel)];
    entry.nNext = nFront;
    nFront = nEntry;
}

void RegionIndex::Remove(int nItem)
{
    for (int n = kMostCells * nItem; n < kMostCells * (nItem + 1); ++n) {
        Entry& entry = m_aEntry[n];
        if (entry.nLevel == kNone) {
            continue;
        }
        int* pLink = &m_aFirst[BucketOf(entry.nX, entry.nY, entry.nLevel)];
        while (*pLink != n) {
            pLink = &m_aEntry[*pLink].nNext;
        }
        *pLink = entry.nNext;
        --m_aOnLevel[entry.nLevel];
        --m_nEntries;
        entry.nLevel = kNone;
    }
}

void RegionIndex::Widen()
{
    const int nBuckets = m_aFirst.GetSize() == 0 ? kFewestBuckets : 2 * m_aFirst.GetSize();
    m_aFirst.SetSize(nBuckets, -1);
    for (int i = 0; i < nBuckets; ++i) {
        m_aFirst[i] = kNone;
    }
    for (int n = 0; n < m_aEntry.GetSize(); ++n) {
        if (m_aEntry[n].nLevel != kNone) {
            Enter(n);
        }
    }
}

}   // namespace qsv
