// Vertices taken out of level, steep, closed and damaged surfaces.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "support/compare.h"
#include "support/mesh_oracle.h"
#include "tin/internal/edge_ring.h"

namespace {

bool IsSelected(const CTin& tin)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (tin.m_aTri[t].m_bSelect != 0) {
            return true;
        }
    }
    return false;
}

bool IsOnOutline(const CTin& tin, int nVt)
{
    CTin copy = tin;
    copy.UpdateBoundary();
    const std::vector<int> aPair = ToVector(copy.m_aBoundary);
    return std::find(aPair.begin(), aPair.end(), nVt) != aPair.end();
}

// Every link leads somewhere, comes back across the same edge, and no edge is open or used twice.
testing::AssertionResult IsClosed(const CTin& tin)
{
    if (CountFaults(tin, MESH_FAULT_CLOCKWISE) > 0) {
        return testing::AssertionFailure() << "links";
    }
    CTin copy = tin;
    copy.UpdateBoundary();
    return copy.m_aBoundary.IsEmpty() ? testing::AssertionSuccess() : testing::AssertionFailure() << "open";
}

// A globe of nRings circles of latitude, with poles first and last, seen from outside.
CTin Globe(int nColumns, int nRings)
{
    CTin tin;
    tin.m_aVertex.Add(CXYZ(0, 0, 10));
    for (int r = 1; r <= nRings; ++r) {
        const double dLat = 3.141592653589793 * r / (nRings + 1);
        for (int k = 0; k < nColumns; ++k) {
            const double dLon = 6.283185307179586 * (k + 0.3 * r) / nColumns;
            tin.m_aVertex.Add(CXYZ(10 * std::sin(dLat) * std::cos(dLon), 10 * std::sin(dLat) * std::sin(dLon),
                                   10 * std::cos(dLat)));
        }
    }
    const int nSouth = tin.m_aVertex.Add(CXYZ(0, 0, -10));
    const auto at = [nColumns](int r, int k) { return 1 + (r - 1) * nColumns + k % nColumns; };
    for (int k = 0; k < nColumns; ++k) {
        tin.AddTri(0, at(1, k), at(1, k + 1));
        for (int r = 1; r < nRings; ++r) {
            tin.AddTri(at(r, k), at(r + 1, k), at(r, k + 1));
            tin.AddTri(at(r, k + 1), at(r + 1, k), at(r + 1, k + 1));
        }
        tin.AddTri(at(nRings, k), nSouth, at(nRings, k + 1));
    }
    tin.UpdateTopology();
    return tin;
}

}   // namespace

TEST(EdgeRing, IsChainedFromItsFirstEdge)
{
    const auto ring = [](const std::vector<qsv::DirectedEdge>& aEdge) {
        CArray<qsv::DirectedEdge> a;
        for (const qsv::DirectedEdge& e : aEdge) {
            a.Add(e);
        }
        return ToVector(qsv::ChainIntoRing(a));
    };
    using Ring = std::vector<int>;
    EXPECT_EQ(ring({}), Ring());
    EXPECT_EQ(ring({{7, 3}, {9, 7}, {3, 9}}), (Ring{7, 3, 9})) << "closed: the end is not repeated";
    EXPECT_EQ(ring({{7, 3}, {9, 7}, {3, 5}, {2, 9}}), (Ring{2, 9, 7, 3, 5})) << "open at both ends";
    EXPECT_EQ(ring({{7, 3}, {3, 5}, {3, 6}, {8, 7}, {1, 7}}), (Ring{8, 7, 3, 5})) << "first of several";
    EXPECT_EQ(ring({{7, 3}, {4, 5}}), (Ring{7, 3})) << "what does not join is left out";
    EXPECT_EQ(ring({{INT_MAX, INT_MIN}, {INT_MIN, -1}}), (Ring{INT_MAX, INT_MIN, -1}));
}

