#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "support/fixtures.h"
#include "support/mesh_oracle.h"
#include "tin/internal/lines.h"

namespace {

CTin BuiltWith(const Sites& aSite, const std::vector<Sites>& aLine, bool bClose = false)
{
    CTin tin = Fed(aSite);
    for (const Sites& aVertex : aLine) {
        CPolyline line = LineThrough(aVertex, bClose);
        tin.AddBreakLine(line);
    }
    EXPECT_EQ(tin.CreateTin(0.0), 1);
    return tin;
}

// Whether every piece of the plan segment between two vertices, from one vertex that lies on it to the next, is a
// triangle edge.
bool IsChainOfEdges(const CTin& tin, int nFrom, int nTo)
{
    const CXYZ a = tin.m_aVertex[nFrom], b = tin.m_aVertex[nTo];
    const double dx = b.x - a.x, dy = b.y - a.y, dLength = std::hypot(dx, dy);
    std::set<std::pair<int, int>> aEdge;
    std::map<double, int> aOnTheWay;   // by the distance from a
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const int nVt = tin.m_aTri[t].m_nVertex[k], nNext = tin.m_aTri[t].m_nVertex[(k + 1) % 3];
            aEdge.insert({{nVt, nNext}, {nNext, nVt}});
            const CXYZ d = tin.m_aVertex[nVt] - a;
            const double dAlong = (d.x * dx + d.y * dy) / dLength, dOff = (d.x * dy - d.y * dx) / dLength;
            if (std::fabs(dOff) <= 1e-8 && dAlong >= 0.0 && dAlong <= dLength * (1.0 + 1e-12)) {
                aOnTheWay[dAlong] = nVt;
            }
        }
    }
    int nAt = nFrom;
    for (const auto& [dAlong, nVt] : aOnTheWay) {
        if (nVt != nAt && aEdge.count({nAt, nVt}) == 0) {
            return false;
        }
        nAt = nVt;
    }
    return nAt == nTo;
}

int CountEnforced(const CTin& tin, int nLine)
{
    const CBreakLine& bl = tin.m_aBreakLine[nLine];
    const int n = bl.m_aVertexIndex.GetSize();
    int nEnforced = 0;
    for (int i = 0; i < (bl.m_bClose ? n : n - 1); ++i) {
        nEnforced += IsChainOfEdges(tin, bl.m_aVertexIndex[i], bl.m_aVertexIndex[(i + 1) % n]);
    }
    return nEnforced;
}

}   // namespace

// A strip of 5 squares, and a line along its middle whose ends split the outer uprights. From there it runs
// inside a triangle to the first inner upright, and again from the last: it crosses the 4 inner uprights
// and the diagonals of the 3 squares between them.
TEST(Breaklines, AddOneVertexAndTwoTrianglesACrossedEdge)
{
    const Sites aStrip = GridSites(6, 2, 1.0);
    CTin plain = Built(aStrip);
    plain.AddPoint(0, 0.5, 0);
    plain.AddPoint(5, 0.5, 0);
    ASSERT_EQ(plain.CreateTin(0.0), 1);
    CTin tin = BuiltWith(aStrip, {{{0, 0.5, 100}, {5, 0.5, 200}}});
    EXPECT_EQ(tin.GetPointSize(), plain.GetPointSize() + 7);
    EXPECT_EQ(tin.GetTriSize(), plain.GetTriSize() + 2 * 7);
    EXPECT_TRUE(IsSound(tin));
    EXPECT_TRUE(IsDisk(tin));
    EXPECT_EQ(CountEnforced(tin, 0), 1);
    for (int i = 14; i < tin.GetPointSize(); ++i) {
        EXPECT_NEAR(tin.m_aVertex[i].y, 0.5, 1e-12);
        EXPECT_NEAR(tin.m_aVertex[i].z, 100 + 20 * tin.m_aVertex[i].x, 1e-9)
            << "height of the line, not of the edge";
    }
}

TEST(Breaklines, ThatAreEdgesAlreadyAddNothing)
{
    const Sites aGrid = GridSites(7, 7, 1.0);
    const std::string strBefore = Dump(Built(aGrid));
    CTin tin = BuiltWith(aGrid, {{{0, 2, 0}, {6, 2, 0}, {6, 6, 0}}, {{1, 1, 0}, {1, 4, 0}}});
    EXPECT_EQ(tin.GetPointSize(), 49);
    EXPECT_EQ(Dump(tin).substr(0, strBefore.size()), strBefore);
    EXPECT_EQ(CountEnforced(tin, 0) + CountEnforced(tin, 1), 3);
}

