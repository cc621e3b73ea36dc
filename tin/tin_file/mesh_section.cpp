#include "tin/tin_file/mesh_section.h"

namespace qsv {

namespace {

constexpr int kVertexBytes = 24;
constexpr int kTriangleBytes = 24;
constexpr int kIndexBytes = 4;
constexpr int kReservedBytes = 24;

CXYZ DecodeVertex(const unsigned char* pByte)
{
    return CXYZ(LoadDouble(pByte), LoadDouble(pByte + 8), LoadDouble(pByte + 16));
}

CTriangle DecodeTriangle(const unsigned char* pByte)
{
    CTriangle tri;
    for (int k = 0; k < 3; ++k) {
        tri.m_nVertex[k] = LoadInt(pByte + kIndexBytes * k);
        tri.m_nNeighbor[k] = LoadInt(pByte + kIndexBytes * (3 + k));
    }
    return tri;
}

}   // namespace

void WriteMesh(ByteWriter& writer, const CTin& tin)
{
    writer.PutInt(tin.m_aVertex.GetSize());
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        writer.PutDouble(tin.m_aVertex[v].x);
        writer.PutDouble(tin.m_aVertex[v].y);
        writer.PutDouble(tin.m_aVertex[v].z);
    }
    writer.PutInt(tin.m_aTri.GetSize());
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int nVt : tin.m_aTri[t].m_nVertex) {
            writer.PutInt(nVt);
        }
        for (const int nNeighbor : tin.m_aTri[t].m_nNeighbor) {
            writer.PutInt(nNeighbor);
        }
    }
    writer.PutInt(tin.m_aBoundary.GetSize());
    for (int i = 0; i < tin.m_aBoundary.GetSize(); ++i) {
        writer.PutInt(tin.m_aBoundary[i]);
    }
}

bool ReadMesh(ByteReader& reader, CTin& tin)
{
    return reader.GetArray(tin.m_aVertex, kVertexBytes, DecodeVertex) &&
           reader.GetArray(tin.m_aTri, kTriangleBytes, DecodeTriangle) &&
           reader.GetArray(tin.m_aBoundary, kIndexBytes, LoadInt);
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
