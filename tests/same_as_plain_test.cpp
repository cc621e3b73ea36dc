// The library against the plain implementation in reference/: bit for bit the same vertices, triangles,
// links, boundary and breaklines.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/compare.h"
#include "support/mesh_oracle.h"
#include "tin/internal/hull.h"
#include "tin/internal/hull_candidates.h"
#include "tin/internal/line_walk.h"

namespace {

// One input, fed to both.
struct Pair {
    CTin tin;
    plain::Tin plain;

    explicit Pair(const Sites& aSite) : tin(Fed(aSite)), plain(PlainFed(aSite)) {}

    void AddLine(const Sites& aSite, bool bClose = false)
    {
        CPolyline line = LineThrough(aSite, bClose);
        tin.AddBreakLine(line);
        plain.AddBreakLine(PlainPoints(aSite), bClose ? 1 : 0);
    }
    // A line of vertex indices as they stand, which may refer to nothing.
    void AddIndices(const std::vector<int>& aIndex, bool bClose)
    {
        CBreakLine bl;
        plain::BreakLine plainLine;
        bl.m_bClose = plainLine.closed = bClose ? 1 : 0;
        for (const int nVt : aIndex) {
            bl.m_aVertexIndex.Add(nVt);
            plainLine.idx.push_back(nVt);
        }
        tin.m_aBreakLine.Add(bl);
        plain.breakLine.push_back(plainLine);
    }
    // Makes links and, in a few triangles, corners lead to any triangle or vertex.
    void Damage(Dice& dice, int nLinks, int nCorners)
    {
        for (int i = 0; i < nLinks; ++i) {
            const int t = dice.Below(tin.GetTriSize()), k = dice.Below(3);
            tin.m_aTri[t].m_nNeighbor[k] = plain.tri[t].n[k] = dice.Below(tin.GetTriSize() + 40) - 20;
        }
        for (int i = 0; i < nCorners; ++i) {
            const int t = dice.Below(tin.GetTriSize()), k = dice.Below(3);
            tin.m_aTri[t].m_nVertex[k] = plain.tri[t].v[k] = dice.Below(tin.GetPointSize());
        }
    }
    void SetEPS(double dEPS)
    {
        tin.SetEPS(dEPS);
        plain.SetEPS(dEPS);
    }
    // False when the plain procedure leaves points out, which the library then brings back.
    bool BuildBoth(double dAngle = 0.0)
    {
        plain::Tin bare = plain;
        bare.breakLine.clear();
        bare.CreateTin(0.0);
        CTin copy = CopyOf(bare);
        copy.SetEPS(bare.eps);
        if (!HasPlacedEveryVertex(copy)) {
            return false;
        }
        EXPECT_EQ(tin.CreateTin(dAngle), plain.CreateTin(dAngle));
        EXPECT_EQ(Dump(tin), Dump(plain));
        return true;
    }
};

Sites RandomLine(Dice& dice, int nMost)
{
    Sites aSite;
    for (int i = 2 + dice.Below(nMost - 1); i > 0; --i) {
        const double x = dice.Uniform(-5.0, 105.0), y = dice.Uniform(-5.0, 105.0);
        aSite.push_back({x, y, dice.Uniform(0.0, 10.0)});
    }
    return aSite;
}

// Points of a small lattice, many of them more than once: everything is collinear or cocircular.
Sites LatticeSites(int n, Dice& dice, double dStep)
{
    Sites aSite;
    for (int i = 0; i < n; ++i) {
        const int x = dice.Below(8), y = dice.Below(8);
        aSite.push_back({x * dStep, y * dStep, dice.Uniform(0.0, 5.0)});
    }
    return aSite;
}

}   // namespace

