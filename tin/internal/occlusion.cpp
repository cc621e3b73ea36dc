#include "tin/internal/occlusion.h"

#include "tin/internal/lines.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

CXYZ Normal(const Mesh& mesh, int nTri)
{
    const CXYZ& a = CornerAt(mesh, nTri, 0);
    return (CornerAt(mesh, nTri, 1) - a).Out(CornerAt(mesh, nTri, 2) - a);
}

CXYZ Reversed(const CXYZ& v)
{
    return CXYZ(-v.x, -v.y, -v.z);
}

// Whether no vertex of the triangle lies behind the plane through p. A distance that is not a number is not
// behind it.
bool IsInFrontOf(const Mesh& mesh, int nTri, const CXYZ& p, const CXYZ& normal)
{
    for (int k = 0; k < 3; ++k) {
        if (normal.Inn(CornerAt(mesh, nTri, k) - p) < 0.0) {
            return false;
        }
    }
    return true;
}

bool ShareVertex(const CTriangle& a, int k, const CTriangle& b, int m)
{
    const int a1 = a.m_nVertex[k], a2 = a.m_nVertex[NextSlot(k)];
    const int b1 = b.m_nVertex[m], b2 = b.m_nVertex[NextSlot(m)];
    return a1 == b1 || a1 == b2 || a2 == b1 || a2 == b2;
}

bool CrossesAbove(const Mesh& mesh, int nTri1, int k, int nTri2, int m)
{
    double x, y, h1, h2;
    return CrossEdgeHeights(CornerAt(mesh, nTri1, k), CornerAt(mesh, nTri1, NextSlot(k)),
                            CornerAt(mesh, nTri2, m), CornerAt(mesh, nTri2, NextSlot(m)), x, y, h1, h2, 0, 0,
                            mesh.dEPS) != 0 &&
           h1 > h2;
}

bool LiesInside(const Mesh& mesh, int nTri, int nOuter)
{
    const CXYZ &a = CornerAt(mesh, nOuter, 0), &b = CornerAt(mesh, nOuter, 1), &c = CornerAt(mesh, nOuter, 2);
    for (int k = 0; k < 3; ++k) {
        const CXYZ& p = CornerAt(mesh, nTri, k);
        if (!IsInTriangle(a, b, c, p.x, p.y)) {
            return false;
        }
    }
    return true;
}

}   // namespace

bool IsAbovePlane(const Mesh& mesh, int nTri1, int nTri2)
{
    const CXYZ normal = Normal(mesh, nTri2);
    return IsInFrontOf(mesh, nTri1, CornerAt(mesh, nTri2, 0), normal.z < 0.0 ? Reversed(normal) : normal);
}

bool IsBelowPlane(const Mesh& mesh, int nTri1, int nTri2)
{
    const CXYZ normal = Normal(mesh, nTri2);
    return IsInFrontOf(mesh, nTri1, CornerAt(mesh, nTri2, 0), normal.z > 0.0 ? Reversed(normal) : normal);
}

bool Obscures(const Mesh& mesh, int nTri1, int nTri2)
{
    for (int k = 0; k < 3; ++k) {
        for (int m = 0; m < 3; ++m) {
            if (!ShareVertex(mesh.aTri[nTri1], k, mesh.aTri[nTri2], m) &&
                CrossesAbove(mesh, nTri1, k, nTri2, m)) {
                return true;
            }
        }
    }
    return LiesInside(mesh, nTri1, nTri2) || LiesInside(mesh, nTri2, nTri1);
}

}   // namespace qsv
