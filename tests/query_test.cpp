// Where a point lies, how high the surface is there, and how large it is.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "base/sort_key.h"
#include "support/compare.h"
#include "support/fixtures.h"
#include "support/mesh_oracle.h"
#include "tin/internal/lines.h"
#include "tin/internal/plan.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();

// A right triangle, once counter-clockwise (0), once clockwise (1), and one whose corners lie on one line (2).
CTin FrontBackAndFlat()
{
    return Assembled({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {2, 2, 0}}, {{0, 1, 2}, {0, 2, 1}, {1, 3, 2}});
}

TEST(Containment, TakesInEdgesAndCornersWithoutTolerance)
{
    CTin tin = FrontBackAndFlat();
    const double dJustBeyond = std::nextafter(2.0, 3.0);
    const struct {
        const char* szWhere;
        double x, y;
        int nHeld;
    } aCase[] = {{"inside", 1, 1, 1},
                 {"on an edge", 2, 0, 1},
                 {"at a corner", 4, 0, 1},
                 {"at the corner of the right angle", 0, 0, 1},
                 {"on the slope", 2, 2, 1},
                 {"one step beyond the slope", 2, dJustBeyond, 0},
                 {"past the end of an edge", 5, 0, 0},
                 {"before the start of an edge", -1, 0, 0},
                 {"outside", 3, 3, 0},
                 {"nowhere", kNan, 1, 0}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhere);
        EXPECT_EQ(tin.PtInTri(0, c.x, c.y), c.nHeld);
        EXPECT_EQ(tin.PtInTri(1, c.x, c.y), 0) << "turned the other way";
        EXPECT_EQ(tin.PtInTriIncludeBack(0, c.x, c.y), c.nHeld);
        EXPECT_EQ(tin.PtInTriIncludeBack(1, c.x, c.y), c.nHeld);
    }
    for (const int nTri : {-1, 3}) {
        EXPECT_EQ(tin.PtInTri(nTri, 1.0, 1.0), 0);
        EXPECT_EQ(tin.PtInTriIncludeBack(nTri, 1.0, 1.0), 0);
    }
}

// The flat triangle runs from (4, 0) by way of (2, 2) to (0, 4). Its edges have squared lengths 8, 8 and 32, so
// only its middle corner is within the length of each edge from the edge's start.
TEST(Containment, FlatTriangleHoldsItsWholeLineOnlyWhenBacksCount)
{
    CTin tin = FrontBackAndFlat();
    EXPECT_EQ(tin.PtInTriIncludeBack(2, 104.0, -100.0), 1);
    EXPECT_EQ(tin.PtInTriIncludeBack(2, 1.0, 3.0), 1);
    EXPECT_EQ(tin.PtInTriIncludeBack(2, 1.0, 3.5), 0);
    EXPECT_EQ(tin.PtInTri(2, 104.0, -100.0), 0);
    EXPECT_EQ(tin.PtInTri(2, 2.0, 2.0), 1);
    EXPECT_EQ(tin.PtInTri(2, 0.0, 4.0), 0) << "twice as far from (4, 0) as the first edge is long";
}

TEST(Containment, WholeTinAsksEveryTriangle)
{
    CTin empty;
    EXPECT_EQ(empty.PtInTin(0.0, 0.0), 0);
    EXPECT_EQ(empty.PtInTinIncludeBack(0.0, 0.0), 0);

    CTin square = SquareOnPlane(0.0, 0.0, 1.0);
    EXPECT_EQ(square.PtInTin(5.0, 5.0), 1) << "at the vertex all triangles share";
    EXPECT_EQ(square.PtInTin(10.0, 3.0), 1) << "on the outline";
    EXPECT_EQ(square.PtInTin(std::nextafter(10.0, 11.0), 3.0), 0);

    CTin back = Assembled({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}, {{0, 2, 1}});
    EXPECT_EQ(back.PtInTin(1.0, 1.0), 0);
    EXPECT_EQ(back.PtInTinIncludeBack(1.0, 1.0), 1);
    EXPECT_EQ(back.PtInTinIncludeBack(3.0, 3.0), 0);
}

