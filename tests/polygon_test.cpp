// TINs of polygons and of points around a centre, and the two forms of the boundary.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/compare.h"
#include "support/mesh_oracle.h"

namespace {

CTin Filled(const Sites& aSite, int nExpected = 1)
{
    CTin tin;
    EXPECT_EQ(tin.CreateTinForPolygon(LineThrough(aSite, true)), nExpected);
    return tin;
}

Sites Reversed(const Sites& aSite)
{
    return Sites(aSite.rbegin(), aSite.rend());
}

Sites StartingAt(const Sites& aSite, int nFirst)
{
    Sites aTurned(aSite.begin() + nFirst, aSite.end());
    aTurned.insert(aTurned.end(), aSite.begin(), aSite.begin() + nFirst);
    return aTurned;
}

// A star-shaped polygon: corners all around the origin, counter-clockwise.
Sites RandomStar(int n, std::uint64_t nSeed, double dLeast, double dMost)
{
    Dice dice(nSeed);
    Sites aSite;
    for (int i = 0; i < n; ++i) {
        const double r = dice.Uniform(dLeast, dMost), dAngle = 6.283185307179586 * i / n;
        aSite.push_back({r * std::cos(dAngle), r * std::sin(dAngle), r});
    }
    return aSite;
}

const Sites kEll = {{0, 0, 1}, {4, 0, 2}, {4, 2, 3}, {2, 2, 4}, {2, 4, 5}, {0, 4, 6}};

}   // namespace

TEST(Polygon, IsFilledToItsOutline)
{
    const CTin tin = Filled(kEll);
    EXPECT_EQ(tin.m_aTri.GetSize(), 4);
    EXPECT_EQ(ToVector(tin.m_aBoundary), (std::vector<int>{0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(IsSound(tin));
    EXPECT_TRUE(IsDisk(tin));
    EXPECT_DOUBLE_EQ(CTin(tin).CalAllAreaXY(), 12.0);
    EXPECT_EQ(tin.m_aVertex[4].z, 5.0) << "heights are carried along";
    EXPECT_EQ(Filled({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).m_aTri.GetSize(), 1);
}

TEST(Polygon, EitherDirectionAndARepeatedEndGiveTheSame)
{
    const std::string strExpected = Dump(Filled(kEll));
    EXPECT_EQ(Dump(Filled(Reversed(kEll))), strExpected);
    Sites aRepeated = kEll;
    aRepeated.push_back(kEll[0]);
    EXPECT_EQ(Dump(Filled(aRepeated)), strExpected);
}

// Whichever corner the ring starts at, so that every edge is the last one once.
TEST(Polygon, ThatMeetsItselfIsRefused)
{
    const NamedSites aCase[] = {
        {"figure eight", {{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 1, 0}}},
        {"a corner on an edge", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 0, 0}, {0, 4, 0}}},
        {"within the tolerance", {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 5e-7, 0}, {0, 4, 0}}}};
    for (const auto& c : aCase) {
        for (int nFirst = 0; nFirst < static_cast<int>(c.aSite.size()); ++nFirst) {
            SCOPED_TRACE(testing::Message() << c.szWhat << " from corner " << nFirst);
            const CTin tin = Filled(StartingAt(c.aSite, nFirst), 0);
            EXPECT_EQ(tin.m_aTri.GetSize(), 0);
            EXPECT_EQ(tin.m_aVertex.GetSize(), static_cast<int>(c.aSite.size())) << "vertices stand";
            EXPECT_EQ(tin.m_aBoundary.GetSize(), tin.m_aVertex.GetSize()) << "the ring stands";
        }
    }
    Filled({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 2e-6, 0}, {0, 4, 0}});   // just beyond the tolerance
    const CTin pinched = Filled({{0, 0, 0}, {2, 1, 0}, {4, 0, 0}, {4, 2, 0}, {2, 1, 0}, {0, 2, 0}}, 0);
    EXPECT_EQ(pinched.m_aVertex.GetSize(), 5) << "coinciding corners are one vertex";
    EXPECT_EQ(ToVector(pinched.m_aBoundary), (std::vector<int>{0, 1, 2, 3, 1})) << "cut to that number";
}

