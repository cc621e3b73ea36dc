#ifndef QSV_TIN_FILE_BYTE_CODEC_H
#define QSV_TIN_FILE_BYTE_CODEC_H

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/afx_array.h"
#include "platform/afx_file.h"

namespace qsv {

// Numbers as little-endian bytes, whatever the processor: integers of 32 bits in two's complement, IEEE 754
// floats and doubles bit for bit.
int LoadInt(const unsigned char* pByte);
float LoadFloat(const unsigned char* pByte);
double LoadDouble(const unsigned char* pByte);

// Large enough that a call costs nothing beside the bytes it moves, small enough for a processor's cache.
constexpr int kBlockBytes = 65536;

// What CFile::GetLength says of a file that has no length.
constexpr ULONGLONG kUnknownLength = std::numeric_limits<ULONGLONG>::max();

// Writes numbers to a file in blocks, by way of CFile::Write only. Finish writes the last block; the destructor
// does not, since it could not tell that a file in memory has no room for it.
class ByteWriter
{
public:
    explicit ByteWriter(CFile& file);
    ByteWriter(const ByteWriter&) = delete;
    ByteWriter& operator=(const ByteWriter&) = delete;

    void PutInt(int n);
    void PutFloat(float f);
    void PutDouble(double d);
    // At most kBlockBytes of them.
    void PutBytes(const void* pByte, int nBytes);
    void Finish();

private:
    unsigned char* Room(int nBytes);

    CFile& m_file;
    CArray<unsigned char> m_aBlock;
    int m_nUsed = 0;
};

// What to do with a count of records that a file announces.
enum class Announced {
    Impossible,   // refuse it
    Reserve,      // make room for all of them
    AsTheyCome    // make room for those that arrive
};

// Reads numbers from a file in blocks, by way of CFile::Read only and never beyond what it is asked for: the
// next reader finds the next part.
class ByteReader
{
public:
    explicit ByteReader(CFile& file, ULONGLONG nBytesLeft = kUnknownLength);

    // Both return false when fewer bytes follow.
    bool GetInt(int& n);
    bool GetBytes(void* pByte, int nBytes);

    // Room is made for up to nBelieved records in any case, so that a file which lost its end still gives
    // arrays of the size it announced. Beyond that a count must be covered by the bytes left; where these are
    // not known, by what arrives. So a few bytes never claim more memory than a small file would.
    Announced Judge(int nRecords, int nBytesEach, int nBelieved) const;

    // Reads records of nBytesEach bytes and calls fnTake(i, bytes) for each. Returns false at the first that is
    // not there in full.
    template <class TAKE>
    bool GetRecords(std::int64_t nRecords, int nBytesEach, TAKE fnTake);

    // Reads the records that a count announces into an array; fnDecode makes an element from bytes. Returns
    // false at a count that cannot be right (the array stays) or the first record that is not there in full.
    template <class T, class DECODE>
    bool GetArray(CArray<T>& aElement, int nBytesEach, DECODE fnDecode);

private:
    int Read(void* pByte, int nBytes);

    CFile& m_file;
    ULONGLONG m_nBytesLeft;
    CArray<unsigned char> m_aBlock;
};

template <class TAKE>
bool ByteReader::GetRecords(std::int64_t nRecords, int nBytesEach, TAKE fnTake)
{
    m_aBlock.SetSize(kBlockBytes, -1);
    for (std::int64_t nDone = 0; nDone < nRecords;) {
        const int nWanted =
            static_cast<int>(std::min<std::int64_t>(nRecords - nDone, kBlockBytes / nBytesEach));
        const int nWhole = Read(m_aBlock.GetData(), nWanted * nBytesEach) / nBytesEach;
        for (int k = 0; k < nWhole; ++k) {
            fnTake(static_cast<int>(nDone + k), m_aBlock.GetData() + k * nBytesEach);
        }
        nDone += nWhole;
        if (nWhole < nWanted) {
            return false;
        }
    }
    return true;
}

template <class T, class DECODE>
bool ByteReader::GetArray(CArray<T>& aElement, int nBytesEach, DECODE fnDecode)
{
    constexpr int kBelievedRecords = 1000000;   // about 40 MB
    int nCount = 0;
    if (!GetInt(nCount)) {
        return false;
    }
    switch (Judge(nCount, nBytesEach, kBelievedRecords)) {
    case Announced::Impossible: return false;
    case Announced::Reserve: aElement.SetSize(nCount, -1); break;
    case Announced::AsTheyCome: aElement.SetSize(0, -1); break;
    }
    return GetRecords(nCount, nBytesEach, [&](int i, const unsigned char* pByte) {
        if (i < aElement.GetSize()) {
            aElement[i] = fnDecode(pByte);
        } else {
            aElement.Add(fnDecode(pByte));
        }
    });
}

}   // namespace qsv

#endif