TEST(SameAsPlain, ConstructionOfEveryKindOfInput)
{
    Dice dice(21);
    for (std::uint64_t nSeed = 0; nSeed < 6; ++nSeed) {
        SCOPED_TRACE(nSeed);
        const NamedSites aCase[] = {
            {"random", RandomSites(3 + dice.Below(300), nSeed)},
            {"clustered", ClusteredSites(3 + dice.Below(300), nSeed)},
            {"lattice with duplicates", LatticeSites(3 + dice.Below(60), dice, 1.0)},
            {"lattice of steps that are no binary fractions", LatticeSites(60, dice, 0.1)},
            {"grid", GridSites(2 + dice.Below(9), 2 + dice.Below(9), 3.0)},
            {"shuffled grid", Shuffled(GridSites(9, 7, 0.7), nSeed)},
            {"turned grid", GridSites(9, 9, 10.0, 0.01 * static_cast<double>(nSeed))},
            {"far from the origin", GridSites(9, 9, 1.5, 0.1, 21530180.0, 6782553.0)},
            {"circle", CircleSites(5 + dice.Below(40), 10.0)}};
        for (const auto& c : aCase) {
            SCOPED_TRACE(c.szWhat);
            Pair(c.aSite).BuildBoth();
        }
    }
    // In line but for rounding: flat triangles that share two edges.
    for (std::uint64_t nSeed = 0; nSeed < 20; ++nSeed) {
        SCOPED_TRACE(nSeed);
        const double dTurn = Dice(nSeed).Uniform(0.0, 6.0);
        Sites aInLine;
        for (int i = 0; i < 175; ++i) {
            const double d = dice.Below(12) * 80.0;
            aInLine.push_back({d * std::cos(dTurn), d * std::sin(dTurn), 0.0});
        }
        Pair(aInLine).BuildBoth();
    }
}

// Points much closer than the tolerance, in a strip: slivers that stop walks far away.
Sites PairsInAStrip(std::uint64_t nSeed)
{
    Dice dice(nSeed);
    Sites aSite;
    for (int i = 0; i < 2000; ++i) {
        aSite.push_back({dice.Uniform(0.0, 0.1), dice.Uniform(0.0, 0.01), 0.0});
    }
    for (int i = 0; i < 2000; ++i) {
        const Site near = aSite[static_cast<size_t>(dice.Below(2000))];
        const double dReach = std::exp(dice.Uniform(-19.7, -16.7));   // 3e-9 .. 6e-8
        aSite.push_back(
            {near.x + dice.Uniform(-dReach, dReach), near.y + dice.Uniform(-dReach, dReach), 0.0});
    }
    return Shuffled(aSite, nSeed);
}