TEST(Polygon, WithoutAreaOrCornersIsRefused)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    EXPECT_EQ(tin.CreateTinForPolygon(LineThrough({{0, 0, 0}, {1, 1, 0}}, true)), 0);
    EXPECT_EQ(tin.m_aVertex.GetSize(), 0) << "what stood there before is gone";
    Filled({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {3, 3, 0}}, 0);
    const double dNan = std::numeric_limits<double>::quiet_NaN();
    Filled({{0, 0, 0}, {1, 0, 0}, {dNan, 1, 0}, {0, 1, 0}}, 0);
}

// Stars on and off a lattice, rings that cross themselves, repeated corners, tiny, huge and endless numbers.
TEST(Polygon, SameAsPlain)
{
    const double aScale[] = {1.0, 1e-5, 1e6, 1e150, 1e154, 1e300};
    int nFilled = 0;
    for (std::uint64_t nSeed = 0; nSeed < 400; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        Sites aSite = nSeed % 4 == 3 ? RandomSites(3 + dice.Below(9), nSeed)
                                     : RandomStar(3 + dice.Below(60), nSeed, 0.3, 10.0);
        const double dScale = nSeed % 4 == 2 ? aScale[dice.Below(6)] : 1.0;
        for (Site& s : aSite) {
            s = nSeed % 4 == 1 ? Site{std::floor(s.x), std::floor(s.y), s.z}
                               : Site{s.x * dScale, s.y * dScale, s.z};
        }
        if (nSeed % 16 == 2) {
            aSite.back().x = std::numeric_limits<double>::infinity();
        }
        CTin tin;
        plain::Tin expected;
        EXPECT_EQ(tin.CreateTinForPolygon(LineThrough(aSite)),
                  expected.CreateTinForPolygon(PlainPoints(aSite)));
        EXPECT_EQ(Dump(tin), Dump(expected));
        nFilled += tin.GetTriSize() > 0 ? 1 : 0;
    }
    EXPECT_GT(nFilled, 200);
    EXPECT_LT(nFilled, 400);
}

