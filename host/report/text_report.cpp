#include "host/report/text_report.h"

#include <array>
#include <cstdio>

namespace qsvtin {

std::string Fixed(double value, int decimals)
{
    std::array<char, 400> text;
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

std::string Coordinate(double value)
{
    return Fixed(value, 3);
}

void TextReport::Line(const std::string& name, const std::string& value)
{
    constexpr std::size_t kColumn = 20;
    m_text += name + std::string(name.size() < kColumn ? kColumn - name.size() : 1, ' ') + value + "\n";
}

}   // namespace qsvtin
