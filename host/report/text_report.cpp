#include "host/report/text_report.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace qsvtin {

std::string Fixed(double value, int decimals)
{
    std::array<char, 400> text;
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    const std::string_view shown = text.data();
    const bool negativeZero =
        shown.front() == '-' && shown.find_first_not_of("-0.") == std::string_view::npos;
    return std::string(shown.substr(negativeZero ? 1 : 0));
}

std::string Coordinate(double value)
{
    return Fixed(value, 3);
}

std::string Measure(double value)
{
    if (value == 0.0 || !(std::fabs(value) < 0.1)) return Fixed(value, 3);
    std::array<char, 40> text;
    std::snprintf(text.data(), text.size(), "%.3g", value);
    return text.data();
}

void TextReport::Line(const std::string& name, const std::string& value)
{
    constexpr std::size_t kColumn = 20;
    m_text += name + std::string(name.size() < kColumn ? kColumn - name.size() : 1, ' ') + value + "\n";
}

}   // namespace qsvtin
