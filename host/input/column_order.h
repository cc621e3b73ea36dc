#ifndef QSVTIN_INPUT_COLUMN_ORDER_H
#define QSVTIN_INPUT_COLUMN_ORDER_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qsvtin {

/// Which column holds which coordinate; zero-based.
struct ColumnOrder {
    int x = 0;
    int y = 1;
    int z = 2;
    int description = 3;             ///< without a name, what follows the last coordinate
    bool descriptionIsLast = true;   ///< and reaches to the end of the line
    std::string text = "x y z";      ///< for the report: the columns by name, then how they were found

    /// Columns that a line needs at least.
    int Needed() const;
};

/// Reads an order given as letters, one a column: x or e, y or n, z or h, p (point),
/// d or c (description), - (skip), in upper or lower case; commas and blanks between them do not count.
/// @return nothing when a letter is unknown or a coordinate is missing or stands twice
std::optional<ColumnOrder> OrderFromLetters(std::string_view letters);

/// Reads the names of a heading such as "Point;Northing;Easting;Elevation" or "x(m) y(m) z(m)".
/// Names may be upper or lower case; what follows their first word is ignored.
/// @return nothing unless x, y and z are each named once
std::optional<ColumnOrder> OrderFromNames(const std::vector<std::string_view>& names);

/// The same, for a comment: nothing unless every word up to the last coordinate names a column, so
/// that prose is not taken for a heading.
std::optional<ColumnOrder> OrderFromComment(const std::vector<std::string_view>& words);

}   // namespace qsvtin

#endif
