#ifndef QSV_BASE_CALC_XYZHV_H
#define QSV_BASE_CALC_XYZHV_H

#include "base/xyz.h"
#include "platform/export.h"

/// Horizontal and vertical angles of a direction, as an instrument reads them. All angles are in degrees.
///
/// The horizontal angle is measured from +y (north) towards +x (east), the vertical angle from the horizontal
/// plane upwards.
///
///          z                   y (H 0)
///          |   /               |   /
///          |  /                |H /
///          | / V               | /
///          +------             +------ x (H 90)
///       from the side         from above
///
/// The helpers are static and keep nothing; they read no shared state.
class QSV_API CCalcXYZHV
{
public:
    CCalcXYZHV() = default;                         ///< holds nothing
    CCalcXYZHV(const CCalcXYZHV& src);              ///< copies nothing
    CCalcXYZHV& operator=(const CCalcXYZHV& src);   ///< changes nothing
    virtual ~CCalcXYZHV();

    /// The same direction as an angle of at least 0 and below 360; not a number when dAngle is not finite.
    /// An angle that is in this range already comes back unchanged.
    static double Angle0To360(double dAngle);
    /// The same direction as an angle above -180 and at most 180; not a number when dAngle is not finite.
    static double AngleSigned(double dAngle);

    /// Sine and cosine of an angle. At multiples of 90 degrees they are exactly 0, 1 or -1, so that all lines
    /// through a pole meet in one point.
    static void SinCos(double dAngle, double& dSin, double& dCos);

    /// Angles of a vector, both 0 .. 360: a vector that points 30 degrees down has a vertical angle of 330.
    /// @param dH  receives the horizontal angle; 0 for a vertical vector, which has none
    /// @param dV  receives the vertical angle, 0 .. 90 or 270 .. 360
    /// @return 1; 0 for the zero vector or one that is not finite (nothing is written)
    static int CalcHV(const CXYZ& vec, double& dH, double& dV);
    /// The vector of length dLen in a direction; only the coordinates of vec change. A vertical angle between 90
    /// and 270 is one beyond the zenith or the nadir, and points to the opposite side.
    static void CalcXYZ(double dH, double dV, double dLen, CXYZ& vec);
};

#endif
