#ifndef QSV_TIN_FILE_BYTE_CODEC_H
#define QSV_TIN_FILE_BYTE_CODEC_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "platform/afx_array.h"
#include "platform/afx_file.h"

namespace qsv {

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8,
              "doubles are stored as they are");
static_assert(std::numeric_limits<float>::is_iec559 && sizeof(float) == 4, "floats are stored as they are");

template <class TO, class FROM>
TO SameBits(FROM from)
{
    static_assert(sizeof(TO) == sizeof(FROM));
    TO to;
    std::memcpy(&to, &from, sizeof to);
    return to;
}

#if defined(_WIN32) || (defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
constexpr bool kIsLittleEndian = true;
#else
constexpr bool kIsLittleEndian = false;   // or not known
#endif

template <class BITS>
BITS LoadBits(const unsigned char* pByte)
{
    BITS bits = 0;
    if constexpr (kIsLittleEndian) {
        std::memcpy(&bits, pByte, sizeof bits);
    } else {
        for (unsigned k = 0; k < sizeof(BITS); ++k) {
            bits |= static_cast<BITS>(pByte[k]) << (8 * k);
        }
    }
    return bits;
}

template <class BITS>
void StoreBits(BITS bits, unsigned char* pByte)
{
    if constexpr (kIsLittleEndian) {
        std::memcpy(pByte, &bits, sizeof bits);
    } else {
        for (unsigned k = 0; k < sizeof(BITS); ++k) {
            pByte[k] = static_cast<unsigned char>(bits >> (8 * k));
        }
    }
}

// Numbers as little-endian bytes, whatever the processor: integers of 32 bits in two's complement, IEEE 754
// floats and doubles bit for bit.
inline int LoadInt(const unsigned char* pByte)
{
    return SameBits<std::int32_t>(LoadBits<std::uint32_t>(pByte));
}
inline float LoadFloat(const unsigned char* pByte)
{
    return SameBits<float>(LoadBits<std::uint32_t>(pByte));
}
inline double LoadDouble(const unsigned char* pByte)
{
    return SameBits<double>(LoadBits<std::uint64_t>(pByte));
}
inline void StoreInt(int n, unsigned char* pByte)
{
    StoreBits(static_cast<std::uint32_t>(n), pByte);
}
inline void StoreFloat(float f, unsigned char* pByte)
{
    StoreBits(SameBits<std::uint32_t>(f), pByte);
}
inline void StoreDouble(double d, unsigned char* pByte)
{
    StoreBits(SameBits<std::uint64_t>(d), pByte);
}

// Large enough that a call costs nothing beside the bytes it moves, small enough for a processor's cache.
constexpr int kBlockBytes = 65536;

// A system lays a new file out the better the more it is given at a time: a writer's blocks grow up to this.
constexpr int kLargestBlockBytes = 1 << 20;

constexpr int kLargestRecordBytes = 24;

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
    void PutBytes(const void* pByte, int nBytes);
    // Records of nBytesEach bytes, kLargestRecordBytes at most; fnEncode(i, bytes) makes them.
    template <class ENCODE>
    void PutRecords(int nRecords, int nBytesEach, ENCODE fnEncode);
    void Finish();

private:
    void Grow();

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

    // Reads records of nBytesEach bytes, as many at a time as fit in a block, and calls fnTake(first, end, bytes)
    // for records first .. end-1. Returns false at the first that is not there in full.
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

template <class ENCODE>
void ByteWriter::PutRecords(int nRecords, int nBytesEach, ENCODE fnEncode)
{
    for (int nDone = 0; nDone < nRecords;) {
        const int nFit = std::min(nRecords - nDone, (m_aBlock.GetSize() - m_nUsed) / nBytesEach);
        unsigned char* pByte = m_aBlock.GetData() + m_nUsed;
        for (const int nEnd = nDone + nFit; nDone < nEnd; ++nDone, pByte += nBytesEach) {
            fnEncode(nDone, pByte);
        }
        m_nUsed += nFit * nBytesEach;
        if (nDone < nRecords) {   // the next one lies across the end of the block
            unsigned char aByte[kLargestRecordBytes];
            fnEncode(nDone++, aByte);
            PutBytes(aByte, nBytesEach);
        }
    }
}

// Empties an array and lets it make room for nCount elements when the first is added, so that none is moved or
// written twice.
template <class T>
class RoomFor
{
public:
    RoomFor(CArray<T>& aElement, int nCount) : m_aElement(aElement)
    {
        m_aElement.RemoveAll();
        m_aElement.SetSize(0, nCount);
    }
    ~RoomFor() { m_aElement.SetSize(m_aElement.GetSize(), 0); }
    RoomFor(const RoomFor&) = delete;
    RoomFor& operator=(const RoomFor&) = delete;

private:
    CArray<T>& m_aElement;
};

template <class TAKE>
bool ByteReader::GetRecords(std::int64_t nRecords, int nBytesEach, TAKE fnTake)
{
    m_aBlock.SetSize(kBlockBytes, -1);
    for (std::int64_t nDone = 0; nDone < nRecords;) {
        const int nWanted =
            static_cast<int>(std::min<std::int64_t>(nRecords - nDone, kBlockBytes / nBytesEach));
        const int nWhole = Read(m_aBlock.GetData(), nWanted * nBytesEach) / nBytesEach;
        const unsigned char* const pByte = m_aBlock.GetData();
        fnTake(nDone, nDone + nWhole, pByte);
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
    const Announced eCount = Judge(nCount, nBytesEach, kBelievedRecords);
    if (eCount == Announced::Impossible) {
        return false;
    }
    bool bAll = false;
    {
        const RoomFor<T> room(aElement, eCount == Announced::Reserve ? nCount : 0);
        bAll = GetRecords(nCount, nBytesEach,
                          [&](std::int64_t nFirst, std::int64_t nEnd, const unsigned char* pByte) {
                              aElement.SetSize(static_cast<int>(nEnd), -1);
                              T* const pElement = aElement.GetData();
                              for (std::int64_t i = nFirst; i < nEnd; ++i, pByte += nBytesEach) {
                                  pElement[i] = fnDecode(pByte);
                              }
                          });
    }
    aElement.SetSize(eCount == Announced::Reserve ? nCount : aElement.GetSize(), -1);
    return bAll;
}

}   // namespace qsv

#endif
