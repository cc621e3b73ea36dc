#ifndef QSVTIN_EXCHANGE_MESH_DATA_H
#define QSVTIN_EXCHANGE_MESH_DATA_H

#include "host/position.h"

#include <array>
#include <vector>

namespace qsvtin {

/// A mesh as other programs store it: no links between the triangles, turned either way. Indices are in
/// range and coordinates usable.
struct MeshData {
    std::vector<Position> vertices;
    std::vector<std::array<int, 3>> triangles;
    std::vector<std::vector<int>> lines;   ///< polylines between vertices, of two or more
    std::vector<int> vertexLines;          ///< line number of each vertex in the file; empty: unknown

    /// Adds a polygon as triangles that share its first corner.
    void AddPolygon(const std::vector<int>& corners)
    {
        for (std::size_t i = 2; i < corners.size(); ++i) {
            triangles.push_back({corners[0], corners[i - 1], corners[i]});
        }
    }
};

/// The mesh with vertices of equal coordinates made one; they keep the order of their first appearance.
MeshData JoinEqualVertices(const MeshData& mesh);

/// Turns every triangle that runs clockwise in plan, for formats in which the order of corners means nothing:
/// the second and third corner change places.
void TurnUpwards(MeshData& mesh);

}   // namespace qsvtin

#endif
