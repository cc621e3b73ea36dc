#include "host/exchange/mesh_data.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace qsvtin {

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

void TurnUpwards(MeshData& mesh)
{
    for (auto& triangle : mesh.triangles) {
        const auto corner = [&](std::size_t k) -> const Position& {
            return mesh.vertices[static_cast<std::size_t>(triangle[k])];
        };
        const Position &a = corner(0), &b = corner(1), &c = corner(2);
        const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
        if (area < 0.0) std::swap(triangle[1], triangle[2]);
    }
}

}   // namespace qsvtin
