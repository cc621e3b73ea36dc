#include "host/input/point_rows.h"

#include "host/input/text_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace qsvtin {

namespace {

constexpr std::array kSeparators = {Separator::Semicolon, Separator::Comma, Separator::Tab, Separator::Blank};

std::ptrdiff_t CountNumbers(const std::vector<std::string_view>& fields)
{
    double ignored = 0.0;
    return std::count_if(fields.begin(), fields.end(),
                         [&](std::string_view field) { return ParseNumber(field, ignored); });
}

// The first separator that makes three numbers of the line. When none does, the line is at fault, and the
// one that makes three fields shows best where; a comma comes last then, it may be a decimal one.
Separator DetectSeparator(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (const Separator separator : kSeparators) {
        SplitFields(line, separator, fields);
        if (CountNumbers(fields) >= 3) return separator;
    }
    for (const Separator separator :
         {Separator::Semicolon, Separator::Tab, Separator::Blank, Separator::Comma}) {
        SplitFields(line, separator, fields);
        if (fields.size() >= 3) return separator;
    }
    return Separator::Blank;
}

bool HasDecimalComma(std::string_view field)
{
    const std::size_t comma = field.find(',');
    if (comma == std::string_view::npos) return false;
    std::string withPoint(field);
    withPoint[comma] = '.';
    double ignored = 0.0;
    return ParseNumber(withPoint, ignored);
}

bool IsPointNumber(std::string_view field)
{
    return field.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string NotANumber(std::string_view field)
{
    return Quoted(field) + " is not a number" +
           (HasDecimalComma(field) ? " (write decimals with a point)" : "");
}

// What to say of a line that does not start with three numbers while the columns are unknown.
std::string WhyNoCoordinates(const std::vector<std::string_view>& fields)
{
    double ignored = 0.0;
    const auto text = std::find_if(fields.begin(), fields.end(),
                                   [&](std::string_view field) { return !ParseNumber(field, ignored); });
    if (text == fields.end() || text - fields.begin() >= 3) return "fewer than 3 numbers";
    const bool numbersFollow = CountNumbers(fields) >= 3;
    return NotANumber(*text) + (numbersFollow ? " (are the columns in another order? see --order)" : "");
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
    const Separator separator = m_separator ? *m_separator : DetectSeparator(line);
    SplitFields(line, separator, m_fields);
    if (!m_order && !FindColumns(reason)) return Row::Bad;
    if (static_cast<int>(m_fields.size()) < m_order->Needed()) {
        reason = std::to_string(m_fields.size()) + (m_fields.size() == 1 ? " column" : " columns") +
                 " found, " + std::to_string(m_order->Needed()) + " needed (" + m_order->text + ")";
        return Row::Bad;
    }
    const bool read = ReadCoordinate(m_order->x, at.x, reason) && ReadCoordinate(m_order->y, at.y, reason) &&
                      ReadCoordinate(m_order->z, at.z, reason);
    if (!read) return Row::Bad;
    m_separator = separator;
    return Row::Point;
}

// A heading stands once, in front of all data: it names the columns or, when those are known already, has
// no number where a coordinate must be.
bool PointRows::IsHeading(std::string_view line)
{
    for (const Separator separator : kSeparators) {
        SplitFields(line, separator, m_fields);
        const auto named = OrderFromNames(m_fields);
        if (named && CountNumbers(m_fields) == 0) {
            if (!m_order) Use(*named, "heading");
            return true;
        }
    }
    if (!m_order || m_fields.empty()) return false;
    SplitFields(line, DetectSeparator(line), m_fields);
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
        reason = WhyNoCoordinates(m_fields);
        return false;
    }
    const bool numbered = CountNumbers(m_fields) >= 4 && IsPointNumber(m_fields.front());
    const std::string doubt =
        numbered ? "assumed, but the first column looks like a point number; " : "assumed; ";
    Use(ColumnOrder(), doubt + m_remedy);
    return true;
}

bool PointRows::ReadCoordinate(int column, double& value, std::string& reason) const
{
    const std::string_view field = m_fields[static_cast<std::size_t>(column)];
    if (!ParseNumber(field, value)) {
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
    double ignored = 0.0;
    return ParseNumber(m_fields[static_cast<std::size_t>(column)], ignored);
}

bool PointRows::AreCoordinates(const ColumnOrder& order) const
{
    return static_cast<int>(m_fields.size()) >= order.Needed() && IsNumber(order.x) && IsNumber(order.y) &&
           IsNumber(order.z);
}

void PointRows::Use(const ColumnOrder& order, const std::string& origin)
{
    m_order = order;
    m_columns = order.text + " (" + origin + ")";
}

}   // namespace qsvtin
