#ifndef QSVTIN_REPORT_TEXT_REPORT_H
#define QSVTIN_REPORT_TEXT_REPORT_H

#include <cstddef>
#include <string>

namespace qsvtin {

/// A number for people, with this many decimals. What rounds to zero has no sign.
std::string Fixed(double value, int decimals);
/// A coordinate for people: three decimals.
std::string Coordinate(double value);
/// A length, area or volume for people: three decimals, or three digits where those would show fewer.
std::string Measure(double value);

/// A report for people: names to the left, what belongs to them in a column of its own, more lines below
/// without a name.
class TextReport
{
public:
    void Line(const std::string& name, const std::string& value);
    void Line(const std::string& name, std::size_t count) { Line(name, std::to_string(count)); }
    void Detail(const std::string& text) { m_text += "    " + text + "\n"; }

    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

}   // namespace qsvtin

#endif
