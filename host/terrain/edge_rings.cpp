#include "host/terrain/edge_rings.h"

#include "host/terrain/outline_rings.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

namespace qsvtin {

namespace {

using Edges = std::set<std::pair<int, int>>;

bool LiesBefore(const Position& a, const Position& b)
{
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

// Adds whatever hangs together with these triangles without crossing an edge of the fence, whose edges run with
// the triangles on their left.
void Spread(const CTin& tin, const Edges& fence, std::vector<int>& triangles)
{
    std::vector<bool> seen(static_cast<std::size_t>(tin.m_aTri.GetSize()));
    const auto isNew = [&](int t) {
        const bool before = seen[static_cast<std::size_t>(t)];
        seen[static_cast<std::size_t>(t)] = true;
        return !before;
    };
    triangles.erase(std::remove_if(triangles.begin(), triangles.end(), [&](int t) { return !isNew(t); }),
                    triangles.end());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const CTriangle& tri = tin.m_aTri[triangles[i]];
        for (int k = 0; k < 3; ++k) {
            const int across = tri.m_nNeighbor[NextSlot(k)];
            if (across < 0 || fence.count({tri.m_nVertex[k], tri.m_nVertex[NextSlot(k)]}) > 0) continue;
            if (isNew(across)) triangles.push_back(across);
        }
    }
}

}   // namespace

EdgeRings::EdgeRings(const CTin& tin, const LocalOrigin& origin)
    : m_tin(tin), m_origin(origin), m_byPlace(static_cast<std::size_t>(tin.m_aVertex.GetSize())),
      m_begin(m_byPlace.size() + 1)
{
    std::iota(m_byPlace.begin(), m_byPlace.end(), 0);
    std::stable_sort(m_byPlace.begin(), m_byPlace.end(),
                     [&](int a, int b) { return LiesBefore(SurveyOf(a), SurveyOf(b)); });
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) ++m_begin[static_cast<std::size_t>(v)];
    }
    std::partial_sum(m_begin.begin(), m_begin.end(), m_begin.begin());
    m_triangles.resize(m_begin.back());
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) m_triangles[--m_begin[static_cast<std::size_t>(v)]] = t;
    }
}

std::optional<std::vector<int>> EdgeRings::TrianglesWithin(const std::vector<Position>& ring) const
{
    auto corners = CornersOf(ring);
    if (!corners) return std::nullopt;
    if (RunsClockwise(m_tin, *corners)) std::reverse(corners->begin(), corners->end());
    Edges edges;
    std::vector<int> within;
    for (std::size_t i = 0; i < corners->size(); ++i) {
        const int from = (*corners)[i], to = (*corners)[(i + 1) % corners->size()];
        const int left = TriangleLeftOf(from, to);
        if (left < 0 && TriangleLeftOf(to, from) < 0) return std::nullopt;
        if (left >= 0) within.push_back(left);
        edges.emplace(from, to);
    }
    Spread(m_tin, edges, within);
    return within;
}

// The vertices of a ring, each corner once.
std::optional<std::vector<int>> EdgeRings::CornersOf(const std::vector<Position>& ring) const
{
    std::vector<int> corners;
    for (const Position& corner : ring) {
        const int vertex = VertexAt(corner);
        if (vertex < 0) return std::nullopt;
        if (corners.empty() || corners.back() != vertex) corners.push_back(vertex);
    }
    if (corners.size() > 1 && corners.front() == corners.back()) corners.pop_back();
    if (corners.size() < 3) return std::nullopt;
    return corners;
}

// Vertices are compared in survey coordinates, as they are written: one that a breakline made has digits of its
// own that these have no room for.
Position EdgeRings::SurveyOf(int vertex) const
{
    const CXYZ& v = m_tin.m_aVertex[vertex];
    return m_origin.ToSurvey({v.x, v.y, v.z});
}

int EdgeRings::VertexAt(const Position& survey) const
{
    const auto found = std::lower_bound(m_byPlace.begin(), m_byPlace.end(), survey,
                                        [&](int v, const Position& p) { return LiesBefore(SurveyOf(v), p); });
    if (found == m_byPlace.end() || LiesBefore(survey, SurveyOf(*found))) return -1;
    return *found;
}

int EdgeRings::TriangleLeftOf(int from, int to) const
{
    const auto vertex = static_cast<std::size_t>(from);
    for (std::size_t i = m_begin[vertex]; i < m_begin[vertex + 1]; ++i) {
        const CTriangle& tri = m_tin.m_aTri[m_triangles[i]];
        for (int k = 0; k < 3; ++k) {
            if (tri.m_nVertex[k] == from && tri.m_nVertex[NextSlot(k)] == to) return m_triangles[i];
        }
    }
    return -1;
}

}   // namespace qsvtin
