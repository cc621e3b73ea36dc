#ifndef QSVTIN_OUTPUT_TEXT_SINK_H
#define QSVTIN_OUTPUT_TEXT_SINK_H

#include "host/output/safe_file.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace qsvtin {

/// Collects text and passes it on in large pieces. Numbers come with as few digits as give them back exactly.
class TextSink
{
public:
    explicit TextSink(SafeFile& file) : m_file(file) {}

    TextSink& operator<<(std::string_view text)
    {
        m_text += text;
        if (m_text.size() > kPiece) Flush();
        return *this;
    }
    template <class Number>
    TextSink& Add(Number number)
    {
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }
    TextSink& operator<<(double number) { return Add(number); }
    TextSink& operator<<(int number) { return Add(number); }

    void Flush()
    {
        m_file.Write(m_text);
        m_text.clear();
    }

private:
    static constexpr std::size_t kPiece = 1 << 16;
    SafeFile& m_file;
    std::string m_text;
};

}   // namespace qsvtin

#endif
