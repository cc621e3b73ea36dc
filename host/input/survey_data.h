#ifndef QSVTIN_INPUT_SURVEY_DATA_H
#define QSVTIN_INPUT_SURVEY_DATA_H

#include "host/exchange/length_unit.h"
#include "host/position.h"

#include <string>
#include <utility>
#include <vector>

namespace qsvtin {

/// A line of an input file that could not be read.
struct BadLine {
    std::string file;
    int line = 0;
    std::string reason;
};

/// The points of one file, in its order.
struct PointFile {
    std::string path;
    std::string columns;   ///< which column was read as what, and why
    std::vector<Position> points;
    std::vector<int> lines;   ///< line number of each point
};

/// A line that the surface must follow, as given: ends that meet and repeated points are still in it.
struct Breakline {
    std::string file;
    int number = 0;     ///< counts the blocks of the file, from 1
    std::string name;   ///< the comment in front of the block, or empty
    std::vector<Position> points;
    std::vector<int> lines;   ///< line number of each point
};

/// A ring that bounds a surface, in plan.
struct BoundaryRing {
    enum Kind { Outer, Void, Island };   ///< a void has no ground within; an island in it has

    Breakline line;
    Kind kind = Outer;
};

/// The breaklines of one file, in its order.
struct BreaklineFile {
    std::string path;
    std::string columns;   ///< as for points
    std::vector<Breakline> lines;
};

/// Everything that was read, in the order of the command line.
struct SurveyData {
    std::vector<PointFile> pointFiles;
    std::vector<Breakline> breaklines;       ///< of all files
    std::vector<BoundaryRing> boundaries;    ///< the same; those to follow exactly are breaklines too
    LengthUnit unit = LengthUnit::Unknown;   ///< of all coordinates
    std::vector<std::pair<std::string, std::string>> columns;   ///< of all files: path, which column was what
    std::vector<BadLine> badLines;                              ///< those passed over
};

}   // namespace qsvtin

#endif
