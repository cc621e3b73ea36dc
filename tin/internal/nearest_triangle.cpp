#include "tin/internal/nearest_triangle.h"

#include <algorithm>
#include <cmath>

#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

double DistanceToEdge(const CXYZ& p, const CXYZ& a, const CXYZ& b)
{
    const double ex = b.x - a.x, ey = b.y - a.y;
    const double dx = p.x - a.x, dy = p.y - a.y;
    const double dLength2 = ex * ex + ey * ey;
    const double t = dLength2 > 0.0 ? std::clamp((dx * ex + dy * ey) / dLength2, 0.0, 1.0) : 0.0;
    const double fx = dx - t * ex, fy = dy - t * ey;
    return std::sqrt(fx * fx + fy * fy);   // hypot is not the same on every system
}

}   // namespace

bool NearestTriangle::IsFarther(const Candidate& a, const Candidate& b)
{
    return a.dDistance != b.dDistance ? a.dDistance > b.dDistance : a.nTri > b.nTri;
}

NearestTriangle::Place NearestTriangle::Find(const CXYZ& p, int nStartTri, double dSlack)
{
    Place best;
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
        return best;
    }
    ++m_nSearch;
    m_aQueue.SetSize(0, -1);
    Visit(p, WalkCloser(p, nStartTri));
    best.dDistance = HUGE_VAL;
    while (!m_aQueue.IsEmpty()) {
        std::pop_heap(m_aQueue.GetData(), m_aQueue.GetData() + m_aQueue.GetSize(), IsFarther);
        const Candidate nearest = m_aQueue[m_aQueue.GetUpperBound()];
        m_aQueue.SetSize(m_aQueue.GetUpperBound(), -1);
        if (nearest.dDistance > best.dDistance + dSlack) {
            break;   // whatever could hold p is connected to this edge by nearer triangles
        }
        int nEdge = -1;
        if (Holds(p, nearest.nTri, nEdge)) {
            return {nearest.nTri, nEdge, false, 0.0};
        }
        TakeOuterEdges(p, nearest.nTri, best);
        for (int k = 0; k < 3; ++k) {
            Visit(p, NeighborAt(m_mesh.aTri, nearest.nTri, k));
        }
    }
    return best;
}

// Moves across edges that have p on their outer side until there is none, or the outside is reached. No harm
// is done when the walk goes round until its moves are used up: the search goes on wherever it ends.
int NearestTriangle::WalkCloser(const CXYZ& p, int nTri) const
{
    int nFrom = -1;
    for (int nMoves = 0, k = 0; k < 3 && nMoves < m_nTriCount; ++k) {
        const int nNext = NeighborAt(m_mesh.aTri, nTri, NeighborSlotOfEdge(k));
        if (nNext >= 0 && nNext < m_nTriCount && nNext != nFrom &&
            ExactTurn(CornerAt(m_mesh, nTri, k), CornerAt(m_mesh, nTri, NextSlot(k)), p) < 0) {
            nFrom = nTri;
            nTri = nNext;
            ++nMoves;
            k = -1;
        }
    }
    return nTri;
}

void NearestTriangle::Visit(const CXYZ& p, int nTri)
{
    if (nTri < 0 || nTri >= m_nTriCount) {
        return;
    }
    if (m_aVisit.GetSize() < m_nTriCount) {
        m_aVisit.SetSize(m_nTriCount, -1);
    }
    if (m_aVisit[nTri] == m_nSearch) {
        return;
    }
    m_aVisit[nTri] = m_nSearch;
    const CXYZ &a = CornerAt(m_mesh, nTri, 0), &b = CornerAt(m_mesh, nTri, 1), &c = CornerAt(m_mesh, nTri, 2);
    int nEdge = -1;
    const double dDistance =
        Holds(p, nTri, nEdge)
            ? 0.0
            : std::min(DistanceToEdge(p, a, b), std::min(DistanceToEdge(p, b, c), DistanceToEdge(p, c, a)));
    m_aQueue.Add({dDistance, nTri});
    std::push_heap(m_aQueue.GetData(), m_aQueue.GetData() + m_aQueue.GetSize(), IsFarther);
}

// Only a triangle that really runs counter-clockwise holds a place: splitting any other would fold the mesh.
bool NearestTriangle::Holds(const CXYZ& p, int nTri, int& nEdge) const
{
    if (ExactTurn(CornerAt(m_mesh, nTri, 0), CornerAt(m_mesh, nTri, 1), CornerAt(m_mesh, nTri, 2)) <= 0) {
        return false;
    }
    nEdge = -1;
    for (int k = 0; k < 3; ++k) {
        const int nTurn = ExactTurn(CornerAt(m_mesh, nTri, k), CornerAt(m_mesh, nTri, NextSlot(k)), p);
        if (nTurn < 0) {
            return false;
        }
        if (nTurn == 0) {
            nEdge = k;
        }
    }
    return true;
}

void NearestTriangle::TakeOuterEdges(const CXYZ& p, int nTri, Place& best) const
{
    for (int k = 0; k < 3; ++k) {
        const CXYZ &a = CornerAt(m_mesh, nTri, k), &b = CornerAt(m_mesh, nTri, NextSlot(k));
        if (NeighborAt(m_mesh.aTri, nTri, NeighborSlotOfEdge(k)) < 0 && ExactTurn(a, b, p) < 0) {
            const double dDistance = DistanceToEdge(p, a, b);
            if (dDistance < best.dDistance) {
                best = {nTri, k, true, dDistance};
            }
        }
    }
}

}   // namespace qsv
