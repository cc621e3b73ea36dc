#ifndef QSV_TIN_INTERNAL_OCCLUSION_H
#define QSV_TIN_INTERNAL_OCCLUSION_H

#include "tin/internal/mesh.h"

namespace qsv {

// Tests of pairs of triangles seen from above, for painting (Newell, Newell, Sancha, "A solution to the hidden
// surface problem", 1972). They compare with 0: a vertex on a plane counts as above and as below it.

// Whether every vertex of nTri1 lies on or above the plane of nTri2. A vertical plane has no upper side: the
// side that its normal, from the vertices in slot order, points to counts as the upper one.
bool IsAbovePlane(const Mesh& mesh, int nTri1, int nTri2);

// Whether every vertex of nTri1 lies on or below the plane of nTri2; for a vertical plane on the side its
// normal points to, as above.
bool IsBelowPlane(const Mesh& mesh, int nTri1, int nTri2);

// Whether nTri1 hides part of nTri2: somewhere an edge of nTri1 crosses one of nTri2 above it, or one of the
// triangles lies inside the other in plan (whichever is higher: this test comes after those of the planes).
// Edges that share a vertex do not cross.
bool Obscures(const Mesh& mesh, int nTri1, int nTri2);

}   // namespace qsv

#endif
