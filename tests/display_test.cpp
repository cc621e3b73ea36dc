// What a TIN looks like from above: painting order, picking, normals, texture coordinates.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <vector>

#include "reference/plain_tin.h"
#include "support/fixtures.h"
#include "tin/internal/lines.h"
#include "tin/internal/occlusion.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();

void ExpectList(const CArray<int>& aList, std::initializer_list<int> aWanted)
{
    EXPECT_EQ(ToVector(aList), std::vector<int>(aWanted));
}

// A roof that rises from the x axis to 30 at (0, 100), and a small triangle at height 20 under its upper part,
// where the roof is above 25. The small one has the larger sum of heights: 60 against 30.
CTin RoofOverSlab()
{
    return Assembled({{0, 0, 0}, {100, 0, 0}, {0, 100, 30}, {5, 85, 20}, {8, 85, 20}, {5, 88, 20}},
                     {{0, 1, 2}, {3, 4, 5}});
}

// 1 + 2^53 is not a double: from slot 2 downwards the ones join before the large height swallows them.
TEST(PaintingOrder, AddsHeightsFromTheLastSlotToTheFirst)
{
    const double dLarge = 9007199254740992.0;
    CTin tin = Assembled({{0, 0, 1}, {1, 0, 1}, {0, 1, dLarge}}, {{2, 0, 1}, {0, 1, 2}});
    tin.UpdateDepth();
    ExpectList(tin.m_aDepthOrder, {1, 0});

    CTin empty;
    empty.m_aDepthOrder.Add(7);
    empty.UpdateDepth();
    empty.UpdateDepth2();
    ExpectList(empty.m_aDepthOrder, {7});
}

TEST(PaintingOrder, PutsAHigherSurfaceOnTop)
{
    CTin tin = RoofOverSlab();
    tin.UpdateDepth();
    ExpectList(tin.m_aDepthOrder, {0, 1});
    EXPECT_EQ(tin.FindTriWithDepth(6.0, 86.0), 1) << "the slab, which is below";
    tin.UpdateDepth2();
    ExpectList(tin.m_aDepthOrder, {1, 0});
    double z = 0.0;
    int nTri = -1;
    EXPECT_EQ(tin.InterpolateForDepth(6.0, 86.0, z, nTri), 1);
    EXPECT_EQ(nTri, 0);
    EXPECT_NEAR(z, 0.3 * 86.0, 1e-12);
}

