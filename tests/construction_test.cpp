#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "support/fixtures.h"
#include "support/mesh_oracle.h"

namespace {

void ExpectEmpty(CTin& tin)
{
    EXPECT_EQ(tin.GetPointSize(), 0);
    EXPECT_EQ(tin.GetTriSize(), 0);
    EXPECT_EQ(tin.m_aBoundary.GetSize(), 0);
    EXPECT_EQ(tin.m_aBreakLine.GetSize(), 0);
    EXPECT_EQ(tin.m_dEPS, 1e-6);
}

}   // namespace

TEST(CreateTin, RefusesWhatSpansNoSurface)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const NamedSites aCase[] = {
        {"no point", {}},
        {"two points", {{0, 0, 0}, {1, 1, 0}}},
        {"one place fed four times", {{3, 3, 0}, {3, 3, 1}, {3, 3, 2}, {3, 3, 3}}},
        {"all within the tolerance", {{0, 0, 0}, {5e-7, 0, 0}, {0, 5e-7, 0}}},
        {"a line along x", {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}}},
        {"a slanting line", {{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {3, 3, 0}}},
        {"so far away that products overflow",
         {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {1e200, 13, 0}, {-1e200, -1e200, 0}}},
        {"not a number", {{nan, nan, 0}, {nan, 1, 0}, {1, nan, 0}, {nan, 2, 0}}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CTin tin = Fed(c.aSite);
        tin.m_aBreakLine.SetSize(1);
        EXPECT_EQ(tin.CreateTin(0.0), 0);
        ExpectEmpty(tin);
    }
}

// The ring starts at direction -pi, so at vertex 0 (direction -3/4 pi); the fan's diagonal 0-2 passes
// through the centre, which splits both triangles on their common edge.
TEST(CreateTin, SplitsTheDiagonalOfASquareAtItsCentre)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    EXPECT_EQ(Dump(tin), "v 0 0 0\nv 10 0 0\nv 10 10 0\nv 0 10 0\nv 5 5 0\n"
                         "t 4 2 3 | 1 2 -1 | 0\n"
                         "t 4 3 0 | 3 0 -1 | 0\n"
                         "t 4 1 2 | 0 3 -1 | 0\n"
                         "t 4 0 1 | 2 1 -1 | 0\n"
                         "b 0\nb 1\nb 2\nb 3\n");
}

TEST(CreateTin, IsDelaunayOverTheHull)
{
    const NamedSites aCase[] = {{"random", RandomSites(300, 1)},
                                {"clustered", ClusteredSites(300, 2)},
                                {"grid, every square cocircular", GridSites(15, 12, 1.0)},
                                {"grid in random order", Shuffled(GridSites(12, 12, 2.5), 3)},
                                {"one circle", CircleSites(60, 50.0)},
                                {"a thin strip", GridSites(100, 2, 0.01)},
                                {"far from the origin", GridSites(12, 12, 1.0, 0.0, 21530180.0, 6782553.0)}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CTin tin = Built(c.aSite);
        EXPECT_TRUE(IsSound(tin));
        EXPECT_TRUE(IsDisk(tin));
        EXPECT_TRUE(IsDelaunay(tin));
        EXPECT_TRUE(HasPlacedEveryVertex(tin));
        const double dArea = RingArea(tin, tin.m_aBoundary);
        EXPECT_NEAR(MeshArea(tin), dArea, 1e-9 * dArea);
        const std::vector<int> aRing = ToVector(tin.m_aBoundary);
        for (size_t i = 0, n = aRing.size(); i < n; ++i) {
            CXYZ &a = tin.m_aVertex[aRing[i]], &b = tin.m_aVertex[aRing[(i + 1) % n]];
            EXPECT_EQ(tin.CheckTurn(a, b, tin.m_aVertex[aRing[(i + 2) % n]]), -1) << "no corner is straight";
        }
    }
}

TEST(CreateTin, LeavesOutWhatCoincides)
{
    Sites aSite = RandomSites(50, 4);
    for (size_t i = 0; i < 50; ++i) {
        aSite.push_back({aSite[i].x, aSite[i].y, 99.0});
    }
    CTin tin = Built(aSite);
    EXPECT_TRUE(IsSound(tin));
    EXPECT_EQ(tin.GetPointSize(), 100) << "the copies stay in the array";
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(tin.CheckPtUsed(i), i < 50) << i;
    }
}

TEST(CreateTin, StartsAfreshOnWhatStands)
{
    CTin tin = Built(RandomSites(200, 5));
    const std::string strFirst = Dump(tin);
    EXPECT_EQ(tin.CreateTin(0.0), 1);
    EXPECT_EQ(Dump(tin), strFirst);
}

