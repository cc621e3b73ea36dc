#ifndef QSVTIN_TERRAIN_EDITS_H
#define QSVTIN_TERRAIN_EDITS_H

#include "host/terrain/terrain.h"

namespace qsvtin {

// Changes of a terrain, in its own coordinates. Each throws Failure, with the terrain as it was, when it
// cannot be made.

/// Splits the triangle or edge at a place. @return the new vertex
int InsertPoint(Terrain& terrain, const Position& at);

/// The vertex nearest to a place in plan, the first of equally near ones; -1 when there is none.
int NearestVertex(const Terrain& terrain, const Position& at);

/// Removes a vertex and closes the hole. Numbers above it go down by one.
void DeleteVertex(Terrain& terrain, int vertex);

/// Trims outer triangles as BuildTerrain does. @return how many are gone
int TrimByAngle(Terrain& terrain, double degrees);

/// Hangs walls on the outline, down (or up) to a height. Where the outline touches itself at a vertex, each
/// side gets a vertex of its own, so that the walls there do not share an edge.
/// @return how many triangles the walls have
int HangSkirt(Terrain& terrain, double height);

/// Adds the triangles of another terrain with the same origin, as pieces of their own.
void Merge(Terrain& terrain, Terrain& other);

}   // namespace qsvtin

#endif
