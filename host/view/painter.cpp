#include "host/view/painter.h"

#include "host/view/painting_order.h"

#include <algorithm>
#include <array>

namespace qsvtin {

namespace {

float Coarse(double y)
{
    constexpr double kFarOutside = 1e9;
    return static_cast<float>(std::clamp(y, -kFarOutside, kFarOutside));
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
    }
    drawing.order = OrderForPainting(scene, drawing.vertices);
    for (const int t : drawing.order) {
        const auto [top, bottom] =
            std::minmax({drawing.Corner(t, 0).y, drawing.Corner(t, 1).y, drawing.Corner(t, 2).y});
        drawing.extents.push_back({Coarse(top), Coarse(bottom)});
    }
    return drawing;
}

void Paint(const Drawing& drawing, int samples, Band& band)
{
    band.owners.assign(static_cast<std::size_t>(band.width) * static_cast<std::size_t>(band.rows), -1);
    const auto row = [&](int r) {
        return band.owners.begin() + static_cast<std::ptrdiff_t>(r - band.firstRow) * band.width;
    };
    constexpr float kRounding = 1.0f;   // and more than that of an extent
    const float top = static_cast<float>(band.firstRow) / static_cast<float>(samples) - kRounding;
    const float bottom =
        static_cast<float>(band.firstRow + band.rows) / static_cast<float>(samples) + kRounding;
    for (std::size_t i = 0; i < drawing.order.size(); ++i) {
        if (drawing.extents[i].bottom < top || drawing.extents[i].top > bottom) continue;
        const int t = drawing.order[i];
        std::array<Dot, 3> corners = drawing.CornersOf(t);
        for (Dot& corner : corners) {
            corner = {samples * corner.x, samples * corner.y};
        }
        VisitRows(corners, band.firstRow, band.firstRow + band.rows, band.width,
                  [&](int r, int first, int behind) { std::fill(row(r) + first, row(r) + behind, t); });
    }
}

}   // namespace qsvtin
