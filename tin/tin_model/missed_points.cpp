#include "tin/tin_model/missed_points.h"

#include <cmath>

#include "tin/internal/nearest_triangle.h"
#include "tin/internal/outline_join.h"
#include "tin/internal/plan_index.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

namespace qsv {

namespace {

CArray<char> FlagUsedVertices(const CTin& tin, int nTriCount)
{
    CArray<char> aUsed;
    aUsed.SetSize(tin.m_aVertex.GetSize(), -1);
    for (int t = 0; t < nTriCount; ++t) {
        for (const int nVt : tin.m_aTri[t].m_nVertex) {
            aUsed[nVt] = 1;
        }
    }
    return aUsed;
}

CArray<int> ListUnused(const CArray<char>& aUsed)
{
    CArray<int> aUnused;
    for (int nVt = 0; nVt < aUsed.GetSize(); ++nVt) {
        if (!aUsed[nVt]) {
            aUnused.Add(nVt);
        }
    }
    return aUnused;
}

// For every vertex the one at which the outer edge that starts there ends; -1 inside.
CArray<int> NextOnOutline(const CTin& tin, int nTriCount)
{
    CArray<int> aNext;
    aNext.SetSize(tin.m_aVertex.GetSize(), -1);
    for (int nVt = 0; nVt < aNext.GetSize(); ++nVt) {
        aNext[nVt] = -1;
    }
    for (int t = 0; t < nTriCount; ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            if (tri.m_nNeighbor[NeighborSlotOfEdge(k)] < 0) {
                aNext[tri.m_nVertex[k]] = tri.m_nVertex[NextSlot(k)];
            }
        }
    }
    return aNext;
}

// Follows the outline round once, from the first hull corner that is still on it, and lists in that order
// the vertices that belong to the ring. Nothing is listed when the outline does not close.
CArray<int> RingAlongOutline(const CArray<int>& aNext, const CArray<int>& aCorner,
                             const CArray<char>& aInRing)
{
    int nFirst = -1;
    for (int i = 0; i < aCorner.GetSize() && nFirst < 0; ++i) {
        nFirst = aNext[aCorner[i]] >= 0 ? aCorner[i] : -1;
    }
    CArray<int> aRing;
    int nVt = nFirst;
    for (int nSteps = 0; nVt >= 0 && nSteps < aNext.GetSize(); ++nSteps) {
        if (aInRing[nVt]) {
            aRing.Add(nVt);
        }
        nVt = aNext[nVt];
        if (nVt == nFirst) {
            return aRing;
        }
    }
    return CArray<int>();
}

void AddToRing(CTin& tin, int nTriCount, const CArray<int>& aJoined)
{
    CArray<char> aInRing;
    aInRing.SetSize(tin.m_aVertex.GetSize(), -1);
    for (int i = 0; i < tin.m_aBoundary.GetSize(); ++i) {
        aInRing[tin.m_aBoundary[i]] = 1;
    }
    for (int i = 0; i < aJoined.GetSize(); ++i) {
        aInRing[aJoined[i]] = 1;
    }
    const CArray<int> aRing = RingAlongOutline(NextOnOutline(tin, nTriCount), tin.m_aBoundary, aInRing);
    if (!aRing.IsEmpty()) {
        tin.m_aBoundary = aRing;
    }
}

}   // namespace

void InsertMissedPoints(CTin& tin, int& nTriCount)
{
    const CArray<char> aUsed = FlagUsedVertices(tin, nTriCount);
    const CArray<int> aUnused = ListUnused(aUsed);
    if (aUnused.IsEmpty()) {
        return;
    }
    // Equal coordinates are one place even when the tolerance lets nothing coincide.
    const double dTolerance = tin.m_dEPS > 0.0 ? tin.m_dEPS : 0.0;
    PlanIndex used(tin.m_aVertex, dTolerance);
    for (int nVt = 0; nVt < aUsed.GetSize(); ++nVt) {
        if (aUsed[nVt]) {
            used.Enter(nVt);
        }
    }
    const Mesh mesh = {tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2};
    NearestTriangle search(mesh, nTriCount);
    CArray<int> aJoined;
    int nLastTri = 0;
    for (int i = 0; i < aUnused.GetSize(); ++i) {
        const int nVt = aUnused[i];
        const CXYZ p = tin.m_aVertex[nVt];
        if (used.FindFirst(p.x, p.y) >= 0) {
            continue;
        }
        const double dRounding = 1e-15 * (std::fabs(p.x) + std::fabs(p.y));
        const NearestTriangle::Place place = search.Find(p, nLastTri, dTolerance + dRounding);
        if (place.nTri < 0) {
            continue;   // not finite
        }
        nLastTri = place.nTri;
        if (place.bOutside) {
            JoinToOutline(mesh, nTriCount, nVt, place.nTri, place.nEdge, place.dDistance > dTolerance);
            aJoined.Add(nVt);
        } else if (place.nEdge >= 0) {
            tin.DivideTriOnSide(nVt, nTriCount, place.nTri, place.nEdge);
        } else {
            tin.DivideTriInside(nVt, nTriCount, place.nTri);
        }
        used.Enter(nVt);
    }
    if (!aJoined.IsEmpty()) {
        AddToRing(tin, nTriCount, aJoined);
    }
}

}   // namespace qsv
