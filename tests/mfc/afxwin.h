#ifndef QSV_TESTS_MFC_AFXWIN_H
#define QSV_TESTS_MFC_AFXWIN_H

#include "afx.h"

struct tagPOINT {
    long x, y;
};

class CPoint : public tagPOINT
{
public:
    CPoint() : tagPOINT{0, 0} {}
    CPoint(int initX, int initY) : tagPOINT{initX, initY} {}
    BOOL operator==(tagPOINT point) const { return x == point.x && y == point.y; }
    BOOL operator!=(tagPOINT point) const { return !(*this == point); }
};

#endif
