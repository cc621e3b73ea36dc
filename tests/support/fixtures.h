#ifndef QSV_TESTS_SUPPORT_FIXTURES_H
#define QSV_TESTS_SUPPORT_FIXTURES_H

#include <array>
#include <cstdint>
#include <vector>

#include "qsv_3dprocess.h"

// Named inputs that several tests share. All of them are the same on every machine.

struct Site {
    double x, y, z;
};
using Sites = std::vector<Site>;

// One of several inputs that a test goes through.
struct NamedSites {
    const char* szWhat;
    Sites aSite;
};

// Random numbers whose sequence no standard library chooses (splitmix64).
class Dice
{
public:
    explicit Dice(std::uint64_t nSeed) : m_nState(nSeed) {}
    double Uniform(double dLow, double dHigh);
    int Below(int nEnd);

private:
    std::uint64_t Next();
    std::uint64_t m_nState;
};

// n places all over a square with its lower left corner at the origin, heights 0 .. 10.
Sites RandomSites(int n, std::uint64_t nSeed, double dSide = 100.0);
// n places in 8 tight heaps.
Sites ClusteredSites(int n, std::uint64_t nSeed);
// nColumns x nRows places of a square grid, row by row, turned by dAngle about its corner (x0, y0).
// Heights follow the plane z = 2x + 3y + 1 of the unturned grid.
Sites GridSites(int nColumns, int nRows, double dStep, double dAngle = 0.0, double x0 = 0.0, double y0 = 0.0);
// n places on a circle, as exact as doubles are.
Sites CircleSites(int n, double dRadius);
// In random order.
Sites Shuffled(Sites aSite, std::uint64_t nSeed);

// A TIN fed with places one after the other, without merging; not built yet.
CTin Fed(const Sites& aSite);
// The same, built; the test that calls it fails when that does not succeed.
CTin Built(const Sites& aSite, double dAngle = 0.0);

// A TIN of just these vertices and triangles, without links.
using TriangleList = std::vector<std::array<int, 3>>;
CTin Assembled(const Sites& aSite, const TriangleList& aCorner);

// A polyline through places.
CPolyline LineThrough(const Sites& aSite, bool bClose = false);

// A list of indices in a form that compares and prints.
std::vector<int> ToVector(const CArray<int>& aIndex);

// A 10 x 10 square with its centre, on the plane z = ax + by + c.
CTin SquareOnPlane(double a, double b, double c);

#endif
