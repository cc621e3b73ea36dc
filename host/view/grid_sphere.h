#ifndef QSVTIN_VIEW_GRID_SPHERE_H
#define QSVTIN_VIEW_GRID_SPHERE_H

#include "host/view/painter.h"

#include <vector>

namespace qsvtin {

class Pen;

/// The angles that an instrument sees from a station, as lines on a sphere around it.
struct GridSphere {
    Position station;   ///< in survey coordinates
    double radius = 0.0;
    double stepH = 30.0;   ///< degrees from line to line of constant horizontal angle
    double stepV = 15.0;   ///< and of constant vertical angle
    ZENITH_MODE zero = ZENITH_0_FULL;
};

/// Places all over the sphere, in coordinates of the scene: what a picture has to find room for. Heights of the
/// sphere are stretched as those of the ground, so that a line of sight meets the ground that it meets outside.
/// @throws Failure (bad usage) when the sphere is so large or so far away that the ground would be lost beside it
std::vector<Position> PlacesOn(const Scene& scene, const GridSphere& sphere);

/// Draws the lines of the sphere with their readings, and the station. Its far half is fainter; what the surface
/// hides is dotted. Readings stand on the near half, as far as there is room.
/// @throws Failure (bad usage) when there are too many lines
void DrawGridSphere(Pen& pen, const Scene& scene, const GridSphere& sphere, const ViewFrame& frame,
                    const Drawing& drawing, double unit);

}   // namespace qsvtin

#endif
