#include "host/commands/ground_lines.h"

#include "host/input/survey.h"
#include "host/say.h"
#include "host/view/drape.h"

#include <utility>

namespace qsvtin {

std::vector<Path> ReadGroundLines(const Scene& scene, const std::vector<std::string>& files)
{
    std::vector<Path> lines;
    for (Breakline& line : ReadLines(files, scene.unit).breaklines) {
        lines.push_back(std::move(line.points));
    }
    std::vector<Path> laid = Drape(scene, lines);
    if (!lines.empty() && laid.empty()) {
        Note("no breakline of " + files.front() + " lies on the terrain; are they of this place?");
    }
    return laid;
}

}   // namespace qsvtin
