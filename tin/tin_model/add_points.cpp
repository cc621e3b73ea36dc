#include "tin/add_points.h"

#include "tin/internal/plan_index.h"
#include "tin/tin.h"

int AddPoints(CTin& tin, const CArray<CXYZ>& aPoint, CArray<int>& aVertex)
{
    const int nPoints = aPoint.GetSize();   // now: aPoint may be the vertices, which grow
    const int nBefore = tin.m_aVertex.GetSize();
    qsv::PlanIndex index(tin.m_aVertex, tin.m_dEPS);
    index.Reserve(nBefore);
    for (int nVt = 0; nVt < nBefore; ++nVt) {
        index.Enter(nVt);
    }
    aVertex.SetSize(nPoints, -1);
    for (int i = 0; i < nPoints; ++i) {
        const CXYZ p(aPoint[i].x, aPoint[i].y, aPoint[i].z);
        int nVt = index.FindFirst(p.x, p.y);
        if (nVt < 0) {
            nVt = tin.m_aVertex.Add(p);
            index.Enter(nVt);
        }
        aVertex[i] = nVt;
    }
    return tin.m_aVertex.GetSize() - nBefore;
}
