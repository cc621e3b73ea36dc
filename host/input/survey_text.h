#ifndef QSVTIN_INPUT_SURVEY_TEXT_H
#define QSVTIN_INPUT_SURVEY_TEXT_H

#include "host/input/column_order.h"
#include "host/input/point_strings.h"
#include "host/input/survey_data.h"
#include "host/input/text_file.h"

#include <optional>
#include <vector>

namespace qsvtin {

/// Reads points, one a line, from text with any usual separator; # starts a comment line.
/// Lines that cannot be read are appended to badLines; points that belong to a line of strings go there.
/// @param strings  may be null
/// @throws Failure when the file holds neither a point nor a bad line
PointFile ReadSurveyPoints(TextFile& text, const std::optional<ColumnOrder>& order,
                           std::vector<BadLine>& badLines, PointStrings* strings = nullptr);

}   // namespace qsvtin

#endif
