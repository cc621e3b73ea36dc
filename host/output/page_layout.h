#ifndef QSVTIN_OUTPUT_PAGE_LAYOUT_H
#define QSVTIN_OUTPUT_PAGE_LAYOUT_H

#include "host/output/plan_view.h"
#include "host/output/relief.h"

namespace qsvtin {

/// A rectangle on the page, in points (1/72 inch), y downwards.
struct Rect {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;

    double Right() const { return left + width; }
    double Bottom() const { return top + height; }
};

/// Where the parts of a plan picture stand.
struct PageLayout {
    double width = 0.0;
    double height = 0.0;
    Rect title;              ///< two lines of text above the map
    Rect map;                ///< the frame around the terrain
    Rect legend;             ///< the column right of the map
    Rect footer;             ///< below the coordinates: scale bar and a note
    double mapWest = 0.0;    ///< plan x at the left edge of the map, relative to the terrain's origin
    double mapNorth = 0.0;   ///< plan y at its upper edge
    PlanToPicture toPage;
};

/// Fits the terrain onto an A4 page, upright or lying, whichever shows it larger.
/// @param wholePage  true: the page stays A4 and what is on it is centred; false: the page is cut to that
PageLayout LayOutPage(const PlanView& view, bool wholePage);

}   // namespace qsvtin

#endif
