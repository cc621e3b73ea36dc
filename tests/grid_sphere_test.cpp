// Angles of directions, distances as text, and the sphere ruled with lines of constant angle.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/fixtures.h"

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();
const CXYZ kStation(100.0, 200.0, 50.0);

CGrid3DSphere Sphere(double dRadius, double dStepH, double dStepV, double dChordError = 0.01,
                     ZENITH_MODE eMode = HORIZON_0_FULL)
{
    CGrid3DSphere sphere;
    EXPECT_EQ(sphere.Create3DGridSphere(kStation, dRadius, dStepH, dStepV, eMode, dChordError), 1);
    return sphere;
}

std::vector<CXYZ> PointsOf(const CPolyline& line)
{
    std::vector<CXYZ> aPt;
    for (int i = 0; i < line.GetVertexSize(); ++i) {
        const CVertex* const p = line.GetVertex(static_cast<unsigned>(i));
        aPt.emplace_back(p->x, p->y, p->z);
    }
    return aPt;
}

std::vector<double> AnglesOf(const CGrid3DSphere& sphere, GRID_LINE eKind)
{
    std::vector<double> aAngle;
    for (int i = 0; i < sphere.m_aLine.GetSize(); ++i) {
        if (sphere.m_aLine[i].m_eKind == eKind) {
            aAngle.push_back(sphere.m_aLine[i].m_dAngle);
        }
    }
    return aAngle;
}

const CPolyline& LineAt(const CGrid3DSphere& sphere, GRID_LINE eKind, double dAngle)
{
    for (int i = 0; i < sphere.m_aLine.GetSize(); ++i) {
        if (sphere.m_aLine[i].m_eKind == eKind && sphere.m_aLine[i].m_dAngle == dAngle) {
            return sphere.m_aLine[i].m_line;
        }
    }
    ADD_FAILURE() << "no line at " << dAngle;
    static const CPolyline none;
    return none;
}

// The text of the first label on a line; of a pole when the angle is its own.
std::string TextAt(const CGrid3DSphere& sphere, GRID_LINE eKind, double dAngle)
{
    for (int i = 0; i < sphere.m_aLabel.GetSize(); ++i) {
        const CGridLabel& label = sphere.m_aLabel[i];
        const bool bPole = label.m_nLine < 0;
        const double dNamed = eKind == GRID_LINE_H ? label.m_dH : label.m_dV;
        if (dNamed == dAngle &&
            (bPole ? eKind == GRID_LINE_V : sphere.m_aLine[label.m_nLine].m_eKind == eKind)) {
            return label.m_strText.GetString();
        }
    }
    return "none";
}

bool IsEmpty(const CGrid3DSphere& sphere)
{
    return sphere.m_aLine.GetSize() == 0 && sphere.m_aLabel.GetSize() == 0 && sphere.GetRadius() == 0.0 &&
           sphere.GetStation().Len() == 0.0;
}

void ExpectAt(const CXYZ& pt, double x, double y, double z, double dTolerance)
{
    EXPECT_NEAR(pt.x, x, dTolerance);
    EXPECT_NEAR(pt.y, y, dTolerance);
    EXPECT_NEAR(pt.z, z, dTolerance);
}

double DistanceToChord(const CXYZ& p, const CXYZ& a, const CXYZ& b)
{
    const CXYZ ab = b - a, ap = p - a;
    const double t = std::fmin(1.0, std::fmax(0.0, ap.Inn(ab) / ab.Inn(ab)));
    return (ap - CXYZ(ab.x * t, ab.y * t, ab.z * t)).Len();
}

TEST(Angles, AreBroughtIntoOneTurn)
{
    const struct {
        double dAngle, dFull, dSigned;
    } aCase[] = {{0, 0, 0},       {-0.0, 0, 0},     {359.5, 359.5, -0.5}, {360, 0, 0},
                 {-360, 0, 0},    {-30, 330, -30},  {180, 180, 180},      {-180, 180, 180},
                 {540, 180, 180}, {-190, 170, 170}, {725.25, 5.25, 5.25}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.dAngle);
        EXPECT_EQ(CCalcXYZHV::Angle0To360(c.dAngle), c.dFull);
        EXPECT_EQ(CCalcXYZHV::AngleSigned(c.dAngle), c.dSigned);
        EXPECT_FALSE(std::signbit(CCalcXYZHV::Angle0To360(c.dAngle)));
    }
    EXPECT_EQ(CCalcXYZHV::Angle0To360(-1e-20), 0.0) << "360 is not in the range";
    EXPECT_EQ(CCalcXYZHV::Angle0To360(0.1), 0.1) << "unchanged";
    for (const double dNone : {kNan, kInf, -kInf}) {
        EXPECT_TRUE(std::isnan(CCalcXYZHV::Angle0To360(dNone)));
        EXPECT_TRUE(std::isnan(CCalcXYZHV::AngleSigned(dNone)));
        double s, c;
        CCalcXYZHV::SinCos(dNone, s, c);
        EXPECT_TRUE(std::isnan(s) && std::isnan(c));
    }
}

