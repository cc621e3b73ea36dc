#include "host/input/point_strings.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace qsvtin {

namespace {

enum class Mark { None, Begin, End, Close };

constexpr std::array<std::pair<std::string_view, Mark>, 12> kMarks = {{
    {"B", Mark::Begin},
    {"BEG", Mark::Begin},
    {"BEGIN", Mark::Begin},
    {"ST", Mark::Begin},
    {"START", Mark::Begin},
    {"E", Mark::End},
    {"EN", Mark::End},
    {"END", Mark::End},
    {"C", Mark::Close},
    {"CL", Mark::Close},
    {"CLS", Mark::Close},
    {"CLOSE", Mark::Close},
}};

bool IsOfWord(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) || c == '_' || c == '-';
}

// Takes the next word, in upper case.
std::string TakeWord(std::string_view& text)
{
    const auto* const first = std::find_if(text.begin(), text.end(), IsOfWord);
    const auto* const end = std::find_if_not(first, text.end(), IsOfWord);
    std::string word(first, end);
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return word;
}

Mark MarkOf(const std::string& word)
{
    const auto* const found =
        std::find_if(kMarks.begin(), kMarks.end(), [&](const auto& mark) { return mark.first == word; });
    return found == kMarks.end() ? Mark::None : found->second;
}

std::string WithoutNumber(const std::string& code)
{
    return code.substr(0, code.find_last_not_of("0123456789") + 1);
}

void Append(Breakline& line, const Position& at, int fileLine)
{
    line.points.push_back(at);
    line.lines.push_back(fileLine);
}

}   // namespace

PointStrings::PointStrings(const std::vector<std::string>& codes)
{
    for (std::string_view code : codes) {
        m_codes.push_back(TakeWord(code));
    }
}

bool PointStrings::Add(const std::string& file, int fileLine, const Position& at,
                       std::string_view description)
{
    const std::string code = TakeWord(description);
    if (code.empty() || (!m_codes.empty() && !IsStrung(code))) return false;
    const Mark mark = MarkOf(TakeWord(description));
    auto open = m_open.find(code);
    const bool begins =
        mark == Mark::Begin || (open == m_open.end() && mark == Mark::None && !m_codes.empty());
    if (begins) {
        Breakline& line = m_lines.emplace_back();
        line.file = file;
        line.number = static_cast<int>(m_lines.size());
        line.name = code;
        open = m_open.insert_or_assign(code, m_lines.size() - 1).first;
    }
    if (open == m_open.end()) {
        if (mark != Mark::None) ++m_strayEnds;
        return false;
    }
    Breakline& line = m_lines[open->second];
    Append(line, at, fileLine);
    if (mark == Mark::Close) Append(line, Position(line.points.front()), line.lines.front());
    if (mark == Mark::Close || mark == Mark::End) m_open.erase(open);
    return true;
}

std::vector<Breakline> PointStrings::Take()
{
    m_open.clear();
    return std::exchange(m_lines, {});
}

bool PointStrings::IsStrung(const std::string& code) const
{
    return std::any_of(m_codes.begin(), m_codes.end(), [&](const std::string& listed) {
        return listed == code || listed == WithoutNumber(code);
    });
}

}   // namespace qsvtin
