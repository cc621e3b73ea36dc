#ifndef QSVTIN_REPORT_BUILD_REPORT_H
#define QSVTIN_REPORT_BUILD_REPORT_H

#include "host/input/survey_data.h"
#include "host/stopwatch.h"
#include "host/terrain/terrain.h"

#include <array>
#include <string>
#include <vector>

namespace qsvtin {

/// A breakline, as a report names it.
struct LineName {
    int number = 0;   ///< among all breaklines, from 1
    std::string file;
    int block = 0;   ///< in its file, from 1
    std::string name;
};

/// A segment of a breakline: the line numbers of its ends in the file, and their positions.
struct SegmentName {
    std::array<int, 2> fileLines = {0, 0};
    Position from;
    Position to;
};

/// A breakline that is not a chain of triangle edges all along.
struct IncompleteLine {
    LineName line;
    std::size_t segments = 0;
    std::vector<SegmentName> missing;
};

/// A place where two breaklines cross, with the height each of them has there.
struct ReportedCrossing {
    std::array<LineName, 2> lines;
    std::array<int, 2> fileLines = {0, 0};   ///< where the crossing segments start
    double x = 0.0;
    double y = 0.0;
    std::array<double, 2> heights = {0.0, 0.0};
};

/// What there is to say about a finished build; positions are in survey coordinates.
struct BuildReport {
    std::vector<std::pair<std::string, std::string>> columns;   ///< of each file
    std::size_t pointsRead = 0;
    std::size_t breaklinePoints = 0;
    int pointsMerged = 0;
    std::vector<HeightConflict> conflicts;
    std::vector<BadLine> rejected;
    std::vector<Source> unused;
    bool fedAlongCurve = false;
    int vertices = 0;
    int triangles = 0;
    int hull = 0;
    std::size_t boundaries = 0;
    int cutOff = 0;   ///< triangles outside the boundaries
    std::size_t breaklines = 0;
    std::size_t closedBreaklines = 0;
    std::size_t segments = 0;
    std::size_t segmentsEnforced = 0;
    std::vector<IncompleteLine> incomplete;
    std::vector<ReportedCrossing> crossings;
    Position low;
    Position high;
    LengthUnit unit = LengthUnit::Unknown;
    double planArea = 0.0;
    double surfaceArea = 0.0;
    Stopwatch::Stages seconds;
    std::vector<std::string> written;
};

/// Gathers the report; what boundaries cut off, seconds and files written are left to the caller. Names of files in it
/// belong to the survey.
BuildReport MakeBuildReport(const SurveyData& survey, const PreparedSurvey& prepared, Terrain& terrain);

/// The report for people: aligned lines of a name and what belongs to it.
std::string ReportAsText(const BuildReport& report);

/// The report for programs: one JSON object.
std::string ReportAsJson(const BuildReport& report);

}   // namespace qsvtin

#endif
