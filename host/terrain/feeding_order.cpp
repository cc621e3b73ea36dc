#include "host/terrain/feeding_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace qsvtin {

namespace {

constexpr std::size_t kFewest = 10000;      // fewer take a moment in any order
constexpr double kSpacingsInOrder = 20.0;   // that points in an order of their own lie apart, on average

struct Extent {
    double width, height;
};

Extent ExtentOf(const std::vector<Position>& vertices)
{
    const auto byX = [](const Position& a, const Position& b) { return a.x < b.x; };
    const auto byY = [](const Position& a, const Position& b) { return a.y < b.y; };
    const auto [left, right] = std::minmax_element(vertices.begin(), vertices.end(), byX);
    const auto [bottom, top] = std::minmax_element(vertices.begin(), vertices.end(), byY);
    return {right->x - left->x, top->y - bottom->y};
}

// Every so many vertices, so that about four times the square root of their number are looked at.
std::size_t SampleStride(const std::vector<Position>& vertices)
{
    return static_cast<std::size_t>(std::sqrt(vertices.size()) / 4.0) + 1;
}

bool AreInNoOrder(const std::vector<Position>& vertices)
{
    const Extent extent = ExtentOf(vertices);
    const double spacing = std::sqrt(extent.width * extent.height / static_cast<double>(vertices.size()));
    double way = 0.0;
    std::size_t steps = 0;
    for (std::size_t i = 1; i < vertices.size(); i += SampleStride(vertices), ++steps) {
        way += std::hypot(vertices[i].x - vertices[i - 1].x, vertices[i].y - vertices[i - 1].y);
    }
    return way > kSpacingsInOrder * spacing * static_cast<double>(steps);
}

double CountDistinct(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return static_cast<double>(std::unique(values.begin(), values.end()) - values.begin());
}

// The sample meets nearly all columns and rows of a grid. Multiplied, that is about the number of its points; of points
// that lie anywhere it would be sixteen times as many.
bool AreOfGrid(const std::vector<Position>& vertices)
{
    std::vector<double> x, y;
    for (std::size_t i = 0; i < vertices.size(); i += SampleStride(vertices)) {
        x.push_back(vertices[i].x);
        y.push_back(vertices[i].y);
    }
    return CountDistinct(std::move(x)) * CountDistinct(std::move(y)) <=
           4.0 * static_cast<double>(vertices.size());
}

}   // namespace

FeedingOrder::FeedingOrder(const std::vector<Position>& vertices)
{
    if (vertices.size() < kFewest || !AreInNoOrder(vertices) || !AreOfGrid(vertices)) return;
    m_vertices.resize(vertices.size());
    std::iota(m_vertices.begin(), m_vertices.end(), 0);
    std::sort(m_vertices.begin(), m_vertices.end(), [&vertices](int i, int j) {
        const Position &a = vertices[static_cast<std::size_t>(i)], &b = vertices[static_cast<std::size_t>(j)];
        return a.y != b.y ? a.y < b.y : a.x < b.x;
    });
    m_places.resize(vertices.size());
    for (std::size_t place = 0; place < m_vertices.size(); ++place) {
        m_places[static_cast<std::size_t>(m_vertices[place])] = static_cast<int>(place);
    }
}

void FeedingOrder::RestoreNumbers(CTin& tin) const
{
    if (!IsByRows()) return;
    const auto numberOf = [this](int place) {
        return place >= 0 && static_cast<std::size_t>(place) < m_vertices.size() ? VertexAt(place) : place;
    };
    for (CArray<CXYZ>* const ofVertices : {&tin.m_aVertex, &tin.m_aVtNormal}) {
        const CArray<CXYZ> fed = *ofVertices;
        for (int place = 0; place < fed.GetSize(); ++place) {
            (*ofVertices)[numberOf(place)] = fed[place];
        }
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
