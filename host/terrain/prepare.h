#ifndef QSVTIN_TERRAIN_PREPARE_H
#define QSVTIN_TERRAIN_PREPARE_H

#include "host/input/survey_data.h"
#include "host/terrain/local_origin.h"
#include "host/terrain/survey_line.h"

#include <string_view>
#include <vector>

namespace qsvtin {

/// Where a position was read. The name of the file belongs to the survey.
struct Source {
    std::string_view file;
    int line = 0;
};

/// A position that fell on an earlier vertex of another height.
struct HeightConflict {
    Source dropped;
    double heightKept = 0.0;
    double heightDropped = 0.0;

    double Difference() const
    {
        return heightDropped > heightKept ? heightDropped - heightKept : heightKept - heightDropped;
    }
};

/// A survey made ready for triangulation.
struct PreparedSurvey {
    LocalOrigin origin;
    std::vector<Position> vertices;   ///< relative to the origin; no two coincide
    std::vector<Source> sources;      ///< of each vertex, where it was read first
    std::vector<SurveyLine> lines;    ///< one for each breakline of the survey, also for those too short
    int merged = 0;                   ///< positions that fell on an earlier vertex, closing points aside
    std::vector<HeightConflict> conflicts;   ///< those of them that gave another height
};

/// Brings all points and breaklines to a local origin, merges those that coincide within eps and turns the
/// breaklines into chains of vertices.
/// @throws Failure when no surface can be made: fewer than three different points, or all on one line
PreparedSurvey PrepareSurvey(const SurveyData& survey, double eps);

}   // namespace qsvtin

#endif
