#ifndef QSVTIN_INPUT_POINT_STRINGS_H
#define QSVTIN_INPUT_POINT_STRINGS_H

#include "host/input/survey_data.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace qsvtin {

/// Strings coded points into breaklines as they come. The description of a point is a code and perhaps a mark:
///
///   KERB B    begins a line of KERB (B, BEG, BEGIN, ST, START); one that was begun before ends without it
///   KERB      goes on with it
///   KERB E    is its last point (E, EN, END)
///   KERB C    is its last point, and the line goes back to its first (C, CL, CLS, CLOSE)
///
/// Lines of different codes run side by side; KERB1 and KERB2 are different codes. Code and mark are words of
/// letters, digits, _ and -, whatever stands between them, in upper or lower case; more words are a remark. A line
/// that is not ended ends with the file.
class PointStrings
{
public:
    /// @param codes  only these are strung, and a line of them begins without a mark too; KERB stands for KERB1 as
    ///               well. Empty: whatever code has marks.
    explicit PointStrings(const std::vector<std::string>& codes);

    /// Takes a point of a file.
    /// @return false when it belongs to no line
    bool Add(const std::string& file, int fileLine, const Position& at, std::string_view description);

    /// The lines in the order they began. Ends them, so that those of the next file are lines of their own.
    std::vector<Breakline> Take();

    /// Number of points that ended a line that was not begun; they are points like others.
    int StrayEnds() const { return m_strayEnds; }

private:
    bool IsStrung(const std::string& code) const;

    std::vector<std::string> m_codes;
    std::vector<Breakline> m_lines;
    std::map<std::string, std::size_t> m_open;   // code -> its line in m_lines
    int m_strayEnds = 0;
};

}   // namespace qsvtin

#endif