TEST(Angles, SineAndCosineAreExactAtQuartersAndAgreeWithRadians)
{
    const double aQuarter[][3] = {{0, 0, 1},    {90, 1, 0},   {180, 0, -1},
                                  {270, -1, 0}, {-90, -1, 0}, {3600, 0, 1}};
    double s, c;
    for (const auto& q : aQuarter) {
        CCalcXYZHV::SinCos(q[0], s, c);
        EXPECT_EQ(s, q[1]) << q[0];
        EXPECT_EQ(c, q[2]) << q[0];
    }
    for (double d = -720.0; d < 720.0; d += 7.3) {
        CCalcXYZHV::SinCos(d, s, c);
        EXPECT_NEAR(s, std::sin(d * 0.017453292519943295), 1e-14) << d;
        EXPECT_NEAR(c, std::cos(d * 0.017453292519943295), 1e-14) << d;
    }
}

TEST(Angles, OfVectorsRunFromNorthOverEastAndUpwards)
{
    const struct {
        double x, y, z, dH, dV;
    } aCase[] = {{0, 1, 0, 0, 0},    {1, 1, 0, 45, 0},   {2, 0, 0, 90, 0},   {0, -3, 0, 180, 0},
                 {-1, 0, 0, 270, 0}, {-1, 1, 0, 315, 0}, {0, 0, 5, 0, 90},   {0, 0, -5, 0, 270},
                 {0, 2, 2, 0, 45},   {0, 2, -2, 0, 315}, {3, 4, -5, 0, 315}, {-0.0, -0.0, 1, 0, 90}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(testing::Message() << c.x << " " << c.y << " " << c.z);
        double dH = -1.0, dV = -1.0;
        ASSERT_EQ(CCalcXYZHV::CalcHV(CXYZ(c.x, c.y, c.z), dH, dV), 1);
        if (c.x != 3) {
            EXPECT_DOUBLE_EQ(dH, c.dH);
        } else {
            EXPECT_NEAR(dH, 36.869897645844021, 1e-13) << "the angle of 3 : 4";
        }
        EXPECT_DOUBLE_EQ(dV, c.dV);
    }
    double dH = -1.0, dV = -1.0;
    for (const CXYZ& none : {CXYZ(), CXYZ(kNan, 1, 1), CXYZ(1, kInf, 1)}) {
        EXPECT_EQ(CCalcXYZHV::CalcHV(none, dH, dV), 0);
    }
    EXPECT_EQ(dH, -1.0) << "untouched";
    EXPECT_EQ(dV, -1.0);
}

TEST(Distances, ConvertAndShowTheirUnit)
{
    const CDist metres(12.5), feet(10.0, DIST_FOOT), survey(3937.0, DIST_US_FOOT);
    EXPECT_EQ(metres.GetText(), "12.500 m");
    EXPECT_EQ(feet.GetText(), "10.000 ft");
    EXPECT_EQ(survey.GetText(NUMBER_EXPONENT), "3.937e+03 ftUS");
    EXPECT_EQ(feet.GetValue(DIST_METRE), 3.048);
    EXPECT_EQ(survey.GetValue(DIST_METRE), 1200.0);
    EXPECT_EQ(CDist(3.048).GetValue(DIST_FOOT), 10.0);
    EXPECT_EQ(CDist(0.1, DIST_FOOT).GetValue(DIST_FOOT), 0.1) << "unchanged";
    const CDist strange(2.0, static_cast<DIST_UNIT>(9));
    EXPECT_EQ(strange.GetText(), "2.000 m");
    EXPECT_EQ(strange.GetValue(DIST_METRE), 2.0);
}

TEST(Distances, NumbersReadAlikeInEveryLocale)
{
    const struct {
        double d;
        const char *szFixed, *szExponent, *szAuto;
    } aCase[] = {{0, "0.000", "0.000e+00", "0.000"},
                 {-0.0, "0.000", "0.000e+00", "0.000"},
                 {-0.0004, "0.000", "-4.000e-04", "-4.000e-04"},
                 {-1.25, "-1.250", "-1.250e+00", "-1.250"},
                 {359.9996, "360.000", "3.600e+02", "360.000"},
                 {999999999, "999999999.000", "1.000e+09", "999999999.000"},
                 {2e9, "2000000000.000", "2.000e+09", "2.000e+09"},
                 {kNan, "nan", "nan", "nan"},
                 {-kInf, "-inf", "-inf", "-inf"}};
    const std::string strBefore = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");   // a comma, where this locale is installed
    for (const auto& c : aCase) {
        EXPECT_EQ(CDist::GetNumberText(c.d), c.szFixed);
        EXPECT_EQ(CDist::GetNumberText(c.d, NUMBER_EXPONENT), c.szExponent);
        EXPECT_EQ(CDist::GetNumberText(c.d, NUMBER_AUTO), c.szAuto);
    }
    std::setlocale(LC_NUMERIC, strBefore.c_str());
    EXPECT_EQ(CDist::GetNumberText(1e308).GetLength(), 313);
    EXPECT_EQ(CDist::GetNumberText(-1e308).GetLength(), 314);
}

