#ifndef QSVTIN_TERRAIN_CROSSINGS_H
#define QSVTIN_TERRAIN_CROSSINGS_H

#include "host/position.h"
#include "host/terrain/local_origin.h"
#include "host/terrain/survey_line.h"

#include <array>
#include <cstddef>
#include <vector>

namespace qsvtin {

/// One of the two breaklines at a crossing.
struct CrossingLine {
    std::size_t line = 0;      ///< index of the breakline
    std::size_t segment = 0;   ///< its segment that crosses
    double height = 0.0;       ///< what it says about the height at the crossing
};

/// A place where two breakline segments cross in plan.
struct Crossing {
    double x = 0.0;
    double y = 0.0;
    std::array<CrossingLine, 2> lines;   ///< in the order of the breaklines; both may be the same one
};

/// Every place where two segments cross properly in plan, each in the interior of the other, ordered by the
/// first line, its segment, the second line and its segment. Segments that share a vertex do not cross.
/// Near-linear for lines that do not cross much. Throws Failure when they cross each other all over: more than
/// 20,000 times and four times a segment.
std::vector<Crossing> FindCrossings(const std::vector<SurveyLine>& lines,
                                    const std::vector<Position>& vertices);

/// Throws Failure when more than ten lines cross each other at one place, which is none of their vertices: they would be
/// enforced through slivers among which they can be caught for hours.
void RefuseKnots(const std::vector<Crossing>& crossings, const std::vector<SurveyLine>& lines,
                 const std::vector<Position>& vertices, const LocalOrigin& origin);

}   // namespace qsvtin

#endif
