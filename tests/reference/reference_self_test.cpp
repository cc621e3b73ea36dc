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

// The ears of the L go in the order worked out by hand: shortest chord first, the earlier of equal ones.
TEST(Reference, PolygonIsFilledAlikeFromBothTurns)
{
    std::vector<Point> ell = {{0, 0, 0}, {4, 0, 0}, {4, 1, 0}, {1, 1, 0}, {1, 4, 0}, {0, 4, 0}};
    Tin one, other;
    ASSERT_EQ(one.CreateTinForPolygon(ell), 1);
    ASSERT_EQ(other.CreateTinForPolygon({ell.rbegin(), ell.rend()}), 1);
    ASSERT_EQ(one.tri.Size(), 4);
    EXPECT_EQ(one.CalAllAreaXY(), 7);
    ExpectSound(one);
    for (int t = 0; t < 4; ++t)
        ExpectTri(other.tri[t], {one.tri[t].v, one.tri[t].v + 3}, {one.tri[t].n, one.tri[t].n + 3});

    Tin eight;
    EXPECT_EQ(eight.CreateTinForPolygon({{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 5, 0}}), 0);
    EXPECT_EQ(eight.vertex.Size(), 4);
    EXPECT_EQ(eight.tri.Size(), 0);
}

TEST(Reference, DirectionsOfTheCornersOfACubeMakeABandOfSixTriangles)
{
    Tin tin;
    for (double z : {-1, 1}) {
        for (const Point& p : {Point{-1, -1, z}, Point{1, -1, z}, Point{1, 1, z}, Point{-1, 1, z}})
            tin.AddPoint2(p.x, p.y, p.z);
    }
    ASSERT_EQ(tin.CreateTinObal(), 1);
    EXPECT_EQ(tin.tri.Size(), 6);
    EXPECT_EQ(tin.vertex[6].x, 1);
    EXPECT_EQ(tin.maxXYZ.z, 1);
    EXPECT_DOUBLE_EQ(tin.CalAllArea(), 12);
}

TEST(Reference, LinksAreRebuiltAndTinsJoined)
{
    Tin tin = Fed({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {4, 4, 0}});
    tin.AddTri(0, 1, 2);
    tin.AddTri(2, 1, 3);
    tin.UpdateTopology();
    ExpectTri(tin.tri[0], {0, 1, 2}, {-1, -1, 1});
    ExpectTri(tin.tri[1], {2, 1, 3}, {-1, 0, -1});
    tin.AddTIN(tin);
    ExpectTri(tin.tri[3], {6, 5, 7}, {-1, 2, -1});
    Tin same = Fed({{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {4, 4, 0}});
    same.AddTri(0, 1, 2);
    plain::List<int> slot, pos;
    same.UpdateTopology();
    same.UpdateBoundary();
    EXPECT_EQ(same.boundary, (plain::List<int>{2, 0, 0, 1, 1, 2}));
    EXPECT_EQ(same.GetVtOnBoundary(0, slot, pos), 3);
    same.AddTri(1, 2, 3);
    same.UpdateTopology();
    EXPECT_EQ(same.tri[1].n[1], -1) << "an edge shared in the same direction is no link";
}

TEST(Reference, VertexIsTakenOutAndTheHoleFilled)
{
    for (const Point& n : {Point{1, 0, 0}, Point{-2, 3, 1}, Point{0, 0, -1}, Point{1, 1, -4}}) {
        const plain::Rotation rot = plain::RotForNV_Z(n);
        const Point up = rot.Apply(n), back = rot.Transposed().Apply(up);
        EXPECT_NEAR(up.z, Len(n), 1e-12);
        EXPECT_NEAR(Len(back - n), 0, 1e-12);
    }
    Tin tin = Fed({{5, 5, 0}, {0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {4, 7, 0}});
    ASSERT_EQ(tin.CreateTin(0), 1);
    ASSERT_EQ(tin.tri.Size(), 6);
    EXPECT_EQ(tin.DelVertex(0), 1);
    EXPECT_EQ(tin.vertex.Size(), 5);
    EXPECT_EQ(tin.tri.Size(), 4);
    EXPECT_EQ(tin.boundary, (plain::List<int>{0, 1, 2, 3}));
    EXPECT_EQ(tin.DelVertex(4), 1) << "no triangle beside the fan";
    EXPECT_EQ(tin.tri.Size(), 2);
    EXPECT_EQ(tin.CalAllAreaXY(), 100);
    ExpectSound(tin);
    EXPECT_EQ(tin.DelVertex(9), 1);
    EXPECT_EQ(tin.DelVertex(tin.tri[0].v[0]), 1);
    EXPECT_EQ(tin.vertex.Size(), 3);
    for (const plain::Tri& t : tin.tri) EXPECT_EQ(t.sel, 0);
}

TEST(Reference, WallsAndPointsAreAdded)
{
    Tin tin = Fed({{0, 0, 5}, {6, 0, 5}, {0, 6, 5}});
    ASSERT_EQ(tin.CreateTin(0), 1);
    Tin split = tin;
    EXPECT_EQ(split.DivideTri(6, 0, 1), 0);
    EXPECT_EQ(split.DivideTri(2, 2, 1), 1);
    EXPECT_EQ(split.tri.Size(), 3);
    EXPECT_EQ(split.DivideTri(1, 1, 1), 1) << "on the edge to the first point";
    EXPECT_EQ(split.tri.Size(), 5);
    ExpectSound(split);
    tin.AddVPlane(0);
    EXPECT_EQ(tin.vertex.Size(), 6);
    EXPECT_EQ(tin.tri.Size(), 7);
    tin.AddVPlane(0);
    EXPECT_EQ(tin.vertex.Size(), 6);
    EXPECT_EQ(tin.tri.Size(), 13);
}

// A small level triangle over the low end of a large slope that is higher on the whole.
TEST(Reference, UpperTriangleIsPaintedLastAndFoundFirst)
{
    Tin tin;
    for (const Point& p :
         {Point{0, 0, 0}, Point{40, 0, 30}, Point{0, 40, 0}, Point{1, 1, 2}, Point{2, 1, 2}, Point{1, 2, 2}})
        tin.AddPoint2(p.x, p.y, p.z);
    tin.AddTri(3, 4, 5);
    tin.AddTri(0, 1, 2);
    tin.UpdateDepth();
    EXPECT_EQ(tin.FindTriWithDepth(1.25, 1.25), 1);
    tin.UpdateDepth2();
    EXPECT_EQ(tin.depthOrder, (plain::List<int>{1, 0}));
    double z, ox, oy, oz, dist;
    int t;
    EXPECT_EQ(tin.InterpolateForDepth(1.25, 1.25, z, t), 1);
    EXPECT_EQ(z, 2);
    EXPECT_EQ(tin.PtInTri(1, 20, 20) + tin.PtInTri(1, 41, -1), 1);
    plain::List<int> list;
    EXPECT_EQ(tin.GetSortList(1, list, 0), 1);
    EXPECT_EQ(list, (plain::List<int>{1, 0}));
    EXPECT_EQ(tin.GetSortList(3, list, 1), 0);

    tin.vertex[1] = {10, 0, 10};
    tin.boundary = {0, 1};
    EXPECT_EQ(tin.NearestOutsideTin(4, -3, ox, oy, oz, dist), 1);
    EXPECT_NEAR(ox, 2, 1e-12);   // the foot on the sloped edge, not below the point in plan
    EXPECT_NEAR(oz, 2, 1e-12);
    EXPECT_NEAR(dist, std::sqrt(13.0), 1e-12);
}

}   // namespace
