// The plain procedures themselves, on cases small enough to work out by hand.
#include "tests/reference/plain_tin.h"

#include <gtest/gtest.h>

namespace {

using plain::Point;
using plain::Tin;

Tin Fed(const std::vector<Point>& points)
{
    Tin tin;
    for (const Point& p : points) tin.AddPoint(p.x, p.y, p.z);
    return tin;
}

void ExpectTri(const plain::Tri& tri, std::vector<int> v, std::vector<int> n)
{
    EXPECT_EQ(std::vector<int>(tri.v, tri.v + 3), v);
    EXPECT_EQ(std::vector<int>(tri.n, tri.n + 3), n);
}

// Every triangle counter-clockwise; every link returned across the same edge.
void ExpectSound(const Tin& tin)
{
    for (int t = 0; t < tin.tri.Size(); ++t) {
        EXPECT_EQ(tin.CheckTurn(t), -1) << "triangle " << t;
        for (int k = 0; k < 3; ++k) {
            const int u = tin.tri[t].n[k], a = tin.tri[t].v[(k + 2) % 3], b = tin.tri[t].v[k];
            bool back = u < 0;
            for (int m = 0; m < 3 && u >= 0; ++m) {
                const plain::Tri& other = tin.tri[u];
                back = back || (other.n[m] == t && other.v[(m + 2) % 3] == b && other.v[m] == a);
            }
            EXPECT_TRUE(back) << "triangle " << t << " slot " << k;
        }
    }
}

const std::vector<Point> kSquare = {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};

TEST(Reference, PointsWithinTheToleranceAreOne)
{
    Tin tin = Fed({{1.0000005, 1, 7}, {1, 1, 5}});
    EXPECT_EQ(tin.vertex.Size(), 1);
    EXPECT_EQ(tin.vertex[0].z, 7);
    EXPECT_EQ(tin.AddBreakLine({{5, 5, 0}}, 0), -1);
    EXPECT_EQ(tin.AddBreakLine({{5, 5, 0}, {6, 5, 0}, {6, 6, 0}, {5, 5, 9}}, 0), 0);
    EXPECT_EQ(tin.breakLine[0].idx, (plain::List<int>{1, 2, 3}));
    EXPECT_EQ(tin.breakLine[0].closed, 1);
    tin.BeginAddPoint(10);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(tin.AddPoint2(0, 0, i), i);
    tin.EndAddPoint();
    EXPECT_EQ(tin.vertex.Size(), 3);
}

// The centre joins the first ring, the hull drops it, and the fan's diagonal 0-2 is swapped to 1-3 (the
// corners are cocircular). The centre then falls on that diagonal, seen first from triangle 0.
TEST(Reference, SquareWithCentreHasTheNumberingWorkedOutByHand)
{
    Tin tin = Fed(kSquare);
    tin.AddPoint(5, 5, 0);
    ASSERT_EQ(tin.CreateTin(0), 1);
    EXPECT_EQ(tin.boundary, (plain::List<int>{0, 1, 2, 3}));
    ASSERT_EQ(tin.tri.Size(), 4);
    ExpectTri(tin.tri[0], {4, 2, 3}, {1, 2, -1});
    ExpectTri(tin.tri[1], {4, 3, 0}, {3, 0, -1});
    ExpectTri(tin.tri[2], {4, 1, 2}, {0, 3, -1});
    ExpectTri(tin.tri[3], {4, 0, 1}, {2, 1, -1});
    ExpectSound(tin);

    const struct {
        double x, y;
        int tri, state, side;
    } aCase[] = {{5, 8, 0, 0, 0}, {5, 2, 3, 0, 0}, {10, 0, 2, 1, 1}, {7.5, 7.5, 0, 2, 0}, {20, 6, -1, -1, 1}};
    for (const auto& c : aCase) {
        int state, side;
        EXPECT_EQ(tin.FindTri(0, c.x, c.y, state, side), c.tri) << c.x << ", " << c.y;
        EXPECT_EQ(state, c.state) << c.x << ", " << c.y;
        EXPECT_EQ(side, c.side) << c.x << ", " << c.y;
    }
}

TEST(Reference, PointsThatSpanNothingLeaveAnEmptyTin)
{
    for (const auto& points : {std::vector<Point>{{0, 0, 0}, {1, 0, 0}},
                               std::vector<Point>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}}) {
        Tin tin = Fed(points);
        EXPECT_EQ(tin.CreateTin(0), 0);
        EXPECT_EQ(tin.vertex.Size(), 0);
    }
}