TEST(Breaklines, ThatAreClosedComeBackToTheirStart)
{
    for (const bool bMarked : {false, true}) {
        Sites aRing = {{20.5, 20.5, 5}, {80.5, 25.5, 5}, {70.5, 80.5, 5}, {30.5, 75.5, 5}};
        if (!bMarked) {
            aRing.push_back(aRing.front());
        }
        CTin tin = BuiltWith(RandomSites(300, 31), {aRing}, bMarked);
        EXPECT_TRUE(IsSound(tin));
        EXPECT_EQ(tin.m_aBreakLine[0].m_aVertexIndex.GetSize(), 4);
        EXPECT_EQ(CountEnforced(tin, 0), 4);
    }
}

TEST(Breaklines, ReferToTheVertexInUseWherePointsCoincide)
{
    CTin tin;
    tin.BeginAddPoint(6);
    for (const Site& s : Sites{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}) {
        tin.AddPoint2(s.x, s.y, s.z);
    }
    CPolyline line = LineThrough({{10 + 5e-7, 0, 7}, {0, 10 - 1e-6, 7}});
    tin.AddBreakLine2(line);
    tin.EndAddPoint();
    ASSERT_EQ(tin.m_aBreakLine[0].m_aVertexIndex[0], 4);
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    EXPECT_TRUE(IsSound(tin));
    const CArray<int>& aIndex = tin.m_aBreakLine[0].m_aVertexIndex;
    EXPECT_TRUE(tin.CheckPtUsed(aIndex[0]) && tin.CheckPtUsed(aIndex[1]));
    EXPECT_EQ(CountEnforced(tin, 0), 1);
}

TEST(WalkAroundAVertex, BouncesAtTheOutsideOnceAStep)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    int nTri = 0, nSlot = 0;
    ASSERT_EQ(tin.FindFirstTriWithPt(4, nTri, nSlot, 4), 1);
    const int nStart = nTri;
    for (int i = 0; i < 4; ++i) {   // an inner vertex: round and back
        EXPECT_EQ(tin.FindNextTriWithPt(nTri, nSlot), 1);
        EXPECT_EQ(tin.m_aTri[nTri].m_nVertex[nSlot], 4);
    }
    EXPECT_EQ(nTri, nStart);
    EXPECT_EQ(tin.m_nWalkDir, 1);

    ASSERT_EQ(tin.FindFirstTriWithPt(0, nTri, nSlot, 4), 1);   // a corner: two triangles, to and fro
    const int nCorner = nTri;
    EXPECT_EQ(tin.FindNextTriWithPt(nTri, nSlot), 1);
    EXPECT_NE(nTri, nCorner);
    EXPECT_EQ(tin.FindNextTriWithPt(nTri, nSlot), 1);
    EXPECT_EQ(nTri, nCorner);

    CTin one = Built({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    one.m_nWalkDir = 1;
    nTri = nSlot = 0;
    EXPECT_EQ(one.FindNextTriWithPt(nTri, nSlot), 0);
    EXPECT_EQ(nTri, -1);
    EXPECT_EQ(one.m_nWalkDir, 0) << "turned round once, not back again";
    EXPECT_EQ(one.FindNextTriWithPt(nTri, nSlot), 0) << "from no triangle there is no step";
    EXPECT_EQ(one.FindFirstTriWithPt(0, nTri, nSlot, 0), 0);
    EXPECT_EQ(nTri, 0);
}

TEST(CrossPoint, MeetsWithinTheExtentAndTheTolerance)
{
    double x = -7, y = -7, z = -7;
    EXPECT_EQ(CalCrossPointXY(0, 0, 10, 10, 0, 20, 3, -1, 3, 1, x, y, z, 0, 0, 1e-6), 1);
    EXPECT_TRUE(x == 3 && y == 0 && z == 13);
    EXPECT_EQ(CalCrossPointXY(0, 0, 10, 0, 10, 20, -1, 4, 1, 4, x, y, z, 0, 0, 1e-6), 1) << "upright: by y";
    EXPECT_EQ(z, 14.0);
    const struct {
        const char* szWhat;
        double dEnd;
        int bLine1, bLine2, nMeets;
    } aCase[] = {{"short by less than eps", 3 - 5e-7, 0, 0, 1},
                 {"short by more", 3 - 2e-6, 0, 0, 0},
                 {"short, but unbounded", 1, 1, 0, 1}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        EXPECT_EQ(CalCrossPointXY(0, 0, 0, c.dEnd, 0, 0, 3, -1, 3, 1, x, y, z, c.bLine1, c.bLine2, 1e-6),
                  c.nMeets);
        EXPECT_NEAR(x, 3, 1e-12) << "written in either case";
    }
    EXPECT_EQ(CalCrossPointXY(0, 0, 0, 1, 0, 0, 5, 5, 5, 6, x, y, z, 1, 1, 0), 1);
    x = y = z = -7;
    EXPECT_EQ(CalCrossPointXY(0, 0, 0, 1, 0, 0, 0, 1, 1, 1, x, y, z, 1, 1, 0), 0) << "parallel";
    EXPECT_TRUE(x == -7 && y == -7 && z == -7);
}
