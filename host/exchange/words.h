#ifndef QSVTIN_EXCHANGE_WORDS_H
#define QSVTIN_EXCHANGE_WORDS_H

#include <algorithm>
#include <string_view>

namespace qsvtin {

/// Takes the words out of a text and counts the line ends in front of them.
class Words
{
public:
    explicit Words(std::string_view text) : m_rest(text) {}

    /// @return false, and an empty word, at the end
    bool Next(std::string_view& word)
    {
        const auto* const first = std::find_if_not(m_rest.begin(), m_rest.end(), IsBlank);
        m_lineEnds += static_cast<int>(std::count(m_rest.begin(), first, '\n'));
        const auto* const end = std::find_if(first, m_rest.end(), IsBlank);
        const auto start = static_cast<std::size_t>(first - m_rest.begin());
        word = m_rest.substr(start, static_cast<std::size_t>(end - first));
        m_rest.remove_prefix(start + word.size());
        return !word.empty();
    }

    int LineEnds() const { return m_lineEnds; }

private:
    static bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

    std::string_view m_rest;
    int m_lineEnds = 0;
};

}   // namespace qsvtin

#endif