TEST(Reference, PointInTheMiddleOfTheHullAndSecondCopy)
{
    Tin tin = Fed(kSquare);
    tin.AddPoint(10, 5, 0);
    tin.addPtCount = 5;
    tin.AddPoint2(10, 10, 3);
    ASSERT_EQ(tin.CreateTin(0), 1);
    EXPECT_EQ(tin.boundary.Size(), 4);
    EXPECT_EQ(tin.tri.Size(), 3);
    EXPECT_EQ(tin.CheckPtUsed(2) + tin.CheckPtUsed(5), 1);
    EXPECT_FALSE(tin.LosesVertices());
    ExpectSound(tin);
}

// A strip whose Delaunay edges zigzag between y = 0 and y = 6: the line y = 3 crosses the six of them.
TEST(Reference, BreaklineAddsAVertexAndTwoTrianglesForEachEdgeItCrosses)
{
    Tin tin = Fed({{0, 0, 50}, {4, 0, 50}, {8, 0, 50}, {12, 0, 50}, {2, 6, 50}, {6, 6, 50}, {10, 6, 50}});
    EXPECT_EQ(tin.AddBreakLine({{-3, 3, 0}, {15, 3, 18}}, 0), 0);
    ASSERT_EQ(tin.CreateTin(0), 1);
    EXPECT_EQ(tin.vertex.Size(), 9 + 6);
    EXPECT_EQ(tin.tri.Size(), 7 + 12);
    for (int i = 9; i < 15; ++i) {
        EXPECT_NEAR(tin.vertex[i].x, i - 8.0 + i - 9.0, 1e-12);   // 1, 3, 5, 7, 9, 11
        EXPECT_NEAR(tin.vertex[i].y, 3, 1e-12);
        EXPECT_NEAR(tin.vertex[i].z, tin.vertex[i].x + 3, 1e-12);
    }
    ExpectSound(tin);
    EXPECT_EQ(tin.EnforceBreakLines(), 1);
    EXPECT_EQ(tin.tri.Size(), 19) << "a line that is already edges is left alone";
}

TEST(Reference, CrossingOfLines)
{
    double x = 9, y = 9, z = 9;
    EXPECT_EQ(plain::CalCrossPointXY(0, 0, 0, 1, 1, 0, 0, 1, 1, 2, x, y, z, 1, 1, 1e-6), 0);
    EXPECT_EQ(x, 9);
    EXPECT_EQ(plain::CalCrossPointXY(0, 0, 0, 4, 0, 8, 1, -1, 1, -1e-7, x, y, z, 0, 0, 1e-6), 1);
    EXPECT_EQ(z, 2);
    EXPECT_EQ(plain::CalCrossPointXY(0, 0, 0, 4, 0, 8, 1, -1, 1, -1e-5, x, y, z, 0, 0, 1e-6), 0);
}

// A centre just above the bottom edge makes one flat triangle there, with base angles atan(0.1). In the kite
// both triangles are corners with an angle of atan(0.25) at the top.
TEST(Reference, TrimmingSparesCornersAndLooksAtTriangleZeroOnce)
{
    Tin flat = Fed(kSquare);
    flat.AddPoint(5, 0.5, 0);
    ASSERT_EQ(flat.CreateTin(0), 1);
    ASSERT_EQ(flat.tri.Size(), 4);
    EXPECT_EQ(flat.SelectTriWithAngle(0.2), 1);
    EXPECT_EQ(flat.DelTriWithAngle(0.2, 1), 1);
    EXPECT_EQ(flat.tri.Size(), 3);
    ExpectSound(flat);

    Tin kite = Fed({{0, 0, 0}, {10, 0, 0}, {5, -0.5, 0}, {5, 20, 0}});
    ASSERT_EQ(kite.CreateTin(0.3), 1);
    EXPECT_EQ(kite.tri.Size(), 2);
    EXPECT_EQ(kite.GetLength(0, 0), 0.0);
    EXPECT_EQ(kite.DelTriWithAngle(0.3, 0), 1);
    EXPECT_EQ(kite.tri.Size(), 1);
}

}   // namespace
