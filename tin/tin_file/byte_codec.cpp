#include "tin/tin_file/byte_codec.h"

#include <cstring>

namespace qsv {

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

void ByteWriter::PutInt(int n)
{
    unsigned char aByte[4];
    StoreInt(n, aByte);
    PutBytes(aByte, 4);
}

// Every block is filled to its end, so that what is written comes in whole pages.
void ByteWriter::PutBytes(const void* pByte, int nBytes)
{
    const auto* pFrom = static_cast<const unsigned char*>(pByte);
    while (nBytes > 0) {
        const int nFit = std::min(nBytes, m_aBlock.GetSize() - m_nUsed);
        std::memcpy(m_aBlock.GetData() + m_nUsed, pFrom, static_cast<size_t>(nFit));
        m_nUsed += nFit;
        pFrom += nFit;
        nBytes -= nFit;
        if (m_nUsed == m_aBlock.GetSize()) {
            Finish();
            Grow();
        }
    }
}

// The block is empty.
void ByteWriter::Grow()
{
    const int nBytes = m_aBlock.GetSize();
    if (nBytes < kLargestBlockBytes) {
        m_aBlock.SetSize(2 * nBytes, -1);
    }
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
