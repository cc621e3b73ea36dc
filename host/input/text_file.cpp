#include "host/input/text_file.h"

#include "host/failure.h"
#include "host/input/whole_file.h"

#include <algorithm>

namespace qsvtin {

namespace {

// A zero byte near the beginning tells that it is none, nor UTF-16.
bool LooksLikeText(std::string_view text)
{
    return text.substr(0, 4096).find('\0') == std::string_view::npos;
}

}   // namespace

TextFile::TextFile(const std::string& path) : TextFile(path, ReadWholeFile(path, LooksLikeText)) {}

TextFile::TextFile(const std::string& name, std::string text) : m_path(name), m_text(std::move(text))
{
    CheckIsText();
    if (StartsWith(m_text, "\xEF\xBB\xBF")) {
        m_position = 3;
    }
}

void TextFile::CheckIsText()
{
    if (StartsWith(m_text, "\xFF\xFE") || StartsWith(m_text, "\xFE\xFF")) {
        throw Failure(m_path + " is UTF-16 text; save it as UTF-8 or plain text");
    }
    const std::string_view beginning = std::string_view(m_text).substr(0, 4096);
    if (StartsWith(m_text, "TIN_")) {
        throw Failure(m_path + " is a TIN file, no text; qsvtin edit and qsvtin convert work on those");
    }
    if (!LooksLikeText(m_text)) {
        throw Failure(m_path + " is not a text file; give lines of x y z");
    }
    if (StartsWith(Trimmed(beginning), "<?xml")) {
        throw Failure(m_path + " is XML; give lines of x y z");
    }
}

// A line ends at its first line feed or carriage return. The next line feed is looked for once, however many
// carriage returns stand before it.
bool TextFile::NextLine(std::string_view& line)
{
    const std::string_view text = m_text;
    if (m_position >= text.size()) return false;
    if (m_lineFeed < m_position || m_lineNumber == 0) {
        m_lineFeed = std::min(text.find('\n', m_position), text.size());
    }
    line = text.substr(m_position, m_lineFeed - m_position);
    line = line.substr(0, line.find('\r'));
    m_position += line.size();
    m_position += StartsWith(text.substr(m_position), "\r\n") ? 2 : 1;
    ++m_lineNumber;
    return true;
}

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

std::string Quoted(std::string_view text)
{
    constexpr std::size_t kReadable = 40;
    const std::string whole = QuotedName(text.substr(0, kReadable));
    return text.size() > kReadable ? whole.substr(0, whole.size() - 1) + "...\"" : whole;
}

std::string QuotedName(std::string_view name)
{
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c;
    }
    return quoted + "\"";
}

std::string AndMore(std::size_t count, std::size_t shown)
{
    return count > shown ? " and " + std::to_string(count - shown) + " more" : "";
}

std::string_view Trimmed(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

}   // namespace qsvtin
