#ifndef QSVTIN_VIEW_PICK_H
#define QSVTIN_VIEW_PICK_H

#include "host/view/scene.h"
#include "host/view/view_frame.h"

#include <optional>

namespace qsvtin {

/// What a line of sight meets first.
struct Hit {
    int triangle = -1;
    Position at;   ///< in survey coordinates
};

/// Follows the line of sight through a place of the picture to the nearest triangle, by a test of every one.
/// Two triangles that share an edge leave no gap between them. Triangles seen from their edge are not met.
std::optional<Hit> PickAt(const Scene& scene, const ViewFrame& frame, double x, double y);

}   // namespace qsvtin

#endif
