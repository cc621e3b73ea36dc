#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "support/fixtures.h"
#include "support/mesh_oracle.h"

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Arrays, KeepTheirElementsWhenTheyGrowShrinkOrLoseSome)
{
    CArray<std::string> aText;
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(aText.Add(std::to_string(i)), i);
    }
    aText.RemoveAt(10, 5);
    aText.InsertAt(3, "new", 2);
    EXPECT_EQ(aText[2], "2");
    EXPECT_EQ(aText[4], "new");
    EXPECT_EQ(aText[5], "3");
    EXPECT_EQ(aText[12], "15");
    EXPECT_EQ(aText.GetSize(), 97);
    for (int i = 0; i < 200; ++i) {   // takes no more memory than the elements need
        aText.InsertAt(0, "again");
        aText.RemoveAt(0);
    }
    EXPECT_EQ(aText[4], "new");
    aText.SetSize(-4);
    EXPECT_EQ(aText.GetSize(), 0);
    aText.SetAtGrow(2, "third");
    EXPECT_EQ(aText.GetSize(), 3);
    EXPECT_EQ(aText[1], "");
    for (int i = 0; i < 50; ++i) {
        aText.Add(aText[2]);   // an element of the array that is being moved
    }
    EXPECT_EQ(aText[52], "third");

    CArray<CString> aName;
    aName.Add("none is removed");
    aName.RemoveAt(0, 0);
    EXPECT_STREQ(aName[0], "none is removed") << "not moved onto itself";

    CArray<int> aNumber;
    aNumber.SetSize(5);
    EXPECT_EQ(aNumber[4], 0);
    aNumber.FreeExtra();
    EXPECT_EQ(aNumber.Append(aNumber), 5) << "an array appended to itself";
    EXPECT_EQ(aNumber.GetSize(), 10);
}

TEST(Arrays, OfTinsKeepTheirTolerances)
{
    CArray<CTin, CTin&> aTin;
    aTin.SetSize(1);
    aTin[0].SetEPS(0.01);
    aTin[0].AddPoint(1, 2, 3);
    aTin.SetSize(20);
    aTin.RemoveAt(5, 3);
    EXPECT_EQ(aTin[0].m_dEPS, 0.01);
    EXPECT_EQ(aTin[0].GetPointSize(), 1);
    aTin.Add(aTin[0]);
    EXPECT_EQ(aTin[17].m_dEPS, 1e-6) << "an added one is a copy, and copies have default tolerances";
    EXPECT_EQ(aTin[17].GetPointSize(), 1);
}

TEST(Texts, CompareByTheirBytes)
{
    CString a("abc"), b(a);
    b += "d";
    EXPECT_TRUE(a == "abc" && "abc" == a && a != b && b != "abc" && a.Left(2) == "ab");
    EXPECT_LT(a.Compare(b), 0);
    EXPECT_EQ(b.GetLength(), 4);
    EXPECT_EQ(b.GetAt(4), 0);
    a = a.GetString() + 1;
    EXPECT_STREQ(a, "bc") << "assigned from its own bytes";
    EXPECT_TRUE(CString(nullptr).IsEmpty());
}

TEST(Points, AddSubtractMultiplyMeasure)
{
    const CXYZ a(1, 2, 3), b(4, -5, 6);
    EXPECT_EQ(a.Inn(b), 12.0);
    const CXYZ c = a.Out(b);
    EXPECT_TRUE(c.x == 27 && c.y == 6 && c.z == -13);
    EXPECT_EQ(c.Inn(a), 0.0);
    EXPECT_EQ(CXYZ(2, 3, 6).Len(), 7.0);
    EXPECT_EQ(CXYZ().Len(), 0.0);
    EXPECT_EQ(CXYZ(3, 5, 1).Len(CXYZ(1, 2, 7)), 7.0);
    CXYZ d = a;
    d.m_nMark = 7;
    d /= 2.0;
    d += b;
    d -= CXYZ(0.5, 0, 0);
    EXPECT_TRUE(d.x == 4 && d.y == -4 && d.z == 7.5 && d.m_nMark == 7);
}

