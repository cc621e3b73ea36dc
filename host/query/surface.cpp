#include "host/query/surface.h"

#include "host/terrain/triangles.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

// True when the place is within the triangle, or so little beside it that rounding could have put it there:
// otherwise a place on a common edge might be in neither of two triangles.
bool HoldsNearly(const CTin& tin, int triangle, double x, double y)
{
    constexpr double kRounding = 4e-16;
    const double sense = DoubledPlanArea(tin, triangle) > 0.0 ? 1.0 : -1.0;
    for (int k = 0; k < 3; ++k) {
        const CXYZ &from = CornerOf(tin, triangle, k), &to = CornerOf(tin, triangle, (k + 1) % 3);
        const double a = (y - from.y) * (to.x - from.x), b = (x - from.x) * (to.y - from.y);
        if (sense * (a - b) < -kRounding * (std::fabs(a) + std::fabs(b))) return false;
    }
    return true;
}

Box BoxAround(const CXYZ& a, const CXYZ& b)
{
    return {std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)};
}

Box BoxOf(const CTin& tin, int triangle)
{
    const CXYZ& c = CornerOf(tin, triangle, 2);
    Box box = BoxAround(CornerOf(tin, triangle, 0), CornerOf(tin, triangle, 1));
    box.Extend(BoxAround(c, c));
    return box;
}

BoxTree TreeOfTriangles(const CTin& tin)
{
    std::vector<Box> boxes;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        boxes.push_back(BoxOf(tin, t));
    }
    return BoxTree(boxes);
}

// Edges of the ground that end it: nothing, or a wall, is on the other side.
std::vector<std::pair<int, int>> FindOutlineEdges(const CTin& tin)
{
    std::vector<std::pair<int, int>> edges;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        if (StandsUpright(tin, t)) continue;
        const CTriangle& tri = tin.m_aTri[t];
        for (int k = 0; k < 3; ++k) {
            const int neighbor = tri.m_nNeighbor[k];
            if (neighbor >= 0 && !StandsUpright(tin, neighbor)) continue;
            edges.emplace_back(tri.m_nVertex[(k + 2) % 3], tri.m_nVertex[k]);   // ends at its slot
        }
    }
    return edges;
}

Position NearestOnEdge(const CXYZ& a, const CXYZ& b, double x, double y)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double share = squared > 0.0 ? ((x - a.x) * dx + (y - a.y) * dy) / squared : 0.0;
    if (!(share > 0.0)) return {a.x, a.y, a.z};
    if (share >= 1.0) return {b.x, b.y, b.z};
    return {a.x + share * dx, a.y + share * dy, a.z + share * (b.z - a.z)};
}

}   // namespace

Surface::Surface(CTin& tin) : m_tin(tin) {}

std::optional<Surface::Place> Surface::Find(double x, double y)
{
    double z = 0.0;
    int triangle = -1;
    if (m_tin.InterpolateForPlane(m_last, x, y, z, triangle) != 0 && IsNear(triangle, x, y)) {
        m_last = triangle;
        return PlaceOn(triangle, x, y);
    }
    const std::optional<Place> found = Search(x, y);
    if (found) m_last = found->triangle;
    return found;
}

std::vector<std::optional<Surface::Place>> Surface::FindAll(const std::vector<Position>& places)
{
    if (!m_finder) m_finder.emplace(m_tin);
    CArray<CXYZ> asked;
    asked.SetSize(static_cast<int>(places.size()));
    std::transform(places.begin(), places.end(), asked.GetData(),
                   [](const Position& p) { return CXYZ(p.x, p.y, 0.0); });
    CArray<CHeightAnswer> answers;
    m_finder->Find(asked, answers);
    std::vector<std::optional<Place>> found;
    for (int i = 0; i < answers.GetSize(); ++i) {
        const double x = asked[i].x, y = asked[i].y;
        const bool isFound = answers[i].m_nResult != 0 && IsNear(answers[i].m_nTri, x, y);
        found.push_back(isFound ? PlaceOn(answers[i].m_nTri, x, y) : Search(x, y));
    }
    return found;
}

// A walk takes a place on the line of an edge, within the tolerance, as on the edge; of a triangle thinner
// than the tolerance that may be far away.
bool Surface::IsNear(int triangle, double x, double y) const
{
    const double within = m_tin.m_dEPS;
    return BoxOf(m_tin, triangle).SquaredDistance(x, y) <= within * within;
}

std::optional<Surface::Place> Surface::PlaceOn(int triangle, double x, double y) const
{
    Place place{triangle, 0.0};
    if (m_tin.CalZonPlane(triangle, x, y, place.z) == 0) return std::nullopt;
    const auto [low, high] = std::minmax(
        {CornerOf(m_tin, triangle, 0).z, CornerOf(m_tin, triangle, 1).z, CornerOf(m_tin, triangle, 2).z});
    place.z = std::clamp(place.z, low, high);
    return place;
}

std::optional<Surface::Place> Surface::Search(double x, double y)
{
    if (!m_triangles) m_triangles = TreeOfTriangles(m_tin);
    std::optional<Place> found;
    m_triangles->VisitAt(x, y, [&](int triangle) {
        if (found || StandsUpright(m_tin, triangle) || !HoldsNearly(m_tin, triangle, x, y)) return;
        found = PlaceOn(triangle, x, y);
    });
    return found;
}

Surface::OutlinePlace Surface::FindOnOutline(double x, double y)
{
    if (!m_outline) {
        m_outlineEdges = FindOutlineEdges(m_tin);
        std::vector<Box> boxes;
        for (const auto& [from, to] : m_outlineEdges) {
            boxes.push_back(BoxAround(m_tin.m_aVertex[from], m_tin.m_aVertex[to]));
        }
        m_outline.emplace(boxes);
    }
    const auto nearestOn = [&](int edge) {
        const auto& [from, to] = m_outlineEdges[static_cast<std::size_t>(edge)];
        return NearestOnEdge(m_tin.m_aVertex[from], m_tin.m_aVertex[to], x, y);
    };
    const auto squaredDistance = [&](int edge) {
        const Position at = nearestOn(edge);
        return (at.x - x) * (at.x - x) + (at.y - y) * (at.y - y);
    };
    const int edge = m_outline->FindNearest(x, y, squaredDistance);
    if (edge < 0) return {{x, y, std::nan("")}, std::nan("")};
    const Position at = nearestOn(edge);
    return {at, std::hypot(at.x - x, at.y - y)};
}

}   // namespace qsvtin
