#include "host/terrain/mesh_to_tin.h"

#include "host/terrain/triangles.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace qsvtin {

namespace {

bool UsesVertexTwice(const std::array<int, 3>& triangle)
{
    return triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[2] == triangle[0];
}

bool RunsClockwiseThroughout(const CTin& tin)
{
    bool clockwise = false;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const double area = DoubledPlanArea(tin, t);
        if (area > 0.0) return false;
        clockwise = clockwise || area < 0.0;
    }
    return clockwise;
}

}   // namespace

MeshData JoinEqualVertices(const MeshData& mesh)
{
    const auto key = [&](std::size_t v) {
        const Position& p = mesh.vertices[v];
        return std::tie(p.x, p.y, p.z);
    };
    std::vector<std::size_t> order(mesh.vertices.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return key(a) < key(b); });
    std::vector<std::size_t> first(mesh.vertices.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool repeats = i > 0 && key(order[i]) == key(order[i - 1]);
        first[order[i]] = repeats ? first[order[i - 1]] : order[i];
    }

    MeshData joined;
    std::vector<int> newIndex(mesh.vertices.size());
    for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
        if (first[v] == v) {
            newIndex[v] = static_cast<int>(joined.vertices.size());
            joined.vertices.push_back(mesh.vertices[v]);
        } else {
            newIndex[v] = newIndex[first[v]];
        }
    }
    for (const auto& triangle : mesh.triangles) {
        const auto index = [&](int corner) {
            return newIndex[static_cast<std::size_t>(triangle[static_cast<std::size_t>(corner)])];
        };
        joined.triangles.push_back({index(0), index(1), index(2)});
    }
    return joined;
}

CTin TinFromMesh(const MeshData& mesh, MeshRepairs& repairs)
{
    CTin tin;
    tin.BeginAddPoint(static_cast<int>(mesh.vertices.size()));
    for (const Position& p : mesh.vertices) {
        tin.AddPoint2(p.x, p.y, p.z);
    }
    tin.EndAddPoint();
    for (const auto& triangle : mesh.triangles) {
        if (UsesVertexTwice(triangle)) {
            ++repairs.dropped;
        } else {
            tin.AddTri(triangle[0], triangle[1], triangle[2]);
        }
    }
    repairs.turnedOver = RunsClockwiseThroughout(tin);
    for (int t = 0; repairs.turnedOver && t < tin.m_aTri.GetSize(); ++t) {
        std::swap(tin.m_aTri[t].m_nVertex[1], tin.m_aTri[t].m_nVertex[2]);
    }
    tin.UpdateTopology();
    UpdateStoredParts(tin);
    return tin;
}

void UpdateStoredParts(CTin& tin)
{
    tin.UpdateBoundary();
    tin.UpdateTinRange();
    if (tin.m_MinXYZ.x < tin.m_MaxXYZ.x && tin.m_MinXYZ.y < tin.m_MaxXYZ.y) tin.UpdateTextureCoord();
}

}   // namespace qsvtin
