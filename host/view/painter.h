#ifndef QSVTIN_VIEW_PAINTER_H
#define QSVTIN_VIEW_PAINTER_H

#include "host/output/triangle_rows.h"
#include "host/view/scene.h"
#include "host/view/view_frame.h"

#include <array>
#include <vector>

namespace qsvtin {

/// How far something reaches from above; so coarse that many fit the processor's cache.
struct Extent {
    float top = 0.0f;
    float bottom = 0.0f;
};

/// The triangles of a scene as they appear in a picture.
struct Drawing {
    std::vector<Seen> vertices;
    std::vector<std::array<int, 3>> triangles;
    std::vector<Extent> extents;   ///< of the triangles
    int scale = 1;                 ///< its pixels for one of the frame, in each direction

    const Seen& Corner(int triangle, std::size_t k) const
    {
        return vertices[static_cast<std::size_t>(triangles[static_cast<std::size_t>(triangle)][k])];
    }
    std::array<Dot, 3> CornersOf(int triangle) const
    {
        const Seen &a = Corner(triangle, 0), &b = Corner(triangle, 1), &c = Corner(triangle, 2);
        return {{{a.x, a.y}, {b.x, b.y}, {c.x, c.y}}};
    }
    std::array<double, 3> DepthsOf(int triangle) const
    {
        return {Corner(triangle, 0).depth, Corner(triangle, 1).depth, Corner(triangle, 2).depth};
    }
};

/// Brings every vertex into the picture.
/// @param scale  1 for the frame's own pixels, or how many finer ones there are for each
Drawing MakeDrawing(const Scene& scene, const ViewFrame& frame, int scale = 1);

/// Rows of samples, from above, each with the triangle that is seen there, -1 for none.
struct Band {
    int width = 0;      ///< samples in a row
    int firstRow = 0;   ///< of the picture's rows of samples
    int rows = 0;
    std::vector<int> owners;
    std::vector<double> depths;   ///< of what is seen
};

/// Paints the triangles into a band: of those at a sample the nearest is seen, the first of several as near as each
/// other (Catmull 1974). A sample on the edge of two triangles belongs to exactly one of them, so that nothing
/// shows through between them.
/// @param samples  for a pixel, in each direction
void Paint(const Drawing& drawing, int samples, Band& band);

}   // namespace qsvtin

#endif
