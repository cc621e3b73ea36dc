#ifndef QSVTIN_OUTPUT_RELIEF_H
#define QSVTIN_OUTPUT_RELIEF_H

#include "host/output/plan_view.h"

#include <cstdint>
#include <vector>

namespace qsvtin {

/// From plan coordinates to a picture whose y runs down.
struct PlanToPicture {
    double west = 0.0;    ///< plan x at the left edge
    double north = 0.0;   ///< plan y at the upper edge
    double scale = 1.0;   ///< picture units for a plan unit

    double X(double x) const { return (x - west) * scale; }
    double Y(double y) const { return (north - y) * scale; }
};

/// Hill-shaded surface, coloured by height: width x height pixels, rows from above, each pixel
/// 0xAARRGGBB with the colour multiplied by alpha; transparent where there is no surface.
struct Relief {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

/// Draws the triangles of a view without seams: every pixel is sampled in a 3 x 3 pattern, and a sample on
/// the edge of two triangles belongs to exactly one of them.
/// @param exaggeration  factor for heights in the shading
Relief DrawRelief(const PlanView& view, const PlanToPicture& toPixels, int width, int height,
                  double exaggeration);

}   // namespace qsvtin

#endif