TEST(TangentFrame, TurnsTheNormalUpright)
{
    CTin tin;
    Dice dice(4);
    for (int i = 0; i < 200; ++i) {
        const double x = dice.Uniform(-1, 1), y = dice.Uniform(-1, 1);
        CXYZ n = i == 0 ? CXYZ(0, 0, 1) : i == 1 ? CXYZ(0, 0, -1) : CXYZ(x, y, dice.Uniform(-1, 1));
        const double dLength = n.Len();
        CRot rot;
        tin.SetRotForNV_Z(n, rot);
        CXYZ up;
        rot.Rotate(n, up);
        EXPECT_NEAR(up.x, 0.0, 1e-15);
        EXPECT_NEAR(up.y, 0.0, 1e-15);
        EXPECT_NEAR(up.z, dLength, 1e-15);
        rot.T();
        rot.Rotate(up, up);
        EXPECT_LT(up.Len(n), 1e-15) << "the transpose turns it back";
    }
}

// Whether the hole at a corner can be filled depends on how the opposite edges turn.
TEST(DelVertex, CornerIsFilledOnlyWhereTheRingTurnsLeft)
{
    CTin filled = Built({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {7, 7, 0}});
    ASSERT_EQ(filled.DelVertex(0), 1);
    EXPECT_EQ(filled.CalAllAreaXY(), 50.0) << "up to the line from corner to corner";
    EXPECT_TRUE(IsDisk(filled));

    CTin notched = Built({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {3, 3, 0}});
    notched.UpdateNormal();
    ASSERT_EQ(notched.DelVertex(0), 1);
    EXPECT_EQ(notched.GetTriSize(), 2);
    EXPECT_DOUBLE_EQ(notched.CalAllAreaXY(), 70.0) << "less the two triangles, 15 each";
    EXPECT_EQ(ToVector(notched.m_aBoundary), (std::vector<int>{0, 1, 2})) << "the ring without the corner";
    EXPECT_EQ(notched.m_aTriNormal.GetSize(), 2) << "normals go with their triangles";
    for (const CTin& tin : {filled, notched}) {
        EXPECT_TRUE(IsSound(tin));
        EXPECT_FALSE(IsSelected(tin));
    }
}

TEST(DelVertex, IndicesFollow)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    CPolyline line = LineThrough({{10, 10, 0}, {0, 10, 0}, {5, 5, 0}, {0, 0, 0}});
    tin.AddBreakLine(line);   // 2, 3, 4, 0
    ASSERT_EQ(tin.DelVertex(3), 1);
    EXPECT_EQ(ToVector(tin.m_aBoundary), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ToVector(tin.m_aBreakLine[0].m_aVertexIndex), (std::vector<int>{2, 3, 0}));
    tin.m_aBreakLine[0].m_aVertexIndex.SetSize(1);
    ASSERT_EQ(tin.DelVertex(2), 1);
    EXPECT_EQ(tin.m_aBreakLine.GetSize(), 1) << "an empty breakline stays";
    EXPECT_TRUE(tin.m_aBreakLine[0].m_aVertexIndex.IsEmpty());
}

// However a surface stands in space, the hole is closed by the same triangles.
TEST(DelVertex, SteepSurfaceIsTreatedAsALevelOne)
{
    for (std::uint64_t nSeed = 0; nSeed < 12; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Sites aSite = RandomSites(60, nSeed);
        for (Site& s : aSite) {
            s.z *= 0.1;
        }
        CTin level = Built(aSite), steep = level;
        CWPK wpk;
        wpk.k = 1.5707963267948966 + 0.1 * static_cast<double>(nSeed);   // upright, then overhanging
        CRot rot;
        rot.AddMatrix(ROT_ABOUT_X, wpk);
        for (int i = 0; i < 60; ++i) {
            rot.Rotate(steep.m_aVertex[i], steep.m_aVertex[i]);
        }
        for (int nVt = 40; nVt >= 0; nVt -= 4) {
            ASSERT_EQ(level.DelVertex(nVt), steep.DelVertex(nVt));
            CTin same = steep;
            same.m_aVertex = level.m_aVertex;
            ASSERT_EQ(Dump(same), Dump(level)) << nVt;
        }
    }
}

