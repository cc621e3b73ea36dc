#ifndef QSVTIN_VIEW_PAINTER_H
#define QSVTIN_VIEW_PAINTER_H

#include "host/view/scene.h"
#include "host/view/view_frame.h"

#include <array>
#include <vector>

namespace qsvtin {

/// A part of a triangle, as it is painted.
struct Piece {
    int triangle = -1;
    std::array<int, 3> vertices = {-1, -1, -1};   ///< of the drawing
};

/// The triangles of a scene as they appear in a picture.
struct Drawing {
    std::vector<Seen> vertices;   ///< those of the scene, then those where triangles were cut
    std::vector<Piece> pieces;    ///< the farthest first
};

/// Brings every vertex into the picture and orders the triangles for painting: seen along the line of sight,
/// the picture is a plan and nearness a height, for which the library has an order. Triangles much larger than
/// most are cut for it: the order begins with one nearness for each, which says little about a large one.
Drawing MakeDrawing(const Scene& scene, const ViewFrame& frame);

/// Rows of samples, from above, each with the triangle that is seen there, -1 for none.
struct Band {
    int width = 0;      ///< samples in a row
    int firstRow = 0;   ///< of the picture's rows of samples
    int rows = 0;
    std::vector<int> owners;
};

/// Paints the triangles into a band, one over the other. A sample on the edge of two triangles belongs to
/// exactly one of them, so that nothing shows through between them.
/// @param samples  for a pixel, in each direction
void Paint(const Drawing& drawing, int samples, Band& band);

}   // namespace qsvtin

#endif
