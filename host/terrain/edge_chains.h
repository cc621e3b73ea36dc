#ifndef QSVTIN_TERRAIN_EDGE_CHAINS_H
#define QSVTIN_TERRAIN_EDGE_CHAINS_H

#include "qsv_3dprocess.h"

#include <cstddef>
#include <vector>

namespace qsvtin {

/// Tells which straight lines between two vertices are chains of triangle edges.
class EdgeChains
{
public:
    /// Gathers the edges of the mesh, which must not change afterwards. Cost: linear in the triangles.
    explicit EdgeChains(const CTin& tin);

    /// True when edges lead from one vertex to the other, onwards and never further from the straight line
    /// than the tolerance of the TIN. Cost: the neighbours of the vertices on the line.
    bool IsChain(int from, int to) const;

private:
    const CTin& m_tin;
    std::vector<std::size_t> m_begin;   // of each vertex' neighbours; one more entry closes the last
    std::vector<int> m_neighbors;
};

}   // namespace qsvtin

#endif
