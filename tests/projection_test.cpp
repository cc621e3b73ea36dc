// From the world to the screen and back, and the inversion of matrices behind it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "projection/projection.h"
#include "support/fixtures.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kHalfPi = 1.57079632679489661923;

using Matrix = std::vector<double>;

class Probe : public CProjection
{
public:
    using CProjection::ApplyMatrix;
    using CProjection::InitMatrix;
    using CProjection::lu;
    using CProjection::matinv;
    using CProjection::MatrixMul2;
    using CProjection::NorToScr;
    using CProjection::ScrToNor;
};

Matrix Held(const double (&m)[16])
{
    return Matrix(m, m + 16);
}

Matrix Identity()
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

// Where a point of the world lies before the eye.
Matrix InEyeSpace(Probe& view, double x, double y, double z)
{
    Matrix v = {x, y, z, 1.0};
    view.ApplyMatrix(4, view.m_ModelMatrix, v.data());
    return v;
}

void ExpectPoint(const Matrix& v, double x, double y, double z)
{
    EXPECT_NEAR(v[0], x, 1e-15);
    EXPECT_NEAR(v[1], y, 1e-15);
    EXPECT_NEAR(v[2], z, 1e-15);
    EXPECT_EQ(v[3], 1.0);
}

struct Image {
    int nResult = -1;
    double x = 77.0, y = 77.0, dDepth = 77.0;
    int nInside = -1;
};

Image ImageOf(CProjection& view, double x, double y, double z, int nClipMode = 1)
{
    Image image;
    image.nResult = view.Transform(x, y, z, image.x, image.y, image.dDepth, image.nInside, nClipMode);
    return image;
}

// Not symmetric, and all its numbers are powers of two or small, so that images are exact: on the near plane at
// 2 the view is -1 .. 3 wide and -6 .. 2 high, on the far plane at 4 twice that.
Probe SkewView()
{
    Probe view;
    view.SetPrjMatrix(-1.0, 3.0, 2.0, -6.0, 2.0, 4.0);
    EXPECT_EQ(view.BeginTrans(1), 1);
    return view;
}

TEST(Projection, StartsAsTheIdentityWithoutAScreen)
{
    Probe view;
    for (const Matrix& m : {Held(view.m_ModelMatrix), Held(view.m_PrjMatrix), Held(view.m_TransMatrix),
                            Held(view.m_InvMatrix)}) {
        EXPECT_EQ(m, Identity());
    }
    const Image image = ImageOf(view, 3.0, 4.0, 0.5);
    EXPECT_EQ(image.nResult, 1);
    EXPECT_EQ(image.x, 0.0);
    EXPECT_EQ(image.y, 0.0);
    EXPECT_EQ(image.dDepth, 0.5);
    double x, y, z;
    EXPECT_EQ(view.Inverse(5.0, 6.0, 0.25, x, y, z), 1);
    EXPECT_EQ(x, 0.0);
    EXPECT_EQ(y, 0.0);
    EXPECT_EQ(z, 0.25);
}

TEST(Projection, ResetsTheMatrixThatIsAskedForAndNoOther)
{
    CProjection view;
    view.Translate(1.0, 2.0, 3.0);
    view.SetPrjMatrix(-1.0, 1.0, 1.0, -1.0, 1.0, 3.0);
    const Matrix model = Held(view.m_ModelMatrix), perspective = Held(view.m_PrjMatrix);
    for (const int nUnknown : {2, -1, 1000}) {
        view.InitMatrix(static_cast<MATRIX_MODE>(nUnknown));
        EXPECT_EQ(Held(view.m_ModelMatrix), model);
        EXPECT_EQ(Held(view.m_PrjMatrix), perspective);
    }
    view.InitMatrix(MODEL_MATRIX);
    EXPECT_EQ(Held(view.m_ModelMatrix), Identity());
    EXPECT_EQ(Held(view.m_PrjMatrix), perspective);
    view.InitMatrix(PROJECTION_MATRIX);
    EXPECT_EQ(Held(view.m_PrjMatrix), Identity());
}

