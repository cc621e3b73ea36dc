#include "tin/internal/plan_index.h"

#include <cmath>
#include <cstring>

#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"

namespace qsv {

namespace {

// Largest cell number at which the quotient that gives it is still exact to an eighth of a cell, so that
// places within the tolerance stay in neighbouring cells.
constexpr double kMaxCellNumber = 1125899906842624.0;   // 2^50

// A cell for places that no vertex can coincide with.
constexpr std::int64_t kNowhere = INT64_MAX / 2;

std::int64_t BitsOf(double d)
{
    const double dOneZero = d + 0.0;   // -0 and 0 are the same place
    std::int64_t nBits = 0;
    std::memcpy(&nBits, &dOneZero, sizeof nBits);
    return nBits;
}

}   // namespace

PlanIndex::PlanIndex(const CArray<CXYZ>& aVertex, double dEPS)
    : m_aVertex(aVertex), m_dEPS(dEPS), m_eBinning(BinningFor(aVertex, dEPS))
{
}

PlanIndex::Binning PlanIndex::BinningFor(const CArray<CXYZ>& aVertex, double dEPS)
{
    if (!(dEPS > 0.0)) {
        return Binning::ByPlace;
    }
    double dLargest = 0.0;
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        dLargest = std::fmax(dLargest, std::fmax(std::fabs(aVertex[i].x), std::fabs(aVertex[i].y)));
    }
    const bool bGrid = std::isfinite(2.0 * dEPS) && dLargest / (2.0 * dEPS) < kMaxCellNumber;
    return bGrid ? Binning::Grid : Binning::OneCell;
}

PlanIndex::Cell PlanIndex::CellOf(double x, double y) const
{
    if (m_eBinning == Binning::ByPlace) {
        return {BitsOf(x), BitsOf(y)};
    }
    if (m_eBinning == Binning::OneCell) {
        return {0, 0};
    }
    const double cx = std::floor(x / (2.0 * m_dEPS)), cy = std::floor(y / (2.0 * m_dEPS));
    if (!(std::fabs(cx) <= 2.0 * kMaxCellNumber && std::fabs(cy) <= 2.0 * kMaxCellNumber)) {
        return {kNowhere, kNowhere};
    }
    return {static_cast<std::int64_t>(cx), static_cast<std::int64_t>(cy)};
}

int PlanIndex::BucketOf(const Cell& cell) const
{
    // Odd multipliers spread neighbouring cells; the high bits of the product are the mixed ones.
    const std::uint64_t n = static_cast<std::uint64_t>(cell.x) * 0x9E3779B97F4A7C15u +
                            static_cast<std::uint64_t>(cell.y) * 0xC2B2AE3D27D4EB4Fu;
    return static_cast<int>((n >> 32) & static_cast<std::uint64_t>(m_aBucket.GetUpperBound()));
}

bool PlanIndex::IsAtPlace(int nVt, double x, double y) const
{
    const CXYZ& p = VertexAt(m_aVertex, nVt);
    return IsSamePlace(x, y, p.x, p.y, m_dEPS);
}

void PlanIndex::Enter(int nVt)
{
    const CXYZ& p = VertexAt(m_aVertex, nVt);
    m_aEntry.Add({CellOf(p.x, p.y), nVt, -1});
    if (m_aEntry.GetSize() > m_aBucket.GetSize()) {
        Rebucket();
    } else {
        int& nBucket = m_aBucket[BucketOf(m_aEntry[m_aEntry.GetUpperBound()].cell)];
        m_aEntry[m_aEntry.GetUpperBound()].nNext = nBucket;
        nBucket = m_aEntry.GetUpperBound();
    }
}

void PlanIndex::Rebucket()
{
    m_aBucket.SetSize(m_aBucket.IsEmpty() ? 64 : 2 * m_aBucket.GetSize(), -1);
    for (int b = 0; b < m_aBucket.GetSize(); ++b) {
        m_aBucket[b] = -1;
    }
    for (int e = 0; e < m_aEntry.GetSize(); ++e) {
        int& nBucket = m_aBucket[BucketOf(m_aEntry[e].cell)];
        m_aEntry[e].nNext = nBucket;
        nBucket = e;
    }
}

int PlanIndex::FindFirst(double x, double y) const
{
    return FindFirst(x, y, [](int) { return true; });
}

}   // namespace qsv
