#ifndef QSVTIN_OUTPUT_MAP_SIGNS_H
#define QSVTIN_OUTPUT_MAP_SIGNS_H

#include "host/output/pen.h"

#include <string>

namespace qsvtin {

/// Colours of the heights, highest above, with a title over them and round heights beside them.
/// @param unit  size of letters and lines: letters are about 15 high
void DrawHeightScale(Pen& pen, const Rect& bar, double low, double high, double unit);

/// A line of the legend: a short stroke and what it means.
void DrawLineSign(Pen& pen, double left, double y, const Rgb& colour, const std::string& meaning,
                  double unit);

/// An arrow on the ground that points to the north.
/// @param x, y    its middle
/// @param turn    of north against upwards in the picture, counter-clockwise, in radians
/// @param height  of the picture of a square on the ground as a part of its width: 1 in plan
void DrawNorthArrow(Pen& pen, double x, double y, double turn, double height, double unit);

}   // namespace qsvtin

#endif
