#include "host/input/point_rows.h"

#include "host/input/text_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace qsvtin {

namespace {

constexpr std::array kSeparators = {Separator::Semicolon, Separator::Comma, Separator::Tab, Separator::Blank};

// A comma that separates fields is none in a number: 1,000 between quotation marks would be a thousand.
bool IsNumeric(std::string_view field, Separator separator)
{
    double ignored = 0.0;
    return ParseNumber(field, ignored) ||
           (separator != Separator::Comma && ParseWithDecimalComma(field, ignored));
}

std::ptrdiff_t CountNumbers(const std::vector<std::string_view>& fields, Separator separator)
{
    return std::count_if(fields.begin(), fields.end(),
                         [&](std::string_view field) { return IsNumeric(field, separator); });
}

// The first separator that makes three numbers of the line. When none does, the line is at fault, and the
// one that makes three fields shows best where; a comma comes last then, it may be a decimal one.
Separator DetectSeparator(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (const Separator separator : kSeparators) {
        SplitFields(line, separator, fields);
        if (CountNumbers(fields, separator) >= 3) return separator;
    }
    for (const Separator separator :
         {Separator::Semicolon, Separator::Tab, Separator::Blank, Separator::Comma}) {
        SplitFields(line, separator, fields);
        if (fields.size() >= 3) return separator;
    }
    return Separator::Blank;
}

bool IsPointNumber(std::string_view field)
{
    return field.find_first_not_of("0123456789") == std::string_view::npos;
}

// Such as 1,234.5: digits and signs, among them a comma and a point.
bool HasThousandsSeparator(std::string_view field)
{
    return field.find_first_not_of("+-0123456789.,") == std::string_view::npos &&
           field.find('.') != std::string_view::npos && field.find(',') != std::string_view::npos;
}

}   // namespace

PointRows::PointRows(std::optional<ColumnOrder> given, std::string remedy) : m_remedy(std::move(remedy))
{
    if (given) Use(*given, "--order");
}

void PointRows::NoteComment(std::string_view line)
{
    m_comment = std::string(line);
}

PointRows::Row PointRows::Read(std::string_view line, Position& at, std::string& reason)
{
    if (!m_separator && !m_headingRead && IsHeading(line)) {
        m_headingRead = true;
        return Row::Heading;
    }
    m_line = line;
    Split(line, m_separator ? *m_separator : DetectSeparator(line));
    if (!m_order && !FindColumns(reason)) return Row::Bad;
    if (static_cast<int>(m_fields.size()) < m_order->Needed()) {
        reason = std::to_string(m_fields.size()) + (m_fields.size() == 1 ? " column" : " columns") +
                 " found, " + std::to_string(m_order->Needed()) + " needed (" + m_order->text + ")";
        return Row::Bad;
    }
    if (!ReadPosition(at, reason)) return Row::Bad;
    m_separator = m_split;
    return Row::Point;
}

void PointRows::Split(std::string_view line, Separator separator)
{
    m_split = separator;
    SplitFields(line, separator, m_fields);
}

// A heading stands once, in front of all data: it names the columns or, when those are known already, has
// no number where a coordinate must be.
bool PointRows::IsHeading(std::string_view line)
{
    for (const Separator separator : kSeparators) {
        Split(line, separator);
        const auto named = OrderFromNames(m_fields);
        if (named && CountNumbers(m_fields, separator) == 0) {
            if (!m_order) Use(*named, "heading");
            return true;
        }
    }
    if (!m_order || m_fields.empty()) return false;
    Split(line, DetectSeparator(line));
    return static_cast<int>(m_fields.size()) >= m_order->Needed() && !IsNumber(m_order->x) &&
           !IsNumber(m_order->y) && !IsNumber(m_order->z);
}

// Finds the order for the line in m_fields, the first that holds data.
bool PointRows::FindColumns(std::string& reason)
{
    std::vector<std::string_view> words;
    for (const Separator separator : kSeparators) {
        SplitFields(m_comment, separator, words);
        const auto named = OrderFromComment(words);
        if (named && AreCoordinates(*named)) {
            Use(*named, "named in a comment");
            return true;
        }
    }
    if (!AreCoordinates(ColumnOrder())) {
        reason = WhyNoCoordinates();
        return false;
    }
    const bool numbered = CountNumbers(m_fields, m_split) >= 4 && IsPointNumber(m_fields.front());
    const std::string doubt =
        numbered ? "assumed, but the first column looks like a point number; " : "assumed; ";
    Use(ColumnOrder(), doubt + m_remedy + " to change");
    return true;
}

