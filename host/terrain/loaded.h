#ifndef QSVTIN_TERRAIN_LOADED_H
#define QSVTIN_TERRAIN_LOADED_H

#include "host/terrain/terrain.h"

#include <vector>

namespace qsvtin {

/// The positions of the vertices that triangles use, without those that are no usable numbers.
std::vector<Position> UsedPositions(const CTin& tin);

/// The origin without the axes on which a vertex, one that no triangle uses for instance, would not come
/// back to the bit.
LocalOrigin WithoutLoss(LocalOrigin origin, const CTin& tin);

/// Moves a TIN in survey coordinates to an origin.
Terrain MoveTo(const LocalOrigin& origin, const CTin& tin);

/// A TIN in survey coordinates, moved to an origin that suits the triangles.
/// @param exact  every vertex comes back to the bit; without it, areas are right whatever stray vertices
///               there are
Terrain LocalTerrain(const CTin& tin, bool exact);

}   // namespace qsvtin

#endif
