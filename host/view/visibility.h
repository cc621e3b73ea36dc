#ifndef QSVTIN_VIEW_VISIBILITY_H
#define QSVTIN_VIEW_VISIBILITY_H

#include "host/view/painter.h"

#include <vector>

namespace qsvtin {

/// Lines in a picture, in pixels of its frame.
struct SeenLines {
    std::vector<std::vector<Dot>> shown;
    std::vector<std::vector<Dot>> hidden;   ///< what the surface stands before
};

/// Tells what is seen of lines in space: every half pixel it looks which triangle the picture shows there and
/// whether the line lies behind it. A line on the surface is seen wherever its triangle is.
/// @param groups  of lines, in coordinates of the scene
/// @return as many groups
std::vector<SeenLines> PartByVisibility(const std::vector<std::vector<Path>>& groups, const ViewFrame& frame,
                                        const Drawing& drawing);

}   // namespace qsvtin

#endif
