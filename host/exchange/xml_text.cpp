#include "host/exchange/xml_text.h"

#include <algorithm>

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

bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = LengthOfCharacter(static_cast<unsigned char>(text.front()));
        if (length == 0 || text.size() < length) return false;
        const std::string_view rest = text.substr(1, length - 1);
        if (!std::all_of(rest.begin(), rest.end(),
                         [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; })) {
            return false;
        }
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
