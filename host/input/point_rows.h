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
/// line that holds data; where the columns come from stands in Columns(), for the report. Unless commas
/// separate, decimals may stand behind one: the first coordinate with decimals tells for the whole table.
class PointRows
{
public:
    enum class Row { Point, Heading, Bad };

    /// @param given  the order to use; nothing: from a heading, from the comment in front of the data, or
    ///               x y z when the line starts with three numbers
    /// @param remedy  what tells the columns where they would be assumed
    PointRows(std::optional<ColumnOrder> given, std::string remedy);

    /// Remembers a comment, which may name the columns of the line after it.
    void NoteComment(std::string_view line);

    /// @param at      receives the position of a Point, always finite
    /// @param reason  receives what is wrong with a Bad row
    Row Read(std::string_view line, Position& at, std::string& reason);

    /// The columns and where they come from, for the report.
    std::string Columns() const;

    /// The description of the Point read last, which may be empty. Valid as long as its line.
    std::string_view Description() const;

private:
    bool FindColumns(std::string& reason);
    bool IsHeading(std::string_view line);
    void Split(std::string_view line, Separator separator);
    bool ReadPosition(Position& at, std::string& reason);
    bool ReadCoordinate(int column, double& value, std::string& reason);
    bool ParseDecimal(std::string_view field, double& value);
    std::string NotANumber(std::string_view field) const;
    std::string WhyNoCoordinates() const;
    bool IsNumber(int column) const;
    bool AreCoordinates(const ColumnOrder& order) const;
    void Use(const ColumnOrder& order, const std::string& origin);

    enum class Decimals { Unknown, Point, Comma };

    std::optional<ColumnOrder> m_order;
    std::optional<Separator> m_separator;
    std::string m_remedy;
    bool m_headingRead = false;
    std::string m_comment;
    std::string m_columns;
    Decimals m_decimals = Decimals::Unknown;   // of the points read
    Separator m_split = Separator::Blank;      // what m_fields was split at
    std::vector<std::string_view> m_fields;
    std::string_view m_line;   // the last one
};

}   // namespace qsvtin

#endif
