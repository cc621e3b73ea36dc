#ifndef QSVTIN_INPUT_FIELDS_H
#define QSVTIN_INPUT_FIELDS_H

#include <string_view>
#include <vector>

namespace qsvtin {

/// What stands between the fields of a line. Blank: any run of blanks and tabs.
enum class Separator { Semicolon, Comma, Tab, Blank };

/// Splits a line into fields, trimmed and without the quotation marks around them. Empty fields count,
/// except between blanks. The views point into line.
void SplitFields(std::string_view line, Separator separator, std::vector<std::string_view>& fields);

/// Reads a number that fills the whole field, in the notation of C without hexadecimals.
/// @return false when the field is anything else. The value may be infinite or not a number.
bool ParseNumber(std::string_view field, double& value);
/// The same for a number whose decimals stand behind a comma, 12,5.
/// @return false, too, for a number without a comma
bool ParseWithDecimalComma(std::string_view field, double& value);

}   // namespace qsvtin

#endif
