#ifndef QSVTIN_TERRAIN_POINT_MERGE_H
#define QSVTIN_TERRAIN_POINT_MERGE_H

#include "host/position.h"

#include <vector>

namespace qsvtin {

/// Points without those that stand where an earlier one stands.
struct MergedPoints {
    std::vector<Position> vertices;
    std::vector<int> vertexOf;   ///< for every point given, the vertex that stands for it
};

/// Merges points that coincide in plan: x and y each differ by at most eps; heights are not compared and
/// the first one stays. Vertices and indices are those that CTin::AddPoint gives for the points one after
/// the other; the cost is near-linear instead of quadratic.
/// @param eps  above 0
MergedPoints MergeCoincident(const std::vector<Position>& points, double eps);

}   // namespace qsvtin

#endif
