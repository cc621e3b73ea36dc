#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/fixtures.h"
#include "support/mesh_oracle.h"

namespace {

const double kDegree = std::acos(-1.0) / 180.0;

}   // namespace

TEST(Shape, MeasuresAnglesAndLengthsOfATriangle)
{
    CTin tin = Fed({{9, 9, 9}, {8, 9, 9}, {9, 8, 9}, {0, 0, 0}, {4, 0, 12}, {4, 3, 0}});
    tin.AddTri(0, 1, 2);
    tin.AddTri(3, 4, 5);   // right-angled at slot 1, sides 4, 3, 5 in plan
    double d = -7;
    EXPECT_EQ(tin.GetAngleXY(1, 1, d), 1);
    EXPECT_NEAR(d, 90 * kDegree, 1e-15);
    EXPECT_NEAR(tin.GetMinAngle(1), std::atan2(3, 4), 1e-15);
    EXPECT_EQ(tin.GetMinAngle2(1, d), 0);
    EXPECT_NEAR(d, std::atan2(3, 4), 1e-15);
    EXPECT_EQ(tin.Get2ndAngle(1, d), 2);
    EXPECT_NEAR(d, std::atan2(4, 3), 1e-15);
    EXPECT_EQ(tin.GetMaxLengthXY(1, d), 2);
    EXPECT_EQ(d, 5.0);
    EXPECT_EQ(tin.GetMaxLength(1, d), 0) << "sqrt(160) along the first edge, in space";
    EXPECT_EQ(d, std::sqrt(160.0));
    EXPECT_EQ(tin.GetLength(1, 1), std::sqrt(153.0));
    EXPECT_EQ(tin.GetLength(0, 1), 0.0) << "triangle 0 always measures 0";
    EXPECT_EQ(tin.GetTriSedeLengthXY(1, 1, d), 1);
    EXPECT_EQ(d, 3.0);
}

TEST(Shape, AnswersBadArgumentsAsDescribed)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    double d = -7;
    EXPECT_EQ(tin.GetTriSedeLengthXY(4, 0, d), 0);
    EXPECT_EQ(tin.GetTriSedeLengthXY(0, 3, d), 0);
    EXPECT_EQ(tin.GetMinAngle2(-1, d), -1);
    EXPECT_EQ(tin.Get2ndAngle(4, d), -1);
    EXPECT_EQ(d, -7.0) << "not written";
    EXPECT_EQ(tin.GetMaxLength(4, d), -1);
    EXPECT_EQ(d, 0.0);
    d = -7;
    EXPECT_EQ(tin.GetAngleXY(0, 3, d), 0);
    EXPECT_EQ(d, 0.0);
    EXPECT_EQ(tin.GetLength(1, 3), 0.0);
    EXPECT_EQ(tin.GetMinAngle(99), 0.0);
}

TEST(Shape, TakesTheFirstOfEqualOnes)
{
    CTin tin = Fed({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {2, 2, 2}, {2, 2, 2}, {2, 2, 2}});
    tin.AddTri(0, 1, 2);
    tin.AddTri(3, 4, 5);
    double d = -7;
    EXPECT_EQ(tin.GetMinAngle2(0, d), 0) << "45 degrees at slots 0 and 2";
    EXPECT_EQ(tin.Get2ndAngle(0, d), 2);
    EXPECT_NEAR(d, 45 * kDegree, 1e-15);
    EXPECT_EQ(tin.Get2ndAngle(1, d), 1) << "no angle is a number";
    EXPECT_EQ(tin.GetMaxLengthXY(1, d), 0);
    EXPECT_EQ(d, 0.0) << "a triangle without extent";
}

TEST(Trimming, CutsOuterTrianglesWithThinBaseAngles)
{
    // Base angles of 5.7 degrees below the point just above the middle of the base line.
    CTin tin = Built({{0, 0, 0}, {10, 0, 0}, {5, 0.5, 0}, {0, 8, 0}, {10, 8, 0}});
    ASSERT_EQ(tin.GetTriSize(), 4) << "around the point in the middle";
    EXPECT_EQ(tin.DelTriWithAngle(0.0, 1), 1);
    EXPECT_EQ(tin.DelTriWithAngle(std::numeric_limits<double>::quiet_NaN(), 1), 1);
    EXPECT_EQ(tin.DelTriWithAngle(-1.0, 1), 1);
    EXPECT_EQ(tin.DelTriWithAngle(5 * kDegree, 1), 1);
    EXPECT_EQ(tin.GetTriSize(), 4) << "no angle that small";
    EXPECT_EQ(tin.DelTriWithAngle(6 * kDegree, 1), 1);
    ASSERT_EQ(tin.GetTriSize(), 3);
    EXPECT_TRUE(IsSound(tin));
    EXPECT_NEAR(MeshArea(tin), 80.0 - 2.5, 1e-12) << "less the triangle on the base line";
}

TEST(Trimming, SparesCornersUnlessToldOtherwise)
{
    CTin tin = Built({{0, 0, 0}, {10, 0, 0}, {10, 0.5, 0}, {0, 0.5, 0}});   // two thin corner triangles
    EXPECT_EQ(tin.DelTriWithAngle(10 * kDegree, 1), 1);
    EXPECT_EQ(tin.GetTriSize(), 2);
    EXPECT_EQ(tin.DelTriWithAngle(10 * kDegree, 0), 1);
    EXPECT_EQ(tin.GetTriSize(), 1) << "the one that moved to the front is not examined again";
    tin.UpdateNormal();
    EXPECT_EQ(tin.DelTriWithAngle(10 * kDegree, 0), 1);
    EXPECT_EQ(tin.GetPointSize(), 0) << "deleting the only triangle empties the object";
    EXPECT_EQ(tin.m_aTriNormal.GetSize(), 1) << "but for its normals";
}