TEST(Polylines, KnowTheirTurningSense)
{
    CPolyline square = LineThrough({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    EXPECT_LT(square.CheckTurn(), 0);
    square.Reverse();
    EXPECT_GT(square.CheckTurn(), 0);
    EXPECT_EQ(square.GetVertex(0)->y, 1.0);
    EXPECT_EQ(square.GetVertex(4), nullptr);
    EXPECT_EQ(LineThrough({{0, 0, 0}, {1, 0, 0}}).CheckTurn(), 0);
    EXPECT_EQ(LineThrough({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}).CheckTurn(), 0);
    // Far from the origin only differences keep the digits of an area of 1e-4.
    EXPECT_LT(LineThrough({{2e7, 7e6, 0}, {2e7 + 0.0625, 7e6, 0}, {2e7, 7e6 + 0.0625, 0}}).CheckTurn(), 0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(LineThrough({{0, 0, 0}, {1, 0, 0}, {nan, 1, 0}}).CheckTurn(), 0);
}

TEST(Rotations, TurnRightHandedAndBack)
{
    const double dQuarter = std::acos(0.0);
    const struct {
        ROT_SYSTEM eSystem;
        CWPK wpk;
        CXYZ from, to;
    } aCase[] = {{ROT_ABOUT_X, {}, {0, 1, 0}, {0, 0, 1}},
                 {ROT_ABOUT_Y, {}, {0, 0, 1}, {1, 0, 0}},
                 {ROT_ABOUT_Z, {}, {1, 0, 0}, {0, 1, 0}}};
    for (const auto& c : aCase) {
        CWPK wpk;
        wpk.w = wpk.p = wpk.k = dQuarter;
        CRot rot;
        EXPECT_EQ(rot.AddMatrix(c.eSystem, wpk), 1);
        CXYZ v = c.from;
        rot.Rotate(v, v);   // in place
        EXPECT_LT((v - c.to).Len(), 1e-15) << c.eSystem;
        rot.T();
        rot.Rotate(v, v);
        EXPECT_LT((v - c.from).Len(), 1e-15) << c.eSystem;
    }
    CRot rot;
    EXPECT_EQ(rot.AddMatrix(static_cast<ROT_SYSTEM>(7), CWPK()), 0);
}

// Keys of all sizes, many of them equal, against a sort by comparison.
TEST(Sorting, OfManyKeysIsThatOfAStableSortByComparison)
{
    const double inf = std::numeric_limits<double>::infinity(),
                 nan = std::numeric_limits<double>::quiet_NaN();
    const double aOdd[] = {0.0, -0.0, inf, -inf, nan, -nan, 5e-324, -5e-324, 1.7e308, -1.7e308};
    Dice dice(91);
    for (const int n : {0, 2, 99, 101, 3000}) {
        for (const double dOdd : {0.0, 0.1, 1.0}) {
            std::vector<double> aKey;
            for (int i = 0; i < n; ++i) {
                const double dSmall = std::ldexp(dice.Uniform(-1.0, 1.0), -dice.Below(900));
                aKey.push_back(dice.Uniform(0.0, 1.0) < dOdd ? aOdd[dice.Below(10)]
                               : i % 3 == 0                  ? dice.Below(50)
                               : i % 3 == 1                  ? 1000.0 + dSmall
                                                             : dSmall);
            }
            for (const int nOrder : {1, 0}) {
                SCOPED_TRACE(testing::Message() << n << " keys, odd ones " << dOdd << ", order " << nOrder);
                std::vector<int> aExpected;
                for (int i = 0; i < n; ++i) {
                    aExpected.push_back(i);
                }
                std::stable_sort(aExpected.begin(), aExpected.end(), [&](int i, int j) {
                    const double a = aKey[static_cast<size_t>(i)], b = aKey[static_cast<size_t>(j)];
                    return std::isnan(b) ? !std::isnan(a) : nOrder == 1 ? a < b : a > b;
                });
                CArray<double> aSorted;
                for (const double d : aKey) {
                    aSorted.Add(d);
                }
                CArray<int> aIndex;
                aIndex.SetSize(3);
                QuickSortKey(aSorted, aIndex, nOrder);
                ASSERT_EQ(ToVector(aIndex), aExpected);
                for (int i = 0; i < n; ++i) {
                    const double dExpected = aKey[static_cast<size_t>(aIndex[i])];
                    ASSERT_EQ(std::memcmp(&aSorted[i], &dExpected, sizeof dExpected), 0) << "bit for bit";
                }
            }
        }
    }
}

TEST(LifeCycle, CopiesEverythingButTheTolerances)
{
    CTin tin = Fed(RandomSites(30, 11));
    CPolyline line = LineThrough({{20, 20, 0}, {80, 70, 0}});
    tin.AddBreakLine(line);
    tin.SetEPS(0.01);
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    tin.m_strName = "pit";
    tin.m_nSpare = 5;
    tin.UpdateNormal();
    tin.UpdateDepth();
    CTin copy(tin);
    EXPECT_EQ(Dump(copy), Dump(tin));
    EXPECT_EQ(copy.m_strName, "pit");
    EXPECT_EQ(copy.m_nSpare, 5);
    EXPECT_EQ(copy.m_aTriNormal.GetSize(), tin.GetTriSize());
    EXPECT_EQ(copy.m_aDepthOrder.GetSize(), tin.GetTriSize());
    EXPECT_EQ(copy.m_MaxXYZ.x, tin.m_MaxXYZ.x);
    EXPECT_EQ(copy.m_dEPS, 1e-6);
    copy.m_aVertex[0].x = -1;
    EXPECT_NE(tin.m_aVertex[0].x, -1.0) << "copies are deep";
    CTin& self = tin;
    tin = self;
    EXPECT_EQ(tin.m_dEPS, 0.01) << "assigning to itself changes nothing";
}

TEST(LifeCycle, ResetKeepsOnlyTheNormals)
{
    CTin tin = SquareOnPlane(0, 0, 0);
    tin.UpdateNormal();
    tin.SetEPS(0.5);
    tin.InitData();
    EXPECT_EQ(tin.m_strName, "0");
    EXPECT_EQ(tin.GetPointSize() + tin.GetTriSize() + tin.m_aBoundary.GetSize(), 0);
    EXPECT_EQ(tin.m_dEPS, 1e-6);
    EXPECT_EQ(tin.m_dEPS2, 1e-12);
    EXPECT_EQ(tin.m_nWalkDir, 1);
    EXPECT_EQ(tin.m_aTriNormal.GetSize(), 4);
    EXPECT_EQ(tin.m_aVtNormal.GetSize(), 5);
}

TEST(LifeCycle, TopologyIsCopiedOntoEnoughVertices)
{
    CTin tin = SquareOnPlane(1, 0, 0);
    CTin few = Fed({{0, 0, 0}, {1, 0, 0}});
    EXPECT_EQ(few.CopyTINInfo(tin), 0);
    EXPECT_EQ(few.GetTriSize(), 0);
    CTin same = Fed({{0, 0, 9}, {10, 0, 9}, {10, 10, 9}, {0, 10, 9}, {5, 5, 9}});
    EXPECT_EQ(same.CopyTINInfo(tin), 1);
    EXPECT_EQ(same.GetTriSize(), 4);
    EXPECT_EQ(same.m_aBoundary.GetSize(), 4);
    EXPECT_EQ(same.m_aVertex[0].z, 9.0);
}

TEST(LifeCycle, AccessorsRefuseWhatIsNotThere)
{
    CTin tin = SquareOnPlane(1, 0, 0);
    EXPECT_EQ(tin.GetVertex(0, 3), nullptr);
    EXPECT_EQ(tin.GetVertex(-1, 0), nullptr);
    EXPECT_EQ(tin.GetVertex(4, 0), nullptr);
    EXPECT_EQ(tin.GetVertex(0, 1), &tin.m_aVertex[2]);
    double d[9] = {-7};
    EXPECT_EQ(tin.GetVertex(4, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7], d[8]), 0);
    EXPECT_EQ(d[0], -7.0);
    EXPECT_EQ(tin.GetVertex(0, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7], d[8]), 1);
    EXPECT_TRUE(d[0] == 5 && d[3] == 10 && d[7] == 10);
    tin.m_aTri[0].m_nVertex[1] = 77;   // as a damaged file may leave it
    EXPECT_EQ(tin.GetVertex(0, 1), nullptr);
    int a = -7, b = -7, c = -7;
    EXPECT_EQ(tin.GetNextTri(4, a, b, c), 0);
    EXPECT_EQ(a, -7);
}

TEST(Input, MergesWhatCoincidesInPlan)
{
    CTin tin;
    EXPECT_EQ(tin.AddPoint(1.0000005, 1, 7), 0);
    EXPECT_EQ(tin.AddPoint(1, 1, 5), 0);
    EXPECT_EQ(tin.m_aVertex[0].z, 7.0) << "the first height stays";
    tin.SetEPS(0.25);
    EXPECT_EQ(tin.m_dEPS2, 0.0625);
    EXPECT_EQ(tin.AddPoint(8, 8, 0), 1);
    EXPECT_EQ(tin.AddPoint(8.25, 7.75, 0), 1) << "the bounds belong to it";
    EXPECT_EQ(tin.AddPoint(8.2500001, 8, 0), 2);
    EXPECT_EQ(tin.AddPoint(8.125, 8, 0), 1) << "of two, the first";
    tin.SetEPS(-1);
    EXPECT_EQ(tin.AddPoint(8, 8, 0), 3) << "a negative tolerance lets nothing coincide";
}

namespace {

// Feeds both ways and compares: the plain way is AddPoint for each.
void CompareAddPoints(const CTin& before, double dEPS, const Sites& aSite)
{
    CTin plain = before, tin = before;
    plain.SetEPS(dEPS);
    tin.SetEPS(dEPS);
    CArray<CXYZ> aPoint;
    CArray<int> aExpected, aVertex;
    for (const Site& s : aSite) {
        aPoint.Add(CXYZ(s.x, s.y, s.z));
        aExpected.Add(plain.AddPoint(s.x, s.y, s.z));
    }
    EXPECT_EQ(AddPoints(tin, aPoint, aVertex), plain.GetPointSize() - before.m_aVertex.GetSize());
    EXPECT_EQ(ToVector(aVertex), ToVector(aExpected));
    EXPECT_EQ(Dump(tin), Dump(plain));
}

}   // namespace

// Points so dense that tolerances overlap: which vertex stands for a point depends on the order. The last
// input has places at the bounds of the tolerance, of the cells of its grid, and of what a double can hold.
TEST(Input, AddsManyPointsAsAddPointDoesOneByOne)
{
    Dice dice(20);
    Sites aHard = {{0.0, 0.0, 1}, {-0.0, -0.0, 2}};
    for (const double d :
         {1e-300, 1e-6, 0.125, 0.5, 4.0, 562949953421312.0, 1e15, 1e16, 1e300, HUGE_VAL, kNan}) {
        for (int i = 0; i < 12; ++i) {
            aHard.push_back({dice.Below(2) * d - dice.Below(2), 0.5 * dice.Below(3), 1.0 * i});
            aHard.push_back({dice.Below(5) - 2.0, -d * dice.Below(2) + 0.125 * dice.Below(5), 1.0 * i});
        }
    }
    const NamedSites aCase[] = {{"random", RandomSites(1500, 1)},
                                {"clustered", ClusteredSites(1500, 2)},
                                {"a grid, row by row, and again in another order", GridSites(40, 20, 0.25)},
                                {"hard", Shuffled(aHard, 4)}};
    for (const auto& c : aCase) {
        Sites aTwice = c.aSite;
        const Sites aAgain = Shuffled(c.aSite, 3);
        aTwice.insert(aTwice.end(), aAgain.begin(), aAgain.end());
        for (const double dEPS :
             {1e-6, 0.125, 0.5, 3.0, 1e4, 0.0, -1.0, 1e-18, 1e-300, 1e308, HUGE_VAL, kNan}) {
            SCOPED_TRACE(testing::Message() << c.szWhat << ", tolerance " << dEPS);
            CompareAddPoints(CTin(), dEPS, aTwice);
            CompareAddPoints(Fed(aAgain), dEPS, RandomSites(500, 6));   // vertices that coincide already
        }
    }
    CTin tin = Fed({{0, 0, 1}, {5, 0, 2}, {0, 0, 3}});
    CArray<int> aVertex;
    EXPECT_EQ(AddPoints(tin, tin.m_aVertex, aVertex), 0) << "its own vertices";
    EXPECT_EQ(ToVector(aVertex), (std::vector<int>{0, 1, 0}));
    tin.SetEPS(-1.0);
    EXPECT_EQ(AddPoints(tin, tin.m_aVertex, aVertex), 3);
    EXPECT_EQ(tin.m_aVertex[5].z, 3.0) << "which grow meanwhile";
}

TEST(Input, InBulkOverwritesAndCuts)
{
    CTin tin;
    tin.BeginAddPoint(10);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(tin.AddPoint2(i, 0, 0), i);
    }
    tin.m_aVertex[0].tu = 0.5f;
    tin.EndAddPoint();
    EXPECT_EQ(tin.GetPointSize(), 3);
    EXPECT_EQ(tin.AddPoint2(9, 9, 9), 0) << "without a new BeginAddPoint it starts over";
    EXPECT_EQ(tin.m_aVertex[0].x, 9.0);
    EXPECT_EQ(tin.m_aVertex[0].tu, 0.0f) << "a fresh record";
    tin.BeginAddPoint(1);
    for (int i = 0; i < 5; ++i) {
        tin.AddPoint2(i, i, i);
    }
    tin.EndAddPoint();
    EXPECT_EQ(tin.GetPointSize(), 5) << "grows when too few were reserved";
}

