#ifndef QSVTIN_OUTPUT_MAP_MARGIN_H
#define QSVTIN_OUTPUT_MAP_MARGIN_H

#include "host/output/pen.h"
#include "host/output/plan_view.h"

namespace qsvtin {

/// Title and counts, above the map.
void DrawTitle(Pen& pen, const PlanView& view, const PageLayout& page);

/// The frame with round survey coordinates, and crosses inside where they meet.
void DrawFrame(Pen& pen, const PlanView& view, const PageLayout& page);

/// Height colours with round heights, signs and the north arrow, right of the map.
void DrawLegend(Pen& pen, const PlanView& view, const PageLayout& page);

/// Scale bar with a round length and a note on the shading, below the map.
void DrawFooter(Pen& pen, const PageLayout& page, double exaggeration);

}   // namespace qsvtin

#endif