// Regular data turned against the axes is where rounding puts collinear points beyond the hull and makes
// slivers that catch the walk. No point may be left out, near the origin or far from it.
TEST(NoPointIsLost, OnTurnedGridsOfEverySize)
{
    for (const double dStep : {0.001, 0.01, 1.0, 10.0, 1000.0}) {
        for (const double dOrigin : {0.0, 1e5, 4e6}) {
            for (int nAngle = 0; nAngle < 200; ++nAngle) {
                SCOPED_TRACE(testing::Message()
                             << "step " << dStep << " origin " << dOrigin << " angle " << nAngle);
                CTin tin = Built(GridSites(25, 25, dStep, nAngle * 0.0314159, dOrigin, 1.3 * dOrigin));
                ASSERT_TRUE(HasPlacedEveryVertex(tin));
                const double dRounding = 1e-10 * dStep * dStep + 2e-12 * dStep * (dStep + dOrigin);
                ASSERT_NEAR(MeshArea(tin), 576.0 * dStep * dStep, dRounding);
            }
        }
    }
}

TEST(NoPointIsLost, WhateverTheToleranceIs)
{
    for (const double dEPS : {0.0, -1.0, 1e-12, 1e-3, 0.4}) {
        SCOPED_TRACE(dEPS);
        CTin tin = Fed(GridSites(25, 25, 10.0, 0.3));
        tin.SetEPS(dEPS);
        EXPECT_EQ(tin.CreateTin(0.0), 1);
        EXPECT_TRUE(HasPlacedEveryVertex(tin));
    }
}

// A half disc whose arc turns by less than the tolerance from point to point: corners in line are taken out
// one by one, against those that remain, so that the arc does not vanish as a whole.
TEST(NoPointIsLost, AndTheHullKeepsItsArcs)
{
    Sites aSite = {{-1, 0, 0}, {1, 0, 0}, {0, -0.5, 0}, {0, 0.5, 0}};
    for (int i = 1; i < 1000; ++i) {
        const double dAngle = 3.141592653589793 * i / 1000.0;
        aSite.push_back({std::cos(dAngle), std::sin(dAngle), 0.0});
    }
    CTin tin = Fed(aSite);
    tin.SetEPS(0.001);
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    EXPECT_TRUE(HasPlacedEveryVertex(tin));
    EXPECT_NEAR(RingArea(tin, tin.m_aBoundary), std::acos(0.0) + 0.5, 0.01);
}

TEST(FindTri, TellsVertexEdgeInsideOutside)
{
    CTin tin = SquareOnPlane(0, 0, 0);   // four triangles around (5, 5)
    const struct {
        const char* szWhere;
        double x, y;
        int nState;
    } aCase[] = {{"inside", 5, 2, 0},
                 {"at the centre", 5, 5, 1},
                 {"at a corner", 10, 0, 1},
                 {"near a corner, on the line of an edge", 10 - 1e-7, 1e-7, 1},
                 {"near a corner, off the lines of its edges", 10 - 1e-7, 3e-7, 0},
                 {"on an inner edge", 2.5, 2.5, 2},
                 {"on the outline", 10, 4, 2},
                 {"outside", 10.1, 4, -1}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhere);
        for (int nStart = 0; nStart < 4; ++nStart) {
            int nState = 9, nSide = 9;
            const int nTri = tin.FindTri(nStart, c.x, c.y, nState, nSide);
            EXPECT_EQ(nState, c.nState);
            EXPECT_EQ(nTri >= 0, c.nState >= 0);
            if (nState == 1) {
                EXPECT_NEAR(tin.GetVertex(nTri, nSide)->x, c.x, 1e-6);
                EXPECT_NEAR(tin.GetVertex(nTri, nSide)->y, c.y, 1e-6);
            }
        }
    }
    int nState = 9, nSide = 9;
    EXPECT_EQ(tin.FindTri(-1, 5.0, 2.0, nState, nSide), -1);
    EXPECT_EQ(nState, -2);
    EXPECT_EQ(nSide, 0);
    EXPECT_EQ(tin.FindTri(4, 5.0, 2.0, nState, nSide), -1);
    EXPECT_EQ(nState, -2);
}

TEST(FindTri, GivesUpInAMeshThatLeadsRound)
{
    CTin tin = Built(RandomSites(60, 8));
    for (int t = 0; t < tin.GetTriSize(); ++t) {   // every edge leads to some triangle, most of them far away
        for (int k = 0; k < 3; ++k) {
            tin.m_aTri[t].m_nNeighbor[k] = (t * 7 + k) % tin.GetTriSize();
        }
    }
    int nState = 9, nSide = 9;
    tin.FindTri(0, 1e6, 1e6, nState, nSide);
    EXPECT_EQ(nState, -2);
}