TEST(GridSphere, ConvertsBetweenPointsAndAngles)
{
    const CGrid3DSphere sphere = Sphere(10.0, 30.0, 30.0);
    CXYZ pt;
    pt.m_nMark = 3;
    ASSERT_EQ(sphere.GetXYZ(90.0, 0.0, pt), 1);
    ExpectAt(pt, 110.0, 200.0, 50.0, 0.0);
    ASSERT_EQ(sphere.GetXYZ(180.0, 330.0, pt), 1);   // 30 down, to the south
    ExpectAt(pt, 100.0, 200.0 - 5.0 * std::sqrt(3.0), 45.0, 1e-13);
    ASSERT_EQ(sphere.GetXYZ(0.0, 150.0, pt), 1);   // beyond the zenith, so to the south as well
    ExpectAt(pt, 100.0, 200.0 - 5.0 * std::sqrt(3.0), 55.0, 1e-13);
    EXPECT_EQ(pt.m_nMark, 3);
    for (const double dNone : {kNan, kInf}) {
        EXPECT_EQ(sphere.GetXYZ(dNone, 0.0, pt), 0);
        EXPECT_EQ(sphere.GetXYZ(0.0, dNone, pt), 0);
    }

    double dH = -1.0, dV = -1.0;
    ASSERT_EQ(sphere.GetVH(CXYZ(93.0, 193.0, 50.0), dV, dH), 1);
    EXPECT_DOUBLE_EQ(dH, 225.0);
    EXPECT_EQ(dV, 0.0);
    EXPECT_EQ(sphere.GetVH(kStation, dV, dH), 0) << "no direction";
    EXPECT_DOUBLE_EQ(dH, 225.0);

    const std::uint64_t nSeed = 99;
    SCOPED_TRACE(nSeed);
    Dice dice(nSeed);
    for (int i = 0; i < 1000; ++i) {
        const double dHorizontal = dice.Uniform(0.0, 360.0), dUp = dice.Uniform(-89.0, 89.0);
        ASSERT_EQ(sphere.GetXYZ(dHorizontal, dUp, pt), 1);
        EXPECT_NEAR(pt.Len(kStation), 10.0, 1e-13);
        ASSERT_EQ(sphere.GetVH(pt, dV, dH), 1);
        EXPECT_NEAR(dH, dHorizontal, 1e-9);
        EXPECT_NEAR(CCalcXYZHV::AngleSigned(dV), dUp, 1e-9);
    }
}

TEST(GridSphere, LinesLieAtMultiplesOfTheSteps)
{
    using Angles = std::vector<double>;
    const CGrid3DSphere quarters = Sphere(10.0, 90.0, 90.0);
    EXPECT_EQ(AnglesOf(quarters, GRID_LINE_H), (Angles{0, 90, 180, 270}));
    EXPECT_EQ(AnglesOf(quarters, GRID_LINE_V), (Angles{0})) << "a pole is no line";
    const CGrid3DSphere uneven = Sphere(10.0, 100.0, 40.0);
    EXPECT_EQ(AnglesOf(uneven, GRID_LINE_H), (Angles{0, 100, 200, 300}));
    EXPECT_EQ(AnglesOf(uneven, GRID_LINE_V), (Angles{280, 320, 0, 40, 80}));
    const CGrid3DSphere one = Sphere(10.0, 360.0, 30.0);
    EXPECT_EQ(AnglesOf(one, GRID_LINE_H), (Angles{0}));
    EXPECT_EQ(AnglesOf(one, GRID_LINE_V), (Angles{300, 330, 0, 30, 60}));
    // Steps that fit but for rounding, to either side: no second line at north, none at the pole.
    for (const int n : {3, 7, 11, 49, 360, 3600}) {
        const double dH = 360.0 / n, dV = 90.0 / n;
        for (const double dTowards : {0.0, 100.0}) {
            const double dStepH = std::nextafter(dH, dTowards), dStepV = std::nextafter(dV, dTowards);
            EXPECT_EQ(AnglesOf(Sphere(10.0, dStepH, 90.0, 1.0), GRID_LINE_H).size(),
                      static_cast<std::size_t>(n));
            EXPECT_EQ(AnglesOf(Sphere(10.0, 360.0, dStepV, 1.0), GRID_LINE_V).size(),
                      static_cast<std::size_t>(2 * n - 1));
        }
    }
}