TEST(SortList, GoesByTheChosenKey)
{
    // Lowest, highest, sum: (0, 9, 10), (2, 4, 9), (1, 7, 9).
    CTin tin =
        Assembled({{0, 0, 0}, {1, 0, 1}, {0, 1, 9}, {5, 0, 2}, {6, 0, 3}, {5, 1, 4}, {9, 0, 7}, {9, 1, 1}},
                  {{0, 1, 2}, {3, 4, 5}, {6, 7, 1}});
    tin.m_aDepthOrder.Add(2);
    CArray<int> aList;
    aList.Add(77);
    const struct {
        int nMode, nOrder;
        std::initializer_list<int> aWanted;
    } aCase[] = {{0, 1, {0, 2, 1}}, {0, -1, {1, 2, 0}}, {1, 1, {1, 2, 0}},
                 {1, 0, {0, 2, 1}}, {2, 1, {1, 2, 0}},  {2, 2, {0, 1, 2}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(testing::Message() << "mode " << c.nMode << ", order " << c.nOrder);
        EXPECT_EQ(tin.GetSortList(c.nMode, aList, c.nOrder), 1);
        ExpectList(aList, c.aWanted);
    }
    for (const int nMode : {-1, 3}) {
        EXPECT_EQ(tin.GetSortList(nMode, aList, 1), 0);
        ExpectList(aList, {0, 0, 0});
    }
    ExpectList(tin.m_aDepthOrder, {2});
    CTin empty;
    EXPECT_EQ(empty.GetSortList(3, aList, 1), 1);
    EXPECT_EQ(aList.GetSize(), 0);
}

TEST(Picking, PassesOverStaleEntries)
{
    CTin tin = RoofOverSlab();
    double z = 99.0;
    int nTri = 99;
    EXPECT_EQ(tin.InterpolateForDepth(6.0, 86.0, z, nTri), 0) << "no order yet";
    EXPECT_EQ(nTri, -1);
    EXPECT_EQ(z, 99.0);
    for (const int n : {0, 1, 5, -3, 1000000}) {
        tin.m_aDepthOrder.Add(n);
    }
    EXPECT_EQ(tin.FindTriWithDepth(6.0, 86.0), 1);
    EXPECT_EQ(tin.FindTriWithDepth(50.0, 10.0), 0);
    EXPECT_EQ(tin.FindTriWithDepth(-1.0, -1.0), -1);
}

// --- pairs of triangles

TEST(CrossingEdges, EndWithTheirExtentUnlessUnbounded)
{
    // The lines meet at (10, 0); A ends at x = 9, B at y = 2.
    const CXYZ a1(0, 0, 0), a2(9, 0, 9), b1(10, 5, 5), b2(10, 2, 2);
    const struct {
        int bSkipA, bSkipB;
        double dTol;
        int nResult;
    } aCase[] = {{0, 0, 0.0, 0}, {1, 0, 0.0, 0}, {0, 1, 0.0, 0}, {1, 1, 0.0, 1}, {0, 1, 1.0, 1},
                 {1, 0, 2.0, 1}, {0, 0, 1.5, 0}, {0, 0, 2.0, 1}, {0, 1, 0.9, 0}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(testing::Message() << c.bSkipA << c.bSkipB << " within " << c.dTol);
        double x = 0.0, y = 9.0, hA = 0.0, hB = 9.0;
        EXPECT_EQ(CrossEdgeHeights(a1, a2, b1, b2, x, y, hA, hB, c.bSkipA, c.bSkipB, c.dTol), c.nResult);
        EXPECT_DOUBLE_EQ(x, 10.0);
        EXPECT_DOUBLE_EQ(y, 0.0);
        EXPECT_DOUBLE_EQ(hA, 10.0);
        EXPECT_NEAR(hB, 0.0, 1e-15);
    }
    double x = -7.0, y = -7.0, hA = -7.0, hB = -7.0;
    EXPECT_EQ(CrossEdgeHeights(a1, a2, CXYZ(0, 1, 0), CXYZ(9, 1, 0), x, y, hA, hB, 1, 1, 0.0), 0)
        << "parallel";
    EXPECT_TRUE(x == -7.0 && y == -7.0 && hA == -7.0 && hB == -7.0) << "nothing is written";
}

qsv::Mesh MeshOf(CTin& tin)
{
    return {tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2};
}

// --- the refined order against the plain procedure

plain::Tin PlainCopy(CTin& tin)
{
    plain::Tin copy;
    for (int v = 0; v < tin.GetPointSize(); ++v) {
        copy.vertex.push_back({tin.m_aVertex[v].x, tin.m_aVertex[v].y, tin.m_aVertex[v].z});
    }
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        const int(&nVt)[3] = tin.m_aTri[t].m_nVertex;
        copy.AddTri(nVt[0], nVt[1], nVt[2]);
    }
    return copy;
}

void ExpectPlainOrder(CTin& tin)
{
    tin.UpdateDepth2();
    plain::Tin reference = PlainCopy(tin);
    reference.UpdateDepth2();
    ASSERT_EQ(ToVector(tin.m_aDepthOrder), reference.depthOrder);
}

// Loose triangles all over the place, of sizes that differ by a factor of a hundred; with dSnap above 0 their
// corners lie on a lattice, so that many touch, coincide or are flat.
CTin Heap(int nTriangles, std::uint64_t nSeed, double dSnap)
{
    Dice dice(nSeed);
    Sites aSite;
    TriangleList aCorner;
    for (int t = 0; t < nTriangles; ++t) {
        const double x = dice.Uniform(0, 10), y = dice.Uniform(0, 10), z = dice.Uniform(0, 5);
        const double dSize = std::exp(dice.Uniform(-3, 2));
        for (int k = 0; k < 3; ++k) {
            Site s = {x + dice.Uniform(-dSize, dSize), y + dice.Uniform(-dSize, dSize),
                      z + dice.Uniform(-1, 1)};
            if (dSnap > 0.0) {
                s = {std::floor(s.x / dSnap) * dSnap, std::floor(s.y / dSnap) * dSnap, std::floor(s.z)};
            }
            aSite.push_back(s);
        }
        aCorner.push_back({3 * t, 3 * t + 1, 3 * t + 2});
    }
    return Assembled(aSite, aCorner);
}