// Enough points for searches to start elsewhere than at the point before. Pairs of points at about the
// tolerance from each other, points almost in line and ranges near the tolerance are where starts could lead to
// different ends.
TEST(SameAsPlain, ConstructionOfManyPoints)
{
    int nCompared = 0;
    for (std::uint64_t nSeed = 0; nSeed < 6; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        Sites aPaired = RandomSites(1000, nSeed, 10.0), aInLine = RandomSites(600, nSeed + 50, 10.0);
        Sites aTwice = RandomSites(1500, nSeed), aScanned, aHeaps;
        aTwice.insert(aTwice.end(), aTwice.begin(), aTwice.begin() + 1000);
        for (size_t i = 0; i < 1000; ++i) {
            const double dReach = std::exp(dice.Uniform(-16.0, -9.0));   // 1e-7 .. 1e-4
            const double dx = dice.Uniform(-dReach, dReach), dy = dice.Uniform(-dReach, dReach);
            aPaired.push_back({aPaired[i].x + dx, aPaired[i].y + dy, 0.0});
            const double t = dice.Uniform(0.0, 10.0);
            aInLine.push_back({t, 3.0 + 0.5 * t + dy, 0.0});
        }
        for (int i = 0; i < 3000;
             ++i) {   // to and fro, and heaps that differ in width by a factor of a million
            const int nAlong = i / 60 % 2 == 0 ? i % 60 : 60 - i % 60;
            aScanned.push_back({nAlong + dice.Uniform(0.0, 0.3), i / 60 + dice.Uniform(0.0, 0.3), 0.0});
            const double dWidth = std::pow(10.0, dice.Below(7) - 4);
            aHeaps.push_back({1e3 * dWidth + dice.Uniform(0.0, dWidth), dice.Uniform(0.0, dWidth), 0.0});
        }
        Sites aThenAnywhere = aScanned,
              aThenMiddles = GridSites(60, 50, 1.0);   // the walks grow long on the way
        for (int i = 0; i < 740; ++i) {
            aThenAnywhere.push_back({dice.Uniform(0.0, 40.0), dice.Uniform(0.0, 35.0), 0.0});
            aThenMiddles.push_back({0.5 + dice.Below(40), 1.0 * dice.Below(35), 0.0});
        }
        const NamedSites aCase[] = {
            {"random", RandomSites(4000, nSeed)},
            {"clustered", ClusteredSites(2500, nSeed)},
            {"heaps of every width", aHeaps},
            {"pairs", Shuffled(aPaired, nSeed)},
            {"pairs in a strip", PairsInAStrip(nSeed)},
            {"duplicates", Shuffled(aTwice, nSeed)},
            {"almost in line", Shuffled(aInLine, nSeed)},
            {"scan lines", aScanned},
            {"scan lines, then anywhere", aThenAnywhere},
            {"grid, then its middles in no order", aThenMiddles},
            {"a millimetre wide", RandomSites(2000, nSeed, 1e-3)},
            {"as wide as the earth", RandomSites(2000, nSeed, 4e7)},
            {"grid", GridSites(50, 60, 0.7)},
            {"shuffled grid", Shuffled(GridSites(50, 60, 0.7), nSeed)},
            {"shuffled grid, turned", Shuffled(GridSites(50, 60, 0.7, 0.4, 3e5, 4e6), nSeed)}};
        for (const auto& c : aCase) {
            SCOPED_TRACE(c.szWhat);
            nCompared += Pair(c.aSite).BuildBoth() ? 1 : 0;
        }
    }
    EXPECT_GE(nCompared, 6 * 9) << "most inputs must really be compared";
}

// Points in line under an apex, then one that all circles through the apex and two neighbours hold: it takes one edge
// after the other from the apex, each swap exposing the next edge.
//
//      A                             A
//      | \ \  \                      | \   \    \           P lies in the first triangle
//      |P \  \    \        -->       |  P    \      \       .
//      |   \   \      \              | / \ \    \       \   .
//      0 -- 1 - 2 ---- ...           0 -- 1 - 2 - 3 ---- ...
TEST(SameAsPlain, SwapsEndAfterTenThousandInARow)
{
    constexpr int kSwaps = 10000, kInLine = kSwaps + 100, kApex = kInLine, kLast = kInLine + 1;
    Sites aSite;
    for (int i = 0; i < kInLine; ++i) {
        aSite.push_back({1.0 * i, 0.0, 0.0});
    }
    aSite.push_back({0.0, 20000.0, 0.0});
    const Site last = {0.25, 10000.0, 0.0};
    CTin stepwise = Built(aSite);
    aSite.push_back(last);
    Pair pair(aSite);
    ASSERT_TRUE(pair.BuildBoth());
    const auto fnCountAt = [&pair](int nVt) {
        int nFrom = -1, nTri = 0, nSlot = 0, nFound = 0;
        while (pair.tin.FindTriWithPt(nVt, nFrom, nTri, nSlot)) {
            ++nFound;
        }
        return nFound;
    };
    EXPECT_EQ(fnCountAt(kLast), 3 + kSwaps);
    EXPECT_EQ(fnCountAt(kApex), kInLine - 1 + 1 - kSwaps) << "one more by the split, one less by each swap";

    stepwise.AddPoint(last.x, last.y, last.z);
    int nTriCount = stepwise.GetTriSize(), nLastTri = 0;
    EXPECT_EQ(stepwise.DivideTri(kLast, nTriCount, nLastTri), 1);
    EXPECT_EQ(Dump(stepwise), Dump(pair.plain)) << "one step at a time";
}