TEST(Boundary, AsPairsOfOuterEdges)
{
    CTin tin;
    EXPECT_EQ(tin.GetNumVtOnBoundary(0), -1);
    tin = Filled({{0, 0, 7}, {1, 0, 8}, {0, 1, 9}});
    tin.UpdateBoundary();
    EXPECT_EQ(ToVector(tin.m_aBoundary), (std::vector<int>{2, 0, 0, 1, 1, 2}));
    CArray<int> aSlot, aPos;
    EXPECT_EQ(tin.GetVtOnBoundary(0, aSlot, aPos), 3) << "the search ends at the third place";
    EXPECT_EQ(ToVector(aSlot), (std::vector<int>{2, 0, 0}));
    EXPECT_EQ(ToVector(aPos), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(tin.GetNumVtOnBoundary(0), 3);
    EXPECT_EQ(tin.GetVtOnBoundary(1, aSlot, aPos), -1);
    EXPECT_TRUE(aSlot.IsEmpty() && aPos.IsEmpty());

    CPolyline ring = LineThrough({{5, 5, 5}});
    tin.m_aBoundary[5] = 99;   // no such vertex
    tin.GetBoundary(ring);
    ASSERT_EQ(ring.GetVertexSize(), 6);
    EXPECT_EQ(ring.GetVertex(4)->z, 8.0);
    EXPECT_EQ(ring.GetVertex(5)->z, 0.0);
    EXPECT_NE(ring.IsClose(), 0);
    tin.m_aBoundary.RemoveAll();
    EXPECT_EQ(tin.GetNumVtOnBoundary(0), 0);
    tin.GetBoundary(ring);
    EXPECT_EQ(ring.GetVertexSize(), 0);
}

namespace {

// Places on the wall of an upright tank, seen from near its middle, a little off so that no two directions
// coincide. Halfway round, where the horizontal angle jumps from pi to -pi, the surface stays open.
Sites TankSites(int nColumns, int nRows)
{
    Dice dice(5);
    Sites aSite;
    for (int r = 0; r < nRows; ++r) {
        for (int k = 0; k < nColumns; ++k) {
            const double dAngle = 6.283185307179586 * k / nColumns;
            const double dRadius = 10.0 + dice.Uniform(0.0, 0.5), z = r + dice.Uniform(0.0, 0.2);
            aSite.push_back({dRadius * std::cos(dAngle) + 1e6, dRadius * std::sin(dAngle), z});
        }
    }
    return aSite;
}

double DistanceToSegment(const CXYZ& p, const CXYZ& a, const CXYZ& b)
{
    const CXYZ ab = b - a;
    const double t = (p - a).Inn(ab) / ab.Inn(ab);
    EXPECT_TRUE(t >= 0.0 && t <= 1.0);
    return p.Len(CXYZ(a.x + t * ab.x, a.y + t * ab.y, a.z + t * ab.z));
}

}   // namespace

TEST(Surround, TankIsTriangulatedAllAround)
{
    const Sites aSite = TankSites(24, 5);
    CTin tin = Fed(aSite);
    ASSERT_EQ(tin.CreateTinObal(), 1);
    EXPECT_EQ(CountFaults(tin, MESH_FAULT_CLOCKWISE), 0);
    EXPECT_TRUE(IsDisk(tin));
    ASSERT_EQ(tin.GetPointSize(), 120);
    for (int i = 0; i < 120; ++i) {
        const Site& s = aSite[static_cast<size_t>(i)];
        EXPECT_TRUE(tin.m_aVertex[i].x == s.x && tin.m_aVertex[i].y == s.y && tin.m_aVertex[i].z == s.z);
        EXPECT_EQ(tin.CheckPtUsed(i), 1);
    }
    EXPECT_GT(tin.m_MinXYZ.x, 999980.0) << "the range is that of the places, not of their directions";
}

// Straight along the y axis the horizontal angle counts as 0, so 1, 4 and 5 are seen in one direction, and
// the one fed first stands for them.
TEST(Surround, DirectionsAlongTheYAxisCountAsAlongX)
{
    CTin tin = Fed({{0, 0, 1}, {1, 0, 0}, {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}});
    ASSERT_EQ(tin.CreateTinObal(), 1);
    EXPECT_EQ(tin.GetTriSize(), 2);
    EXPECT_EQ(tin.CheckPtUsed(1), 1);
    EXPECT_EQ(tin.CheckPtUsed(4), 0);
    EXPECT_EQ(tin.CheckPtUsed(5), 0);
}

TEST(Surround, BreaklinesAddPlacesInSpace)
{
    CTin tin = Fed(TankSites(24, 5));
    CBreakLine bl;
    bl.m_aVertexIndex.Add(2);
    bl.m_aVertexIndex.Add(4 * 24 + 7);
    bl.m_aVertexIndex.Add(9);
    tin.m_aBreakLine.Add(bl);
    ASSERT_EQ(tin.CreateTinObal(), 1);
    EXPECT_EQ(CountFaults(tin, MESH_FAULT_CLOCKWISE), 0);
    ASSERT_GT(tin.GetPointSize(), 125) << "the line crosses edges";
    int nOnSecond = 0;
    for (int i = 120; i < tin.GetPointSize(); ++i) {
        const CXYZ &p = tin.m_aVertex[i], &a = tin.m_aVertex[2], &b = tin.m_aVertex[103],
                   &c = tin.m_aVertex[9];
        nOnSecond += p.x < b.x ? 1 : 0;
        EXPECT_LT(nOnSecond > 0 ? DistanceToSegment(p, b, c) : DistanceToSegment(p, a, b), 1e-8) << i;
    }
}

TEST(Surround, SameAsPlain)
{
    for (std::uint64_t nSeed = 0; nSeed < 20; ++nSeed) {
        SCOPED_TRACE(nSeed);
        const Sites aSite = RandomSites(4 + static_cast<int>(nSeed) * 10, nSeed, 20.0);
        CTin tin = Fed(aSite);
        plain::Tin expected = PlainFed(aSite);
        EXPECT_EQ(tin.CreateTinObal(), expected.CreateTinObal());
        EXPECT_EQ(Dump(tin), Dump(expected));
        EXPECT_EQ(tin.m_MinXYZ.x, expected.minXYZ.x);
        EXPECT_EQ(tin.m_MaxXYZ.z, expected.maxXYZ.z);
    }
}

TEST(Surround, FailureBringsTheVerticesBack)
{
    CTin tin = Fed({{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(tin.CreateTinObal(), 0);
    EXPECT_EQ(Dump(tin), Dump(Fed({{1, 2, 3}, {4, 5, 6}})));
    EXPECT_EQ(CTin().CreateTinObal(), 0);
}
