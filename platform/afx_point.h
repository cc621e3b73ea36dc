#ifndef QSV_PLATFORM_AFX_POINT_H
#define QSV_PLATFORM_AFX_POINT_H

#ifdef QSV_USE_MFC
#include <afxwin.h>
#else

/// Position on a screen, in whole pixels, with the member names of the MFC class of this name.
class CPoint
{
public:
    CPoint() = default;
    CPoint(int nX, int nY) : x(nX), y(nY) {}

    bool operator==(const CPoint& other) const { return x == other.x && y == other.y; }
    bool operator!=(const CPoint& other) const { return !(*this == other); }

    int x = 0;   ///< to the right
    int y = 0;   ///< in the direction of the screen's own y axis
};

#endif
#endif
