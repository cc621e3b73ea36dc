#ifndef QSVTIN_TERRAIN_EDGE_RINGS_H
#define QSVTIN_TERRAIN_EDGE_RINGS_H

#include "host/terrain/local_origin.h"

#include "qsv_3dprocess.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace qsvtin {

/// Finds the triangles within rings that are made of edges of the mesh, by the links alone: no rounding puts a
/// thin triangle on the wrong side.
class EdgeRings
{
public:
    /// Prepares for a mesh that must not change afterwards. Cost: that of sorting the vertices.
    EdgeRings(const CTin& tin, const LocalOrigin& origin);

    /// @param ring  in survey coordinates, in either direction
    /// @return the triangles within; nothing when the ring is not made of edges
    std::optional<std::vector<int>> TrianglesWithin(const std::vector<Position>& ring) const;

private:
    std::optional<std::vector<int>> CornersOf(const std::vector<Position>& ring) const;
    Position SurveyOf(int vertex) const;
    int VertexAt(const Position& survey) const;
    int TriangleLeftOf(int from, int to) const;

    const CTin& m_tin;
    const LocalOrigin m_origin;
    std::vector<int> m_byPlace;         // the vertices, sorted by their coordinates in plan
    std::vector<std::size_t> m_begin;   // of each vertex' triangles; one more entry closes the last
    std::vector<int> m_triangles;
};

}   // namespace qsvtin

#endif
