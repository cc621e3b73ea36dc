#include "tin/internal/normal.h"

#include <cmath>

namespace qsv {

CXYZ NormalOf(const CXYZ& a, const CXYZ& b, const CXYZ& c)
{
    const double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
    const double wx = c.x - a.x, wy = c.y - a.y, wz = c.z - a.z;
    const double nx = uy * wz - uz * wy, ny = uz * wx - ux * wz, nz = ux * wy - uy * wx;
    const double dLength = std::sqrt(nx * nx + ny * ny + nz * nz);
    return CXYZ(nx / dLength, ny / dLength, nz / dLength);
}

}   // namespace qsv
