#include "tin/tin_model/insertion.h"

#include <cmath>

#include "tin/internal/mesh_links.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/internal/vertex_walk.h"
#include "tin/tin.h"

namespace qsv {

namespace {

// How far from all edges a place must be, in tolerances, and how far from flat the corners of all
// triangles, so that a walk from anywhere ends in the triangle that holds the place.
constexpr double kDeepInTolerances = 2.0;
constexpr double kFlatInTolerances = 4.0;
// Smallest tangent of a corner at which rounding cannot hide on which side of an edge a far place lies.
constexpr double kFlatTangent = 1e-14;

double Square(double d)
{
    return d * d;
}

double PlanLength2(const CXYZ& a, const CXYZ& b)
{
    return Square(b.x - a.x) + Square(b.y - a.y);
}

}   // namespace

Inserter::Inserter(CTin& tin, int nTriCount)
    : m_tin(tin), m_mesh{tin.m_aVertex, tin.m_aTri, tin.m_dEPS, tin.m_dEPS2}, m_nTriCount(nTriCount),
      m_last(CornerAt(m_mesh, 0, 0)), m_recent(tin.m_MinXYZ, tin.m_MaxXYZ, 0)
{
    m_aIsThin.SetSize(tin.m_aTri.GetSize(), -1);
    for (int t = 0; t < nTriCount; ++t) {
        CountThinTriangle(t);
    }
}

void Inserter::Insert(int nVt)
{
    const CXYZ p = m_tin.m_aVertex[nVt];
    const Location at = Locate(p);
    if (at.nTri < 0 || at.nState == kOnVertex) {
        return;
    }
    m_nLastTri = at.nTri;
    m_last = p;
    if (at.nState == kInside) {
        m_tin.DivideTriInside(nVt, m_nTriCount, at.nTri);
    } else {
        m_bOutlineBent = m_bOutlineBent || BendsOutline(p, at);
        m_tin.DivideTriOnSide(nVt, m_nTriCount, at.nTri, at.nSide);
    }
    CountThinTrianglesAround(at.nTri);
    m_recent.Remember(p, at.nTri);
}

// The walk from the triangle before decides wherever another start might end elsewhere: at a place close to
// an edge, and in a mesh with thin triangles, which can stop a walk early, or whose outline is not convex.
Location Inserter::Locate(const CXYZ& p) const
{
    const bool bSmallTolerance = m_mesh.dEPS2 <= m_mesh.dEPS * m_mesh.dEPS;   // as SetEPS sets them
    if (m_nThin == 0 && !m_bOutlineBent && bSmallTolerance && !m_recent.AreClose(p, m_last)) {
        const Location near = WalkToPoint(m_mesh, m_recent.Near(p), p.x, p.y);
        if (near.nState == kInside && IsDeepInside(near.nTri, p)) {
            return near;
        }
    }
    return WalkToPoint(m_mesh, m_nLastTri, p.x, p.y);
}

bool Inserter::IsDeepInside(int nTri, const CXYZ& p) const
{
    for (int k = 0; k < 3; ++k) {
        const CXYZ &a = CornerAt(m_mesh, nTri, k), &b = CornerAt(m_mesh, nTri, NextSlot(k));
        const double dArea = DoubledArea(a, b, p);
        const double dLength2 = PlanLength2(a, b);
        if (!(dArea > m_mesh.dEPS2 && dArea > kFlatTangent * dLength2 &&
              dArea * dArea > Square(kDeepInTolerances * m_mesh.dEPS) * dLength2)) {
            return false;
        }
    }
    return true;
}

// Whether the triangle can stop a walk to a place that it does not hold. That takes a corner between two
// edges so small that a place beyond one of them, by no more than the walk tolerates, can lie well past
// the corner and still be on the inner side of the other.
bool Inserter::IsThin(int nTri) const
{
    const double dArea =
        DoubledArea(CornerAt(m_mesh, nTri, 0), CornerAt(m_mesh, nTri, 1), CornerAt(m_mesh, nTri, 2));
    for (int k = 0; k < 3; ++k) {
        const CXYZ& v = CornerAt(m_mesh, nTri, k);
        const CXYZ &e = CornerAt(m_mesh, nTri, NextSlot(k)), &f = CornerAt(m_mesh, nTri, PrevSlot(k));
        const double dDot = (e.x - v.x) * (f.x - v.x) + (e.y - v.y) * (f.y - v.y);
        const double dShorter2 = std::fmin(PlanLength2(v, e), PlanLength2(v, f));
        if (!(dArea > kFlatTangent * dDot && dArea > 0.0 &&
              (dDot <= 0.0 ||
               dArea * dArea * dShorter2 > Square(kFlatInTolerances * m_mesh.dEPS) * dDot * dDot))) {
            return true;
        }
    }
    return false;
}

// A point that joins an outer edge without lying exactly on its line bends the outline in or out.
bool Inserter::BendsOutline(const CXYZ& p, const Location& at) const
{
    return NeighborAt(m_mesh.aTri, at.nTri, NeighborSlotOfEdge(at.nSide)) < 0 &&
           ExactTurn(CornerAt(m_mesh, at.nTri, at.nSide), CornerAt(m_mesh, at.nTri, NextSlot(at.nSide)), p) !=
               0;
}

void Inserter::CountThinTriangle(int nTri)
{
    const bool bThin = IsThin(nTri);
    m_nThin += static_cast<int>(bThin) - m_aIsThin[nTri];
    m_aIsThin[nTri] = bThin ? 1 : 0;
}

// All triangles that an insertion makes or changes use the new vertex, which stands in slot 0 of nTri.
void Inserter::CountThinTrianglesAround(int nTri)
{
    const int nVt = m_mesh.aTri[nTri].m_nVertex[0];
    for (const Turn eTurn : {Turn::Clockwise, Turn::CounterClockwise}) {
        int t = nTri;
        do {
            CountThinTriangle(t);
            const int nSlot = SlotOfVertex(m_mesh.aTri[t], nVt);
            t = nSlot >= 0 ? NeighborAround(m_mesh.aTri, t, nSlot, eTurn) : -1;
        } while (t >= 0 && t != nTri);
        if (t == nTri) {
            return;   // all the way round
        }
    }
}

}   // namespace qsv