TEST(Height, FollowsThePlaneUpToTheOutline)
{
    CTin tin = SquareOnPlane(2.0, 3.0, 1.0);
    const struct {
        const char* szWhere;
        double x, y, z;
    } aCase[] = {{"inside a triangle", 4.0, 1.0, 12.0},
                 {"on a shared edge", 2.5, 2.5, 13.5},
                 {"at a corner", 10.0, 0.0, 21.0},
                 {"on the outline", 0.0, 7.0, 22.0}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhere);
        double z = 99.0;
        int nTri = 99;
        EXPECT_EQ(tin.InterpolateForPlane(0, c.x, c.y, z, nTri), 1);
        EXPECT_NEAR(z, c.z, 1e-12);
        EXPECT_EQ(tin.PtInTri(nTri, c.x, c.y), 1);
    }
    const struct {
        const char* szWhy;
        int nStart;
        double x;
    } aMiss[] = {{"off the surface", 0, 10.5}, {"no such start", 4, 5.0}, {"no such start", -1, 5.0}};
    for (const auto& m : aMiss) {
        SCOPED_TRACE(m.szWhy);
        double z = 99.0;
        int nTri = 99;
        EXPECT_EQ(tin.InterpolateForPlane(m.nStart, m.x, 5.0, z, nTri), 0);
        EXPECT_EQ(z, 99.0) << "height untouched";
        EXPECT_EQ(nTri, -1);
    }
}

TEST(Height, PlaneOfATriangleGoesOnOutsideItButNotUpright)
{
    // Through (0, 0, 0), (3, 0, 1) and (0, 1, 0): z = x / 3. The last triangle stands on the line y = 0.
    CTin tin = Assembled({{0, 0, 0}, {3, 0, 1}, {0, 1, 0}, {3, 0, 5}}, {{0, 1, 2}, {0, 1, 3}});
    double z = 99.0;
    EXPECT_EQ(tin.CalZonPlane(0, 300.0, -7.0, z), 1);
    EXPECT_NEAR(z, 100.0, 1e-12);
    // A reciprocal rounds 1/3 down, and 5 times that is the double below 5/3.
    EXPECT_EQ(tin.CalZonPlane(0, 5.0, 0.0, z), 1);
    EXPECT_EQ(z, std::nextafter(5.0 / 3.0, 0.0));
    for (const int nTri : {1, 2, -1}) {
        z = 99.0;
        EXPECT_EQ(tin.CalZonPlane(nTri, 1.0, 0.0, z), 0);
        EXPECT_EQ(z, 99.0);
    }
}

// Walking and scanning must agree on the height at a place, whichever triangles hold it.
void CompareWalkWithScan(CTin& tin, int nStart, double x, double y)
{
    SCOPED_TRACE(testing::Message() << "at " << x << ", " << y << " from triangle " << nStart);
    double z = 0.0;
    int nTri = 0;
    const int nFound = tin.InterpolateForPlane(nStart, x, y, z, nTri);
    int nHolders = 0;
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        double dScanned = 0.0;
        if (tin.PtInTri(t, x, y) != 0) {
            ++nHolders;
            ASSERT_EQ(tin.CalZonPlane(t, x, y, dScanned), 1);
            ASSERT_NEAR(z, dScanned, 1e-7) << "triangles " << t << " and " << nTri;
        }
    }
    ASSERT_EQ(nHolders > 0, tin.PtInTin(x, y) != 0);
    // On an edge rounding may leave a place in neither triangle by the exact test; the walk allows for it.
    ASSERT_TRUE(nHolders == 0 || nFound == 1);
}

