#include "host/query/box_tree.h"

#include <algorithm>
#include <numeric>

namespace qsvtin {

namespace {

constexpr std::size_t kLeaf = 4;

}   // namespace

void Box::Extend(const Box& other)
{
    west = std::min(west, other.west);
    east = std::max(east, other.east);
    south = std::min(south, other.south);
    north = std::max(north, other.north);
}

double Box::SquaredDistance(double x, double y) const
{
    const double dx = std::max({west - x, x - east, 0.0});
    const double dy = std::max({south - y, y - north, 0.0});
    return dx * dx + dy * dy;
}

BoxTree::BoxTree(const std::vector<Box>& boxes) : m_order(boxes.size())
{
    std::iota(m_order.begin(), m_order.end(), 0);
    if (!boxes.empty()) Build(boxes, 0, boxes.size());
}

// Halves the boxes by their middles along the longer side of what they cover.
std::size_t BoxTree::Build(const std::vector<Box>& boxes, std::size_t begin, std::size_t end)
{
    const auto boxAt = [&](std::size_t i) -> const Box& {
        return boxes[static_cast<std::size_t>(m_order[i])];
    };
    Box box = boxAt(begin);
    for (std::size_t i = begin + 1; i < end; ++i) {
        box.Extend(boxAt(i));
    }
    const std::size_t node = m_nodes.size();
    m_nodes.push_back({box, begin, end, 0});
    if (end - begin <= kLeaf) return node;

    const bool alongX = box.east - box.west > box.north - box.south;
    const auto middle = [&](int i) {
        const Box& b = boxes[static_cast<std::size_t>(i)];
        return alongX ? b.west + b.east : b.south + b.north;
    };
    const std::size_t half = begin + (end - begin) / 2;
    const auto at = [&](std::size_t i) { return m_order.begin() + static_cast<std::ptrdiff_t>(i); };
    std::nth_element(at(begin), at(half), at(end), [&](int a, int b) { return middle(a) < middle(b); });
    Build(boxes, begin, half);
    const std::size_t right = Build(boxes, half, end);
    m_nodes[node].right = right;
    return node;
}

}   // namespace qsvtin
