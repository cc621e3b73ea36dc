#include "host/output/byte_sink.h"

#include <cstring>

namespace qsvtin {

void ByteSink::PutText(std::string_view text)
{
    m_bytes += text;
    if (m_bytes.size() > kPiece) Flush();
}

void ByteSink::PutFloat(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    PutWhole(bits, 4);
}

void ByteSink::PutDouble(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    PutWhole(bits, 8);
}

void ByteSink::Flush()
{
    m_file.Write(m_bytes);
    m_bytes.clear();
}

void ByteSink::PutWhole(std::uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        m_bytes += static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
    }
    if (m_bytes.size() > kPiece) Flush();
}

}   // namespace qsvtin
