#ifndef QSVTIN_TERRAIN_BOUNDARY_H
#define QSVTIN_TERRAIN_BOUNDARY_H

#include "host/input/survey_data.h"
#include "host/terrain/terrain.h"

#include <vector>

namespace qsvtin {

/// Takes away the triangles outside the boundaries: outside every outer ring, or in a void. Where voids and
/// islands lie in each other, the innermost ring around a place decides. Of a ring whose sides are edges, the outline
/// follows every one; otherwise the centre of a triangle decides. Triangles that stay keep their order.
/// @param rings  in survey coordinates; without an outer one, everything counts as inside
/// @return number of triangles that went
/// @throws Failure when none would stay
int CutToBoundaries(Terrain& terrain, const std::vector<BoundaryRing>& rings);

}   // namespace qsvtin

#endif
