#include "base/xyz.h"

#include <cmath>

void CXYZ::SetXYZ(double dX, double dY, double dZ)
{
    x = dX;
    y = dY;
    z = dZ;
}

CXYZ CXYZ::operator+(const CXYZ& other) const
{
    return CXYZ(x + other.x, y + other.y, z + other.z);
}

CXYZ CXYZ::operator-(const CXYZ& other) const
{
    return CXYZ(x - other.x, y - other.y, z - other.z);
}

CXYZ& CXYZ::operator+=(const CXYZ& other)
{
    x += other.x;
    y += other.y;
    z += other.z;
    return *this;
}

CXYZ& CXYZ::operator-=(const CXYZ& other)
{
    x -= other.x;
    y -= other.y;
    z -= other.z;
    return *this;
}

CXYZ& CXYZ::operator/=(double d)
{
    x /= d;
    y /= d;
    z /= d;
    return *this;
}

double CXYZ::Inn(const CXYZ& other) const
{
    return x * other.x + y * other.y + z * other.z;
}

CXYZ CXYZ::Out(const CXYZ& other) const
{
    return CXYZ(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}

double CXYZ::Len() const
{
    return std::sqrt(x * x + y * y + z * z);
}

double CXYZ::Len(const CXYZ& other) const
{
    return (*this - other).Len();
}

void CXYZ::Trace() {}
