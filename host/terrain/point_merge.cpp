#include "host/terrain/point_merge.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace qsvtin {

namespace {

// Vertices in square cells, found by a hash of the cell. Two vertices never coincide, so a cell of a few
// tolerances holds a few vertices at most, however dense the survey is.
class VertexGrid
{
public:
    VertexGrid(const std::vector<Position>& points, double eps) : m_eps(eps), m_cell(4.0 * eps)
    {
        double largest = 0.0;
        for (const Position& p : points) {
            largest = std::max({largest, std::fabs(p.x), std::fabs(p.y)});
        }
        m_cell = std::max(m_cell, largest * 1e-15);   // cell numbers stay whole
        std::size_t buckets = 16;
        while (buckets < points.size()) buckets *= 2;
        m_first.assign(buckets, -1);
    }

    // Lowest vertex that coincides with p, or -1.
    int Find(const std::vector<Position>& vertices, const Position& p) const
    {
        // Half a cell each way: the tolerance, and as much again for the rounding of the division.
        const auto [west, east] = CellsAround(p.x);
        const auto [south, north] = CellsAround(p.y);
        int lowest = -1;
        for (std::int64_t cx = west; cx <= east; ++cx) {
            for (std::int64_t cy = south; cy <= north; ++cy) {
                for (int i = m_first[Bucket(cx, cy)]; i >= 0; i = m_next[static_cast<std::size_t>(i)]) {
                    const Position& v = vertices[static_cast<std::size_t>(i)];
                    const bool coincides = std::fabs(v.x - p.x) <= m_eps && std::fabs(v.y - p.y) <= m_eps;
                    if (coincides && (lowest < 0 || i < lowest)) lowest = i;
                }
            }
        }
        return lowest;
    }

    // Vertices are added in index order.
    void Add(const Position& p)
    {
        int& first = m_first[Bucket(CellOf(p.x / m_cell), CellOf(p.y / m_cell))];
        m_next.push_back(first);
        first = static_cast<int>(m_next.size()) - 1;
    }

private:
    static std::int64_t CellOf(double position) { return static_cast<std::int64_t>(std::floor(position)); }

    std::pair<std::int64_t, std::int64_t> CellsAround(double coordinate) const
    {
        return {CellOf(coordinate / m_cell - 0.5), CellOf(coordinate / m_cell + 0.5)};
    }

    std::size_t Bucket(std::int64_t cx, std::int64_t cy) const
    {
        std::uint64_t key = static_cast<std::uint64_t>(cx) * 0x9E3779B97F4A7C15u;
        key = (key ^ (key >> 32) ^ static_cast<std::uint64_t>(cy)) * 0xD6E8FEB86659FD93u;
        return static_cast<std::size_t>(key ^ (key >> 32)) & (m_first.size() - 1);
    }

    double m_eps;
    double m_cell;
    std::vector<int> m_first;
    std::vector<int> m_next;
};

}   // namespace

MergedPoints MergeCoincident(const std::vector<Position>& points, double eps)
{
    MergedPoints merged;
    merged.vertexOf.reserve(points.size());
    VertexGrid grid(points, eps);
    for (const Position& p : points) {
        int vertex = grid.Find(merged.vertices, p);
        if (vertex < 0) {
            vertex = static_cast<int>(merged.vertices.size());
            merged.vertices.push_back(p);
            grid.Add(p);
        }
        merged.vertexOf.push_back(vertex);
    }
    return merged;
}

}   // namespace qsvtin
