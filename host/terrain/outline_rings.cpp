#include "host/terrain/outline_rings.h"

#include "host/terrain/triangles.h"

#include <algorithm>
#include <cstddef>

namespace qsvtin {

namespace {

// The edge of a triangle from its vertex k to the next.
struct Edge {
    int triangle = 0;
    int k = 0;
};

// The triangle across an edge is stored where the edge ends.
int Across(const CTin& tin, const Edge& edge)
{
    return tin.m_aTri[edge.triangle].m_nNeighbor[NextSlot(edge.k)];
}

// The outer edge that starts where this one ends: around their vertex v from triangle to triangle, clockwise.
//
//        \   t   /              t: the triangle of the edge given
//     edge \   / next try       over the edge that starts at v, as long as another triangle lies there
//            v
//
Edge Follow(const CTin& tin, const Edge& edge)
{
    const int v = tin.m_aTri[edge.triangle].m_nVertex[NextSlot(edge.k)];
    Edge next{edge.triangle, NextSlot(edge.k)};
    for (int turns = tin.m_aTri.GetSize(); turns > 0 && Across(tin, next) >= 0; --turns) {
        next.triangle = Across(tin, next);
        next.k = std::min(SlotOf(tin.m_aTri[next.triangle], v), 2);   // 3 where links are damaged
    }
    return next;
}

}   // namespace

std::vector<std::vector<int>> OutlineRings(const CTin& tin)
{
    std::vector<std::vector<int>> rings;
    std::vector<bool> seen(3 * static_cast<std::size_t>(tin.m_aTri.GetSize()));
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            std::vector<int> ring;
            for (Edge edge{t, k}; Across(tin, edge) < 0; edge = Follow(tin, edge)) {
                const std::size_t index =
                    3 * static_cast<std::size_t>(edge.triangle) + static_cast<std::size_t>(edge.k);
                if (seen[index]) break;
                seen[index] = true;
                ring.push_back(tin.m_aTri[edge.triangle].m_nVertex[edge.k]);
            }
            if (!ring.empty()) rings.push_back(std::move(ring));
        }
    }
    return rings;
}

bool RunsClockwise(const CTin& tin, const std::vector<int>& ring)
{
    double doubledArea = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const CXYZ a = tin.m_aVertex[ring[i]] - tin.m_aVertex[ring.front()];
        const CXYZ b = tin.m_aVertex[ring[(i + 1) % ring.size()]] - tin.m_aVertex[ring.front()];
        doubledArea += a.x * b.y - b.x * a.y;
    }
    return doubledArea < 0.0;
}

}   // namespace qsvtin
