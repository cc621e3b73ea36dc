// Walls below the outline, and single points put into a finished mesh.

#include <gtest/gtest.h>

#include <limits>

#include "support/compare.h"
#include "support/mesh_oracle.h"

namespace {

std::vector<int> Corners(const CTin& tin, int nTri)
{
    return std::vector<int>(tin.m_aTri[nTri].m_nVertex, tin.m_aTri[nTri].m_nVertex + 3);
}

CTin OneTriangle()
{
    return Built({{0, 0, 5}, {3, 0, 5}, {0, 4, 5}});
}

}   // namespace

TEST(AddVPlane, WallsOfOneTriangle)
{
    CTin tin = OneTriangle();
    const std::vector<int> aTop = Corners(tin, 0);
    tin.AddVPlane(2.0);
    ASSERT_EQ(tin.GetPointSize(), 6);
    ASSERT_EQ(tin.GetTriSize(), 7);
    // The first outer edge ends at slot 0: its feet come first, that of its start before that of its end.
    EXPECT_EQ(Corners(tin, 1), (std::vector<int>{aTop[0], aTop[2], 3}));
    EXPECT_EQ(Corners(tin, 2), (std::vector<int>{aTop[0], 3, 4}));
    EXPECT_EQ(tin.m_aVertex[3].x, tin.m_aVertex[aTop[2]].x);
    EXPECT_EQ(tin.m_aVertex[3].y, tin.m_aVertex[aTop[2]].y);
    EXPECT_EQ(tin.m_aVertex[3].z, 2.0);
    EXPECT_NEAR(tin.CalAllArea(), 6.0 + 12.0 * 3.0, 1e-12) << "12 round, 3 high";
    EXPECT_EQ(CountFaults(tin, MESH_FAULT_FLAT), 0) << "one connected band";
    int nOpen = 0;
    for (int t = 0; t < 7; ++t) {
        for (const int nNeighbor : tin.m_aTri[t].m_nNeighbor) {
            nOpen += nNeighbor < 0 ? 1 : 0;
        }
    }
    EXPECT_EQ(nOpen, 3) << "the foot of each wall";
}

TEST(AddVPlane, OddInput)
{
    CTin tin;
    tin.AddPoint(1, 2, 3);
    tin.AddVPlane(0.0);
    EXPECT_EQ(tin.GetPointSize(), 1);

    CTin nowhere = OneTriangle();
    nowhere.AddVPlane(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(nowhere.GetPointSize(), 9) << "no foot is ever found again";
    EXPECT_EQ(nowhere.GetTriSize(), 7);

    CTin damaged = OneTriangle();
    damaged.m_aTri[0].m_nVertex[1] = 99;
    damaged.m_aTri[0].m_nNeighbor[2] = 1;   // no triangle now, but one once walls are added
    damaged.AddVPlane(0.0);
    EXPECT_EQ(damaged.GetTriSize(), 4) << "one whole wall, and half of one that ends at the missing vertex";
}

TEST(AddVPlane, SameAsPlain)
{
    for (std::uint64_t nSeed = 0; nSeed < 30; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        Sites aSite = nSeed % 2 == 0 ? RandomSites(100, nSeed) : GridSites(9, 8, 1.0);
        aSite.push_back({aSite[0].x, aSite[0].y, -3.0});   // already at the foot, but not used
        CTin tin = Built(aSite);
        plain::Tin expected = PlainFed(aSite);
        expected.CreateTin(0.0);
        const double dEPS = nSeed % 3 == 0 ? 0.0 : nSeed % 3 == 1 ? 1e-6 : 2.0;
        tin.SetEPS(dEPS);
        expected.SetEPS(dEPS);
        for (const double z : {-3.0, 5.0, -3.0}) {
            tin.AddVPlane(z);
            expected.AddVPlane(z);
            EXPECT_EQ(Dump(tin), Dump(expected)) << z;
        }
    }
}

TEST(InsertPoint, InsideOnAnEdgeAndOnTheOutline)
{
    CTin tin = OneTriangle();
    ASSERT_EQ(tin.DivideTri(1.0, 1.0, 9.0), 1);
    EXPECT_EQ(tin.GetTriSize(), 3);
    EXPECT_EQ(tin.m_aVertex[3].z, 9.0);
    EXPECT_TRUE(IsSound(tin));
    ASSERT_EQ(tin.DivideTri(0.5, 0.5, 9.0), 1) << "on the edge from (0, 0) to (1, 1)";
    EXPECT_EQ(tin.GetTriSize(), 5);
    ASSERT_EQ(tin.DivideTri(1.5, 0.0, 9.0), 1) << "on the outline";
    EXPECT_EQ(tin.GetTriSize(), 6);
    EXPECT_TRUE(IsSound(tin));
    EXPECT_TRUE(IsDisk(tin));
    EXPECT_DOUBLE_EQ(tin.CalAllAreaXY(), 6.0);
}

TEST(InsertPoint, LeavesTheEdgesAsTheyAre)
{
    // Close to the middle of the long bottom edge: swapping would turn it.
    CTin tin = Built({{0, 0, 0}, {100, 0, 0}, {50, 60, 0}, {50, -60, 0}});
    tin.m_nOptimDepth = 3;
    const double dBefore = tin.CalAllAreaXY();
    int nState = 0, nSide = 0;
    const int nTri = tin.FindTri(0, 50.0, 0.5, nState, nSide);
    ASSERT_EQ(nState, 0);
    const std::vector<int> aOld = Corners(tin, nTri);
    ASSERT_EQ(tin.DivideTri(50.0, 0.5, 1.0), 1);
    EXPECT_EQ(Corners(tin, nTri), (std::vector<int>{4, aOld[0], aOld[1]}));
    EXPECT_EQ(Corners(tin, 2), (std::vector<int>{4, aOld[1], aOld[2]}));
    EXPECT_EQ(Corners(tin, 3), (std::vector<int>{4, aOld[2], aOld[0]}));
    EXPECT_FALSE(IsDelaunay(tin));
    EXPECT_EQ(tin.CalAllAreaXY(), dBefore);
    EXPECT_EQ(tin.m_nOptimDepth, 3) << "as the host left it";
}

TEST(InsertPoint, RefusedWithoutAnyChange)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    const std::string strBefore = Dump(tin);
    EXPECT_EQ(tin.DivideTri(11.0, 5.0, 0.0), 0) << "outside";
    EXPECT_EQ(tin.DivideTri(5.0, 5.0, 3.0), 0) << "at a vertex";
    EXPECT_EQ(Dump(tin), strBefore);
    EXPECT_EQ(CTin().DivideTri(0.0, 0.0, 0.0), 0);
}

// The arguments may be coordinates of the object's own vertices, which move when the array grows.
TEST(InsertPoint, TakesCoordinatesOfItsOwnVertices)
{
    CTin tin = OneTriangle();
    tin.m_aVertex.Add(CXYZ(1, 1, 6));
    tin.m_aVertex.FreeExtra();
    const CXYZ& p = tin.m_aVertex[3];
    ASSERT_EQ(tin.DivideTri(p.x, p.y, p.z), 1);
    EXPECT_EQ(tin.m_aVertex[4].z, 6.0);
    EXPECT_EQ(tin.GetTriSize(), 3);
}
