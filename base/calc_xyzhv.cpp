#include "base/calc_xyzhv.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

double ToDegrees(double dRadians)
{
    return dRadians * 180.0 / kPi;
}

}   // namespace

CCalcXYZHV::CCalcXYZHV(const CCalcXYZHV& src) = default;
CCalcXYZHV& CCalcXYZHV::operator=(const CCalcXYZHV&) = default;
CCalcXYZHV::~CCalcXYZHV() = default;

double CCalcXYZHV::Angle0To360(double dAngle)
{
    double d = std::fmod(dAngle, 360.0);
    if (d < 0.0) {
        d += 360.0;
    }
    return d == 0.0 || d >= 360.0 ? 0.0 : d;   // a tiny negative angle rounds up to 360; 0 has no sign
}

double CCalcXYZHV::AngleSigned(double dAngle)
{
    const double d = std::fmod(dAngle, 360.0);   // exact, as are the differences below
    if (d > 180.0) {
        return d - 360.0;
    }
    return d <= -180.0 ? d + 360.0 : d + 0.0;
}

// Within 45 degrees of a quarter the argument is small, and at the quarter it is 0.
void CCalcXYZHV::SinCos(double dAngle, double& dSin, double& dCos)
{
    const double d = Angle0To360(dAngle);
    const int nQuarter = d >= 0.0 ? static_cast<int>((d + 45.0) / 90.0) : 0;   // 0 when not a number
    const double dRest = (d - 90.0 * nQuarter) * (kPi / 180.0);
    const double s = std::sin(dRest), c = std::cos(dRest);
    switch (nQuarter % 4) {
    case 0: dSin = s, dCos = c; break;
    case 1: dSin = c, dCos = 0.0 - s; break;
    case 2: dSin = 0.0 - s, dCos = -c; break;
    default: dSin = -c, dCos = s; break;
    }
}

int CCalcXYZHV::CalcHV(const CXYZ& vec, double& dH, double& dV)
{
    const CXYZ v(vec.x, vec.y, vec.z);   // dH or dV may be a coordinate of vec
    if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z) ||
        (v.x == 0.0 && v.y == 0.0 && v.z == 0.0)) {
        return 0;
    }
    const bool bVertical = v.x == 0.0 && v.y == 0.0;   // else signed zeros would choose between 0 and 180
    dH = bVertical ? 0.0 : Angle0To360(ToDegrees(std::atan2(v.x, v.y)));
    dV = Angle0To360(ToDegrees(std::atan2(v.z, std::hypot(v.x, v.y))));
    return 1;
}

void CCalcXYZHV::CalcXYZ(double dH, double dV, double dLen, CXYZ& vec)
{
    double dSinH, dCosH, dSinV, dCosV;
    SinCos(dH, dSinH, dCosH);
    SinCos(dV, dSinV, dCosV);
    const double dPlan = dLen * dCosV;
    vec.SetXYZ(dPlan * dSinH, dPlan * dCosH, dLen * dSinV);
}