TEST(DelVertex, ClosedSurfaceStaysClosed)
{
    CTin tin = Globe(12, 7);
    ASSERT_TRUE(IsClosed(tin));
    ASSERT_EQ(tin.DelVertex(0), 1) << "the pole, with a ring of 12";
    EXPECT_TRUE(IsClosed(tin));
    for (int nVt = 70; nVt > 12; nVt -= 7) {
        const int nTri = tin.GetTriSize();
        ASSERT_EQ(tin.DelVertex(nVt), 1) << nVt;
        EXPECT_EQ(tin.GetTriSize(), nTri - 2);
        ASSERT_TRUE(IsClosed(tin)) << nVt;
    }
}

// Seen along the mean normal of the other half, the ring round the top of an octahedron turns the wrong way.
TEST(DelVertex, HoleThatCannotBeFilledChangesNothing)
{
    CTin tin = Globe(4, 1);
    ASSERT_EQ(tin.GetTriSize(), 8);
    tin.m_aTri[5].m_bSelect = 1;
    CTin expected = tin;
    expected.m_aTri[5].m_bSelect = 0;
    EXPECT_EQ(tin.DelVertex(0), 0);
    EXPECT_EQ(Dump(tin), Dump(expected)) << "but for the selection";
}

TEST(DelVertex, UnusedVertexAndNoVertex)
{
    const std::string strExpected = Dump(SquareOnPlane(0, 0, 0));
    CTin tin = SquareOnPlane(0, 0, 0);
    tin.m_aVertex.Add(CXYZ(99, 99, 9));
    for (const int nVt : {5, 5, -1, INT_MAX, INT_MIN}) {   // the first time it is there
        tin.m_aTri[0].m_bSelect = 1;
        EXPECT_EQ(tin.DelVertex(nVt), 1);
        EXPECT_EQ(Dump(tin), strExpected) << nVt;
    }
}

// One after the other, in random order. Where the ground is gentle all of them go, the plan stays a mesh, and its area
// stays while inner vertices go.
TEST(DelVertex, SameAsPlain)
{
    for (std::uint64_t nSeed = 0; nSeed < 80; ++nSeed) {
        SCOPED_TRACE(nSeed);
        Dice dice(nSeed);
        Sites aSite = nSeed == 79      ? RandomSites(600, nSeed)   // more triangles than a span has
                      : nSeed % 9 == 0 ? GridSites(9, 9, 10.0, 0.3, 21530180.0, 6782553.0)
                      : nSeed % 3 == 0 ? GridSites(3 + dice.Below(5), 3 + dice.Below(5), 1.0)
                                       : RandomSites(5 + dice.Below(60), nSeed, nSeed % 3 == 1 ? 100 : 20);
        const bool bSurround = nSeed % 9 == 1, bGentle = nSeed % 2 == 0 && !bSurround;
        for (Site& s : aSite) {
            s.z *= bGentle ? 0.01 : 1.0;
        }
        CTin tin = Fed(aSite);
        plain::Tin expected = PlainFed(aSite);
        ASSERT_EQ(bSurround ? tin.CreateTinObal() : tin.CreateTin(0.0),
                  bSurround ? expected.CreateTinObal() : expected.CreateTin(0.0));
        while (tin.GetTriSize() > 0) {
            const int nVt = dice.Below(tin.GetPointSize()), nTri = tin.GetTriSize();
            const bool bInner = tin.CheckPtUsed(nVt) && !IsOnOutline(tin, nVt);
            const double dArea = MeshArea(tin);
            const int nDeleted = tin.DelVertex(nVt);
            ASSERT_EQ(nDeleted, expected.DelVertex(nVt)) << nVt;
            ASSERT_EQ(Dump(tin), Dump(expected)) << nVt;
            ASSERT_TRUE(!bGentle || IsSound(tin)) << nVt;
            if (bGentle && bInner && nDeleted) {
                ASSERT_EQ(tin.GetTriSize(), nTri - 2) << nVt;
                ASSERT_NEAR(MeshArea(tin), dArea, 1e-7) << nVt;
            }
            if (!bGentle && dice.Below(30) == 0) {
                break;
            }
        }
    }
}
