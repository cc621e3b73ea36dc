#ifndef QSVTIN_TERRAIN_POLYGON_H
#define QSVTIN_TERRAIN_POLYGON_H

#include "host/input/survey_data.h"
#include "host/terrain/terrain.h"

namespace qsvtin {

/// A TIN that fills a polygon, given as one line whose ends may meet or not, in either direction.
/// @throws Failure when the line encloses nothing, crosses or touches itself, or cannot be filled
Terrain FillPolygon(const Breakline& ring);

}   // namespace qsvtin

#endif
