#ifndef QSV_BASE_ROTATION_H
#define QSV_BASE_ROTATION_H

#include "base/xyz.h"
#include "platform/export.h"

/// Three rotation angles in radians.
class QSV_API CWPK
{
public:
    CWPK() = default;   ///< no rotation

    double w = 0.0;   ///< about the y axis, z towards x
    double p = 0.0;   ///< about the z axis, x towards y
    double k = 0.0;   ///< about the x axis, y towards z
};

/// Which angle of a CWPK CRot::AddMatrix turns by, and about which axis. Right-handed.
enum ROT_SYSTEM : int {
    ROT_ABOUT_X = 0,   ///< by k
    ROT_ABOUT_Y = 1,   ///< by w
    ROT_ABOUT_Z = 2    ///< by p
};

/// Rotation matrix, applied to column vectors.
class QSV_API CRot
{
public:
    /// The identity.
    CRot();
    CRot(const CRot&) = default;              ///< a copy
    CRot& operator=(const CRot&) = default;   ///< a copy
    ~CRot() = default;

    /// Sets the identity.
    void I();
    /// Transposes in place, which inverts a rotation.
    void T();
    /// Composes an elementary rotation after the ones already held: the matrix becomes E times itself.
    /// @return 1; 0 for an unknown system (the matrix is unchanged)
    int AddMatrix(ROT_SYSTEM eSystem, const CWPK& wpk);
    /// out = the matrix times in; both may be the same object. Only the coordinates of out change.
    void Rotate(const CXYZ& in, CXYZ& out) const;

private:
    double m_aRow[3][3];
};

#endif
