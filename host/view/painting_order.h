#ifndef QSVTIN_VIEW_PAINTING_ORDER_H
#define QSVTIN_VIEW_PAINTING_ORDER_H

#include "host/view/scene.h"
#include "host/view/view_frame.h"

#include <vector>

namespace qsvtin {

/// The triangles of a scene in an order for painting, the farthest first.
///
/// Seen along the line of sight the picture is a plan and nearness a height, for which the library has an order
/// (CTin::UpdateDepth2). Exchanging pairs, as it does, can leave some that it does not come back to. So all
/// pairs that share ground in the picture are looked at once more, and the library's order is kept as far as
/// none of them contradicts it. Triangles that hide each other in a ring stay in some order.
/// @param vertices  those of the scene, as seen
std::vector<int> OrderForPainting(const Scene& scene, const std::vector<Seen>& vertices);

}   // namespace qsvtin

#endif
