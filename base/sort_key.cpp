#include "base/sort_key.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

#include "base/key_order.h"

namespace {

// Counts keys in the order of their ranks as whole numbers do: lower ranks stand first, equal keys (0 and -0
// are equal) have the same rank, and those that are not a number have the highest.
class Ranking
{
public:
    explicit Ranking(bool bAscending) : m_nFlip(bAscending ? 0 : ~std::uint64_t{0}) {}

    std::uint64_t RankOf(double dKey) const
    {
        constexpr std::uint64_t nSign = std::uint64_t{1} << 63;
        if (std::isnan(dKey)) {
            return std::numeric_limits<std::uint64_t>::max();
        }
        const double dOneZero = dKey + 0.0;
        std::uint64_t nBits = 0;
        std::memcpy(&nBits, &dOneZero, sizeof nBits);
        return ((nBits & nSign) != 0 ? ~nBits : nBits | nSign) ^
               m_nFlip;   // larger below 0 is larger downwards
    }

private:
    const std::uint64_t m_nFlip;
};

// Sorts by some bits of each key, one digit after the other, from the last to the first, in passes that keep the
// order of equal digits (Knuth, "The Art of Computer Programming" 3, 5.2.5). The bits tell where between the lowest
// and the highest key a key lies; where most keys would crowd at one end, or some are not finite, they are the upper
// ones of its rank. So all but a few keys are told apart, and those few are compared afterwards.
class DigitSort
{
public:
    DigitSort(const CArray<double>& aKey, bool bAscending)
        : m_nCount(aKey.GetSize()), m_pKey(aKey.GetData()), m_bAscending(bAscending), m_ranking(bAscending)
    {
    }

    void Sort(CArray<int>& aIndex)
    {
        ChooseScale();
        if (m_dScale > 0.0) {
            MakeItems([this](double dKey) { return StepsFromFirst(dKey); });
        } else {
            ChooseBits();
            MakeItems([this](double dKey) { return (m_ranking.RankOf(dKey) - m_nLowest) >> m_nDropped; });
        }
        for (int nDigit = 0; nDigit < kDigits; ++nDigit) {
            if (!AllHaveTheSame(nDigit)) {
                MoveByDigit(nDigit);
            }
        }
        if (m_dScale > 0.0 || m_nDropped > 0) {
            SettleTies();
        }
        for (int i = 0; i < m_nCount; ++i) {
            aIndex[i] = PositionOf(m_aItem[i]);
        }
    }

private:
    // The bits of a key, and below them its position.
    using Item = std::uint64_t;
    static constexpr int kPositionBits = 31;
    static constexpr int kDigitBits = 11;   // the places of a pass fit in a processor's first cache
    static constexpr int kDigits = 3;
    static constexpr int kValues = 1 << kDigitBits;
    static_assert(kPositionBits + kDigits * kDigitBits == 64, "an item is full");

    static int PositionOf(Item nItem) { return static_cast<int>(nItem & ((Item{1} << kPositionBits) - 1)); }
    static Item BitsOf(Item nItem) { return nItem >> kPositionBits; }
    static int DigitOf(Item nItem, int nDigit)
    {
        return static_cast<int>(BitsOf(nItem) >> (kDigitBits * nDigit)) & (kValues - 1);
    }

    void ChooseScale()
    {
        constexpr double kMostSteps = 8589934591.0;   // 2^33 - 1
        constexpr double kCrowd = 1.0 / 1024.0;       // of the range: where the mean lies so near its end
        double dSum = 0.0;
        m_dLow = m_dHigh = m_pKey[0];
        for (int i = 0; i < m_nCount; ++i) {
            m_dLow = std::min(m_dLow, m_pKey[i]);
            m_dHigh = std::max(m_dHigh, m_pKey[i]);
            dSum += m_pKey[i];
        }
        const double dMean = dSum / m_nCount, dRange = m_dHigh - m_dLow, dScale = kMostSteps / dRange;
        if (std::isfinite(dScale) && dMean - m_dLow > kCrowd * dRange && m_dHigh - dMean > kCrowd * dRange) {
            m_dScale = dScale;
        }
    }

    // Rounding never puts a key before one that stands before it: at worst they tie.
    std::uint64_t StepsFromFirst(double dKey) const
    {
        return static_cast<std::uint64_t>((m_bAscending ? dKey - m_dLow : m_dHigh - dKey) * m_dScale);
    }

    // The bits are those of the distance to the lowest rank: where keys are of one size, its upper ones are 0.
    void ChooseBits()
    {
        std::uint64_t nHighest = m_nLowest = m_ranking.RankOf(m_pKey[0]);
        for (int i = 1; i < m_nCount; ++i) {
            const std::uint64_t nRank = m_ranking.RankOf(m_pKey[i]);
            m_nLowest = std::min(m_nLowest, nRank);
            nHighest = std::max(nHighest, nRank);
        }
        while (((nHighest - m_nLowest) >> m_nDropped) >> (kDigits * kDigitBits) != 0) {
            ++m_nDropped;
        }
    }

