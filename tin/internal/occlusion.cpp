#include "tin/internal/occlusion.h"

#include <algorithm>

#include "tin/internal/lines.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"

namespace qsv {

namespace {

// Whether no vertex of one lies behind the plane of other, whose normal counts as turned round when dTurn is -1.
// A distance that is not a number is not behind it.
bool IsInFrontOf(const Facet& one, const Facet& other, double dTurn)
{
    const CXYZ &p = other.aCorner[0], &normal = other.normal;
    const auto isBehind = [&](const CXYZ& v) {
        const double dDistance = normal.x * (v.x - p.x) + normal.y * (v.y - p.y) + normal.z * (v.z - p.z);
        return dTurn * dDistance < 0.0;
    };
    return !isBehind(one.aCorner[0]) && !isBehind(one.aCorner[1]) && !isBehind(one.aCorner[2]);
}

bool ShareVertex(const Facet& a, int k, const Facet& b, int m)
{
    const int a1 = a.nVertex[k], a2 = a.nVertex[NextSlot(k)];
    const int b1 = b.nVertex[m], b2 = b.nVertex[NextSlot(m)];
    return a1 == b1 || a1 == b2 || a2 == b1 || a2 == b2;
}

// Whether nothing can lie in the extents from a1 to a2 and from b1 to b2, both widened by dTol, where there are
// extents. The sums are those of CrossEdgeHeights, so that it finds no crossing then, wherever rounding puts it.
bool AreApart(double a1, double a2, double b1, double b2, double dTol)
{
    return a1 != a2 && b1 != b2 &&
           (std::min(a1, a2) - dTol > std::max(b1, b2) + dTol ||
            std::min(b1, b2) - dTol > std::max(a1, a2) + dTol);
}

bool CrossesAbove(const CXYZ& a1, const CXYZ& a2, const CXYZ& b1, const CXYZ& b2, double dTol)
{
    if (AreApart(a1.x, a2.x, b1.x, b2.x, dTol) || AreApart(a1.y, a2.y, b1.y, b2.y, dTol)) {
        return false;
    }
    double x, y, hA, hB;
    return CrossEdgeHeights(a1, a2, b1, b2, x, y, hA, hB, 0, 0, dTol) != 0 && hA > hB;
}

bool LiesInside(const Facet& one, const Facet& outer)
{
    const CXYZ &a = outer.aCorner[0], &b = outer.aCorner[1], &c = outer.aCorner[2];
    return std::all_of(one.aCorner, one.aCorner + 3,
                       [&](const CXYZ& p) { return IsInTriangle(a, b, c, p.x, p.y); });
}

}   // namespace

Facet FacetOf(const MeshView& mesh, int nTri)
{
    const int* const nVertex = mesh.aTri[nTri].m_nVertex;
    const CXYZ &a = CornerAt(mesh, nTri, 0), &b = CornerAt(mesh, nTri, 1), &c = CornerAt(mesh, nTri, 2);
    return {nTri, {nVertex[0], nVertex[1], nVertex[2]}, {a, b, c}, (b - a).Out(c - a)};
}

bool IsAbovePlane(const Facet& one, const Facet& other)
{
    return IsInFrontOf(one, other, other.normal.z < 0.0 ? -1.0 : 1.0);
}

bool IsBelowPlane(const Facet& one, const Facet& other)
{
    return IsInFrontOf(one, other, other.normal.z > 0.0 ? -1.0 : 1.0);
}

bool Obscures(const Facet& one, const Facet& other, double dTol)
{
    for (int k = 0; k < 3; ++k) {
        for (int m = 0; m < 3; ++m) {
            if (!ShareVertex(one, k, other, m) &&
                CrossesAbove(one.aCorner[k], one.aCorner[NextSlot(k)], other.aCorner[m],
                             other.aCorner[NextSlot(m)], dTol)) {
                return true;
            }
        }
    }
    return LiesInside(one, other) || LiesInside(other, one);
}

}   // namespace qsv
