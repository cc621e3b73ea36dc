#include "host/output/plan_view.h"

#include "host/terrain/terrain.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

void CopyMesh(const CTin& tin, PlanView& view)
{
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& vertex = tin.m_aVertex[v];
        view.vertices.push_back({vertex.x, vertex.y, vertex.z});
    }
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        view.triangles.push_back({tri.m_nVertex[0], tri.m_nVertex[1], tri.m_nVertex[2]});
        // The library keeps a neighbour in the slot where the shared edge ends.
        view.neighbors.push_back({tri.m_nNeighbor[1], tri.m_nNeighbor[2], tri.m_nNeighbor[0]});
    }
}

// The library's mean normals; level where a triangle without area has spoilt the mean.
void FindGradients(const CTin& tin, PlanView& view)
{
    view.gradients.resize(view.vertices.size());
    for (int v = 0; v < tin.m_aVtNormal.GetSize() && v < tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& normal = tin.m_aVtNormal[v];
        const Gradient gradient{-normal.x / normal.z, -normal.y / normal.z};
        if (std::isfinite(gradient.x) && std::isfinite(gradient.y)) {
            view.gradients[static_cast<std::size_t>(v)] = gradient;
        }
    }
}

void FindRange(PlanView& view)
{
    if (view.triangles.empty()) return;
    view.low = view.high = view.vertices[static_cast<std::size_t>(view.triangles.front()[0])];
    for (const auto& triangle : view.triangles) {
        for (const int corner : triangle) {
            const Position& p = view.vertices[static_cast<std::size_t>(corner)];
            view.low = {std::min(view.low.x, p.x), std::min(view.low.y, p.y), std::min(view.low.z, p.z)};
            view.high = {std::max(view.high.x, p.x), std::max(view.high.y, p.y), std::max(view.high.z, p.z)};
        }
    }
}

std::string Counts(const PlanView& view)
{
    const auto several = [](std::size_t count, const std::string& thing) {
        return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
    };
    std::string text =
        std::to_string(view.vertices.size()) + " vertices,  " + several(view.triangles.size(), "triangle");
    if (!view.lines.empty()) text += ",  " + several(view.lines.size(), "breakline");
    if (!view.crossings.empty()) text += ",  " + several(view.crossings.size(), "crossing");
    return text;
}

// The slope that a share of the ground does not exceed. Triangles count by the square root of their area: by
// area, the few large ones between distant points would decide alone; by number, the many small ones.
double SlopeQuantile(const PlanView& view, double share)
{
    std::vector<std::pair<double, double>> slopes;   // slope, weight
    double total = 0.0;
    for (std::size_t t = 0; t < view.triangles.size(); ++t) {
        const Gradient gradient = GradientOf(view, t);
        const double weight = std::sqrt(std::max(0.0, PlanArea(view, t)));
        slopes.emplace_back(std::hypot(gradient.x, gradient.y), weight);
        total += weight;
    }
    std::sort(slopes.begin(), slopes.end());
    double covered = 0.0;
    for (const auto& [slope, weight] : slopes) {
        covered += weight;
        if (covered >= share * total) return slope;
    }
    return 0.0;
}

}   // namespace

PlanView MakePlanView(const Terrain& terrain, const std::string& title)
{
    PlanView view;
    view.title = title;
    view.origin = terrain.origin;
    CopyMesh(terrain.tin, view);
    FindGradients(terrain.tin, view);
    FindRange(view);
    for (const SurveyLine& line : terrain.lines) {
        if (line.SegmentCount() == 0) continue;
        std::vector<Position>& drawn = view.lines.emplace_back();
        for (const int vertex : line.vertices) {
            drawn.push_back(view.vertices[static_cast<std::size_t>(vertex)]);
        }
        if (line.closed) drawn.push_back(drawn.front());
    }
    for (const Crossing& crossing : terrain.crossings) {
        view.crossings.push_back({crossing.x, crossing.y, 0.0});
    }
    view.counts = Counts(view);
    return view;
}

const Position& CornerOf(const PlanView& view, std::size_t triangle, std::size_t k)
{
    return view.vertices[static_cast<std::size_t>(view.triangles[triangle][k])];
}

double PlanArea(const PlanView& view, std::size_t triangle)
{
    const Position &a = CornerOf(view, triangle, 0), &b = CornerOf(view, triangle, 1),
                   &c = CornerOf(view, triangle, 2);
    return 0.5 * ((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y));
}

Gradient GradientOf(const PlanView& view, std::size_t triangle)
{
    const Position &a = CornerOf(view, triangle, 0), &b = CornerOf(view, triangle, 1),
                   &c = CornerOf(view, triangle, 2);
    const double doubledArea = 2.0 * PlanArea(view, triangle);
    if (!(doubledArea > 0.0)) return {};
    return {((b.z - a.z) * (c.y - a.y) - (c.z - a.z) * (b.y - a.y)) / doubledArea,
            ((c.z - a.z) * (b.x - a.x) - (b.z - a.z) * (c.x - a.x)) / doubledArea};
}

double HeightExaggeration(const PlanView& view)
{
    constexpr double kWantedSlope = 0.4;
    const double slope = SlopeQuantile(view, 0.75);
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (slope * factor >= kWantedSlope) return factor;
    }
    return 10.0;
}

}   // namespace qsvtin