TEST(Triangles, AreAddedOnlyOnVerticesThatExist)
{
    CTin tin = Fed({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EXPECT_EQ(tin.AddTri(0, 1, 3), -1);
    EXPECT_EQ(tin.AddTri(-1, 1, 2), -1);
    EXPECT_EQ(tin.GetTriSize(), 0);
    EXPECT_EQ(tin.AddTri(0, 1, 2), 0);
    EXPECT_EQ(tin.AddTri(2, 1, 0), 1);
    EXPECT_EQ(tin.CheckTurn(0), -1);
    EXPECT_EQ(tin.CheckTurn(1), 1);
    EXPECT_EQ(tin.CheckTurn(2), -2);
    CXYZ a(0, 0, 0), b(1, 0, 0), c(0.5, 1e-13, 0);
    EXPECT_EQ(tin.CheckTurn(a, b, c), 0) << "a doubled area of 1e-13 counts as none";
}

TEST(Triangles, LeaveNoLinkBehindWhenDeleted)
{
    CTin tin = Built(RandomSites(40, 9));
    tin.UpdateNormal();
    Dice dice(10);
    while (tin.GetTriSize() > 1) {
        const int nTri = dice.Below(tin.GetTriSize());
        const int nBefore = tin.GetTriSize();
        ASSERT_EQ(tin.DelTri(nTri), 1);
        ASSERT_EQ(tin.GetTriSize(), nBefore - 1);
        ASSERT_EQ(tin.m_aTriNormal.GetSize(), nBefore - 1);
        ASSERT_TRUE(IsSound(tin));
    }
    EXPECT_EQ(tin.DelTri(1), 0);
    EXPECT_EQ(tin.DelTri(0), 1);
    ExpectEmpty(tin);
}

TEST(Triangles, ThatUseAVertexAreListedInIndexOrder)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    int nFrom = -5, nTri = 0, nSlot = 0, nFound = 0;
    while (tin.FindTriWithPt(4, nFrom, nTri, nSlot)) {
        EXPECT_EQ(nTri, nFound++);
        EXPECT_EQ(tin.m_aTri[nTri].m_nVertex[nSlot], 4);
    }
    EXPECT_EQ(nFound, 4);
    EXPECT_EQ(nTri, 4) << "the triangle count, after the last";
}

TEST(Ranges, CountAllVerticesOrOnlyThoseInUse)
{
    CTin tin = Built({{0, 0, 0}, {10, 0, -2}, {0, 10, 3}});
    tin.AddPoint(50, -50, 70);
    EXPECT_EQ(tin.UpdatePtRange(), 1);
    EXPECT_EQ(tin.m_MaxXYZ.x, 50.0);
    EXPECT_EQ(tin.m_MinXYZ.y, -50.0);
    EXPECT_EQ(tin.UpdateTinRange(), 1);
    EXPECT_EQ(tin.m_MaxXYZ.x, 10.0);
    EXPECT_EQ(tin.m_MinXYZ.z, -2.0);
    EXPECT_EQ(tin.m_MaxXYZ.z, 3.0);
    CTin empty;
    EXPECT_EQ(empty.UpdatePtRange(), 0);
    EXPECT_EQ(empty.UpdateTinRange(), 0);
    EXPECT_EQ(empty.m_MaxXYZ.x, 0.0);
}

// The public building steps are asked for things that do not exist, and must leave the mesh as it is.
TEST(Splitting, RefusesBadArguments)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    tin.AddPoint(5, 2, 0);
    const std::string strBefore = Dump(tin);
    const struct {
        int nVt, nTriCount, nTri, nSide;
    } aCase[] = {{9, 4, 0, 0},  {-1, 4, 0, 0},        {5, 5, 0, 0},  {5, -1, 0, 0}, {5, 4, 4, 0},
                 {5, 4, -1, 0}, {5, INT32_MAX, 0, 0}, {5, 4, 3, -1}, {5, 4, 3, 3}};
    for (const auto& c : aCase) {
        int nTriCount = c.nTriCount, nLast = c.nTri;
        tin.DivideTriOnSide(c.nVt, nTriCount, c.nTri, c.nSide);
        if (c.nSide == 0) {
            tin.DivideTriInside(c.nVt, nTriCount, c.nTri);
            EXPECT_EQ(tin.DivideTri(c.nVt, nTriCount, nLast), 0);
        }
        EXPECT_EQ(nTriCount, c.nTriCount);
        EXPECT_EQ(Dump(tin), strBefore);
    }
    int nTriCount = 4, nLast = 0;
    EXPECT_EQ(tin.DivideTri(5, nTriCount, nLast), 1) << "and the array grows when there is no room";
    EXPECT_EQ(nTriCount, 6);
    EXPECT_EQ(tin.GetTriSize(), 6);
    EXPECT_TRUE(IsSound(tin));
}
