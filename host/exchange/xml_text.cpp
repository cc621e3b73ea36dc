#include "host/exchange/xml_text.h"

#include <array>
#include <cstdint>

namespace qsvtin {

namespace {

// Bytes of the character that starts with a byte; 0 where none can start so.
std::size_t LengthOfCharacter(unsigned char first)
{
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return 2;
    if (first >= 0xE0 && first < 0xF0) return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

// Whether the bytes of one character make one that files may hold: written no longer than needed, no half of a pair.
bool IsCharacter(std::string_view bytes)
{
    constexpr std::array<std::uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};   // of so many bytes
    std::uint32_t code =
        static_cast<unsigned char>(bytes[0]) & (bytes.size() == 1 ? 0x7Fu : 0x7Fu >> bytes.size());
    for (const char c : bytes.substr(1)) {
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) return false;
        code = code << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    }
    return code >= kLeast[bytes.size()] && code <= 0x10FFFF && (code < 0xD800 || code >= 0xE000) &&
           code != 0xFFFE && code != 0xFFFF;
}

bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = LengthOfCharacter(static_cast<unsigned char>(text.front()));
        if (length == 0 || text.size() < length || !IsCharacter(text.substr(0, length))) return false;
        text.remove_prefix(length);
    }
    return true;
}

}   // namespace

std::string AsUtf8(std::string_view text)
{
    if (IsUtf8(text)) return std::string(text);
    std::string converted;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            converted += c;
        } else {
            converted += static_cast<char>(0xC0 | (byte >> 6));
            converted += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return converted;
}

std::string AsXml(std::string_view text)
{
    std::string escaped;
    for (const char c : AsUtf8(text)) {
        switch (c) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        default: escaped += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return escaped;
}

}   // namespace qsvtin
