#ifndef QSVTIN_INPUT_BYTE_SOURCE_H
#define QSVTIN_INPUT_BYTE_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qsvtin {

/// Takes numbers out of bytes, in either byte order.
class ByteSource
{
public:
    explicit ByteSource(std::string_view bytes, bool bigEndian = false)
        : m_rest(bytes), m_bigEndian(bigEndian)
    {
    }

    std::size_t Rest() const { return m_rest.size(); }
    /// True when a number was taken from beyond the end; such numbers read 0.
    bool IsOverrun() const { return m_overrun; }

    /// A whole number without sign of 1, 2 or 4 bytes.
    std::uint32_t TakeWhole(std::size_t bytes) { return static_cast<std::uint32_t>(Take(bytes)); }
    float TakeFloat();
    double TakeDouble();

private:
    std::uint64_t Take(std::size_t bytes);

    std::string_view m_rest;
    bool m_bigEndian;
    bool m_overrun = false;
};

}   // namespace qsvtin

#endif
