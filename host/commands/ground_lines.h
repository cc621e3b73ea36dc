#ifndef QSVTIN_COMMANDS_GROUND_LINES_H
#define QSVTIN_COMMANDS_GROUND_LINES_H

#include "host/view/scene.h"

#include <string>
#include <vector>

namespace qsvtin {

/// Reads lines to draw on a scene, in the unit of its survey, and lays them on the ground (see Drape). Says so
/// when none of them lies there.
/// @throws Failure  a file cannot be read or used
std::vector<Path> ReadGroundLines(const Scene& scene, const std::vector<std::string>& files);

}   // namespace qsvtin

#endif
