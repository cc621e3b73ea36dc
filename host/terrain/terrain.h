#ifndef QSVTIN_TERRAIN_TERRAIN_H
#define QSVTIN_TERRAIN_TERRAIN_H

#include "host/terrain/crossings.h"
#include "host/terrain/prepare.h"

#include "qsv_3dprocess.h"

#include <cstddef>
#include <vector>

namespace qsvtin {

/// A triangulated survey.
struct Terrain {
    CTin tin;   ///< relative to the origin
    LocalOrigin origin;
    std::vector<SurveyLine> lines;
    std::vector<Crossing> crossings;   ///< of two lines; relative to the origin

    // What CheckTerrain found:
    std::vector<std::vector<std::size_t>>
        missing;                  ///< of each line, the segments that are no chain of edges
    std::vector<Source> unused;   ///< positions that no triangle uses

    int surveyVertices =
        0;   ///< so many of the first vertices were surveyed; the others came with breaklines
    bool fedAlongCurve = false;   ///< to the library, not in the order of the survey (FeedingOrder)
};

/// Triangulates a survey with its breaklines and trims it.
///
/// A line is enforced in one walk, which ends early where the line turns at a corner that it cannot walk
/// around. When that happens, the terrain is built once more with each missing segment as a line of its own.
/// @param eps          plan tolerance, as CTin::SetEPS
/// @param trimDegrees  outer triangles with a plan angle of at most this at the outer edge go; 0: none
/// @throws Failure when the library finds no surface
Terrain BuildTerrain(const PreparedSurvey& survey, double eps, double trimDegrees);

/// Follows every breakline segment along the edges, finds the places where breaklines cross, and looks every
/// position up in the triangles.
void CheckTerrain(const PreparedSurvey& survey, Terrain& terrain);

}   // namespace qsvtin

#endif
