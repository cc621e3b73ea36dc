#include <cmath>

#include "grid3dsphere/grid_3d_sphere.h"
#include "grid3dsphere/grid_steps.h"

namespace {

constexpr double kRadians = 3.14159265358979323846 / 180.0;
// A sphere with more would be solid ink on any screen, and asks for tens of megabytes.
constexpr double kMaxPoints = 1e6;
// However coarse a chord error is asked for, a circle shall not turn into a square.
constexpr double kLongestPiece = 30.0;

// A segment of an angle polyline: where it begins, and by how much its angles change, the short way round.
struct Segment {
    double dH, dV, dTurnH, dTurnV;
};

Segment SegmentBetween(const CVertex& from, const CVertex& to)
{
    const double dH = CCalcXYZHV::Angle0To360(from.x), dV = CCalcXYZHV::Angle0To360(from.y);
    return {dH, dV, CCalcXYZHV::AngleSigned(CCalcXYZHV::Angle0To360(to.x) - dH),
            CCalcXYZHV::AngleSigned(CCalcXYZHV::Angle0To360(to.y) - dV)};
}

// Number of equal pieces whose chords stay within the chord error. A chord over a piece of length 1/n is off by at
// most |p''| / (8 n^2), with p'' the second derivative of the point along the segment. For angles that change
// evenly by h and v, |p''|^2 = R^2 (v^4 + c^2 h^4 + (2 c^2 + 4 s^2) v^2 h^2), c and s being cosine and sine of the
// vertical angle; the last bracket is at most 4.
double PiecesOf(const Segment& segment, double dRadius, double dChordError)
{
    const double h = segment.dTurnH * kRadians, v = segment.dTurnV * kRadians;
    double s = 0.0, c = 1.0;   // where the vertical angle changes, the widest circle stands for all
    if (v == 0.0) {
        CCalcXYZHV::SinCos(segment.dV, s, c);
    }
    const double dBend = std::sqrt(v * v * v * v + c * c * h * h * h * h + 4.0 * v * v * h * h);
    const double dForChord = std::sqrt(dRadius / dChordError * (dBend / 8.0));
    const double dTurn = std::fmax(std::fabs(segment.dTurnH), std::fabs(segment.dTurnV));
    return std::fmax(1.0, std::fmax(std::ceil(dForChord), std::ceil(dTurn / kLongestPiece)));
}

bool AllFinite(const CPolyline& polyHV)
{
    for (int i = 0; i < polyHV.GetVertexSize(); ++i) {
        const CVertex* const p = polyHV.GetVertex(static_cast<unsigned>(i));
        if (!std::isfinite(p->x) || !std::isfinite(p->y)) {
            return false;
        }
    }
    return true;
}

// The segments of a polyline, the closing one included.
int SegmentCount(const CPolyline& poly)
{
    const int n = poly.GetVertexSize();
    return n < 2 ? 0 : poly.IsClose() ? n : n - 1;
}

const CVertex& VertexOf(const CPolyline& poly, int i)
{
    return *poly.GetVertex(static_cast<unsigned>(i % poly.GetVertexSize()));
}

// The vertices with those between them, in a polyline that reserves room for all at once.
CPolyline Divided(const CPolyline& polyHV, int nPoints, double dRadius, double dChordError)
{
    CPolyline divided(nPoints, polyHV.GetCode());
    const int nSegments = SegmentCount(polyHV);
    for (int i = 0; i < polyHV.GetVertexSize(); ++i) {
        CVertex vertex = VertexOf(polyHV, i);
        const Segment segment = SegmentBetween(vertex, VertexOf(polyHV, i + 1));
        vertex.x = segment.dH;
        vertex.y = segment.dV;
        divided.AddVertex(vertex);
        const double dPieces = i < nSegments ? PiecesOf(segment, dRadius, dChordError) : 1.0;
        for (double k = 1.0; k < dPieces; k += 1.0) {
            vertex.x = CCalcXYZHV::Angle0To360(segment.dH + segment.dTurnH * k / dPieces);
            vertex.y = CCalcXYZHV::Angle0To360(segment.dV + segment.dTurnV * k / dPieces);
            divided.AddVertex(vertex);
        }
    }
    if (polyHV.IsClose()) {
        divided.Close();
    }
    return divided;
}

void AddAngles(CPolyline& polyHV, double dH, double dV)
{
    CVertex vertex;
    vertex.x = dH;
    vertex.y = dV;
    polyHV.AddVertex(vertex);
}

// A line of the grid by quarters of a circle, which leave no doubt which way round it runs.
CPolyline QuartersOf(GRID_LINE eKind, double dAngle)
{
    CPolyline polyHV;
    if (eKind == GRID_LINE_H) {
        for (const double dV : {270.0, 0.0, 90.0}) {
            AddAngles(polyHV, dAngle, dV);
        }
        return polyHV;
    }
    for (const double dH : {0.0, 90.0, 180.0, 270.0}) {
        AddAngles(polyHV, dH, dAngle);
    }
    polyHV.Close();
    return polyHV;
}

// Both ways from the horizon, the horizon once; a pole is no line.
double CountOfV(double dStepV)
{
    return 2.0 * qsv::StepsBelow(90.0, dStepV) - 1.0;
}

bool IsWithin(double d, double dMost)
{
    return d > 0.0 && d <= dMost;   // false when not a number
}

}   // namespace

