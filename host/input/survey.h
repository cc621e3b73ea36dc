#ifndef QSVTIN_INPUT_SURVEY_H
#define QSVTIN_INPUT_SURVEY_H

#include "host/input/column_order.h"
#include "host/input/survey_data.h"

#include <optional>
#include <string>
#include <vector>

namespace qsvtin {

/// What a survey is read from, and how.
struct SurveySources {
    std::vector<std::string> points;       ///< text, or files of other programs with all that they hold
    std::vector<std::string> breaklines;   ///< text in blocks, or files of other programs, whose lines count
    std::optional<ColumnOrder> order;      ///< of points in text; none: found out
    std::vector<std::string> surfaces;     ///< those wanted of files of other programs; empty: all there is
    LengthUnit unit = LengthUnit::Unknown;   ///< to convert to; text is taken to be in it
    bool strings = false;                    ///< string coded points into breaklines, see PointStrings
    std::vector<std::string> codes;          ///< those to string; empty: all that have marks
    bool skipBad = false;                    ///< pass over lines that cannot be read
};

/// Reads a survey from all its files. What was passed over in files of other programs is said on standard error.
/// @throws Failure when a file cannot be read, holds nothing usable, or units contradict each other
SurveyData ReadSurvey(const SurveySources& sources);

/// Reads lines alone, to draw or to fill: from the same files as breaklines of a survey, and of all surfaces that
/// a file holds.
/// @param unit  to convert to; Unknown: that of the first file that states one
/// @throws Failure as ReadSurvey, and when a line of text cannot be read
SurveyData ReadLines(const std::vector<std::string>& paths, LengthUnit unit);

}   // namespace qsvtin

#endif
