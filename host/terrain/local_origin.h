#ifndef QSVTIN_TERRAIN_LOCAL_ORIGIN_H
#define QSVTIN_TERRAIN_LOCAL_ORIGIN_H

#include "host/position.h"

#include <vector>

namespace qsvtin {

/// Where the terrain's own coordinates start. Survey coordinates run into the millions, and products of
/// them lose the digits that areas and sides of lines are decided by; the terrain is therefore computed
/// relative to whole units near the corner of the data that is nearest to zero. Heights stay as they are.
struct LocalOrigin {
    double x = 0.0;
    double y = 0.0;

    /// Exact for every position of the data the origin was chosen for: the origin is a whole number of no
    /// greater magnitude and the same sign, so the difference needs no more digits than the coordinate.
    Position ToLocal(const Position& at) const { return {at.x - x, at.y - y, at.z}; }
    /// Gives back such a position to the bit.
    Position ToSurvey(const Position& at) const { return {at.x + x, at.y + y, at.z}; }
};

/// The origin for these positions; zero on an axis whose coordinates lie on both sides of zero.
LocalOrigin ChooseOrigin(const std::vector<Position>& positions);

}   // namespace qsvtin

#endif