TEST(Occlusion, OfEveryPairIsThatOfThePlainProcedure)
{
    int nHidden = 0;
    for (std::uint64_t nSeed = 0; nSeed < 10; ++nSeed) {
        CTin tin = Heap(60, nSeed, 0.5 * static_cast<double>(nSeed % 3));
        tin.m_aVertex[9].z = kNan;
        if (nSeed % 2 == 0) {
            tin.m_dEPS = 0.25;   // edges that end a step of the lattice apart just cross
        }
        const qsv::Mesh mesh = MeshOf(tin);
        plain::Tin reference = PlainCopy(tin);
        reference.eps = tin.m_dEPS;
        for (int nPair = 0; nPair < 60 * 60; ++nPair) {
            const int p = nPair / 60, q = nPair % 60;
            const qsv::Facet one = FacetOf(mesh, p), other = FacetOf(mesh, q);
            ASSERT_EQ(IsAbovePlane(one, other), reference.IsAbobe(p, q) != 0) << p << " " << q;
            ASSERT_EQ(IsBelowPlane(one, other), reference.IsBelow(p, q) != 0) << p << " " << q;
            ASSERT_EQ(Obscures(one, other, tin.m_dEPS), reference.Obscures(p, q) != 0) << p << " " << q;
            nHidden += reference.Obscures(p, q);
        }
    }
    EXPECT_GT(nHidden, 1000);
}

TEST(PaintingOrder, RefinedAsByThePlainProcedure)
{
    CTin many = Heap(700, 1, 0.0);   // boxes on several levels
    many.m_aVertex[30].x = many.m_aVertex[60].y = kNan;
    many.m_aVertex[90].x = -HUGE_VAL;
    ExpectPlainOrder(many);
    for (std::uint64_t nSeed = 1; nSeed <= 60; ++nSeed) {
        SCOPED_TRACE(testing::Message() << "seed " << nSeed);
        const int nTriangles = 3 + static_cast<int>(nSeed) * 2;
        CTin loose = Heap(nTriangles, nSeed, 0.0);
        ExpectPlainOrder(loose);
        CTin snapped = Heap(nTriangles, nSeed, nSeed % 2 == 0 ? 1.0 : 0.25);
        ExpectPlainOrder(snapped);
        CTin terrain = Built(nSeed % 2 == 0 ? RandomSites(60, nSeed) : ClusteredSites(60, nSeed));
        ExpectPlainOrder(terrain);
        terrain.m_aVertex[Dice(nSeed).Below(60)].z = kNan;
        ExpectPlainOrder(terrain);
    }
}

// Bars that lie on one another in a ring, each over the next: no order is right, and exchanging never ends by
// itself.
CTin RingOfBars(int nRings)
{
    Sites aSite;
    TriangleList aCorner;
    for (int r = 0; r < nRings; ++r) {
        for (int k = 0; k < 3; ++k) {
            const double dAngle = 2.0943951023931953 * k, c = std::cos(dAngle), s = std::sin(dAngle);
            const double aLocal[3][3] = {{-3, -1.2, 0}, {3, -1.2, 1}, {-3, -0.8, 0}};
            for (const auto& p : aLocal) {
                aSite.push_back({20.0 * r + p[0] * c - p[1] * s, p[0] * s + p[1] * c, p[2] + r});
            }
            const int nFirst = static_cast<int>(aSite.size()) - 3;
            aCorner.push_back({nFirst, nFirst + 1, nFirst + 2});
        }
    }
    return Assembled(aSite, aCorner);
}

TEST(PaintingOrder, EndsWhereTrianglesOverlapInARing)
{
    for (const int nRings : {1, 2, 7, 40}) {
        CTin tin = RingOfBars(nRings);
        const qsv::Mesh mesh = MeshOf(tin);
        for (int k = 0; k < 3; ++k) {
            const qsv::Facet one = FacetOf(mesh, k), next = FacetOf(mesh, (k + 1) % 3);
            EXPECT_NE(Obscures(one, next, tin.m_dEPS), Obscures(next, one, tin.m_dEPS));
        }
        ExpectPlainOrder(tin);
    }
}

