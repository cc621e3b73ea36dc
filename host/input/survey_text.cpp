#include "host/input/survey_text.h"

#include "host/failure.h"
#include "host/input/point_rows.h"

namespace qsvtin {

PointFile ReadSurveyPoints(TextFile& text, const std::optional<ColumnOrder>& order,
                           std::vector<BadLine>& badLines, PointStrings* strings)
{
    PointFile file;
    file.path = text.Path();
    PointRows rows(order, "--order");
    const std::size_t badBefore = badLines.size();
    bool read = false;
    Position at;
    std::string reason;
    for (std::string_view raw; text.NextLine(raw);) {
        const std::string_view line = Trimmed(raw);
        if (line.empty()) continue;
        if (line.front() == '#') {
            rows.NoteComment(line.substr(1));
            continue;
        }
        const PointRows::Row row = rows.Read(line, at, reason);
        if (row == PointRows::Row::Point) {
            read = true;
            if (strings && strings->Add(file.path, text.LineNumber(), at, rows.Description())) continue;
            file.points.push_back(at);
            file.lines.push_back(text.LineNumber());
        } else if (row == PointRows::Row::Bad) {
            badLines.push_back({text.Path(), text.LineNumber(), reason});
        }
    }
    if (!read && badLines.size() == badBefore) {
        throw Failure(text.Path() + ": no points in it; give one point a line: x y z");
    }
    file.columns = rows.Columns();
    return file;
}

}   // namespace qsvtin
