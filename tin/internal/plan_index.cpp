#include "tin/internal/plan_index.h"

#include <cmath>
#include <cstring>

#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

// A cell is so much larger than the tolerance that the tolerance around a place seldom reaches into a second
// one, and no larger: points just beyond the tolerance from each other may fill it.
constexpr double kTolerancesPerCell = 8.0;

// How far from a place, in cells, what coincides with it is looked for: an eighth for the tolerance, the rest
// for the rounding of two quotients, which is a 64th at the outermost cells.
constexpr double kReach = 0.25;
constexpr double kOutermostCell = 140737488355328.0;   // 2^47

// Cell 0 where the quotient is not a number: an infinite coordinate coincides with others when the tolerance is
// infinite too, and then they are all in the cells around 0.
std::int64_t CellNumber(double d)
{
    if (std::isnan(d)) {
        return 0;
    }
    return static_cast<std::int64_t>(std::floor(std::fmin(std::fmax(d, -kOutermostCell), kOutermostCell)));
}

std::int64_t BitsOf(double d)
{
    const double dOneZero = d + 0.0;   // -0 and 0 are the same place
    std::int64_t nBits = 0;
    std::memcpy(&nBits, &dOneZero, sizeof nBits);
    return nBits;
}

}   // namespace

PlanIndex::PlanIndex(const CArray<CXYZ>& aVertex, double dEPS)
    : m_aVertex(aVertex), m_dEPS(dEPS), m_dCell(dEPS > 0.0 ? kTolerancesPerCell * dEPS : 0.0)
{
    Reserve(32);
}

std::int64_t PlanIndex::CellOf(double dCoordinate) const
{
    return m_dCell > 0.0 ? CellNumber(dCoordinate / m_dCell) : BitsOf(dCoordinate);
}

PlanIndex::Span PlanIndex::CellsAround(double dCoordinate) const
{
    if (m_dCell > 0.0) {
        const double dCell = dCoordinate / m_dCell;
        return {CellNumber(dCell - kReach), CellNumber(dCell + kReach)};
    }
    return {BitsOf(dCoordinate), BitsOf(dCoordinate)};
}

// Odd multipliers spread the cells (Steele, Lea, Flood, "Fast splittable pseudorandom number generators", 2014).
std::uint32_t PlanIndex::HashOf(std::int64_t nCellX, std::int64_t nCellY)
{
    std::uint64_t n = static_cast<std::uint64_t>(nCellX) * 0x9E3779B97F4A7C15u;
    n = (n ^ (n >> 32) ^ static_cast<std::uint64_t>(nCellY)) * 0xBF58476D1CE4E5B9u;
    n = (n ^ (n >> 32)) * 0x94D049BB133111EBu;
    return static_cast<std::uint32_t>(n >> 32);
}

const PlanIndex::Bucket& PlanIndex::BucketOf(std::uint32_t nHash) const
{
    return m_aBucket[static_cast<int>(nHash & static_cast<std::uint32_t>(m_aBucket.GetUpperBound()))];
}

bool PlanIndex::IsAtPlace(int nVt, double x, double y) const
{
    const CXYZ& p = VertexAt(m_aVertex, nVt);
    return IsSamePlace(x, y, p.x, p.y, m_dEPS);
}

void PlanIndex::Reserve(int nEntries)
{
    int nBuckets = m_aBucket.IsEmpty() ? 1 : m_aBucket.GetSize();
    while (nBuckets < nEntries && nBuckets <= INT32_MAX / 2) {
        nBuckets *= 2;
    }
    if (nBuckets == m_aBucket.GetSize()) {
        return;
    }
    m_aBucket.SetSize(nBuckets, -1);
    for (int b = 0; b < nBuckets; ++b) {
        m_aBucket[b] = {-1, -1};
    }
    for (int e = 0; e < m_aEntry.GetSize(); ++e) {
        Append(e);
    }
}

void PlanIndex::Enter(int nVt)
{
    const CXYZ& p = VertexAt(m_aVertex, nVt);
    Reserve(m_aEntry.GetSize() + 1);
    Append(m_aEntry.Add({HashOf(CellOf(p.x), CellOf(p.y)), nVt, -1}));
}

// Puts an entry at the end of its bucket, so that a search meets the entries in their order.
void PlanIndex::Append(int nEntry)
{
    Entry& entry = m_aEntry[nEntry];
    entry.nNext = -1;
    Bucket& bucket =
        m_aBucket[static_cast<int>(entry.nHash & static_cast<std::uint32_t>(m_aBucket.GetUpperBound()))];
    if (bucket.nFirst < 0) {
        bucket.nFirst = nEntry;
    } else {
        m_aEntry[bucket.nLast].nNext = nEntry;
    }
    bucket.nLast = nEntry;
}

int PlanIndex::FindFirst(double x, double y) const
{
    return FindFirst(x, y, [](int) { return true; });
}

}   // namespace qsv