// A point just within the tolerance of a short outer edge makes a notch in the outline. A walk along it to a place
// close above it leaves the mesh there; one from high above arrives. Walks past all points of a row are so long that
// searches take over, which must leave the mesh too. The place is close to a vertex: missing it is no reason to build
// again.
TEST(SameAsPlain, OutlineThatBentBeforeSearchesBegin)
{
    Sites aSite = GridSites(21, 21, 1.0);
    const auto fnAdd = [&aSite](double x, double y) { aSite.push_back({x, y, 0.0}); };
    fnAdd(1.5, 0.05);
    fnAdd(11.01, 0.0);
    fnAdd(11.3, 5.1);
    fnAdd(11.005, 9e-5);   // a doubled area of 9e-7 off the edge
    for (int i = 0; i < 500; ++i) {
        fnAdd(5.0 + 0.02 * i, 15.5);
    }
    for (int i = 0; i < 40; ++i) {
        fnAdd(i % 2 == 0 ? 4.8 : 15.2, 15.55 + 0.002 * i);
    }
    fnAdd(11.3, 5.3);
    fnAdd(11.3, 0.005);
    fnAdd(1.5006, 0.0505);
    Pair pair(aSite);
    pair.SetEPS(1e-3);
    ASSERT_TRUE(pair.BuildBoth());
    EXPECT_FALSE(pair.tin.CheckPtUsed(pair.tin.GetPointSize() - 1)) << "the walk left the mesh";
}

// The hull of a few vertices that stand for all; the plain way is the ring of all of them.
TEST(SameAsPlain, HullOfFewCandidates)
{
    for (std::uint64_t nSeed = 0; nSeed < 20; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Sites aNarrow = RandomSites(3000, nSeed), aOnAxes = aNarrow;
        for (size_t i = 0; i < 3000; ++i) {
            aNarrow[i].y *= 0.1;
            aOnAxes[i].x = i % 50 == 0 ? 100.0 : aOnAxes[i].x;
        }
        const struct {
            const char* szWhat;
            Sites aSite;
            bool bFew;
        } aCase[] = {{"random", RandomSites(5000, nSeed), true},
                     {"narrow", aNarrow, true},
                     {"many exactly on an edge along an axis", aOnAxes, true},
                     {"clustered", ClusteredSites(3000, nSeed), false},
                     {"grid", GridSites(60, 50, 0.7), false},
                     {"turned grid", GridSites(60, 50, 0.7, 0.1 * static_cast<double>(nSeed)), false},
                     {"circle", CircleSites(2500, 100.0), false},
                     {"a tenth of a millimetre wide", RandomSites(3000, nSeed, 1e-4), false}};
        for (const auto& c : aCase) {
            SCOPED_TRACE(c.szWhat);
            CTin tin = Fed(c.aSite);
            tin.UpdatePtRange();
            const auto fnHullOf = [&tin](const CArray<int>& aFrom) {
                const CXYZ centre = qsv::MiddleOf(tin.m_MinXYZ, tin.m_MaxXYZ);
                return ToVector(
                    qsv::ScanHull(tin.m_aVertex, qsv::StarRing(tin.m_aVertex, aFrom, centre), tin.m_dEPS2));
            };
            CArray<int> aAll;
            for (int i = 0; i < tin.GetPointSize(); ++i) {
                aAll.Add(i);
            }
            const auto aFew = qsv::HullCandidates(tin.m_aVertex, tin.m_MinXYZ, tin.m_MaxXYZ, tin.m_dEPS2);
            EXPECT_EQ(fnHullOf(aFew), fnHullOf(aAll));
            EXPECT_TRUE(!c.bFew || aFew.GetSize() < aAll.GetSize() / 2) << aFew.GetSize();
        }
    }
}

