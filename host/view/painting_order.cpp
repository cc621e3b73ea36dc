#include "host/view/painting_order.h"

#include "host/query/box_tree.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <queue>
#include <utility>

namespace qsvtin {

namespace {

using Triangle = std::array<Seen, 3>;   // clockwise in the picture, whose y runs down

// Twice the area of three places, above 0 when they run clockwise in the picture.
double DoubledArea(const Seen& a, const Seen& b, const Seen& c)
{
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

// Over the picture: the y of its south side is the least.
Box BoxOf(const Triangle& t)
{
    const auto [left, right] = std::minmax({t[0].x, t[1].x, t[2].x});
    const auto [top, bottom] = std::minmax({t[0].y, t[1].y, t[2].y});
    return {left, right, top, bottom};
}

// A convex polygon: what two triangles share has at most six corners, and cutting passes through fewer than ten.
struct Polygon {
    std::array<Seen, 10> corners;
    std::size_t size = 0;

    void Add(const Seen& corner)
    {
        if (size < corners.size()) corners[size++] = corner;
    }
};

// The part of a polygon to the right of the line from a to b.
Polygon CutOff(const Polygon& polygon, const Seen& a, const Seen& b)
{
    Polygon kept;
    for (std::size_t i = 0; i < polygon.size; ++i) {
        const Seen &from = polygon.corners[i], &to = polygon.corners[(i + 1) % polygon.size];
        const double sideFrom = DoubledArea(a, b, from), sideTo = DoubledArea(a, b, to);
        if (sideFrom >= 0.0) kept.Add(from);
        if ((sideFrom >= 0.0) == (sideTo >= 0.0)) continue;
        const double share = sideFrom / (sideFrom - sideTo);
        kept.Add({from.x + share * (to.x - from.x), from.y + share * (to.y - from.y),
                  from.depth + share * (to.depth - from.depth), 0.0});
    }
    return kept;
}

double AreaOf(const Polygon& polygon)
{
    double doubled = 0.0;
    for (std::size_t i = 2; i < polygon.size; ++i) {
        doubled += DoubledArea(polygon.corners[0], polygon.corners[i - 1], polygon.corners[i]);
    }
    return 0.5 * doubled;
}

double DepthAt(const Triangle& t, const Seen& at)
{
    const double u = DoubledArea(t[1], t[2], at), v = DoubledArea(t[2], t[0], at),
                 w = DoubledArea(t[0], t[1], at);
    return (u * t[0].depth + v * t[1].depth + w * t[2].depth) / (u + v + w);
}

// How much farther p is than q over the part of the picture that they share; 0 when that is too small to be seen.
double FartherBy(const Triangle& p, const Triangle& q)
{
    constexpr double kVisibleArea = 1e-3;   // square pixels
    Polygon shared;
    for (const Seen& corner : p) {
        shared.Add(corner);
    }
    for (std::size_t k = 0; k < 3 && shared.size > 0; ++k) {
        shared = CutOff(shared, q[k], q[(k + 1) % 3]);
    }
    if (shared.size < 3 || !(AreaOf(shared) > kVisibleArea)) return 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < shared.size; ++i) {
        sum += shared.corners[i].depth - DepthAt(q, shared.corners[i]);
    }
    return sum;
}

// The triangles as a TIN over the picture, counter-clockwise with y upwards.
CTin FlatTin(const Scene& scene, const std::vector<Seen>& vertices)
{
    double right = 0.0, bottom = 0.0;
    for (const Seen& seen : vertices) {
        right = std::max(right, seen.x);
        bottom = std::max(bottom, seen.y);
    }
    const double depthInPixels = 0.5 * std::hypot(right, bottom);
    CTin flat(scene.tin);
    for (int v = 0; v < flat.m_aVertex.GetSize(); ++v) {
        const Seen& seen = vertices[static_cast<std::size_t>(v)];
        flat.m_aVertex[v].SetXYZ(seen.x, -seen.y, -seen.depth * depthInPixels);
    }
    for (int t = 0; t < flat.m_aTri.GetSize(); ++t) {
        if (flat.CheckTurn(t) == 1) std::swap(flat.m_aTri[t].m_nVertex[1], flat.m_aTri[t].m_nVertex[2]);
    }
    return flat;
}

// Of each triangle, those that must be painted after it.
std::vector<std::vector<int>> FindFollowers(const Scene& scene, const std::vector<Seen>& vertices)
{
    std::vector<Triangle> triangles;
    std::vector<Box> boxes;
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        Triangle& triangle = triangles.emplace_back();
        for (std::size_t k = 0; k < 3; ++k) {
            triangle[k] = vertices[static_cast<std::size_t>(scene.tin.m_aTri[t].m_nVertex[k])];
        }
        if (DoubledArea(triangle[0], triangle[1], triangle[2]) < 0.0) std::swap(triangle[1], triangle[2]);
        boxes.push_back(BoxOf(triangle));
    }
    std::vector<std::vector<int>> followers(triangles.size());
    const BoxTree tree(boxes);
    for (std::size_t p = 0; p < triangles.size(); ++p) {
        tree.VisitTouching(boxes[p], [&](int visited) {
            const auto q = static_cast<std::size_t>(visited);
            if (q <= p || !boxes[p].Touches(boxes[q])) return;   // each pair once
            const double farther = FartherBy(triangles[p], triangles[q]);
            if (farther > 0.0) followers[p].push_back(static_cast<int>(q));
            if (farther < 0.0) followers[q].push_back(static_cast<int>(p));
        });
    }
    return followers;
}

// Puts what must follow behind what it follows; otherwise the order stays (Kahn, "Topological sorting of large
// networks", 1962). In a ring, the first of it in the order goes first.
std::vector<int> Settle(const std::vector<int>& order, const std::vector<std::vector<int>>& followers)
{
    std::vector<int> place(order.size()), waitsFor(order.size(), 0);
    for (std::size_t i = 0; i < order.size(); ++i) {
        place[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
        for (const int follower : followers[i]) ++waitsFor[static_cast<std::size_t>(follower)];
    }
    std::priority_queue<int, std::vector<int>, std::greater<>> ready;   // places
    std::vector<bool> isReady(order.size(), false);
    const auto makeReady = [&](int triangle) {
        if (isReady[static_cast<std::size_t>(triangle)]) return;
        isReady[static_cast<std::size_t>(triangle)] = true;
        ready.push(place[static_cast<std::size_t>(triangle)]);
    };
    for (const int triangle : order) {
        if (waitsFor[static_cast<std::size_t>(triangle)] == 0) makeReady(triangle);
    }
    std::vector<int> settled;
    for (std::size_t next = 0; settled.size() < order.size();) {
        while (ready.empty()) makeReady(order[next++]);
        const int triangle = order[static_cast<std::size_t>(ready.top())];
        ready.pop();
        settled.push_back(triangle);
        for (const int follower : followers[static_cast<std::size_t>(triangle)]) {
            if (--waitsFor[static_cast<std::size_t>(follower)] == 0) makeReady(follower);
        }
    }
    return settled;
}

}   // namespace

std::vector<int> OrderForPainting(const Scene& scene, const std::vector<Seen>& vertices)
{
    CTin flat = FlatTin(scene, vertices);
    flat.UpdateDepth2();
    std::vector<int> order;
    for (int i = 0; i < flat.m_aDepthOrder.GetSize(); ++i) {
        order.push_back(flat.m_aDepthOrder[i]);
    }
    return Settle(order, FindFollowers(scene, vertices));
}

}   // namespace qsvtin