TEST(Height, WalkAgreesWithAScan)
{
    CTin tin = Built(RandomSites(400, 7));
    Dice dice(8);
    int nInside = 0;
    for (int i = 0; i < 4000; ++i) {
        const double x = dice.Uniform(-5.0, 105.0), y = dice.Uniform(-5.0, 105.0);
        CompareWalkWithScan(tin, dice.Below(tin.GetTriSize()), x, y);
        double z = 0.0;
        int nTri = 0;
        nInside += tin.InterpolateForPlane(0, x, y, z, nTri);
        EXPECT_EQ(tin.PtInTin(x, y), nTri >= 0 ? 1 : 0);
    }
    EXPECT_GT(nInside, 3000);
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const CXYZ a = *tin.GetVertex(t, k), b = *tin.GetVertex(t, (k + 1) % 3);
            const int nStart = dice.Below(tin.GetTriSize());
            CompareWalkWithScan(tin, nStart, a.x, a.y);
            CompareWalkWithScan(tin, nStart, 0.5 * (a.x + b.x), 0.5 * (a.y + b.y));
            double z = 0.0;
            int nTri = 0;
            EXPECT_EQ(tin.InterpolateForPlane(nStart, a.x, a.y, z, nTri), 1);
            EXPECT_NEAR(z, a.z, 1e-9) << "at a vertex";
        }
    }
}

// Every answer of a finder, alone and among many, is that of the member from the start that it names, to the
// bit; and from the triangle that it found.
void CompareFinderWithMember(CTin& tin, const Sites& aSite, int nFoundAtLeast)
{
    CArray<CXYZ> aPlace;
    for (const Site& s : aSite) {
        aPlace.Add(CXYZ(s.x, s.y, s.z));
    }
    const CHeightFinder finder(tin);
    CArray<CHeightAnswer> aAnswer;
    const int nFound = finder.Find(aPlace, aAnswer);
    ASSERT_EQ(aAnswer.GetSize(), aPlace.GetSize());
    int nCounted = 0;
    for (int i = 0; i < aPlace.GetSize(); ++i) {
        const double x = aPlace[i].x, y = aPlace[i].y;
        const CHeightAnswer &one = aAnswer[i], alone = finder.Find(x, y);
        double z = 0.0, zAgain = 0.0;
        int nTri = -7, nAgain = -7;
        ASSERT_EQ(one.m_nResult, tin.InterpolateForPlane(finder.GetStartTri(x, y), x, y, z, nTri));
        ASSERT_EQ(one.m_nTri, nTri);
        ASSERT_EQ(std::memcmp(&one.m_dHeight, &z, sizeof z), 0);
        ASSERT_EQ(std::memcmp(&one, &alone, sizeof one), 0);
        if (nTri >= 0) {
            ASSERT_EQ(tin.InterpolateForPlane(nTri, x, y, zAgain, nAgain), one.m_nResult);
            ASSERT_EQ(nAgain, nTri);
            ASSERT_EQ(std::memcmp(&zAgain, &z, sizeof z), 0);
        }
        nCounted += one.m_nResult;
    }
    EXPECT_EQ(nFound, nCounted);
    EXPECT_GE(nFound, nFoundAtLeast);
}

