#ifndef QSVTIN_VIEW_SURFACE_COLOURS_H
#define QSVTIN_VIEW_SURFACE_COLOURS_H

#include "host/output/palette.h"
#include "host/view/painter.h"

#include <array>
#include <cstdint>
#include <vector>

namespace qsvtin {

/// How the surface is coloured.
struct SurfaceStyle {
    bool edges = true;        ///< draw the edges of triangles that are large enough to tell apart
    double lineWidth = 1.0;   ///< of edges, in pixels of the drawing
    Rgb haze;                 ///< what distant ground fades into
    double hazeShare = 0.0;   ///< of it at the greatest distance
};

/// Colours of the places in a drawing: tints of the height, or a texture, under light from the north-west, and
/// edges as lines that are part of their triangles, and so are hidden where these are.
class SurfaceColours
{
public:
    /// @param samples  for a pixel, in each direction
    SurfaceColours(const Scene& scene, const Drawing& drawing, const SurfaceStyle& style, int samples);

    /// The colour of a sample of a triangle.
    Rgb At(int triangle, int column, int row);

private:
    // An edge as its distance from a place, in pixels, and how strongly it is drawn.
    struct Line {
        Plane distance;
        double halfWidth = 0.0;
        double alpha = 0.0;
    };
    struct Prepared {
        int triangle = -1;
        bool underside = false;
        Plane
            nearness;   // the other quantities are linear in the picture when they are divided by the distance
        Plane height;
        Plane shade;
        Plane east;   // texture coordinates
        Plane north;
        double texels = 0.0;             // of the texture, along a sample
        std::array<double, 2> heights;   // their range: a sliver's plane, tilted by rounding, keeps to it
        std::array<double, 2> shades;
        std::array<Line, 3> lines;
    };

    void Prepare(int triangle);
    void PrepareTexture(const std::array<Dot, 3>& corners, const std::array<double, 3>& nearness);
    void PrepareLines(const std::array<Dot, 3>& corners);
    double ShadeAt(int triangle, int corner) const;
    Rgb Ground(double x, double y, double nearness) const;

    const Scene& m_scene;
    const Drawing& m_drawing;
    SurfaceStyle m_style;
    int m_samples;
    double m_nearest = 0.0;
    double m_farthest = 0.0;
    Prepared m_now;
};

/// The surface of a drawing as a picture: rows from above, each pixel 0xAARRGGBB with the colour multiplied by
/// alpha; transparent where there is no surface.
std::vector<std::uint32_t> ColourSurface(const Scene& scene, const Drawing& drawing,
                                         const SurfaceStyle& style, int width, int height);

}   // namespace qsvtin

#endif
