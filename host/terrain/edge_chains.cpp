#include "host/terrain/edge_chains.h"

#include <cmath>
#include <unordered_set>

namespace qsvtin {

namespace {

// Visits every edge in both directions: those between two triangles come once from each.
template <class Visit>
void ForEachDirectedEdge(const CTin& tin, Visit visit)
{
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            const int from = tri.m_nVertex[k], to = tri.m_nVertex[(k + 1) % 3];
            visit(from, to);
            if (tri.m_nNeighbor[(k + 1) % 3] < 0) visit(to, from);
        }
    }
}

}   // namespace

EdgeChains::EdgeChains(const CTin& tin) : m_tin(tin)
{
    m_begin.assign(static_cast<std::size_t>(tin.m_aVertex.GetSize()) + 1, 0);
    ForEachDirectedEdge(tin, [&](int from, int) { ++m_begin[static_cast<std::size_t>(from) + 1]; });
    for (std::size_t v = 1; v < m_begin.size(); ++v) {
        m_begin[v] += m_begin[v - 1];
    }
    m_neighbors.resize(m_begin.back());
    std::vector<std::size_t> free(m_begin);
    ForEachDirectedEdge(tin,
                        [&](int from, int to) { m_neighbors[free[static_cast<std::size_t>(from)]++] = to; });
}

bool EdgeChains::IsChain(int from, int to) const
{
    const CXYZ &a = m_tin.m_aVertex[from], &b = m_tin.m_aVertex[to];
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double widest = m_tin.m_dEPS * std::hypot(dx, dy);
    const auto progress = [&](int v) {
        return dx * (m_tin.m_aVertex[v].x - a.x) + dy * (m_tin.m_aVertex[v].y - a.y);
    };
    const auto isOnLine = [&](int v) {
        return std::fabs(dx * (m_tin.m_aVertex[v].y - a.y) - dy * (m_tin.m_aVertex[v].x - a.x)) <= widest;
    };
    // Where lines cross, vertices may lie at the same place to within rounding, in any order along the line,
    // so a step may also go back by the tolerance. Slivers may offer several edges: try all, but each
    // vertex once.
    std::vector<int> open = {from};
    std::unordered_set<int> seen = {from};
    while (!open.empty()) {
        const int v = open.back();
        open.pop_back();
        for (std::size_t i = m_begin[static_cast<std::size_t>(v)];
             i < m_begin[static_cast<std::size_t>(v) + 1]; ++i) {
            const int next = m_neighbors[i];
            if (next == to) return true;
            const bool onwards =
                progress(next) >= progress(v) - widest && progress(next) <= progress(to) + widest;
            if (onwards && isOnLine(next) && seen.insert(next).second) open.push_back(next);
        }
    }
    return false;
}

}   // namespace qsvtin
