#ifndef QSV_PLATFORM_AFX_POINT_H
#define QSV_PLATFORM_AFX_POINT_H

#ifdef QSV_USE_MFC
#include <afxwin.h>
#else

/// Position on a screen, in whole pixels, with the member names of the MFC class of this name.
class CPoint
{
public:
    /// The origin.
    CPoint() = default;
    /// The given position.
    CPoint(int nX, int nY) : x(nX), y(nY) {}

    /// Whether both are the same pixel.
    bool operator==(const CPoint& other) const { return x == other.x && y == other.y; }
    /// Whether they are different pixels.
    bool operator!=(const CPoint& other) const { return !(*this == other); }

    int x = 0;   ///< to the right
    int y = 0;   ///< in the direction of the screen's own y axis
};

#endif
#endif
