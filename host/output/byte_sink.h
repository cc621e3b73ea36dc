#ifndef QSVTIN_OUTPUT_BYTE_SINK_H
#define QSVTIN_OUTPUT_BYTE_SINK_H

#include "host/output/safe_file.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qsvtin {

/// Collects bytes and passes them on in large pieces. Numbers are little-endian, IEEE 754 where they are not
/// whole, on every machine.
class ByteSink
{
public:
    explicit ByteSink(SafeFile& file) : m_file(file) {}

    void PutText(std::string_view text);
    void PutByte(std::uint8_t value) { PutWhole(value, 1); }
    void PutInt16(std::uint16_t value) { PutWhole(value, 2); }
    void PutInt32(std::uint32_t value) { PutWhole(value, 4); }
    void PutFloat(float value);
    void PutDouble(double value);
    void Flush();

private:
    void PutWhole(std::uint64_t value, int bytes);

    static constexpr std::size_t kPiece = 1 << 16;
    SafeFile& m_file;
    std::string m_bytes;
};

}   // namespace qsvtin

#endif
