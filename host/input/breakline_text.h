#ifndef QSVTIN_INPUT_BREAKLINE_TEXT_H
#define QSVTIN_INPUT_BREAKLINE_TEXT_H

#include "host/input/survey_data.h"
#include "host/input/text_file.h"

#include <vector>

namespace qsvtin {

/// Reads breaklines: blocks of points, one a line, that end at an empty line or at a line that begins
/// with >. The last comment in front of a block, or the text after its >, is its name. A block may be a
/// single point. Lines that cannot be read are appended to badLines.
/// @throws Failure when the file holds neither a point nor a bad line
BreaklineFile ReadBreaklines(TextFile& text, std::vector<BadLine>& badLines);

}   // namespace qsvtin

#endif
