#include "tin/tin.h"

int CTin::FindTriWithDepth(const double& x, const double& y)
{
    for (int i = m_aDepthOrder.GetSize() - 1; i >= 0; --i) {   // the triangle painted last lies on top
        const int nTri = m_aDepthOrder[i];
        if (PtInTri(nTri, x, y) != 0) {   // 0 also for an entry of an order that is out of date
            return nTri;
        }
    }
    return -1;
}

int CTin::InterpolateForDepth(const double& x, const double& y, double& z, int& nTri)
{
    nTri = FindTriWithDepth(x, y);
    return nTri >= 0 ? CalZonPlane(nTri, x, y, z) : 0;
}
