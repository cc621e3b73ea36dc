#ifndef QSVTIN_QUERY_LEVEL_VOLUME_H
#define QSVTIN_QUERY_LEVEL_VOLUME_H

#include "qsv_3dprocess.h"

namespace qsvtin {

/// What lies between a level plane and the surface, to one side of the plane.
struct LevelShare {
    double volume = 0.0;
    double planArea = 0.0;
};

struct LevelVolume {
    LevelShare above;   ///< where the surface is higher than the plane
    LevelShare below;   ///< where it is lower
};

/// Volumes between the surface and the plane at a height, exact for the triangles: those that the plane cuts
/// are divided where it cuts. The plan areas add up to that of the surface; upright triangles add nothing.
/// @param tin  with sound indices; coordinates near zero keep the digits of areas
LevelVolume MeasureAtLevel(const CTin& tin, double level);

}   // namespace qsvtin

#endif