CGrid3DSphere::CGrid3DSphere() = default;

CGrid3DSphere::CGrid3DSphere(const CGrid3DSphere& src)
{
    *this = src;
}

CGrid3DSphere& CGrid3DSphere::operator=(const CGrid3DSphere& src)
{
    m_aLine.Copy(src.m_aLine);
    m_aLabel.Copy(src.m_aLabel);
    m_station = src.m_station;
    m_dRadius = src.m_dRadius;
    m_dChordError = src.m_dChordError;
    m_eZenithMode = src.m_eZenithMode;
    m_eNumberFormat = src.m_eNumberFormat;
    m_nTextAlign = src.m_nTextAlign;
    return *this;
}

CGrid3DSphere::~CGrid3DSphere() = default;

void CGrid3DSphere::InitData()
{
    m_aLine.RemoveAll();
    m_aLabel.RemoveAll();
    m_station = CXYZ();
    m_dRadius = 0.0;
    m_dChordError = 0.0;
}

const CXYZ& CGrid3DSphere::GetStation() const
{
    return m_station;
}

double CGrid3DSphere::GetRadius() const
{
    return m_dRadius;
}

int CGrid3DSphere::Create3DGridSphere(const CXYZ& station, double dRadius, double dStepH, double dStepV,
                                      ZENITH_MODE eMode, double dChordError)
{
    const CXYZ centre = station;   // it may be a point of this sphere
    InitData();
    const double dReach = std::fabs(centre.x) + std::fabs(centre.y) + std::fabs(centre.z) + dRadius;
    if (!(dRadius > 0.0) || !(dChordError > 0.0) || !std::isfinite(dReach) || !std::isfinite(dChordError) ||
        !IsWithin(dStepH, 360.0) || !IsWithin(dStepV, 90.0)) {
        return 0;
    }
    const double dPieces = PiecesOf({0.0, 0.0, 90.0, 0.0}, dRadius, dChordError);   // of a quarter
    const double dPoints =
        qsv::StepsBelow(360.0, dStepH) * (2.0 * dPieces + 1.0) + CountOfV(dStepV) * (4.0 * dPieces);
    if (!(dPoints <= kMaxPoints) || SetZenithMode(eMode) == 0) {
        return 0;
    }
    m_station = centre;
    m_dRadius = dRadius;
    m_dChordError = dChordError;
    MakeLines(dStepH, dStepV);
    MakeLabels(dStepH, dStepV);
    return 1;
}

// Angles are multiples, not sums: rounding does not add up along the circle.
void CGrid3DSphere::MakeLines(double dStepH, double dStepV)
{
    const int nH = static_cast<int>(qsv::StepsBelow(360.0, dStepH));
    const int nV = static_cast<int>(CountOfV(dStepV));
    m_aLine.SetSize(nH + nV);
    const int nLevel = nH + nV / 2;   // the line at angle 0, between as many below and above
    for (int i = 0; i < nH + nV; ++i) {
        CGridLine& line = m_aLine[i];
        line.m_eKind = i < nH ? GRID_LINE_H : GRID_LINE_V;
        const double dAngle = i < nH ? i * dStepH : (i - nLevel) * dStepV;
        line.m_dAngle = CCalcXYZHV::Angle0To360(dAngle);
        MakeGridLine(line.m_eKind, line.m_dAngle, line.m_line);
    }
}

int CGrid3DSphere::MakeGridLine(GRID_LINE eKind, double dAngle, CPolyline& line) const
{
    if (eKind != GRID_LINE_H && eKind != GRID_LINE_V) {
        return 0;
    }
    CPolyline polyHV = QuartersOf(eKind, dAngle);
    if (DevidePolyHV(polyHV, polyHV) == 0) {
        return 0;
    }
    return CalcPolyHV2XYZ(polyHV, line);
}

int CGrid3DSphere::DevidePolyHV(const CPolyline& polyHV, CPolyline& polyDivided) const
{
    if (!(m_dRadius > 0.0) || !AllFinite(polyHV)) {
        return 0;
    }
    double dPoints = polyHV.GetVertexSize();
    for (int i = 0; i < SegmentCount(polyHV); ++i) {
        const Segment segment = SegmentBetween(VertexOf(polyHV, i), VertexOf(polyHV, i + 1));
        dPoints += PiecesOf(segment, m_dRadius, m_dChordError) - 1.0;
    }
    if (!(dPoints <= kMaxPoints)) {
        return 0;
    }
    polyDivided = Divided(polyHV, static_cast<int>(dPoints), m_dRadius, m_dChordError);
    return 1;
}

int CGrid3DSphere::CalcPolyHV2XYZ(const CPolyline& polyHV, CPolyline& polyXYZ) const
{
    if (!(m_dRadius > 0.0) || !AllFinite(polyHV)) {
        return 0;
    }
    CPolyline points = polyHV;
    for (int i = 0; i < points.GetVertexSize(); ++i) {
        CVertex& vertex = *points.GetVertex(static_cast<unsigned>(i));
        CXYZ pt;
        GetXYZ(vertex.x, vertex.y, pt);
        vertex.x = pt.x;
        vertex.y = pt.y;
        vertex.z = pt.z;
    }
    polyXYZ = points;
    return 1;
}
