#include "tin/tin_file/byte_codec.h"

#include <cstring>

namespace qsv {

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8,
              "doubles are stored as they are");
static_assert(std::numeric_limits<float>::is_iec559 && sizeof(float) == 4, "floats are stored as they are");

namespace {

// Byte by byte, so that the order of the processor does not matter; compilers make one load or store of it.
template <class BITS>
BITS LoadBits(const unsigned char* pByte)
{
    BITS bits = 0;
    for (unsigned k = 0; k < sizeof(BITS); ++k) {
        bits |= static_cast<BITS>(pByte[k]) << (8 * k);
    }
    return bits;
}

template <class BITS>
void StoreBits(BITS bits, unsigned char* pByte)
{
    for (unsigned k = 0; k < sizeof(BITS); ++k) {
        pByte[k] = static_cast<unsigned char>(bits >> (8 * k));
    }
}

template <class TO, class FROM>
TO SameBits(FROM from)
{
    static_assert(sizeof(TO) == sizeof(FROM), "");
    TO to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

}   // namespace

int LoadInt(const unsigned char* pByte)
{
    return SameBits<std::int32_t>(LoadBits<std::uint32_t>(pByte));
}

float LoadFloat(const unsigned char* pByte)
{
    return SameBits<float>(LoadBits<std::uint32_t>(pByte));
}

double LoadDouble(const unsigned char* pByte)
{
    return SameBits<double>(LoadBits<std::uint64_t>(pByte));
}

ByteWriter::ByteWriter(CFile& file) : m_file(file)
{
    m_aBlock.SetSize(kBlockBytes, -1);
}

void ByteWriter::Finish()
{
    if (m_nUsed > 0) {
        m_file.Write(m_aBlock.GetData(), static_cast<UINT>(m_nUsed));
    }
    m_nUsed = 0;
}

unsigned char* ByteWriter::Room(int nBytes)
{
    if (m_nUsed + nBytes > kBlockBytes) {
        Finish();
    }
    unsigned char* const pRoom = m_aBlock.GetData() + m_nUsed;
    m_nUsed += nBytes;
    return pRoom;
}

void ByteWriter::PutInt(int n)
{
    StoreBits(static_cast<std::uint32_t>(n), Room(4));
}

void ByteWriter::PutFloat(float f)
{
    StoreBits(SameBits<std::uint32_t>(f), Room(4));
}

void ByteWriter::PutDouble(double d)
{
    StoreBits(SameBits<std::uint64_t>(d), Room(8));
}

void ByteWriter::PutBytes(const void* pByte, int nBytes)
{
    std::memcpy(Room(nBytes), pByte, static_cast<size_t>(nBytes));
}

ByteReader::ByteReader(CFile& file, ULONGLONG nBytesLeft) : m_file(file), m_nBytesLeft(nBytesLeft) {}

int ByteReader::Read(void* pByte, int nBytes)
{
    const UINT nRead = m_file.Read(pByte, static_cast<UINT>(nBytes));
    if (m_nBytesLeft != kUnknownLength) {
        m_nBytesLeft -= std::min<ULONGLONG>(nRead, m_nBytesLeft);
    }
    return static_cast<int>(nRead);
}

bool ByteReader::GetInt(int& n)
{
    unsigned char aByte[4];
    if (!GetBytes(aByte, 4)) {
        return false;
    }
    n = LoadInt(aByte);
    return true;
}

bool ByteReader::GetBytes(void* pByte, int nBytes)
{
    return Read(pByte, nBytes) == nBytes;
}

Announced ByteReader::Judge(int nRecords, int nBytesEach, int nBelieved) const
{
    if (nRecords < 0) {
        return Announced::Impossible;
    }
    if (nRecords <= nBelieved) {
        return Announced::Reserve;
    }
    if (m_nBytesLeft == kUnknownLength) {
        return Announced::AsTheyCome;
    }
    const ULONGLONG nNeeded = static_cast<ULONGLONG>(nRecords) * static_cast<ULONGLONG>(nBytesEach);
    return nNeeded <= m_nBytesLeft ? Announced::Reserve : Announced::Impossible;
}

}   // namespace qsv