// Each of these rings would be exchanged 60,000 times, all of them for many minutes, if it were not noticed that
// the exchanges go round.
TEST(PaintingOrder, DoesNotCountRingsToTheEnd)
{
    CTin tin = RingOfBars(20000);
    const auto start = std::chrono::steady_clock::now();
    tin.UpdateDepth2();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    std::vector<int> aSeen = ToVector(tin.m_aDepthOrder);
    std::sort(aSeen.begin(), aSeen.end());
    EXPECT_EQ(std::unique(aSeen.begin(), aSeen.end()) - aSeen.begin(), tin.GetTriSize());
}

// --- shading

void ExpectVector(const CXYZ& v, double x, double y, double z)
{
    EXPECT_NEAR(v.x, x, 1e-15);
    EXPECT_NEAR(v.y, y, 1e-15);
    EXPECT_NEAR(v.z, z, 1e-15);
}

// A floor and a wall, whose normals are +z and +x, share the edge from vertex 0 to vertex 1.
TEST(Normals, OfVerticesAreThePlainMean)
{
    CTin tin = Assembled({{0, 0, 0}, {0, 9, 0}, {-4, 0, 0}, {0, 0, 4}, {50, 50, 50}}, {{0, 1, 2}, {0, 1, 3}});
    tin.m_aTriNormal.SetSize(7);
    tin.m_aVtNormal.Add(CXYZ(8, 8, 8));   // left from another surface
    tin.UpdateNormal();
    ASSERT_EQ(tin.m_aTriNormal.GetSize(), 2);
    ASSERT_EQ(tin.m_aVtNormal.GetSize(), 5);
    ExpectVector(tin.m_aTriNormal[0], 0, 0, 1);
    ExpectVector(tin.m_aTriNormal[1], 1, 0, 0);
    ExpectVector(tin.m_aVtNormal[0], 0.5, 0, 0.5);
    ExpectVector(tin.m_aVtNormal[1], 0.5, 0, 0.5);
    ExpectVector(tin.m_aVtNormal[2], 0, 0, 1);
    ExpectVector(tin.m_aVtNormal[3], 1, 0, 0);
    ExpectVector(tin.m_aVtNormal[4], 0, 0, 0);

    tin.m_aTri[1].m_nVertex[1] = 99;   // a missing vertex gets no normal, and harms nobody else's
    tin.UpdateNormal();
    ExpectVector(tin.m_aVtNormal[1], 0, 0, 1);

    CTin points = Fed({{1, 2, 3}, {4, 5, 6}});
    points.UpdateNormal();
    EXPECT_EQ(points.m_aTriNormal.GetSize(), 0);
    ASSERT_EQ(points.m_aVtNormal.GetSize(), 2);
    ExpectVector(points.m_aVtNormal[1], 0, 0, 0);
}

TEST(TextureCoordinates, SpanThePlanRangeOfTheTriangles)
{
    // Vertices 3 to 5 belong to no triangle: two beyond the range, one of them nowhere.
    CTin tin = Assembled({{10, 100, 0}, {30, 100, 5}, {15, 140, 9}, {0, 500, 0}, {31, 99, 0}, {kNan, 120, 0}},
                         {{0, 1, 2}});
    tin.UpdateTextureCoord();
    const float aWanted[][2] = {{0.0f, 0.0f}, {1.0f, 0.0f}, {0.25f, 1.0f}, {0.0f, 1.0f}, {1.0f, 0.0f}};
    for (int v = 0; v < 5; ++v) {
        SCOPED_TRACE(v);
        EXPECT_EQ(tin.m_aVertex[v].tu, aWanted[v][0]);
        EXPECT_EQ(tin.m_aVertex[v].tv, aWanted[v][1]);
    }
    EXPECT_TRUE(std::isnan(tin.m_aVertex[5].tu));
    EXPECT_EQ(tin.m_aVertex[5].tv, 0.5f);
}

TEST(TextureCoordinates, StayWithoutARange)
{
    CTin points = Fed({{1, 2, 3}});
    points.m_aVertex[0].tu = 0.75f;
    points.UpdateTextureCoord();
    EXPECT_EQ(points.m_aVertex[0].tu, 0.75f);

    CTin upright = Assembled({{5, 0, 0}, {5, 10, 0}, {5, 0, 10}}, {{0, 1, 2}});   // 0 / 0 in x
    upright.UpdateTextureCoord();
    EXPECT_TRUE(std::isnan(upright.m_aVertex[1].tu));
    EXPECT_EQ(upright.m_aVertex[1].tv, 1.0f);
}

}   // namespace
