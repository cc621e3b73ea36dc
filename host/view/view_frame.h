#ifndef QSVTIN_VIEW_VIEW_FRAME_H
#define QSVTIN_VIEW_VIEW_FRAME_H

#include "host/output/page_layout.h"
#include "host/position.h"

#include "qsv_3dprocess.h"

#include <vector>

namespace qsvtin {

/// How one looks at a terrain.
struct View {
    double azimuth = 180.0;    ///< where the viewer stands, in degrees from north over east: 180 is the south
    double elevation = 90.0;   ///< how high, in degrees above the horizon: 90 looks straight down
    bool perspective = false;   ///< what is near looks larger; otherwise lines of sight are parallel

    bool IsPlan() const { return elevation == 90.0 && !perspective; }
};

/// A place in the picture.
struct Seen {
    double x = 0.0;          ///< pixels from the left edge
    double y = 0.0;          ///< pixels from the upper edge, downwards
    double depth = 0.0;      ///< -1 at the near plane to +1 at the far one; planes in space stay planes
    double distance = 0.0;   ///< from the eye, along the direction it looks in
};

/// A line of sight, from where it passes the near plane to where it passes the far one.
struct Sight {
    Position from;
    Position to;
};

/// From the ground to the pixels of a picture and back.
///
/// Ground coordinates are those of a Scene: relative to its centre, x to the east, y to the north, z up. The
/// model matrix of a CProjection turns them until the viewer, who stands in the direction (azimuth,
/// elevation), is on the +z axis, and moves them away from the eye at the origin, which looks along -z:
///
///      y (up in the picture)           RotateZ(azimuth - 180)   the viewer comes to the south
///      |                               RotateX(elevation - 90)  and from there overhead
///      |      ground                   Translate(0, 0, -D)      D: distance of the centre from the eye
///      |   - - + - - - - - -  -z
///     eye ---------------- x           so that straight down, from the south, north is up in the picture
///
/// For parallel lines of sight the eye is so far away that they differ by a hundredth of a pixel at most.
/// The bounds of the perspective are laid around what the ground covers, so that it fills the frame.
class ViewFrame
{
public:
    /// @param ground         what must be seen, relative to the centre
    /// @param frame          the part of the picture that it fills, in pixels
    /// @param width, height  of the picture, in pixels
    ViewFrame(const View& view, const std::vector<Position>& ground, const Rect& frame, int width,
              int height);

    Seen ToPicture(const Position& at) const;
    /// The line of sight through a place of the picture.
    Sight Through(double x, double y) const;

    int Width() const { return m_width; }
    int Height() const { return m_height; }

private:
    CProjection m_projection;
    int m_width;
    int m_height;
    // The picture's edges on the near plane, and pixels for its unit.
    double m_left = 0.0;
    double m_top = 0.0;
    double m_pixels = 1.0;
};

}   // namespace qsvtin

#endif
