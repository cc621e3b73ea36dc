#include "tin/tin_file/mesh_section.h"

namespace qsv {

namespace {

constexpr int kVertexBytes = 24;
constexpr int kTriangleBytes = 24;
constexpr int kIndexBytes = 4;
constexpr int kReservedBytes = 24;

// Objects, not functions: the loops over blocks are compiled with them inside.
constexpr auto kDecodeVertex = [](const unsigned char* pByte) {
    return CXYZ(LoadDouble(pByte), LoadDouble(pByte + 8), LoadDouble(pByte + 16));
};
constexpr auto kEncodeVertex = [](const CXYZ& vertex, unsigned char* pByte) {
    StoreDouble(vertex.x, pByte);
    StoreDouble(vertex.y, pByte + 8);
    StoreDouble(vertex.z, pByte + 16);
};
constexpr auto kDecodeTriangle = [](const unsigned char* pByte) {
    CTriangle tri;
    for (int k = 0; k < 3; ++k) {
        tri.m_nVertex[k] = LoadInt(pByte + kIndexBytes * k);
        tri.m_nNeighbor[k] = LoadInt(pByte + kIndexBytes * (3 + k));
    }
    return tri;
};
constexpr auto kEncodeTriangle = [](const CTriangle& tri, unsigned char* pByte) {
    for (int k = 0; k < 3; ++k) {
        StoreInt(tri.m_nVertex[k], pByte + kIndexBytes * k);
        StoreInt(tri.m_nNeighbor[k], pByte + kIndexBytes * (3 + k));
    }
};
constexpr auto kDecodeIndex = [](const unsigned char* pByte) { return LoadInt(pByte); };
constexpr auto kEncodeIndex = [](int nIndex, unsigned char* pByte) { StoreInt(nIndex, pByte); };

template <class T, class ENCODE>
void PutArray(ByteWriter& writer, const CArray<T>& aElement, int nBytesEach, ENCODE fnEncode)
{
    writer.PutInt(aElement.GetSize());
    const T* const pElement = aElement.GetData();
    writer.PutRecords(aElement.GetSize(), nBytesEach,
                      [&](int i, unsigned char* pByte) { fnEncode(pElement[i], pByte); });
}

}   // namespace

void WriteMesh(ByteWriter& writer, const CTin& tin)
{
    PutArray(writer, tin.m_aVertex, kVertexBytes, kEncodeVertex);
    PutArray(writer, tin.m_aTri, kTriangleBytes, kEncodeTriangle);
    PutArray(writer, tin.m_aBoundary, kIndexBytes, kEncodeIndex);
}

bool ReadMesh(ByteReader& reader, CTin& tin)
{
    return reader.GetArray(tin.m_aVertex, kVertexBytes, kDecodeVertex) &&
           reader.GetArray(tin.m_aTri, kTriangleBytes, kDecodeTriangle) &&
           reader.GetArray(tin.m_aBoundary, kIndexBytes, kDecodeIndex);
}

void WriteReserved(ByteWriter& writer)
{
    const unsigned char aByte[kReservedBytes] = {};
    writer.PutBytes(aByte, kReservedBytes);
}

bool ReadReserved(ByteReader& reader)
{
    unsigned char aByte[kReservedBytes];
    return reader.GetBytes(aByte, kReservedBytes);
}

}   // namespace qsv