TEST(HeightFinder, AnswersAsTheMemberDoes)
{
    Sites aAsked = RandomSites(3000, 31, 110.0);
    aAsked.push_back({kNan, 5.0, 0.0});
    aAsked.push_back({HUGE_VAL, -HUGE_VAL, 0.0});
    aAsked.push_back({1e300, 5.0, 0.0});
    const Sites aRandom = RandomSites(2000, 32), aGrid = GridSites(40, 25, 2.5);
    const struct {
        const char* szWhat;
        CTin tin;
        Sites aVertex;
    } aCase[] = {{"random", Built(aRandom), aRandom},
                 {"grid: places at vertices and on edges", Built(aGrid), aGrid},
                 {"clustered", Built(ClusteredSites(2000, 33)), ClusteredSites(2000, 33)},
                 {"trimmed to a ragged outline", Built(RandomSites(800, 34), 0.9), RandomSites(800, 34)},
                 {"one triangle", Built({{0, 0, 0}, {90, 0, 1}, {0, 90, 2}}), {{90, 0, 1}}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CTin tin = c.tin;
        Sites aAll = aAsked;
        aAll.insert(aAll.end(), c.aVertex.begin(), c.aVertex.end());
        for (const Site& s : aGrid) {
            aAll.push_back({s.x + 1.25, s.y, 0.0});
        }
        CompareFinderWithMember(tin, Shuffled(aAll, 35), 1000);
        CompareFinderWithMember(tin, GridSites(60, 30, 1.7), 500);   // in an order of their own
        tin.AddVPlane(-5.0);
        CompareFinderWithMember(tin, aAll, 1000);
        for (int t = 0; t < tin.GetTriSize(); t += 10) {   // links and corners that lead nowhere
            tin.m_aTri[t].m_nNeighbor[t % 3] = t * 7919;
            tin.m_aTri[t].m_nVertex[(t + 1) % 3] = -3;
        }
        tin.m_aVertex[0].x = kNan;
        CompareFinderWithMember(tin, aAll, 0);
    }
    CTin empty;
    CompareFinderWithMember(empty, aAsked, 0);
}

struct Nearest {
    int nResult;
    double x, y, z, d;
};
Nearest NearestOf(CTin& tin, double x, double y)
{
    Nearest n = {0, -1.0, -1.0, -1.0, -1.0};
    n.nResult = tin.NearestOutsideTin(x, y, n.x, n.y, n.z, n.d);
    return n;
}

void ExpectNearest(const Nearest& n, double x, double y, double z, double d)
{
    EXPECT_EQ(n.nResult, 1);
    EXPECT_EQ(n.x, x);
    EXPECT_EQ(n.y, y);
    EXPECT_EQ(n.z, z);
    EXPECT_DOUBLE_EQ(n.d, d);
}

void SetBoundary(CTin& tin, std::initializer_list<int> aVt)
{
    tin.m_aBoundary.SetSize(0);
    for (const int nVt : aVt) {
        tin.m_aBoundary.Add(nVt);
    }
}

TEST(NearestOutside, FindsCornersAndFeetOfEdges)
{
    CTin tin = Fed({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    EXPECT_EQ(NearestOf(tin, 1.0, 1.0).nResult, 0) << "no outline";
    EXPECT_EQ(NearestOf(tin, 1.0, 1.0).d, -1.0) << "outputs stay";
    SetBoundary(tin, {0, 1, 1, 2, 2, 3, 3, 0});
    ExpectNearest(NearestOf(tin, 13.0, -4.0), 10, 0, 0, 5.0);
    ExpectNearest(NearestOf(tin, 7.0, -4.0), 7, 0, 0, 4.0);
    ExpectNearest(NearestOf(tin, 8.0, 5.0), 10, 5, 0, 2.0);   // a place inside gets the outline all the same
    ExpectNearest(NearestOf(tin, 5.0, 5.0), 5, 0, 0, 5.0);    // of equal ones the first
    double x = 13.0, y = -4.0, z = 0.0, d = 0.0;
    EXPECT_EQ(tin.NearestOutsideTin(x, y, x, y, z, d), 1) << "the answer may replace the question";
    EXPECT_EQ(x, 10.0);
    EXPECT_DOUBLE_EQ(d, 5.0);
    EXPECT_EQ(NearestOf(tin, kNan, 0.0).nResult, 0);
}

// The edge rises from (0,0,0) to (10,0,10). The perpendicular from (5,-3,0) meets it a quarter along: there the
// direction (10,0,10) and the difference (2.5-5, 3, 2.5) have the dot product 0.
TEST(NearestOutside, FootOnASlopedEdgeIsTakenInSpace)
{
    CTin tin = Fed({{0, 0, 0}, {10, 0, 10}, {0, 50, 0}});
    SetBoundary(tin, {0, 1});
    ExpectNearest(NearestOf(tin, 5.0, -3.0), 2.5, 0, 2.5, std::sqrt(2.5 * 2.5 + 9.0));
    // From (-1,-3,0) the foot would lie before the start, at t = -0.05; from (9,-1,0), at (4.5,0,4.5), it is farther
    // away than the end.
    ExpectNearest(NearestOf(tin, -1.0, -3.0), 0, 0, 0, std::sqrt(10.0));
    ExpectNearest(NearestOf(tin, 9.0, -1.0), 10, 0, 10, std::sqrt(2.0));
}

TEST(NearestOutside, ReadsPairsAndStandsOddLists)
{
    CTin tin = Fed({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    SetBoundary(tin, {0, 1, 2, 3});   // two edges: y = 0 and y = 10, not x = 10
    ExpectNearest(NearestOf(tin, 12.0, 4.0), 10, 0, 0, std::sqrt(20.0));
    SetBoundary(tin, {0, 1, 3});   // the single last entry is joined to the first
    ExpectNearest(NearestOf(tin, -3.0, 5.0), 0, 5, 0, 3.0);
    SetBoundary(tin, {2});
    ExpectNearest(NearestOf(tin, 10.0, 13.0), 10, 10, 0, 3.0);
    SetBoundary(tin, {77, -5});   // missing vertices read as zero
    ExpectNearest(NearestOf(tin, 3.0, 4.0), 0, 0, 0, 5.0);
}

TEST(FootOnLine, IsNotKeptBetweenTheEnds)
{
    double x = -1.0, y = -1.0, z = -1.0, d = -1.0;
    EXPECT_EQ(CalcFootOnLine(1, 2, 3, 1, 2, 3, 0, 0, 0, x, y, z, d), 0);
    EXPECT_EQ(x, -1.0);
    EXPECT_EQ(d, -1.0);
    EXPECT_EQ(CalcFootOnLine(0, 0, 0, 0, 0, 2, 3, 4, 20, x, y, z, d), 1);
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(z, 20.0);
    EXPECT_EQ(d, 5.0);
}

TEST(Range, OfAllTrianglesAndOfOne)
{
    double a[6] = {9, 9, 9, 9, 9, 9};
    CTin empty = Fed({{1, 2, 3}});
    EXPECT_EQ(empty.GetRange(a[0], a[1], a[2], a[3], a[4], a[5]), 0);
    for (const double d : a) {
        EXPECT_EQ(d, 0.0);
    }
    // The vertex at 99 belongs to no triangle.
    CTin tin =
        Assembled({{3, -1, 5}, {3, 8, 6}, {1, 8, 7}, {99, 99, 99}, {-4, 0, 2}}, {{0, 1, 2}, {0, 2, 4}});
    EXPECT_EQ(tin.GetRange(a[0], a[1], a[2], a[3], a[4], a[5]), 1);
    const double aWhole[] = {-4, 3, -1, 8, 2, 7};
    const double aFirst[] = {1, 3, -1, 8, 5, 7};
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(a[k], aWhole[k]);
    }
    EXPECT_EQ(tin.m_MinXYZ.x, -4.0);
    EXPECT_EQ(tin.m_MaxXYZ.z, 7.0);
    EXPECT_EQ(tin.GetRange(0, a[0], a[1], a[2], a[3], a[4], a[5]), 1);
    for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(a[k], aFirst[k]);
    }
    EXPECT_EQ(tin.GetRange(2, a[0], a[1], a[2], a[3], a[4], a[5]), 0);
    EXPECT_EQ(a[0], 1.0) << "outputs stay";
}

TEST(Range, SortsThreeNumbersAsTheGeneralSortDoes)
{
    const double aValue[] = {-0.0, 0.0, 1.0, -2.0, kNan, std::numeric_limits<double>::infinity()};
    for (const double a : aValue) {
        for (const double b : aValue) {
            for (const double c : aValue) {
                double aSorted[3] = {a, b, c};
                qsv::SortThree(aSorted);
                CArray<double> aKey;
                CArray<int> aIndex;
                aKey.Add(a);
                aKey.Add(b);
                aKey.Add(c);
                QuickSortKey(aKey, aIndex, 1);
                for (int k = 0; k < 3; ++k) {
                    EXPECT_TRUE(aSorted[k] == aKey[k] || (std::isnan(aSorted[k]) && std::isnan(aKey[k])));
                    EXPECT_EQ(std::signbit(aSorted[k]), std::signbit(aKey[k])) << a << ' ' << b << ' ' << c;
                }
            }
        }
    }
}

TEST(Area, InSpaceAndInPlan)
{
    CTin empty;
    EXPECT_EQ(empty.CalAllArea(), 0.0);
    EXPECT_EQ(empty.CalAllAreaXY(), 0.0);
    // A 3-4-5 right triangle lying, standing upright and leaning at 3 : 4.
    CTin tin = Assembled({{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {4, 0, 3}, {0, 3, 4}},
                         {{0, 1, 2}, {0, 1, 3}, {0, 1, 4}, {0, 2, 1}});
    EXPECT_DOUBLE_EQ(tin.CalTriArea(0), 6.0);
    EXPECT_DOUBLE_EQ(tin.CalTriAreaXY(0), 6.0);
    EXPECT_DOUBLE_EQ(tin.CalTriArea(1), 6.0);
    EXPECT_EQ(tin.CalTriAreaXY(1), 0.0);
    EXPECT_DOUBLE_EQ(tin.CalTriArea(2), 10.0);   // base 4, height 5
    EXPECT_DOUBLE_EQ(tin.CalTriAreaXY(2), 6.0);
    EXPECT_DOUBLE_EQ(tin.CalTriAreaXY(3), 6.0) << "never negative";
    EXPECT_DOUBLE_EQ(tin.CalAllArea(), 28.0);
    EXPECT_DOUBLE_EQ(tin.CalAllAreaXY(), 18.0);
    for (const int nTri : {-1, 4}) {
        EXPECT_EQ(tin.CalTriArea(nTri), 0.0);
        EXPECT_EQ(tin.CalTriAreaXY(nTri), 0.0);
    }
    CTin terrain = Built(RandomSites(300, 11));
    EXPECT_GT(terrain.CalAllArea(), terrain.CalAllAreaXY());
}

// At 100 million, (1e8 + 1)^2 = 1e16 + 2e8 + 1 loses its last digit, so the three cross products are -1e8,
// 2e8 and -1e8: nothing is left of the half unit.
TEST(Area, ComesFromPositionsAndLosesDigitsFarOut)
{
    CTin tin;
    EXPECT_EQ(tin.CalTriArea(1e8, 1e8, 0, 1e8 + 1, 1e8, 0, 1e8, 1e8 + 1, 0), 0.0);
    EXPECT_EQ(tin.CalTriArea(0, 0, 0, 1, 0, 0, 0, 1, 0), 0.5);
}

TEST(Normal, OfATriangle)
{
    CTin tin = Assembled({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {2, 0, 2}, {4, 0, 0}},
                         {{0, 1, 2}, {0, 2, 1}, {0, 3, 2}, {0, 1, 4}});
    CXYZ n(7, 7, 7);
    EXPECT_EQ(tin.GetNVec(4, n), 0);
    EXPECT_EQ(tin.GetNVec(-1, n), 0);
    EXPECT_EQ(n.x, 7.0);
    EXPECT_EQ(tin.GetNVec(0, n), 1);
    EXPECT_EQ(n.z, 1.0);
    EXPECT_EQ(tin.GetNVec(1, n), 1);
    EXPECT_EQ(n.z, -1.0);
    EXPECT_EQ(tin.GetNVec(2, n), 1);   // u = (2, 0, 2), w = (0, 2, 0): u x w = (-4, 0, 4)
    EXPECT_NEAR(n.x, -std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(n.z, std::sqrt(0.5), 1e-15);
    EXPECT_EQ(tin.GetNVec(3, n), 1);
    EXPECT_TRUE(std::isnan(n.x) && std::isnan(n.z)) << "no area";
    EXPECT_EQ(tin.GetNVec(0, tin.m_aVertex[0]), 1) << "into a corner of the triangle itself";
    EXPECT_EQ(tin.m_aVertex[0].z, 1.0);
}

TEST(Normal, MeanLeansToTheVertical)
{
    CXYZ n(7, 7, 7);
    CTin empty;
    EXPECT_EQ(empty.GetNVec(n), 0);
    EXPECT_EQ(n.x, 0.0);
    EXPECT_EQ(n.z, 1.0);

    CTin level = Assembled({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    EXPECT_EQ(level.GetNVec(n), 1);
    EXPECT_EQ(n.z, 1.0);
    // A wall facing +x: the sum is (0, 0, 1) + (1, 0, 0).
    CTin wall = Assembled({{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 2}});
    EXPECT_EQ(wall.GetNVec(n), 1);
    EXPECT_NEAR(n.x, std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(n.z, std::sqrt(0.5), 1e-15);
    // Face down: the sum is zero.
    CTin back = Assembled({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 2, 1}});
    EXPECT_EQ(back.GetNVec(n), 1);
    EXPECT_TRUE(std::isnan(n.z));
}

// A host may have written any index into a triangle.
TEST(DanglingIndices, ReadAsTheZeroRecordInQueries)
{
    CTin tin = Assembled({{2, 0, 3}, {0, 2, 3}}, {});
    tin.m_aTri.Add({{1000000, 0, 1}, {5, -7, 1000000}, 0});   // the first corner is (0, 0, 0)
    EXPECT_EQ(tin.PtInTri(0, 0.5, 0.5), 1);
    EXPECT_EQ(tin.PtInTinIncludeBack(0.5, 0.5), 1);
    double z = 0.0;
    int nTri = 0;
    EXPECT_EQ(tin.InterpolateForPlane(0, 0.5, 0.5, z, nTri), 1);
    EXPECT_DOUBLE_EQ(z, 1.5);
    EXPECT_EQ(tin.InterpolateForPlane(0, 3.0, 3.0, z, nTri), 0) << "out across a link to nothing";
    EXPECT_EQ(tin.CalAllAreaXY(), 2.0);
    double a[6];
    EXPECT_EQ(tin.GetRange(a[0], a[1], a[2], a[3], a[4], a[5]), 1);
    EXPECT_EQ(a[4], 0.0);
    CXYZ n;
    EXPECT_EQ(tin.GetNVec(n), 1);
}

bool SameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}
bool SameBits(const CXYZ& a, const plain::Point& b)
{
    return SameBits(a.x, b.x) && SameBits(a.y, b.y) && SameBits(a.z, b.z);
}

// At large coordinates, where every rounding shows, and with normals that are not numbers around a triangle.
TEST(SameAsPlain, NormalsToTheLastBit)
{
    Sites aSite = RandomSites(120, 41);
    for (Site& s : aSite) {
        s = {s.x + 654321.0, s.y + 4123456.7, s.z * 10.0};
    }
    CTin tin = Built(aSite);
    plain::Tin reference = PlainFed(aSite);
    ASSERT_EQ(reference.CreateTin(0.0), 1);
    ASSERT_EQ(Dump(tin), Dump(reference));
    tin.m_aTri[5].m_nVertex[1] = tin.m_aTri[5].m_nVertex[0];
    reference.tri[5].v[1] = reference.tri[5].v[0];
    plain::List<plain::Point> aTriNormal, aVtNormal;
    reference.GetNormals(aTriNormal, aVtNormal);
    tin.UpdateNormal();
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        EXPECT_TRUE(SameBits(tin.m_aTriNormal[t], aTriNormal[t])) << t;
    }
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        EXPECT_TRUE(SameBits(tin.m_aVtNormal[v], aVtNormal[v])) << v;
        EXPECT_EQ(tin.m_aVtNormal[v].m_nMark, 0);
    }
}

}   // namespace
