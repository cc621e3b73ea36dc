#ifndef QSVTIN_OUTPUT_MAP_CONTENT_H
#define QSVTIN_OUTPUT_MAP_CONTENT_H

#include "host/output/pen.h"
#include "host/output/plan_view.h"

namespace qsvtin {

/// Draws the surface as a picture of this resolution, hill-shaded with heights exaggerated by a factor.
void DrawSurface(Pen& pen, const PlanView& view, const PageLayout& page, double pixelsPerPoint,
                 double exaggeration);

/// Draws the outline and the edges. Edges fade out as triangles become too small to tell apart, and are left
/// out below that.
void DrawEdges(Pen& pen, const PlanView& view, const PageLayout& page);

/// Draws the breaklines and marks their crossings: thinner where segments are so short on the page that bold
/// lines would hide them.
void DrawBreaklines(Pen& pen, const PlanView& view, const PageLayout& page);

}   // namespace qsvtin

#endif
