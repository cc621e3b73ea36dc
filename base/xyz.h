#ifndef QSV_BASE_XYZ_H
#define QSV_BASE_XYZ_H

#include "platform/export.h"

/// Point or vector in space, and the vertex record of a TIN.
///
/// Coordinates are in the host's linear unit. Equality is nowhere defined: what counts as the same
/// place depends on a tolerance that belongs to the caller.
class QSV_API CXYZ
{
public:
    /// The zero vector.
    CXYZ() = default;
    /// The given coordinates, without texture coordinates or mark.
    CXYZ(double dX, double dY, double dZ) : x(dX), y(dY), z(dZ) {}
    CXYZ(const CXYZ&) = default;              ///< a copy of the whole record
    CXYZ& operator=(const CXYZ&) = default;   ///< a copy of the whole record
    ~CXYZ() = default;

    /// Sets the coordinates; texture coordinates and mark stay.
    void SetXYZ(double dX, double dY, double dZ);

    /// Sum of the coordinates; the result has no texture coordinates and no mark.
    CXYZ operator+(const CXYZ& other) const;
    /// Difference of the coordinates; the result has no texture coordinates and no mark.
    CXYZ operator-(const CXYZ& other) const;
    CXYZ& operator+=(const CXYZ& other);   ///< sum in place; texture coordinates and mark stay
    CXYZ& operator-=(const CXYZ& other);   ///< difference in place; texture coordinates and mark stay
    /// Divides each coordinate by d (three divisions, so that each is rounded once).
    CXYZ& operator/=(double d);

    /// Dot product, summed x, then y, then z.
    double Inn(const CXYZ& other) const;
    /// Cross product, this x other.
    CXYZ Out(const CXYZ& other) const;
    /// Length, the square root of (x*x + y*y) + z*z.
    double Len() const;
    /// Distance to another point.
    double Len(const CXYZ& other) const;

    /// Hook for diagnostics: shows the coordinates in a debugger's trace; does nothing in this build.
    void Trace();

    double x = 0.0;   ///< east, or to the right
    double y = 0.0;   ///< north, or up in plan
    double z = 0.0;   ///< height

    float tu = 0.0f;   ///< texture coordinate along x, 0 .. 1
    float tv = 0.0f;   ///< texture coordinate along y, 0 .. 1
    int m_nMark = 0;   ///< scratch flag of editing operations; any value may stand here between them
};

#endif
