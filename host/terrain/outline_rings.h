#ifndef QSVTIN_TERRAIN_OUTLINE_RINGS_H
#define QSVTIN_TERRAIN_OUTLINE_RINGS_H

#include "qsv_3dprocess.h"

#include <vector>

namespace qsvtin {

/// The outline of a mesh as rings of vertices, the first not repeated at the end. The ground is on their left: a
/// ring around a piece runs counter-clockwise, one around a hole clockwise. Where pieces touch in a vertex, each
/// keeps a ring of its own. Cost: linear in the triangles.
std::vector<std::vector<int>> OutlineRings(const CTin& tin);

/// True for a ring of vertices that runs clockwise in plan.
bool RunsClockwise(const CTin& tin, const std::vector<int>& ring);

}   // namespace qsvtin

#endif
