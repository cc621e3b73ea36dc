#include "host/input/fields.h"

#include "host/input/text_file.h"

#include <fast_float/fast_float.h>

#include <string>

namespace qsvtin {

namespace {

std::string_view WithoutQuotes(std::string_view field)
{
    if (field.size() >= 2 && field.front() == '"' && field.back() == '"') {
        return Trimmed(field.substr(1, field.size() - 2));
    }
    return field;
}

// End of the field that starts at the beginning of rest; a separator between quotation marks belongs to it.
std::size_t FieldLength(std::string_view rest, char separator)
{
    bool quoted = false;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] == '"') quoted = !quoted;
        if (rest[i] == separator && !quoted) return i;
    }
    return rest.size();
}

void SplitAtBlanks(std::string_view line, std::vector<std::string_view>& fields)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    for (std::size_t i = 0; i < line.size();) {
        const std::size_t first = i;
        while (i < line.size() && !isBlank(line[i])) ++i;
        if (i > first) fields.push_back(WithoutQuotes(line.substr(first, i - first)));
        while (i < line.size() && isBlank(line[i])) ++i;
    }
}

}   // namespace

void SplitFields(std::string_view line, Separator separator, std::vector<std::string_view>& fields)
{
    fields.clear();
    if (separator == Separator::Blank) {
        SplitAtBlanks(line, fields);
        return;
    }
    const char mark = separator == Separator::Semicolon ? ';' : separator == Separator::Comma ? ',' : '\t';
    for (std::string_view rest = line;;) {
        const std::size_t length = FieldLength(rest, mark);
        fields.push_back(WithoutQuotes(Trimmed(rest.substr(0, length))));
        if (length == rest.size()) return;
        rest.remove_prefix(length + 1);
    }
}

bool ParseNumber(std::string_view field, double& value)
{
    if (field.size() > 1 && field.front() == '+' && field[1] != '-') {
        field.remove_prefix(1);
    }
    const char* const end = field.data() + field.size();
    const auto result = fast_float::from_chars(field.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool ParseWithDecimalComma(std::string_view field, double& value)
{
    const std::size_t comma = field.find(',');
    if (comma == std::string_view::npos || field.find('.') != std::string_view::npos) return false;
    std::string withPoint(field);
    withPoint[comma] = '.';
    return ParseNumber(withPoint, value);
}

}   // namespace qsvtin