TEST(Projection, LastModelOperationActsLast)
{
    Probe movedThenTurned;
    movedThenTurned.Translate(1.0, 0.0, 0.0);
    movedThenTurned.RotateZ(kHalfPi);
    ExpectPoint(InEyeSpace(movedThenTurned, 0.0, 0.0, 0.0), 0.0, 1.0, 0.0);

    Probe turnedThenMoved;
    turnedThenMoved.RotateZ(kHalfPi);
    turnedThenMoved.Translate(1.0, 0.0, 0.0);
    ExpectPoint(InEyeSpace(turnedThenMoved, 0.0, 0.0, 0.0), 1.0, 0.0, 0.0);

    Probe movedThenScaled;
    movedThenScaled.Translate(1.0, 2.0, 3.0);
    movedThenScaled.Scale(2.0, 3.0, -1.0);
    ExpectPoint(InEyeSpace(movedThenScaled, 1.0, 1.0, 1.0), 4.0, 9.0, -4.0);
}

TEST(Projection, PositiveAnglesTurnRightHanded)
{
    Probe x, y, z;
    x.RotateX(kHalfPi);
    y.RotateY(kHalfPi);
    z.RotateZ(kHalfPi);
    ExpectPoint(InEyeSpace(x, 5.0, 1.0, 0.0), 5.0, 0.0, 1.0);
    ExpectPoint(InEyeSpace(y, 0.0, 5.0, 1.0), 1.0, 5.0, 0.0);
    ExpectPoint(InEyeSpace(z, 1.0, 0.0, 5.0), 0.0, 1.0, 5.0);
    // Sines and their signs lie where the rotation has them, to the bit.
    Probe small;
    small.RotateX(0.25);
    const double c = std::cos(0.25), s = std::sin(0.25);
    EXPECT_EQ(Held(small.m_ModelMatrix), (Matrix{1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1}));
}

TEST(Projection, PerspectiveMatrixAndScreenOfASkewView)
{
    const Probe view = SkewView();
    // Width 4, height 8, depth 2: 2*2/4, (-1+3)/4, 2*2/8, (2-6)/8, -(2+4)/2, -2*2*4/2.
    EXPECT_EQ(Held(view.m_PrjMatrix), (Matrix{1, 0, 0.5, 0, 0, 0.5, -0.5, 0, 0, 0, -3, -8, 0, 0, -1, 0}));
    EXPECT_EQ(view.m_ScrScaleX, 2.0);
    EXPECT_EQ(view.m_ScrOffsetX, 1.0);
    EXPECT_EQ(view.m_ScrScaleY, 4.0);
    EXPECT_EQ(view.m_ScrOffsetY, -2.0);
}

TEST(Projection, PointsOfASkewViewLandWhereLinesOfSightCross)
{
    Probe view = SkewView();
    const double dPastFar = -std::nextafter(4.0, 5.0);
    const struct {
        const char* szWhere;
        double x, y, z, dScrX, dScrY, dDepth;
        int nInView, nInDepth;
    } aCase[] = {{"near, upper right corner", 3, 2, -2, 3, 2, -1, 1, 1},
                 {"near, lower left corner", -1, -6, -2, -1, -6, -1, 1, 1},
                 {"far, upper right corner", 6, 4, -4, 3, 2, 1, 1, 1},
                 {"far, lower left corner", -2, -12, -4, -1, -6, 1, 1, 1},
                 {"far, off to the left", -4, 0, -4, -2, 0, 1, 0, 1},
                 {"far, off to the right", 200, 0, -4, 100, 0, 1, 0, 1},
                 {"far, above", 0, 4.5, -4, 0, 2.25, 1, 0, 1},
                 {"far, below", 0, -13, -4, 0, -6.5, 1, 0, 1},
                 {"nearer than the near plane", 0, 0, -1, 0, 0, -5, 0, 0},
                 {"behind the eye", 1, 1, 4, -0.5, -0.5, 5, 0, 0}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhere);
        for (const int nClipMode : {1, 0, 2, -1}) {
            const Image image = ImageOf(view, c.x, c.y, c.z, nClipMode);
            EXPECT_EQ(image.nResult, 1);
            EXPECT_EQ(image.x, c.dScrX);
            EXPECT_EQ(image.y, c.dScrY);
            EXPECT_EQ(image.dDepth, c.dDepth);
            EXPECT_EQ(image.nInside, nClipMode == 1 ? c.nInView : c.nInDepth) << "clip mode " << nClipMode;
        }
    }
    EXPECT_EQ(ImageOf(view, 0.0, 0.0, dPastFar).nInside, 0) << "one step past the far plane";
}