    template <class BITS_OF>
    void MakeItems(BITS_OF fnBitsOf)
    {
        m_aItem.SetSize(m_nCount);
        m_aOther.SetSize(m_nCount);
        m_aPlace.SetSize(kDigits * kValues);
        for (int i = 0; i < m_nCount; ++i) {
            m_aItem[i] = fnBitsOf(m_pKey[i]) << kPositionBits | static_cast<Item>(i);
            for (int nDigit = 0; nDigit < kDigits; ++nDigit) {
                ++m_aPlace[kValues * nDigit + DigitOf(m_aItem[i], nDigit)];
            }
        }
    }

    bool AllHaveTheSame(int nDigit) const
    {
        return m_aPlace[kValues * nDigit + DigitOf(m_aItem[0], nDigit)] == m_nCount;
    }

    void MoveByDigit(int nDigit)
    {
        int* const pPlace = m_aPlace.GetData() + kValues * nDigit;
        int nPlace = 0;
        for (int nValue = 0; nValue < kValues; ++nValue) {   // from counts to the first place of each value
            nPlace += std::exchange(pPlace[nValue], nPlace);
        }
        const Item* const pFrom = m_aItem.GetData();
        Item* const pTo = m_aOther.GetData();
        for (int i = 0; i < m_nCount; ++i) {
            pTo[pPlace[DigitOf(pFrom[i], nDigit)]++] = pFrom[i];
        }
        qsv::MoveInto(m_aItem, m_aOther);
    }

    // Keys with the same bits stand in the order of their positions, which is right where they are equal.
    void SettleTies()
    {
        Item* const pItem = m_aItem.GetData();
        for (int nFirst = 0, nEnd = 0; nFirst < m_nCount; nFirst = nEnd) {
            for (nEnd = nFirst + 1; nEnd < m_nCount && BitsOf(pItem[nEnd]) == BitsOf(pItem[nFirst]);) {
                ++nEnd;
            }
            const auto isBefore = [this](Item a, Item b) {
                const std::uint64_t nRankA = m_ranking.RankOf(m_pKey[PositionOf(a)]);
                const std::uint64_t nRankB = m_ranking.RankOf(m_pKey[PositionOf(b)]);
                return nRankA != nRankB ? nRankA < nRankB : a < b;
            };
            if (nEnd - nFirst > 1 && !std::is_sorted(pItem + nFirst, pItem + nEnd, isBefore)) {
                std::sort(pItem + nFirst, pItem + nEnd, isBefore);
            }
        }
    }

    const int m_nCount;
    const double* const m_pKey;
    const bool m_bAscending;
    const Ranking m_ranking;
    double m_dLow = 0.0, m_dHigh = 0.0;
    double m_dScale = 0.0;   // steps a unit; 0: by ranks
    std::uint64_t m_nLowest = 0;
    int m_nDropped = 0;   // how many of the lowest bits of a rank are left aside
    CArray<Item> m_aItem, m_aOther;
    CArray<int> m_aPlace;   // digit by digit: how many keys have each value, then where the next of them goes
};

// For a few keys, where counting would cost more than it saves.
constexpr int kFewKeys = 100;

void SortByInsertion(CArray<double>& aKey, CArray<int>& aFrom, const Ranking& ranking)
{
    for (int i = 0; i < aKey.GetSize(); ++i) {
        const double dKey = aKey[i];
        const std::uint64_t nRank = ranking.RankOf(dKey);
        int k = i;
        for (; k > 0 && ranking.RankOf(aKey[k - 1]) > nRank; --k) {
            aKey[k] = aKey[k - 1];
            aFrom[k] = aFrom[k - 1];
        }
        aKey[k] = dKey;
        aFrom[k] = i;
    }
}

}   // namespace

void qsv::OrderOfKeys(const CArray<double>& aKey, CArray<int>& aIndex, int nOrder)
{
    aIndex.SetSize(aKey.GetSize());
    if (aKey.GetSize() <= kFewKeys) {
        CArray<double> aSorted;
        aSorted.Copy(aKey);
        SortByInsertion(aSorted, aIndex, Ranking(nOrder == 1));
    } else {
        DigitSort(aKey, nOrder == 1).Sort(aIndex);
    }
}

void QuickSortKey(CArray<double>& aKey, CArray<int>& aIndex, int nOrder)
{
    const int n = aKey.GetSize();
    if (n <= kFewKeys) {
        aIndex.SetSize(n);
        SortByInsertion(aKey, aIndex, Ranking(nOrder == 1));
        return;
    }
    CArray<double> aSorted;
    aSorted.SetSize(n);
    qsv::OrderOfKeys(aKey, aIndex, nOrder);
    for (int i = 0; i < n; ++i) {
        aSorted[i] = aKey[aIndex[i]];
    }
    std::copy(aSorted.GetData(), aSorted.GetData() + n, aKey.GetData());
}