TEST(SameAsPlain, ConstructionWithCoordinatesThatAreNoPlaces)
{
    const double inf = std::numeric_limits<double>::infinity(), nan = inf - inf;
    for (const double dOdd : {nan, inf, -inf, 1e300, 1e-300}) {
        for (const size_t nWhere : {size_t(0), size_t(100), size_t(299)}) {
            SCOPED_TRACE(testing::Message() << dOdd << " at " << nWhere);
            Sites aSite = RandomSites(300, 9);
            aSite[nWhere].y = dOdd;
            Pair pair(aSite);
            pair.BuildBoth();
        }
    }
}

TEST(SameAsPlain, ConstructionWithOtherTolerances)
{
    for (const double dEPS : {0.0, -0.001, 1e-12, 1e-4, 0.01, 0.1}) {
        int nCompared = 0;
        for (std::uint64_t nSeed = 0; nSeed < 10; ++nSeed) {
            SCOPED_TRACE(testing::Message() << dEPS << " seed " << nSeed);
            Pair pair(RandomSites(200 + 100 * static_cast<int>(nSeed), nSeed, 20.0));
            pair.SetEPS(dEPS);
            nCompared += pair.BuildBoth() ? 1 : 0;
        }
        EXPECT_GE(nCompared, 7) << dEPS << ": most inputs must really be compared";
    }
}

TEST(SameAsPlain, Breaklines)
{
    int nCompared = 0;
    for (std::uint64_t nSeed = 0; nSeed < 120; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed + 1000);
        Pair pair(nSeed % 3 == 0   ? LatticeSites(50, dice, 10.0)
                  : nSeed % 3 == 1 ? ClusteredSites(10 + dice.Below(150), nSeed)
                                   : RandomSites(10 + dice.Below(150), nSeed));
        const int nVertices = pair.tin.GetPointSize();
        for (int i = 1 + dice.Below(5); i > 0; --i) {   // crossing each other and leaving the hull
            pair.AddLine(RandomLine(dice, 6), dice.Below(3) == 0);
        }
        for (int i = dice.Below(30); i > 0;
             --i) {   // many at a few vertices, and some that turn round for ever
            const int nVt = dice.Below(nVertices), nTo = dice.Below(nVertices);
            pair.AddIndices({dice.Below(5), nVt, dice.Below(6) == 0 ? nVt : nTo}, dice.Below(4) == 0);
        }
        if (nSeed % 3 == 0) {   // along and through lattice points
            pair.AddLine({{0, 0, 1}, {70, 70, 2}});
            pair.AddLine({{10, 10, 1}, {60, 10, 2}, {60, 10, 2}, {60, 60, 3}, {10, 60, 4}}, true);
        }
        if (nSeed % 4 == 0) {   // to and from vertices that come with the crossings, and such that never come
            pair.AddIndices({pair.tin.GetPointSize() + dice.Below(4), 1, 2}, false);
            pair.AddIndices({2, pair.tin.GetPointSize() + dice.Below(4), 3}, true);
            pair.AddIndices({3, -1, 4}, false);
        }
        nCompared += pair.BuildBoth() ? 1 : 0;
        EXPECT_EQ(pair.tin.m_nWalkDir, pair.plain.walkDir);
    }
    EXPECT_GT(nCompared, 100) << "most inputs must really be compared";
}

