#include "host/terrain/feeding_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace qsvtin {

namespace {

constexpr std::size_t kFewest = 10000;      // fewer take a moment in any order
constexpr double kSpacingsInOrder = 20.0;   // that points in an order of their own lie apart, on average
constexpr std::size_t kStepsLookedAt = 4000;

struct Frame {
    double left, bottom, width, height;
};

Frame FrameOf(const std::vector<Position>& vertices)
{
    const auto byX = [](const Position& a, const Position& b) { return a.x < b.x; };
    const auto byY = [](const Position& a, const Position& b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(vertices.begin(), vertices.end(), byX);
    const auto [bottom, top] = std::minmax_element(vertices.begin(), vertices.end(), byY);
    return {left->x, bottom->y, right->x - left->x, top->y - bottom->y};
}

// Whether steps from one vertex to the next, as far as they are looked at, are short on average.
bool AreInOrder(const std::vector<Position>& vertices, const Frame& frame)
{
    double way = 0.0;
    std::size_t steps = 0;
    for (std::size_t i = 1; i < vertices.size(); i += 1 + vertices.size() / kStepsLookedAt, ++steps) {
        way += std::hypot(vertices[i].x - vertices[i - 1].x, vertices[i].y - vertices[i - 1].y);
    }
    const double spacing = std::sqrt(frame.width * frame.height / static_cast<double>(vertices.size()));
    return way <= kSpacingsInOrder * spacing * static_cast<double>(steps);
}

// How far along a curve through 2^16 x 2^16 cells one of them comes (Hilbert 1891).
std::uint32_t PlaceOnCurve(std::uint32_t column, std::uint32_t row)
{
    std::uint32_t place = 0;
    for (std::uint32_t half = 1u << 15; half > 0; half /= 2) {
        const bool right = (column & half) != 0, upper = (row & half) != 0;
        place = 4 * place + (right ? (upper ? 2 : 3) : (upper ? 1 : 0));
        if (upper) continue;
        if (right) {   // only the bits below half count from here on
            column = ~column;
            row = ~row;
        }
        std::swap(column, row);
    }
    return place;
}

std::vector<int> AlongCurve(const std::vector<Position>& vertices, const Frame& frame)
{
    const double cells = 65535.0 / std::max(frame.width, frame.height);
    std::vector<std::pair<std::uint32_t, int>> placed;
    placed.reserve(vertices.size());
    for (const Position& p : vertices) {
        placed.emplace_back(PlaceOnCurve(static_cast<std::uint32_t>((p.x - frame.left) * cells),
                                         static_cast<std::uint32_t>((p.y - frame.bottom) * cells)),
                            static_cast<int>(placed.size()));
    }
    std::sort(placed.begin(), placed.end());
    std::vector<int> order;
    order.reserve(placed.size());
    for (const auto& [place, vertex] : placed) {
        order.push_back(vertex);
    }
    return order;
}

}   // namespace

FeedingOrder::FeedingOrder(const std::vector<Position>& vertices)
{
    if (vertices.size() < kFewest) return;
    const Frame frame = FrameOf(vertices);
    if (AreInOrder(vertices, frame)) return;
    m_vertices = AlongCurve(vertices, frame);
    m_places.resize(m_vertices.size());
    for (std::size_t place = 0; place < m_vertices.size(); ++place) {
        m_places[static_cast<std::size_t>(m_vertices[place])] = static_cast<int>(place);
    }
}

void FeedingOrder::RestoreNumbers(CTin& tin) const
{
    if (!IsAlongCurve()) return;
    const auto numberOf = [this](int place) {
        return place >= 0 && static_cast<std::size_t>(place) < m_vertices.size() ? VertexAt(place) : place;
    };
    const CArray<CXYZ> fed = tin.m_aVertex;
    for (int place = 0; place < fed.GetSize(); ++place) {
        tin.m_aVertex[numberOf(place)] = fed[place];
    }
    const auto renumber = [&numberOf](CArray<int>& vertices) {
        for (int i = 0; i < vertices.GetSize(); ++i) {
            vertices[i] = numberOf(vertices[i]);
        }
    };
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int& vertex : tin.m_aTri[t].m_nVertex) {
            vertex = numberOf(vertex);
        }
    }
    renumber(tin.m_aBoundary);
    for (int line = 0; line < tin.m_aBreakLine.GetSize(); ++line) {
        renumber(tin.m_aBreakLine[line].m_aVertexIndex);
    }
}

}   // namespace qsvtin
