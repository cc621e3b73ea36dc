#ifndef QSVTIN_POSITION_H
#define QSVTIN_POSITION_H

#include <cmath>

namespace qsvtin {

/// A place on the ground: east, north and height in the unit of the survey.
struct Position {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// Beyond this a double has no fraction of a unit left, and products of coordinates come near overflow.
constexpr double kLargestCoordinate = 1e15;

/// True for a finite number that is not too large for a coordinate.
inline bool IsCoordinate(double value)
{
    return std::fabs(value) <= kLargestCoordinate;
}

}   // namespace qsvtin

#endif