TEST(GridSphere, LinesRunWhereAnglesSay)
{
    const CGrid3DSphere sphere = Sphere(10.0, 30.0, 30.0);
    for (const double dH : AnglesOf(sphere, GRID_LINE_H)) {
        SCOPED_TRACE(dH);
        const CPolyline& line = LineAt(sphere, GRID_LINE_H, dH);
        EXPECT_EQ(line.IsClose(), 0);
        const std::vector<CXYZ> aPt = PointsOf(line);
        ExpectAt(aPt.front(), 100.0, 200.0, 40.0, 0.0);   // exactly
        ExpectAt(aPt.back(), 100.0, 200.0, 60.0, 0.0);
        for (std::size_t i = 1; i + 1 < aPt.size(); ++i) {
            double dPtH, dPtV;
            ASSERT_EQ(sphere.GetVH(aPt[i], dPtV, dPtH), 1);
            EXPECT_NEAR(CCalcXYZHV::AngleSigned(dPtH - dH), 0.0, 1e-11);
            EXPECT_GT(aPt[i].z, aPt[i - 1].z) << "upwards";
        }
    }
    // 30 degrees up: a circle of radius 10 cos 30, 5 above the station, from north over east.
    const CPolyline& circle = LineAt(sphere, GRID_LINE_V, 30.0);
    EXPECT_NE(circle.IsClose(), 0);
    const std::vector<CXYZ> aPt = PointsOf(circle);
    const double dRadius = 5.0 * std::sqrt(3.0);
    ASSERT_EQ(aPt.size() % 4, 0u);
    const std::size_t nQuarter = aPt.size() / 4;
    const double aCorner[][2] = {{0, dRadius}, {dRadius, 0}, {0, -dRadius}, {-dRadius, 0}};
    for (std::size_t q = 0; q < 4; ++q) {
        ExpectAt(aPt[q * nQuarter], 100.0 + aCorner[q][0], 200.0 + aCorner[q][1], 55.0, 1e-13);
    }
    for (std::size_t i = 0; i < aPt.size(); ++i) {   // evenly spaced, the gap at the seam like any other
        const CXYZ &p = aPt[i], &next = aPt[(i + 1) % aPt.size()];
        EXPECT_NEAR(std::hypot(next.x - p.x, next.y - p.y),
                    2.0 * dRadius * std::sin(3.14159265358979 / double(aPt.size())), 1e-12);
    }
}

