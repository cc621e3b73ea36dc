#include "host/input/byte_source.h"

#include <cstring>

namespace qsvtin {

float ByteSource::TakeFloat()
{
    const std::uint32_t bits = TakeWhole(4);
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

double ByteSource::TakeDouble()
{
    const std::uint64_t bits = Take(8);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::uint64_t ByteSource::Take(std::size_t bytes)
{
    if (m_rest.size() < bytes) {
        m_overrun = true;
        m_rest = {};
        return 0;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        const std::uint64_t byte = static_cast<unsigned char>(m_rest[i]);
        value |= byte << (8 * (m_bigEndian ? bytes - 1 - i : i));
    }
    m_rest.remove_prefix(bytes);
    return value;
}

}   // namespace qsvtin
