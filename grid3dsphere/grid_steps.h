#ifndef QSV_GRID3DSPHERE_GRID_STEPS_H
#define QSV_GRID3DSPHERE_GRID_STEPS_H

#include <cmath>

namespace qsv {

// Two lines closer than this part of a step are one: 7 steps of 360 / 7 are 360 but for rounding.
constexpr double kSameLine = 1e-6;

/// How many multiples of dStep, 0 included, lie below dEnd.
inline double StepsBelow(double dEnd, double dStep)
{
    return std::ceil(dEnd / dStep - kSameLine);
}

/// Middle of the gap between neighbouring multiples of dStep that begins at dAngle or contains it; the last gap
/// ends at dEnd.
inline double MiddleOfGap(double dAngle, double dStep, double dEnd)
{
    const double dBegin = std::floor(dAngle / dStep + kSameLine) * dStep;
    return (dBegin + std::fmin(dBegin + dStep, dEnd)) / 2.0;
}

}   // namespace qsv

#endif