TEST(GridSphere, ChordsStayWithinTheirErrorWithoutWaste)
{
    for (const double dRadius : {0.01, 10.0, 5e4}) {
        for (const double dPart : {1e-2, 1e-4, 1e-6}) {
            SCOPED_TRACE(testing::Message() << "radius " << dRadius << ", chord error a part of " << dPart);
            const double dError = dRadius * dPart;
            const CGrid3DSphere sphere = Sphere(dRadius, 120.0, 45.0, dError);
            const double dRounding = 1e-12;   // of the station's coordinates
            for (int i = 0; i < sphere.m_aLine.GetSize(); ++i) {
                const CGridLine& line = sphere.m_aLine[i];
                double s, c = 1.0;
                if (line.m_eKind == GRID_LINE_V) {
                    CCalcXYZHV::SinCos(line.m_dAngle, s, c);
                }
                const double dCircle = dRadius * c;
                const std::vector<CXYZ> aPt = PointsOf(line.m_line);
                const std::size_t nChords = aPt.size() - (line.m_line.IsClose() != 0 ? 0 : 1);
                for (std::size_t k = 0; k < nChords; ++k) {
                    const CXYZ &a = aPt[k], &b = aPt[(k + 1) % aPt.size()];
                    const CXYZ centre(100.0, 200.0, line.m_eKind == GRID_LINE_V ? a.z : 50.0);
                    const CXYZ middle((a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2);
                    ASSERT_LE(dCircle - middle.Len(centre), dError + dRounding);
                }
                // The least that a full circle needs, quarter by quarter, or pieces of 30 degrees.
                const double dLeast = 3.14159265358979 / std::acos(1.0 - dError / dCircle);
                const double dTurns = line.m_eKind == GRID_LINE_V ? 1.0 : 0.5;
                EXPECT_LE(double(nChords), std::fmax(12.0, 1.01 * dLeast + 4.0) * dTurns);
            }
        }
    }
}

TEST(GridSphere, DividesAnyAnglePolylineFinelyEnough)
{
    const double dError = 0.001;
    const CGrid3DSphere sphere = Sphere(10.0, 30.0, 30.0, dError);
    const std::uint64_t nSeed = 5;
    SCOPED_TRACE(nSeed);
    Dice dice(nSeed);
    for (int n = 0; n < 100; ++n) {
        const double h = dice.Uniform(0, 360), v = dice.Uniform(-80, 80);
        const double dTurnH = dice.Uniform(-170, 170), dTurnV = dice.Uniform(-80, 80) - v;
        CPolyline divided, chords;
        ASSERT_EQ(sphere.DevidePolyHV(LineThrough({{h, v, 0}, {h + dTurnH, v + dTurnV, 0}}), divided), 1);
        ASSERT_EQ(sphere.CalcPolyHV2XYZ(divided, chords), 1);
        const std::vector<CXYZ> aPt = PointsOf(chords);
        const int nPieces = static_cast<int>(aPt.size()) - 1;
        for (int k = 0; k < nPieces; ++k) {
            for (const double dPart : {0.25, 0.5, 0.75}) {
                const double t = (k + dPart) / nPieces;
                CXYZ pt;
                ASSERT_EQ(sphere.GetXYZ(h + dTurnH * t, v + dTurnV * t, pt), 1);
                const auto i = static_cast<std::size_t>(k);
                ASSERT_LE(DistanceToChord(pt, aPt[i], aPt[i + 1]), dError + 1e-12);
            }
        }
    }
}

TEST(GridSphere, SegmentsTakeTheShortWayOverTheSeam)
{
    const CGrid3DSphere coarse = Sphere(10.0, 30.0, 30.0, 1000.0);   // pieces of 30 degrees
    const struct {
        const char* szWhat;
        Sites aFrom;
        bool bClose;
        Sites aTo;
    } aCase[] = {
        {"nothing", {}, true, {}},
        {"one vertex", {{-30, 400, 7}}, true, {{330, 40, 7}}},
        {"over north", {{340, 0, 1}, {20, 0, 2}}, false, {{340, 0, 1}, {0, 0, 1}, {20, 0, 2}}},
        {"back over north", {{20, 0, 1}, {340, 0, 2}}, false, {{20, 0, 1}, {0, 0, 1}, {340, 0, 2}}},
        {"over the horizon", {{90, 340, 0}, {90, 20, 0}}, false, {{90, 340, 0}, {90, 0, 0}, {90, 20, 0}}},
        {"over the zenith", {{0, 70, 0}, {0, 110, 0}}, false, {{0, 70, 0}, {0, 90, 0}, {0, 110, 0}}},
        {"half a turn goes upwards",
         {{0, 0, 0}, {180, 0, 0}},
         false,
         {{0, 0, 0}, {30, 0, 0}, {60, 0, 0}, {90, 0, 0}, {120, 0, 0}, {150, 0, 0}, {180, 0, 0}}},
        {"a vertex repeated", {{10, 5, 0}, {370, 365, 0}}, false, {{10, 5, 0}, {10, 5, 0}}},
        {"the closing segment too",
         {{0, 0, 0}, {30, 0, 0}, {30, 30, 0}, {330, 30, 0}},
         true,
         {{0, 0, 0}, {30, 0, 0}, {30, 30, 0}, {0, 30, 0}, {330, 30, 0}}},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CPolyline poly = LineThrough(c.aFrom, c.bClose);
        ASSERT_EQ(coarse.DevidePolyHV(poly, poly), 1) << "in place";
        EXPECT_EQ(poly.IsClose() != 0, c.bClose);
        const std::vector<CXYZ> aPt = PointsOf(poly);
        ASSERT_EQ(aPt.size(), c.aTo.size());
        for (std::size_t i = 0; i < aPt.size(); ++i) {
            EXPECT_EQ(aPt[i].x, c.aTo[i].x) << i;
            EXPECT_EQ(aPt[i].y, c.aTo[i].y) << i;
            EXPECT_EQ(aPt[i].z, c.aTo[i].z) << i;
        }
    }
}

TEST(GridSphere, LabelsReadAsTheInstrumentCounts)
{
    const struct {
        ZENITH_MODE eMode;
        const char *szZenith, *sz60Up, *szHorizon, *sz30Down, *szNadir;
        double dBeyondZenith;   // 10 degrees beyond
    } aCase[] = {{ZENITH_0_FULL, "0.000", "30.000", "90.000", "120.000", "180.000", 350},
                 {ZENITH_0_SIGNED, "0.000", "30.000", "90.000", "120.000", "180.000", -10},
                 {HORIZON_0_FULL, "90.000", "60.000", "0.000", "330.000", "270.000", 100},
                 {HORIZON_0_SIGNED, "90.000", "60.000", "0.000", "-30.000", "-90.000", 100},
                 {NADIR_0_FULL, "180.000", "150.000", "90.000", "60.000", "0.000", 190},
                 {NADIR_0_SIGNED, "180.000", "150.000", "90.000", "60.000", "0.000", -170}};
    const CGrid3DSphere first = Sphere(10.0, 30.0, 30.0);
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.eMode);
        CGrid3DSphere changed = first;
        EXPECT_EQ(changed.SetZenithMode(c.eMode), 1);
        for (const CGrid3DSphere& sphere : {Sphere(10.0, 30.0, 30.0, 0.01, c.eMode), changed}) {
            EXPECT_EQ(sphere.GetZenithMode(), c.eMode);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 90.0), c.szZenith);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 60.0), c.sz60Up);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 0.0), c.szHorizon);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 330.0), c.sz30Down);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 270.0), c.szNadir);
            EXPECT_EQ(TextAt(sphere, GRID_LINE_H, 300.0), "300.000");
            EXPECT_EQ(sphere.m_aLine.GetSize(), first.m_aLine.GetSize());
        }
        EXPECT_EQ(CGrid3DSphere::GetReading(100.0, c.eMode), c.dBeyondZenith);
    }
    CGrid3DSphere sphere = first;
    EXPECT_EQ(sphere.SetZenithMode(static_cast<ZENITH_MODE>(6)), 0);
    EXPECT_EQ(sphere.SetNumberFormat(static_cast<NUMBER_FORMAT>(-1)), 0);
    EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 330.0), "330.000");
    EXPECT_EQ(sphere.SetNumberFormat(NUMBER_EXPONENT), 1);
    EXPECT_EQ(sphere.GetNumberFormat(), NUMBER_EXPONENT);
    EXPECT_EQ(TextAt(sphere, GRID_LINE_V, 330.0), "3.300e+02");
    EXPECT_EQ(TextAt(Sphere(10.0, 359.9996, 30.0), GRID_LINE_H, 359.9996), "0.000") << "360 is 0";
}