// A bad line tells nothing of the others' decimals.
bool PointRows::ReadPosition(Position& at, std::string& reason)
{
    const Decimals before = m_decimals;
    const bool read = ReadCoordinate(m_order->x, at.x, reason) && ReadCoordinate(m_order->y, at.y, reason) &&
                      ReadCoordinate(m_order->z, at.z, reason);
    if (!read) m_decimals = before;
    return read;
}

// Reads a number with the decimals of the lines before.
bool PointRows::ParseDecimal(std::string_view field, double& value)
{
    if (m_decimals != Decimals::Point && m_split != Separator::Comma && ParseWithDecimalComma(field, value)) {
        m_decimals = Decimals::Comma;
        return true;
    }
    if (!ParseNumber(field, value)) return false;
    if (m_decimals == Decimals::Point || field.find('.') == std::string_view::npos) return true;
    if (m_decimals == Decimals::Comma) return false;
    m_decimals = Decimals::Point;
    return true;
}

std::string PointRows::NotANumber(std::string_view field) const
{
    double ignored = 0.0;
    const std::string found = Quoted(field) + " is not a number";
    if (ParseNumber(field, ignored)) return found + " (decimals before it stand behind a comma)";
    if (ParseWithDecimalComma(field, ignored)) return found + " (write decimals with a point)";
    return found + (HasThousandsSeparator(field) ? " (write thousands without a mark)" : "");
}

// What to say of a line that does not start with three numbers while the columns are unknown.
std::string PointRows::WhyNoCoordinates() const
{
    const auto text = std::find_if(m_fields.begin(), m_fields.end(),
                                   [&](std::string_view field) { return !IsNumeric(field, m_split); });
    if (text == m_fields.end() || text - m_fields.begin() >= 3) return "fewer than 3 numbers";
    const std::ptrdiff_t numbers = CountNumbers(m_fields, m_split);
    if (numbers >= 3) return NotANumber(*text) + " (are the columns in another order? see --order)";
    const bool named =
        numbers == 0 && m_fields.size() >= 3 && m_line.find_first_of("0123456789") == std::string_view::npos;
    return NotANumber(*text) +
           (named ? " (a heading in words unknown here? " + m_remedy + " tells the columns)" : "");
}

bool PointRows::ReadCoordinate(int column, double& value, std::string& reason)
{
    const std::string_view field = m_fields[static_cast<std::size_t>(column)];
    if (!ParseDecimal(field, value)) {
        reason = NotANumber(field);
        return false;
    }
    if (!std::isfinite(value)) {
        reason = Quoted(field) + " is not a finite number";
        return false;
    }
    if (!IsCoordinate(value)) {
        reason = Quoted(field) + " is too large for a coordinate";
        return false;
    }
    return true;
}

std::string_view PointRows::Description() const
{
    const auto column = static_cast<std::size_t>(m_order->description);
    if (column >= m_fields.size()) return {};
    const std::string_view field = m_fields[column];
    if (!m_order->descriptionIsLast) return field;
    return m_line.substr(static_cast<std::size_t>(field.data() - m_line.data()));
}

bool PointRows::IsNumber(int column) const
{
    return IsNumeric(m_fields[static_cast<std::size_t>(column)], m_split);
}

bool PointRows::AreCoordinates(const ColumnOrder& order) const
{
    return static_cast<int>(m_fields.size()) >= order.Needed() && IsNumber(order.x) && IsNumber(order.y) &&
           IsNumber(order.z);
}

std::string PointRows::Columns() const
{
    return m_columns + (m_decimals == Decimals::Comma ? ", decimals behind a comma" : "");
}

void PointRows::Use(const ColumnOrder& order, const std::string& origin)
{
    m_order = order;
    m_columns = order.text + " (" + origin + ")";
}

}   // namespace qsvtin
