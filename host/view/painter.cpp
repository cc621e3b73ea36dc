#include "host/view/painter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

float Coarse(double y)
{
    constexpr double kFarOutside = 1e9;
    return static_cast<float>(std::clamp(y, -kFarOutside, kFarOutside));
}

void PaintTriangle(const Drawing& drawing, int triangle, int samples, Band& band)
{
    constexpr double kSameDepth = 1e-10;   // of surfaces that lie in each other; rounding reaches 1e-11
    std::array<Dot, 3> corners = drawing.CornersOf(triangle);
    for (Dot& corner : corners) {
        corner = {samples * corner.x, samples * corner.y};
    }
    const Quantity depths(corners, drawing.DepthsOf(triangle));
    VisitRows(corners, band.firstRow, band.firstRow + band.rows, band.width,
              [&](int row, int first, int behind) {
                  const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(row - band.firstRow) * band.width;
                  for (int column = first; column < behind; ++column) {
                      const auto at = static_cast<std::size_t>(start + column);
                      const double depth = depths.At(column + 0.5, row + 0.5);
                      if (!(depth < band.depths[at] - kSameDepth)) continue;
                      band.depths[at] = depth;
                      band.owners[at] = triangle;
                  }
              });
}

}   // namespace

Drawing MakeDrawing(const Scene& scene, const ViewFrame& frame, int scale)
{
    Drawing drawing;
    drawing.scale = scale;
    for (int v = 0; v < scene.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = scene.tin.m_aVertex[v];
        Seen seen = frame.ToPicture({p.x, p.y, p.z});
        seen.x *= scale;
        seen.y *= scale;
        drawing.vertices.push_back(seen);
    }
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        const int* const corner = scene.tin.m_aTri[t].m_nVertex;
        drawing.triangles.push_back({corner[0], corner[1], corner[2]});
        const auto [top, bottom] =
            std::minmax({drawing.Corner(t, 0).y, drawing.Corner(t, 1).y, drawing.Corner(t, 2).y});
        drawing.extents.push_back({Coarse(top), Coarse(bottom)});
    }
    return drawing;
}

void Paint(const Drawing& drawing, int samples, Band& band)
{
    const std::size_t count = static_cast<std::size_t>(band.width) * static_cast<std::size_t>(band.rows);
    band.owners.assign(count, -1);
    band.depths.assign(count, HUGE_VAL);
    constexpr float kRounding = 1.0f;   // and more than that of an extent
    const float top = static_cast<float>(band.firstRow) / static_cast<float>(samples) - kRounding;
    const float bottom =
        static_cast<float>(band.firstRow + band.rows) / static_cast<float>(samples) + kRounding;
    for (std::size_t i = 0; i < drawing.extents.size(); ++i) {
        if (drawing.extents[i].bottom < top || drawing.extents[i].top > bottom) continue;
        PaintTriangle(drawing, static_cast<int>(i), samples, band);
    }
}

}   // namespace qsvtin