TEST(Projection, PointsWithoutAnImageAreToldApart)
{
    Probe view = SkewView();
    const Image atEye = ImageOf(view, 1.0, 2.0, 0.0);
    EXPECT_EQ(atEye.nResult, 0);
    EXPECT_EQ(atEye.nInside, 0);
    EXPECT_EQ(atEye.x, 77.0) << "untouched";
    EXPECT_EQ(atEye.y, 77.0);
    EXPECT_EQ(atEye.dDepth, 77.0);
    for (const int nClipMode : {0, 1}) {
        const Image nowhere = ImageOf(view, 0.0, kNan, -3.0, nClipMode);
        EXPECT_EQ(nowhere.nResult, 1);
        EXPECT_EQ(nowhere.nInside, 0);
        EXPECT_TRUE(std::isnan(nowhere.y));
    }
}

TEST(Projection, ChangesWaitForBeginTrans)
{
    Probe view = SkewView();
    const Matrix inverse = Held(view.m_InvMatrix);
    view.Scale(2.0, 2.0, 1.0);
    EXPECT_EQ(ImageOf(view, 6.0, 4.0, -4.0).x, 3.0) << "still the view before";
    EXPECT_EQ(view.BeginTrans(0), 1);
    EXPECT_EQ(ImageOf(view, 3.0, 2.0, -4.0).x, 3.0);
    EXPECT_EQ(Held(view.m_InvMatrix), inverse) << "not asked for";

    view.Scale(0.0, 1.0, 1.0);
    EXPECT_EQ(view.BeginTrans(0), 1);
    for (const int nNotZero : {1, -5}) {
        EXPECT_EQ(view.BeginTrans(nNotZero), 0) << "all x become one";
    }
    EXPECT_EQ(Held(view.m_InvMatrix), inverse);
    EXPECT_EQ(ImageOf(view, 100.0, 0.0, -4.0).x, 0.0) << "where x is 0";
}

// The tolerance follows from the views: the depth of a far plane at most 20 times as far as the near one.
TEST(Projection, RandomViewsLeadThereAndBack)
{
    const std::uint64_t nSeed = 20240611;
    SCOPED_TRACE(nSeed);
    Dice dice(nSeed);
    for (int nView = 0; nView < 300; ++nView) {
        CProjection view;
        const double dScale = dice.Uniform(0.5, 2.0);
        view.Translate(dice.Uniform(-100, 100), dice.Uniform(-100, 100), dice.Uniform(-100, 100));
        view.RotateZ(dice.Uniform(-7, 7));
        view.RotateX(dice.Uniform(-7, 7));
        view.RotateY(dice.Uniform(-7, 7));
        view.Scale(dScale, dScale, dScale);
        const double dNear = dice.Uniform(5, 50), dFar = dNear * dice.Uniform(2, 20);
        view.SetPrjMatrix(dice.Uniform(-30, -1), dice.Uniform(1, 30), dice.Uniform(1, 30),
                          dice.Uniform(-30, -1), dNear, dFar);
        ASSERT_EQ(view.BeginTrans(1), 1);
        for (int i = 0; i < 30; ++i) {
            const double nx = dice.Uniform(-0.99, 0.99), ny = dice.Uniform(-0.99, 0.99);
            const double scrX = nx * view.m_ScrScaleX + view.m_ScrOffsetX;
            const double scrY = ny * view.m_ScrScaleY + view.m_ScrOffsetY;
            const double depth = dice.Uniform(-0.99, 0.99);
            double x, y, z;
            ASSERT_EQ(view.Inverse(scrX, scrY, depth, x, y, z), 1);
            const Image image = ImageOf(view, x, y, z);
            ASSERT_EQ(image.nResult, 1);
            EXPECT_EQ(image.nInside, 1);
            EXPECT_NEAR(image.x, scrX, 1e-9);
            EXPECT_NEAR(image.y, scrY, 1e-9);
            EXPECT_NEAR(image.dDepth, depth, 1e-10);
            double xBack = image.x, yBack = image.y, zBack = image.dDepth;   // in and out may be the same
            ASSERT_EQ(view.Inverse(xBack, yBack, zBack, xBack, yBack, zBack), 1);
            EXPECT_NEAR(xBack, x, 1e-8);
            EXPECT_NEAR(yBack, y, 1e-8);
            EXPECT_NEAR(zBack, z, 1e-8);
            int nInside = 0;
            ASSERT_EQ(view.Transform(x, y, z, x, y, z, nInside, 1), 1);
            EXPECT_TRUE(x == image.x && y == image.y && z == image.dDepth);
        }
    }
}

