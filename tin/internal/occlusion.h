#ifndef QSV_TIN_INTERNAL_OCCLUSION_H
#define QSV_TIN_INTERNAL_OCCLUSION_H

#include "tin/internal/mesh.h"

namespace qsv {

// Tests of pairs of triangles seen from above, for painting (Newell, Newell, Sancha, "A solution to the hidden
// surface problem", 1972). They compare with 0: a vertex on a plane counts as above and as below it.

// A triangle with what the tests ask for, side by side. A vertex that is missing lies at the origin.
struct Facet {
    int nTri;
    int nVertex[3];
    CXYZ aCorner[3];
    CXYZ normal;   // product of the edges from corner 0 to 1 and to 2
};

Facet FacetOf(const MeshView& mesh, int nTri);

// Whether every vertex of one lies on or above the plane of other. A vertical plane has no upper side: the side
// that its normal points to counts as the upper one.
bool IsAbovePlane(const Facet& one, const Facet& other);

// Whether every vertex of one lies on or below the plane of other; for a vertical plane on the side its normal
// points to, as above.
bool IsBelowPlane(const Facet& one, const Facet& other);

// Whether one hides part of other: somewhere an edge of it crosses one of the other above it, or one of the
// triangles lies inside the other in plan (whichever is higher: this test comes after those of the planes).
// Edges that share a vertex do not cross. dTol is that of CrossEdgeHeights.
bool Obscures(const Facet& one, const Facet& other, double dTol);

}   // namespace qsv

#endif
