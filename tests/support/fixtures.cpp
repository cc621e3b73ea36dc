#include "support/fixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

std::uint64_t Dice::Next()
{
    m_nState += 0x9E3779B97F4A7C15u;
    std::uint64_t n = m_nState;
    n = (n ^ (n >> 30)) * 0xBF58476D1CE4E5B9u;
    n = (n ^ (n >> 27)) * 0x94D049BB133111EBu;
    return n ^ (n >> 31);
}

double Dice::Uniform(double dLow, double dHigh)
{
    return dLow + (dHigh - dLow) * (static_cast<double>(Next() >> 11) / 9007199254740992.0);   // 2^53
}

int Dice::Below(int nEnd)
{
    return static_cast<int>(Next() % static_cast<std::uint64_t>(nEnd));
}

Sites RandomSites(int n, std::uint64_t nSeed, double dSide)
{
    Dice dice(nSeed);
    Sites aSite;
    for (int i = 0; i < n; ++i) {
        const double x = dice.Uniform(0.0, dSide), y = dice.Uniform(0.0, dSide);
        aSite.push_back({x, y, dice.Uniform(0.0, 10.0)});
    }
    return aSite;
}

Sites ClusteredSites(int n, std::uint64_t nSeed)
{
    const Sites aHeap = RandomSites(8, nSeed + 1);
    Dice dice(nSeed);
    Sites aSite;
    for (int i = 0; i < n; ++i) {
        const Site& heap = aHeap[static_cast<size_t>(dice.Below(8))];
        const double dRadius = std::exp(dice.Uniform(-9.0, 0.0));
        const double dAngle = dice.Uniform(0.0, 6.283);
        aSite.push_back({heap.x + dRadius * std::cos(dAngle), heap.y + dRadius * std::sin(dAngle), dRadius});
    }
    return aSite;
}

Sites GridSites(int nColumns, int nRows, double dStep, double dAngle, double x0, double y0)
{
    const double c = std::cos(dAngle), s = std::sin(dAngle);
    Sites aSite;
    for (int r = 0; r < nRows; ++r) {
        for (int k = 0; k < nColumns; ++k) {
            const double x = k * dStep, y = r * dStep;
            aSite.push_back({x0 + (x * c - y * s), y0 + (x * s + y * c), 2.0 * x + 3.0 * y + 1.0});
        }
    }
    return aSite;
}

Sites CircleSites(int n, double dRadius)
{
    Sites aSite;
    for (int i = 0; i < n; ++i) {
        const double dAngle = 6.283185307179586 * i / n;
        aSite.push_back({dRadius * std::cos(dAngle), dRadius * std::sin(dAngle), 0.0});
    }
    return aSite;
}

Sites Shuffled(Sites aSite, std::uint64_t nSeed)
{
    Dice dice(nSeed);
    for (size_t i = aSite.size(); i > 1; --i) {
        std::swap(aSite[i - 1], aSite[static_cast<size_t>(dice.Below(static_cast<int>(i)))]);
    }
    return aSite;
}

CTin Fed(const Sites& aSite)
{
    CTin tin;
    tin.BeginAddPoint(static_cast<int>(aSite.size()));
    for (const Site& s : aSite) {
        tin.AddPoint2(s.x, s.y, s.z);
    }
    tin.EndAddPoint();
    return tin;
}

CTin Built(const Sites& aSite, double dAngle)
{
    CTin tin = Fed(aSite);
    EXPECT_EQ(tin.CreateTin(dAngle), 1);
    return tin;
}

CTin Assembled(const Sites& aSite, const TriangleList& aCorner)
{
    CTin tin = Fed(aSite);
    for (const auto& corner : aCorner) {
        EXPECT_GE(tin.AddTri(corner[0], corner[1], corner[2]), 0);
    }
    return tin;
}

CPolyline LineThrough(const Sites& aSite, bool bClose)
{
    CPolyline line;
    for (const Site& s : aSite) {
        CVertex v;
        v.x = s.x;
        v.y = s.y;
        v.z = s.z;
        line.AddVertex(v);
    }
    if (bClose) {
        line.Close();
    }
    return line;
}

std::vector<int> ToVector(const CArray<int>& aIndex)
{
    return std::vector<int>(aIndex.GetData(), aIndex.GetData() + aIndex.GetSize());
}

CTin SquareOnPlane(double a, double b, double c)
{
    Sites aSite = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {5, 5, 0}};
    for (Site& s : aSite) {
        s.z = a * s.x + b * s.y + c;
    }
    return Built(aSite);
}
