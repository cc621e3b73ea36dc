#include <cmath>

#include "grid3dsphere/grid_3d_sphere.h"

int CGrid3DSphere::GetXYZ(double dH, double dV, CXYZ& pt) const
{
    if (!(m_dRadius > 0.0) || !std::isfinite(dH) || !std::isfinite(dV)) {
        return 0;
    }
    CXYZ arm;
    CCalcXYZHV::CalcXYZ(dH, dV, m_dRadius, arm);
    pt.SetXYZ(m_station.x + arm.x, m_station.y + arm.y, m_station.z + arm.z);
    return 1;
}

int CGrid3DSphere::GetVH(const CXYZ& pt, double& dV, double& dH) const
{
    return CCalcXYZHV::CalcHV(pt - m_station, dH, dV);
}

double CGrid3DSphere::GetReading(double dV, ZENITH_MODE eMode)
{
    switch (eMode) {
    case ZENITH_0_FULL: return CCalcXYZHV::Angle0To360(90.0 - dV);
    case ZENITH_0_SIGNED: return CCalcXYZHV::AngleSigned(90.0 - dV);
    case HORIZON_0_SIGNED: return CCalcXYZHV::AngleSigned(dV);
    case NADIR_0_FULL: return CCalcXYZHV::Angle0To360(90.0 + dV);
    case NADIR_0_SIGNED: return CCalcXYZHV::AngleSigned(90.0 + dV);
    default: return CCalcXYZHV::Angle0To360(dV);
    }
}
