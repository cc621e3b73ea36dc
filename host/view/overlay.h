#ifndef QSVTIN_VIEW_OVERLAY_H
#define QSVTIN_VIEW_OVERLAY_H

#include "host/output/pen.h"
#include "host/view/visibility.h"

#include <vector>

namespace qsvtin {

/// Draws lines in the pen's colour.
void StrokeLines(Pen& pen, const std::vector<std::vector<Dot>>& lines, double width);

/// Draws the ends and the breaklines of a scene where the surface does not hide them.
void DrawLinesOnGround(Pen& pen, const Scene& scene, const ViewFrame& frame, const Drawing& drawing,
                       double unit);

}   // namespace qsvtin

#endif
