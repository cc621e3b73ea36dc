#include "base/sort_key.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

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

// Sorts by one digit of the ranks after the other, from the last to the first, in passes that keep the order of
// equal digits (Knuth, "The Art of Computer Programming" 3, 5.2.5).
class DigitSort
{
public:
    DigitSort(CArray<double>& aKey, CArray<int>& aFrom, const Ranking& ranking)
        : m_nCount(aKey.GetSize()), m_pKey(aKey.GetData()), m_pFrom(aFrom.GetData()), m_ranking(ranking)
    {
    }

    void Sort()
    {
        CountDigits();
        CArray<double> aOtherKey;
        CArray<int> aOtherFrom;
        aOtherKey.SetSize(m_nCount);
        aOtherFrom.SetSize(m_nCount);
        double *pKey = m_pKey, *pOtherKey = aOtherKey.GetData();
        int *pFrom = m_pFrom, *pOtherFrom = aOtherFrom.GetData();
        for (int nDigit = 0; nDigit < kDigits; ++nDigit) {
            if (!AllHaveTheSame(nDigit, pKey[0])) {
                MoveByDigit(nDigit, pKey, pFrom, pOtherKey, pOtherFrom);
                std::swap(pKey, pOtherKey);
                std::swap(pFrom, pOtherFrom);
            }
        }
        if (pKey != m_pKey) {
            std::copy(pKey, pKey + m_nCount, m_pKey);
            std::copy(pFrom, pFrom + m_nCount, m_pFrom);
        }
    }

private:
    static constexpr int kDigitBits = 11;   // the places of a pass fit in a processor's first cache
    static constexpr int kDigits = 6;
    static constexpr int kValues = 1 << kDigitBits;

    // The digits are those of the distance to the lowest rank: keys of one size have few that differ.
    int DigitOf(double dKey, int nDigit) const
    {
        return static_cast<int>((m_ranking.RankOf(dKey) - m_nLowest) >> (kDigitBits * nDigit)) &
               (kValues - 1);
    }

    void CountDigits()
    {
        m_nLowest = m_ranking.RankOf(m_pKey[0]);
        for (int i = 1; i < m_nCount; ++i) {
            m_nLowest = std::min(m_nLowest, m_ranking.RankOf(m_pKey[i]));
        }
        m_aPlace.SetSize(kDigits * kValues);
        for (int i = 0; i < m_nCount; ++i) {
            std::uint64_t nRank = m_ranking.RankOf(m_pKey[i]) - m_nLowest;
            for (int nDigit = 0; nDigit < kDigits; ++nDigit) {
                ++m_aPlace[kValues * nDigit + static_cast<int>(nRank & (kValues - 1))];
                nRank >>= kDigitBits;
            }
        }
    }

    bool AllHaveTheSame(int nDigit, double dAnyKey) const
    {
        return m_aPlace[kValues * nDigit + DigitOf(dAnyKey, nDigit)] == m_nCount;
    }

    void MoveByDigit(int nDigit, const double* pKey, const int* pFrom, double* pToKey, int* pToFrom)
    {
        int* const pPlace = m_aPlace.GetData() + kValues * nDigit;
        int nPlace = 0;
        for (int nValue = 0; nValue < kValues; ++nValue) {   // from counts to the first place of each value
            nPlace += std::exchange(pPlace[nValue], nPlace);
        }
        for (int i = 0; i < m_nCount; ++i) {
            const int nTo = pPlace[DigitOf(pKey[i], nDigit)]++;
            pToKey[nTo] = pKey[i];
            pToFrom[nTo] = pFrom[i];
        }
    }

    const int m_nCount;
    double* const m_pKey;
    int* const m_pFrom;
    const Ranking m_ranking;
    std::uint64_t m_nLowest = 0;
    CArray<int> m_aPlace;   // digit by digit: how many keys have each value, then where the next of them goes
};

// For a few keys, where counting would cost more than it saves.
void SortByInsertion(CArray<double>& aKey, CArray<int>& aFrom, const Ranking& ranking)
{
    for (int i = 1; i < aKey.GetSize(); ++i) {
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

void QuickSortKey(CArray<double>& aKey, CArray<int>& aIndex, int nOrder)
{
    constexpr int kFewKeys = 100;
    const int n = aKey.GetSize();
    aIndex.SetSize(n);
    for (int i = 0; i < n; ++i) {
        aIndex[i] = i;
    }
    const Ranking ranking(nOrder == 1);
    if (n <= kFewKeys) {
        SortByInsertion(aKey, aIndex, ranking);
    } else {
        DigitSort(aKey, aIndex, ranking).Sort();
    }
}