TEST(GridSphere, LabelsLieOnTheirLinesAwayFromCrossings)
{
    const CGrid3DSphere sphere = Sphere(10.0, 100.0, 40.0);
    std::vector<int> aCount(static_cast<std::size_t>(sphere.m_aLine.GetSize()), 0);
    int nPoles = 0;
    for (int i = 0; i < sphere.m_aLabel.GetSize(); ++i) {
        const CGridLabel& label = sphere.m_aLabel[i];
        EXPECT_EQ(label.m_bPlaced, 0);
        EXPECT_NEAR(label.m_pos.Len(kStation), 10.0, 1e-13);
        if (label.m_nLine < 0) {
            ++nPoles;
            ExpectAt(label.m_pos, 100.0, 200.0, label.m_dV == 90.0 ? 60.0 : 40.0, 0.0);
            continue;
        }
        const CGridLine& line = sphere.m_aLine[label.m_nLine];
        ++aCount[static_cast<std::size_t>(label.m_nLine)];
        EXPECT_EQ(line.m_eKind == GRID_LINE_H ? label.m_dH : label.m_dV, line.m_dAngle);
        double dH, dV;
        ASSERT_EQ(sphere.GetVH(label.m_pos, dV, dH), 1);
        EXPECT_NEAR(dH, label.m_dH, 1e-11);
        EXPECT_NEAR(CCalcXYZHV::AngleSigned(dV - label.m_dV), 0.0, 1e-11);
        if (line.m_eKind == GRID_LINE_H) {
            EXPECT_EQ(label.m_dV, 20.0);
        } else {   // gaps 0 .. 100 (of 0 and of 90), 100 .. 200 (of 180), 200 .. 300 (of 270)
            EXPECT_TRUE(label.m_dH == 50.0 || label.m_dH == 150.0 || label.m_dH == 250.0) << label.m_dH;
        }
    }
    EXPECT_EQ(aCount, (std::vector<int>{1, 1, 1, 1, 3, 3, 3, 3, 3}));
    EXPECT_EQ(nPoles, 2);

    // Gaps 0 .. 260 and the narrow 260 .. 360; and gaps of 30, but for rounding.
    const struct {
        double dStepH;
        std::vector<double> aH;
    } aCase[] = {{260.0, {130, 310}}, {std::nextafter(30.0, 100.0), {15, 105, 195, 285}}};
    for (const auto& c : aCase) {
        const CGrid3DSphere ruled = Sphere(10.0, c.dStepH, 90.0);
        const int nHorizon = ruled.m_aLine.GetSize() - 1;
        std::size_t nSeen = 0;
        for (int i = 0; i < ruled.m_aLabel.GetSize(); ++i) {
            if (ruled.m_aLabel[i].m_nLine == nHorizon) {
                ASSERT_LT(nSeen, c.aH.size());
                EXPECT_NEAR(ruled.m_aLabel[i].m_dH, c.aH[nSeen++], 1e-9);
            }
        }
        EXPECT_EQ(nSeen, c.aH.size());
    }
}

