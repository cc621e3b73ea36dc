#ifndef QSVTIN_TERRAIN_FEEDING_ORDER_H
#define QSVTIN_TERRAIN_FEEDING_ORDER_H

#include "host/position.h"

#include "qsv_3dprocess.h"

#include <vector>

namespace qsvtin {

/// In which order vertices are handed to the library: as they come, or from neighbour to neighbour along a curve when
/// they are many and come in no order. That is quicker, and much so when they are a grid: nearly every point of one
/// falls on an edge of the mesh so far, and the walk to it, which alone decides about the triangles then, begins at the
/// point before.
class FeedingOrder
{
public:
    explicit FeedingOrder(const std::vector<Position>& vertices);

    bool IsAlongCurve() const { return !m_vertices.empty(); }
    /// Which vertex comes at a place in the order.
    int VertexAt(int place) const
    {
        return IsAlongCurve() ? m_vertices[static_cast<std::size_t>(place)] : place;
    }
    /// At which place a vertex comes.
    int PlaceOf(int vertex) const
    {
        return IsAlongCurve() ? m_places[static_cast<std::size_t>(vertex)] : vertex;
    }

    /// Gives the vertices of a TIN that was fed in this order, and has no normals yet, the numbers they came with. Those
    /// that it has more, behind these, keep theirs.
    void RestoreNumbers(CTin& tin) const;

private:
    std::vector<int> m_vertices, m_places;   // none: as they come
};

}   // namespace qsvtin

#endif
