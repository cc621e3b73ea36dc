#ifndef QSVTIN_VIEW_DRAPE_H
#define QSVTIN_VIEW_DRAPE_H

#include "host/view/scene.h"

#include <vector>

namespace qsvtin {

/// Lays lines on the ground of a scene: where they lie in plan, at the height of each triangle they cross. What
/// lies beside the ground is left out. Where several triangles lie above each other a line lies on each; those
/// that stand upright hold none.
/// @param lines  in survey coordinates; their heights do not matter
/// @return  in coordinates of the scene, with a corner wherever a line passes from one triangle to the next
std::vector<Path> Drape(const Scene& scene, const std::vector<Path>& lines);

}   // namespace qsvtin

#endif