TEST(GridSphere, TextsAreAlignedToTheirPlaces)
{
    CGrid3DSphere sphere = Sphere(10.0, 90.0, 90.0);
    // A text 41 wide and 20 high at (100.25, 50.75); places are rounded to the nearest pixel.
    const struct {
        int nAlign, x, y, yUp;
    } aCase[] = {
        {GRID_TEXT_LEFT + GRID_TEXT_TOP, 100, 51, 51},     {GRID_TEXT_CENTER + GRID_TEXT_TOP, 80, 51, 51},
        {GRID_TEXT_RIGHT + GRID_TEXT_TOP, 59, 51, 51},     {GRID_TEXT_LEFT + GRID_TEXT_MIDDLE, 100, 41, 61},
        {GRID_TEXT_CENTER + GRID_TEXT_MIDDLE, 80, 41, 61}, {GRID_TEXT_RIGHT + GRID_TEXT_MIDDLE, 59, 41, 61},
        {GRID_TEXT_LEFT + GRID_TEXT_BOTTOM, 100, 31, 71},  {GRID_TEXT_CENTER + GRID_TEXT_BOTTOM, 80, 31, 71},
        {GRID_TEXT_RIGHT + GRID_TEXT_BOTTOM, 59, 31, 71}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.nAlign);
        ASSERT_EQ(sphere.SetTextAlign(c.nAlign), 1);
        EXPECT_EQ(sphere.GetTextAlign(), c.nAlign);
        ASSERT_EQ(sphere.PlaceLabel(1, 100.25, 50.75, 41, 20), 1);
        EXPECT_EQ(sphere.m_aLabel[1].m_point, CPoint(c.x, c.y));
        ASSERT_EQ(sphere.PlaceLabel(1, 100.25, 50.75, 41, -20), 1);
        EXPECT_EQ(sphere.m_aLabel[1].m_point, CPoint(c.x, c.yUp)) << "y upwards";
        ASSERT_EQ(sphere.PlaceLabel(1, 100.25, 50.75, 0, 0), 1);
        EXPECT_EQ(sphere.m_aLabel[1].m_point, CPoint(100, 51)) << "aligned by the host's own drawing";
    }
    for (const int nUnknown : {3, 7, 11, 12, 16, -1, -4}) {
        EXPECT_EQ(sphere.SetTextAlign(nUnknown), 0) << nUnknown;
    }
    EXPECT_EQ(sphere.GetTextAlign(), GRID_TEXT_RIGHT + GRID_TEXT_BOTTOM);
}

TEST(GridSphere, LabelsWithoutAPlaceAreHidden)
{
    CGrid3DSphere sphere = Sphere(10.0, 90.0, 90.0);
    const int n = sphere.m_aLabel.GetSize();
    for (const int nNone : {-1, n, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(sphere.PlaceLabel(nNone, 0.0, 0.0, 0, 0), 0);
        EXPECT_EQ(sphere.HideLabel(nNone), 0);
    }
    for (const double dNone : {kNan, kInf, -kInf, 1e10, -2147483649.0}) {
        ASSERT_EQ(sphere.PlaceLabel(0, 5.0, 6.0, 0, 0), 1);
        EXPECT_EQ(sphere.m_aLabel[0].m_bPlaced, 1);
        EXPECT_EQ(sphere.PlaceLabel(0, dNone, 0.0, 0, 0), 0);
        EXPECT_EQ(sphere.m_aLabel[0].m_bPlaced, 0);
        EXPECT_EQ(sphere.PlaceLabel(0, 0.0, dNone, 0, 0), 0);
    }
    ASSERT_EQ(sphere.PlaceLabel(0, 2147483647.0, -2147483648.0, 0, 0), 1);
    EXPECT_EQ(sphere.HideLabel(0), 1);
    EXPECT_EQ(sphere.m_aLabel[0].m_bPlaced, 0);
}

TEST(GridSphere, BadInputGivesAnEmptySphereAtOnce)
{
    const ZENITH_MODE eGood = ZENITH_0_FULL;
    const struct {
        const char* szWhat;
        CXYZ station;
        double dRadius, dStepH, dStepV, dChordError;
        ZENITH_MODE eMode;
    } aCase[] = {{"radius 0", kStation, 0, 30, 30, 0.1, eGood},
                 {"radius below 0", kStation, -1, 30, 30, 0.1, eGood},
                 {"radius not a number", kStation, kNan, 30, 30, 0.1, eGood},
                 {"radius without end", kStation, kInf, 30, 30, 0.1, eGood},
                 {"station not a number", CXYZ(0, kNan, 0), 1, 30, 30, 0.1, eGood},
                 {"beyond the numbers", CXYZ(1.7e308, 0, 0), 1.7e308, 30, 30, 0.1, eGood},
                 {"step 0", kStation, 1, 0, 30, 0.1, eGood},
                 {"step below 0", kStation, 1, 30, -30, 0.1, eGood},
                 {"step not a number", kStation, 1, kNan, 30, 0.1, eGood},
                 {"step without end", kStation, 1, 30, kInf, 0.1, eGood},
                 {"step of more than a turn", kStation, 1, 361, 30, 0.1, eGood},
                 {"step past the pole", kStation, 1, 30, 91, 0.1, eGood},
                 {"step too fine", kStation, 1, 1e-3, 30, 0.1, eGood},
                 {"step absurdly fine", kStation, 1, 30, 5e-324, 0.1, eGood},
                 {"chord error 0", kStation, 1, 30, 30, 0, eGood},
                 {"chord error below 0", kStation, 1, 30, 30, -1, eGood},
                 {"chord error not a number", kStation, 1, 30, 30, kNan, eGood},
                 {"chord error without end", kStation, 1, 30, 30, kInf, eGood},
                 {"chord error absurdly fine", kStation, 1, 30, 30, 5e-324, eGood},
                 {"unknown mode", kStation, 1, 30, 30, 0.1, static_cast<ZENITH_MODE>(17)}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.szWhat);
        CGrid3DSphere sphere = Sphere(10.0, 30.0, 30.0, 0.01, NADIR_0_FULL);
        EXPECT_EQ(sphere.Create3DGridSphere(c.station, c.dRadius, c.dStepH, c.dStepV, c.eMode, c.dChordError),
                  0);
        EXPECT_TRUE(IsEmpty(sphere));
        EXPECT_EQ(sphere.GetZenithMode(), NADIR_0_FULL) << "kept";
    }
    // 36,000 lines of 27 points are just under a million, of 29 just over.
    CGrid3DSphere fine;
    EXPECT_EQ(fine.Create3DGridSphere(kStation, 10.0, 0.01, 90.0, eGood, 0.02), 1);
    EXPECT_EQ(fine.m_aLine.GetSize(), 36001);
    EXPECT_EQ(fine.m_aLine[0].m_line.GetVertexSize(), 27);
    EXPECT_EQ(fine.Create3DGridSphere(kStation, 10.0, 0.01, 90.0, eGood, 0.018), 0);
}