// Each expected value differs from what a quotient, another order of summing or a fused product would give.
TEST(Projection, RoundsInTheOrderThatItDocuments)
{
    Probe view;
    view.SetPrjMatrix(-1.0, 1.0, 1.0, -1.0, 1.0, 3.0);
    view.BeginTrans(0);
    EXPECT_EQ(ImageOf(view, 5.0, 0.0, -3.0).x, 0x1.aaaaaaaaaaaaap+0) << "5 * (1/3); 5/3 ends in b";

    const Matrix aligned = {1e16, 1.0,  -1e16, 1.0, -1e16, 1e16, 1.0, 1.0,
                            1.0,  1e16, -1e16, 1.0, 0.0,   0.0,  0.0, 1.0};
    Matrix v = {1.0, 1.0, 1.0, 0.0};
    view.ApplyMatrix(4, aligned.data(), v.data());
    EXPECT_EQ(v, (Matrix{0.0, 1.0, 0.0, 0.0}));

    const double p = 1.0 + 0x1p-30, q = 1.0 + 0x1p-31 + 0x1p-40;
    const Matrix cross = {q, -p, 0.0, 0.0};
    Matrix w = {p, q};
    view.ApplyMatrix(2, cross.data(), w.data());
    EXPECT_EQ(w[0], 0.0) << "a fused product leaves the rounding of the other";

    Matrix ones(16, 1.0), product(16, 99.0);
    view.MatrixMul2(4, aligned.data(), ones.data(), product.data());
    EXPECT_EQ(product, (Matrix{1, 1, 1, 1, 2, 2, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1}));
    const Matrix negative(16, -0.0);
    view.MatrixMul2(4, negative.data(), ones.data(), product.data());
    EXPECT_FALSE(std::signbit(product[0])) << "sums start at +0";
}

TEST(MatrixProduct, MultipliesRowsByColumnsAtAnySize)
{
    Probe probe;
    const Matrix a = {1, 2, 3, 4}, b = {5, 6, 7, 8};
    Matrix c(4, 99.0);
    probe.MatrixMul2(2, a.data(), b.data(), c.data());
    EXPECT_EQ(c, (Matrix{19, 22, 43, 50}));
    for (const int nNone : {0, -3}) {
        probe.MatrixMul2(nNone, a.data(), b.data(), c.data());
        Matrix v = {7.0};
        probe.ApplyMatrix(nNone, a.data(), v.data());
        EXPECT_EQ(v[0], 7.0);
    }
    EXPECT_EQ(c, (Matrix{19, 22, 43, 50}));
}

