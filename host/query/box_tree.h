#ifndef QSVTIN_QUERY_BOX_TREE_H
#define QSVTIN_QUERY_BOX_TREE_H

#include <cstddef>
#include <vector>

namespace qsvtin {

/// A rectangle along the axes.
struct Box {
    double west;
    double east;
    double south;
    double north;

    bool Holds(double x, double y) const { return x >= west && x <= east && y >= south && y <= north; }
    bool Touches(const Box& other) const
    {
        return west <= other.east && other.west <= east && south <= other.north && other.south <= north;
    }
    void Extend(const Box& other);
    /// Square of the distance to a place; 0 inside.
    double SquaredDistance(double x, double y) const;
};

/// Finds boxes by place. Memory is linear in the boxes, however long and thin they are; a search looks at few
/// more than it finds.
class BoxTree
{
public:
    explicit BoxTree(const std::vector<Box>& boxes);

    /// Visits the numbers of all boxes that hold a place, and of some near it.
    template <class Visit>
    void VisitAt(double x, double y, Visit visit) const
    {
        VisitNodes([&](const Box& box) { return box.Holds(x, y); }, visit);
    }

    /// Visits the numbers of all boxes that touch a box, and of some near it.
    template <class Visit>
    void VisitTouching(const Box& wanted, Visit visit) const
    {
        VisitNodes([&](const Box& box) { return box.Touches(wanted); }, visit);
    }

    /// The item nearest to a place, the lowest of equally near ones.
    /// @param squaredDistance  of an item by its number; never less than that of its box
    /// @return its number; -1 when there is none
    template <class Distance>
    int FindNearest(double x, double y, Distance squaredDistance) const
    {
        Nearest nearest;
        if (!m_nodes.empty()) SearchNode(0, x, y, squaredDistance, nearest);
        return nearest.item;
    }

private:
    struct Node {
        Box box;
        std::size_t begin, end;   // in m_order
        std::size_t right;        // child; the left one follows its parent. 0 for a leaf
    };
    struct Nearest {
        int item = -1;
        double squared = 0.0;
    };

    std::size_t Build(const std::vector<Box>& boxes, std::size_t begin, std::size_t end);

    template <class Wanted, class Visit>
    void VisitNodes(Wanted wanted, Visit& visit) const
    {
        if (!m_nodes.empty()) VisitNode(0, wanted, visit);
    }

    template <class Wanted, class Visit>
    void VisitNode(std::size_t n, Wanted& wanted, Visit& visit) const
    {
        const Node& node = m_nodes[n];
        if (!wanted(node.box)) return;
        if (node.right != 0) {
            VisitNode(n + 1, wanted, visit);
            VisitNode(node.right, wanted, visit);
            return;
        }
        for (std::size_t i = node.begin; i < node.end; ++i) {
            visit(m_order[i]);
        }
    }

    template <class Distance>
    void SearchNode(std::size_t n, double x, double y, Distance& squaredDistance, Nearest& nearest) const
    {
        const Node& node = m_nodes[n];
        if (nearest.item >= 0 && node.box.SquaredDistance(x, y) > nearest.squared) return;
        if (node.right != 0) {
            const bool leftFirst =
                m_nodes[n + 1].box.SquaredDistance(x, y) <= m_nodes[node.right].box.SquaredDistance(x, y);
            SearchNode(leftFirst ? n + 1 : node.right, x, y, squaredDistance, nearest);
            SearchNode(leftFirst ? node.right : n + 1, x, y, squaredDistance, nearest);
            return;
        }
        for (std::size_t i = node.begin; i < node.end; ++i) {
            const double squared = squaredDistance(m_order[i]);
            const bool nearer =
                squared < nearest.squared || (squared == nearest.squared && m_order[i] < nearest.item);
            if (nearest.item < 0 || nearer) nearest = {m_order[i], squared};
        }
    }

    std::vector<int> m_order;   // the boxes' numbers, those of a leaf one behind the other
    std::vector<Node> m_nodes;
};

}   // namespace qsvtin

#endif