// The search that turns around vertices, in meshes where links lead back and forth at random: the same outcome
// as of taking every step, the direction included with which it ends at its limit.
TEST(SameAsPlain, SearchesAlongALineInDamagedMeshes)
{
    int nEndless = 0;
    for (std::uint64_t nSeed = 0; nSeed < 30; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed + 2000);
        Pair pair(nSeed % 2 == 0 ? RandomSites(60, nSeed) : LatticeSites(60, dice, 1.0));
        ASSERT_TRUE(pair.BuildBoth());
        pair.Damage(dice, dice.Below(60), dice.Below(6));
        CTin& tin = pair.tin;
        for (int i = 0; i < 200; ++i) {
            plain::BreakLine line;
            CArray<int> aLine;
            for (int j = 1 + dice.Below(4); j > 0; --j) {
                line.idx.push_back(dice.Below(3) == 0 && j > 1 ? 7 : dice.Below(tin.GetPointSize()));
                aLine.Add(line.idx.back());
            }
            qsv::LinePlace at = {dice.Below(aLine.GetSize()), dice.Below(tin.GetTriSize()), dice.Below(3)};
            int nSeg = at.nSeg, nTri = at.nTri, nSlot = at.nSlot;
            tin.m_nWalkDir = pair.plain.walkDir = dice.Below(2);
            pair.plain.fewestSteps = dice.Below(1000);
            const int nLimit = std::max(pair.plain.fewestSteps, tin.GetTriSize());
            const bool bFound = qsv::TurnToCrossing({tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2},
                                                    aLine, at, tin.m_nWalkDir, nLimit);
            EXPECT_EQ(bFound, pair.plain.FindTriCrossingBL(line, nSeg, nTri, nSlot) != 0);
            EXPECT_EQ(tin.m_nWalkDir, pair.plain.walkDir);
            if (bFound) {
                EXPECT_TRUE(at.nSeg == nSeg && at.nTri == nTri && at.nSlot == nSlot);
            }
            nEndless += !bFound && nSeg < aLine.GetSize() && nTri >= 0 ? 1 : 0;
        }
    }
    EXPECT_GT(nEndless, 100) << "searches that run to the limit";
}

TEST(SameAsPlain, Trimming)
{
    int nCompared = 0;
    for (std::uint64_t nSeed = 0; nSeed < 60; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        const double dAngle = dice.Uniform(0.0, 0.9);
        Pair pair(nSeed % 2 == 0 ? RandomSites(150, nSeed) : ClusteredSites(150, nSeed));
        if (!pair.BuildBoth(dAngle)) {
            continue;
        }
        ++nCompared;
        EXPECT_EQ(pair.tin.SelectTriWithAngle(0.6), pair.plain.SelectTriWithAngle(0.6));
        EXPECT_EQ(Dump(pair.tin), Dump(pair.plain));
        EXPECT_EQ(pair.tin.SelectTriWithLength(9.0), pair.plain.SelectTriWithLength(9.0));
        EXPECT_EQ(Dump(pair.tin), Dump(pair.plain));
        EXPECT_EQ(pair.tin.DelTriWithAngle(0.8, 0), pair.plain.DelTriWithAngle(0.8, 0));
        EXPECT_EQ(Dump(pair.tin), Dump(pair.plain)) << "corners trimmed too";
    }
    EXPECT_GT(nCompared, 50);
}

// Normals go with their triangles from the moment there are as many of them, which may be on the way; and
// links that lead nowhere, or one way only, are renumbered like all others.
TEST(SameAsPlain, TrimmingWithStaleNormalsAndDamagedLinks)
{
    for (int nSeed = 0; nSeed < 6; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Pair pair(RandomSites(80, static_cast<std::uint64_t>(nSeed)));
        ASSERT_TRUE(pair.BuildBoth());
        Dice dice(static_cast<std::uint64_t>(nSeed) + 500);
        pair.Damage(dice, nSeed / 2, 0);
        const int nNormals = pair.tin.GetTriSize() - dice.Below(30);
        pair.plain.triNormal.SetSize(nNormals);
        pair.tin.m_aTriNormal.SetSize(nNormals);
        for (int i = 0; i < nNormals; ++i) {
            pair.tin.m_aTriNormal[i].x = pair.plain.triNormal[i].x = i;
        }
        EXPECT_EQ(pair.tin.DelTriWithAngle(0.7, nSeed % 2), pair.plain.DelTriWithAngle(0.7, nSeed % 2));
        EXPECT_EQ(Dump(pair.tin), Dump(pair.plain));
        ASSERT_EQ(pair.tin.m_aTriNormal.GetSize(), pair.plain.triNormal.Size());
        for (int i = 0; i < pair.tin.m_aTriNormal.GetSize(); ++i) {
            EXPECT_EQ(pair.tin.m_aTriNormal[i].x, pair.plain.triNormal[i].x);
        }
    }
}