TEST(Input, MakesBreaklinesOfPolylines)
{
    CTin tin;
    CPolyline none, one = LineThrough({{5, 5, 1}});
    EXPECT_EQ(tin.AddBreakLine(none), -1);
    EXPECT_EQ(tin.AddBreakLine(one), -1);
    EXPECT_EQ(tin.GetPointSize(), 1) << "a single vertex is still a point";

    CPolyline ring = LineThrough({{0, 0, 0}, {4, 0, 0}, {5, 5, 9}, {0, 5e-7, 3}});
    ASSERT_EQ(tin.AddBreakLine(ring), 0);
    EXPECT_EQ(tin.m_aBreakLine[0].m_bClose, 1);
    ASSERT_EQ(tin.m_aBreakLine[0].m_aVertexIndex.GetSize(), 3);
    EXPECT_EQ(tin.m_aBreakLine[0].m_aVertexIndex[2], 0) << "an existing point is used";

    CPolyline dot = LineThrough({{7, 7, 0}, {7, 7, 1}});
    ASSERT_EQ(tin.AddBreakLine(dot), 1);
    EXPECT_EQ(tin.m_aBreakLine[1].m_aVertexIndex.GetSize(), 1);
    EXPECT_EQ(tin.m_aBreakLine[1].m_bClose, 1);

    CPolyline open = LineThrough({{1, 1, 0}, {2, 2, 0}, {2, 2, 0}, {3, 3, 0}});
    ASSERT_EQ(tin.AddBreakLine(open), 2);
    EXPECT_EQ(tin.m_aBreakLine[2].m_bClose, 0);
    EXPECT_EQ(tin.m_aBreakLine[2].m_aVertexIndex[1], tin.m_aBreakLine[2].m_aVertexIndex[2]) << "repeats stay";

    CPolyline marked = LineThrough({{1, 1, 0}, {2, 2, 0}, {3, 1, 0}}, true);
    tin.BeginAddPoint(3);
    ASSERT_EQ(tin.AddBreakLine2(marked), 3);
    tin.EndAddPoint();
    EXPECT_EQ(tin.m_aBreakLine[3].m_bClose, 1);
    EXPECT_EQ(tin.m_aBreakLine[3].m_aVertexIndex[2], 2);
}