TEST(MatrixInverse, OfMatricesWorkedOutByHand)
{
    Probe probe;
    const struct {
        const char* szWhat;
        int n;
        Matrix a;
        double det;
        Matrix inverse;
    } aCase[] = {{"identity", 4, Identity(), 1.0, Identity()},
                 {"two rows exchanged", 3, {0, 1, 0, 1, 0, 0, 0, 0, 1}, -1.0, {0, 1, 0, 1, 0, 0, 0, 0, 1}},
                 {"rows in a ring", 3, {0, 1, 0, 0, 0, 1, 1, 0, 0}, 1.0, {0, 0, 1, 1, 0, 0, 0, 1, 0}},
                 {"not symmetric", 2, {1, 2, 3, 4}, -2.0, {-2, 1, 1.5, -0.5}},
                 {"one number", 1, {-4}, -4.0, {-0.25}},
                 {"no number", 0, {}, 1.0, {}},
                 {"tiny, but not zero", 2, {0x1p-300, 0, 0, 1}, 0x1p-300, {0x1p300, 0, 0, 1}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        Matrix a = c.a, inverse(a.size(), 99.0);
        EXPECT_EQ(probe.matinv(c.n, a.data(), inverse.data()), c.det);
        EXPECT_EQ(inverse, c.inverse);
    }
}

TEST(MatrixInverse, SingularMatricesLeaveTheOutputAlone)
{
    Probe probe;
    const struct {
        const char* szWhat;
        int n;
        Matrix a;
    } aCase[] = {{"a row of zeros", 2, {1, 2, 0, 0}},
                 {"a column of zeros", 2, {1, 0, 2, 0}},
                 {"rows in proportion", 2, {1, 2, 2, 4}},
                 {"a column without a number", 2, {1, kNan, 2, kNan}},
                 {"zero", 1, {0}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        Matrix a = c.a, inverse(a.size(), 99.0);
        EXPECT_EQ(probe.matinv(c.n, a.data(), inverse.data()), 0.0);
        EXPECT_EQ(inverse, Matrix(a.size(), 99.0));
    }
    // A stored row of zeros ends the factoring before it changes anything or reaches later rows.
    Matrix a = {1, 0, 2, 3, 0, 4, 5, 0, 6};
    const Matrix before = a;
    int ip[3] = {-7, -7, -7};
    EXPECT_EQ(probe.lu(3, a.data(), ip), 0.0);
    EXPECT_EQ(a, before);
    EXPECT_EQ(ip[0], 0);
    EXPECT_EQ(ip[2], -7);
}

// Entries are given by columns here: row 0 is what stands at 0, n, 2n ...
TEST(MatrixInverse, PivotsAreWeighedByTheirRows)
{
    Probe probe;
    int ip[2];
    Matrix scaled = {3.0, 5.0, 0.0, 100.0};   // rows (3, 0), (5, 100): 3/3 outweighs 5/100
    EXPECT_EQ(probe.lu(2, scaled.data(), ip), 300.0);
    EXPECT_EQ(ip[0], 0);
    EXPECT_EQ(scaled[1], 0x1.aaaaaaaaaaaaap+0) << "5 * (1/3); 5/3 ends in b";

    Matrix tied = {2.0, 4.0, 1.0, -4.0};   // rows (2, 1), (4, -4): both weigh 1, the first stays
    EXPECT_EQ(probe.lu(2, tied.data(), ip), -12.0);
    EXPECT_EQ(ip[0], 0);
    EXPECT_EQ(tied, (Matrix{2.0, 2.0, 1.0, -6.0}));

    Matrix exchanged = {1.0, 4.0, 8.0, 4.0};   // rows (1, 8), (4, 4): 1/8 against 4/4
    EXPECT_EQ(probe.lu(2, exchanged.data(), ip), -28.0);
    EXPECT_EQ(ip[0], 1);
    EXPECT_EQ(ip[1], 0);
    EXPECT_EQ(exchanged, (Matrix{0.25, 4.0, 7.0, 4.0})) << "rows stay where they are";

    Matrix unknown = {kNan, kNan, 1.0, 2.0};   // no pivot in column 0 is a number
    EXPECT_TRUE(std::isnan(probe.lu(2, unknown.data(), ip)));
    EXPECT_EQ(ip[0], 0);
    EXPECT_EQ(ip[1], 1);
}

TEST(MatrixInverse, TimesTheMatrixIsTheIdentity)
{
    const std::uint64_t nSeed = 4711;
    SCOPED_TRACE(nSeed);
    Dice dice(nSeed);
    Probe probe;
    for (const int n : {1, 2, 3, 4, 7, 16, 17, 50}) {
        SCOPED_TRACE(n);
        const auto nCount = static_cast<std::size_t>(n * n);
        Matrix a(nCount), inverse(nCount), product(nCount);
        for (std::size_t i = 0; i < nCount; ++i) {   // diagonally dominant: far from singular
            a[i] = dice.Uniform(-1.0, 1.0) + (i % static_cast<std::size_t>(n + 1) == 0 ? n : 0.0);
        }
        Matrix destroyed = a;
        ASSERT_NE(probe.matinv(n, destroyed.data(), inverse.data()), 0.0);
        probe.MatrixMul2(n, a.data(), inverse.data(), product.data());
        for (std::size_t i = 0; i < nCount; ++i) {
            EXPECT_NEAR(product[i], i % static_cast<std::size_t>(n + 1) == 0 ? 1.0 : 0.0, 1e-13) << i;
        }
    }
}

}   // namespace