TEST(GridSphere, WithoutASphereThereAreNoLines)
{
    const CGrid3DSphere none;
    CPolyline line = LineThrough({{1, 2, 3}});
    CXYZ pt(7, 8, 9);
    EXPECT_EQ(none.GetXYZ(0.0, 0.0, pt), 0);
    EXPECT_EQ(none.MakeGridLine(GRID_LINE_H, 0.0, line), 0);
    EXPECT_EQ(none.DevidePolyHV(line, line), 0);
    EXPECT_EQ(none.CalcPolyHV2XYZ(line, line), 0);

    const CGrid3DSphere sphere = Sphere(10.0, 180.0, 90.0, 1e-9);
    EXPECT_EQ(sphere.MakeGridLine(static_cast<GRID_LINE>(2), 0.0, line), 0);
    EXPECT_EQ(sphere.MakeGridLine(GRID_LINE_V, kNan, line), 0);
    CPolyline bad = LineThrough({{0, 0, 0}, {kInf, 0, 0}});
    EXPECT_EQ(sphere.DevidePolyHV(bad, line), 0);
    EXPECT_EQ(sphere.CalcPolyHV2XYZ(bad, line), 0);
    CPolyline roundAndRound;
    CVertex vertex;
    for (int i = 0; i < 40; ++i) {
        vertex.x = 90.0 * i;
        roundAndRound.AddVertex(vertex);
    }
    EXPECT_EQ(sphere.DevidePolyHV(roundAndRound, line), 0) << "more than a million vertices";
    ASSERT_EQ(line.GetVertexSize(), 1) << "unchanged";
    EXPECT_EQ(line.GetVertex(0)->x, 1.0);
    EXPECT_EQ(pt.x, 7.0);
}

TEST(GridSphere, CanBeMadeAroundOneOfItsOwnPoints)
{
    CGrid3DSphere sphere = Sphere(10.0, 90.0, 90.0);
    const CXYZ& zenith = sphere.m_aLabel[sphere.m_aLabel.GetSize() - 1].m_pos;
    ASSERT_EQ(sphere.Create3DGridSphere(zenith, 5.0, 90.0, 90.0, ZENITH_0_FULL, 0.1), 1);
    ExpectAt(sphere.GetStation(), 100.0, 200.0, 60.0, 0.0);
    CGrid3DSphere copy(sphere);
    sphere.InitData();
    EXPECT_TRUE(IsEmpty(sphere));
    EXPECT_EQ(copy.m_aLine.GetSize(), 5);
    EXPECT_EQ(copy.GetRadius(), 5.0);
}

}   // namespace
