#include "bench/point_sets.h"

#include <cmath>
#include <cstdint>
#include <utility>

namespace bench {

namespace {

constexpr double kRange = 1000.0;

// Random numbers whose sequence no standard library chooses (splitmix64).
class Random
{
public:
    explicit Random(unsigned nSeed) : m_nState(nSeed) {}

    std::uint64_t Next()
    {
        m_nState += 0x9E3779B97F4A7C15u;
        std::uint64_t n = m_nState;
        n = (n ^ (n >> 30)) * 0xBF58476D1CE4E5B9u;
        n = (n ^ (n >> 27)) * 0x94D049BB133111EBu;
        return n ^ (n >> 31);
    }
    double Below(double dEnd)
    {
        return dEnd * (static_cast<double>(Next() >> 11) / 9007199254740992.0);
    }   // 2^53
    // Two independent numbers of the normal distribution (Box, Muller 1958).
    Place Normal()
    {
        const double dRadius = std::sqrt(-2.0 * std::log(1.0 - Below(1.0)));
        const double dAngle = Below(6.283185307179586);
        return {dRadius * std::cos(dAngle), dRadius * std::sin(dAngle)};
    }

private:
    std::uint64_t m_nState;
};

}   // namespace

Places Uniform(int n, unsigned nSeed)
{
    Random random(nSeed);
    Places places;
    for (int i = 0; i < n; ++i) {
        const double x = random.Below(kRange);
        places.push_back({x, random.Below(kRange)});
    }
    return places;
}

Places Clustered(int n)
{
    constexpr int kPerHeap = 1000;
    Random random(2);
    Places places;
    Place heap = {0.0, 0.0};
    for (int i = 0; i < n; ++i) {
        if (i % kPerHeap == 0) {
            heap.x = random.Below(kRange);
            heap.y = random.Below(kRange);
        }
        const Place offset = random.Normal();
        places.push_back({heap.x + kRange / 1000.0 * offset.x, heap.y + kRange / 1000.0 * offset.y});
    }
    return places;
}

Places ScanLines(int n, unsigned nSeed)
{
    Random random(nSeed);
    const int nLines = static_cast<int>(std::sqrt(n));
    const double dStep = kRange / nLines;
    Places places;
    for (int i = 0; i < n; ++i) {
        const int line = i / nLines, along = i % nLines;
        const double x = line % 2 == 0 ? along : nLines - 1 - along;
        const double dx = random.Below(0.3);
        places.push_back({dStep * (x + dx), dStep * (line + random.Below(0.3))});
    }
    return places;
}

Places Grid(int n)
{
    const int nColumns = static_cast<int>(std::sqrt(n));
    Places places;
    for (int i = 0; i < nColumns * nColumns; ++i) {
        const int column = i % nColumns, row = i / nColumns;
        places.push_back({static_cast<double>(column), static_cast<double>(row)});
    }
    return places;
}

Places Shuffled(Places places)
{
    Random random(3);
    for (std::size_t i = places.size(); i > 1; --i) {
        std::swap(places[i - 1], places[random.Next() % i]);
    }
    return places;
}

}   // namespace bench
