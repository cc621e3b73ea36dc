#include "tin/internal/limits.h"
#include "tin/internal/mesh_walk.h"
#include "tin/internal/restored_at_end.h"
#include "tin/tin.h"

using namespace qsv;

int CTin::DivideTri(const double& x, const double& y, const double& z)
{
    int nState = kWalkGaveUp, nSide = 0;
    const int nTri = FindTri(0, x, y, nState, nSide);
    if (nTri < 0 || nState == kOnVertex) {
        return 0;
    }
    const int nVt = m_aVertex.Add(CXYZ(x, y, z));
    int nTriCount = m_aTri.GetSize();
    const RestoredAtEnd<int> depth(m_nOptimDepth);
    m_nOptimDepth = kMaxSwapDepth;   // so that no edge is swapped: the triangles stay as they are split
    if (nState == kInside) {
        DivideTriInside(nVt, nTriCount, nTri);
    } else {
        DivideTriOnSide(nVt, nTriCount, nTri, nSide);
    }
    m_aTri.SetSize(nTriCount, -1);
    return 1;
}
