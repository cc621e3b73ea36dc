#ifndef QSVTIN_INPUT_POINT_ROWS_H
#define QSVTIN_INPUT_POINT_ROWS_H

#include "host/input/column_order.h"
#include "host/input/fields.h"
#include "host/position.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qsvtin {

/// Turns the lines of a table into positions. The separator and the columns are found once, at the first
/// line that holds data; where the columns come from stands in Columns(), for the report.
class PointRows
{
public:
    enum class Row { Point, Heading, Bad };

    /// @param given  the order to use; nothing: from a heading, from the comment in front of the data, or
    ///               x y z when the line starts with three numbers
    /// @param remedy  how to change columns that were assumed
    PointRows(std::optional<ColumnOrder> given, std::string remedy);

    /// Remembers a comment, which may name the columns of the line after it.
    void NoteComment(std::string_view line);

    /// @param at      receives the position of a Point, always finite
    /// @param reason  receives what is wrong with a Bad row
    Row Read(std::string_view line, Position& at, std::string& reason);

    const std::string& Columns() const { return m_columns; }

    /// The description of the Point read last, which may be empty. Valid as long as its line.
    std::string_view Description() const;

private:
    bool FindColumns(std::string& reason);
    bool IsHeading(std::string_view line);
    bool ReadCoordinate(int column, double& value, std::string& reason) const;
    bool IsNumber(int column) const;
    bool AreCoordinates(const ColumnOrder& order) const;
    void Use(const ColumnOrder& order, const std::string& origin);

    std::optional<ColumnOrder> m_order;
    std::optional<Separator> m_separator;
    std::string m_remedy;
    bool m_headingRead = false;
    std::string m_comment;
    std::string m_columns;
    std::vector<std::string_view> m_fields;
    std::string_view m_line;   // the last one
};

}   // namespace qsvtin

#endif
