#include "host/exchange/ply.h"

#include "host/output/byte_sink.h"
#include "host/output/text_sink.h"
#include "host/terrain/terrain.h"

namespace qsvtin {

namespace {

std::string Header(const CTin& tin, const WriteOptions& options)
{
    return std::string("ply\nformat ") + (options.ascii ? "ascii" : "binary_little_endian") +
           " 1.0\ncomment qsvtin: " + options.title + "\nelement vertex " +
           std::to_string(tin.m_aVertex.GetSize()) +
           "\nproperty double x\nproperty double y\nproperty double z\nelement face " +
           std::to_string(tin.m_aTri.GetSize()) + "\nproperty list uchar int vertex_indices\nend_header\n";
}

Position VertexInSurvey(const Terrain& terrain, int v)
{
    const CXYZ& vertex = terrain.tin.m_aVertex[v];
    return terrain.origin.ToSurvey({vertex.x, vertex.y, vertex.z});
}

void WriteAsText(const Terrain& terrain, SafeFile& file)
{
    TextSink sink(file);
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const Position at = VertexInSurvey(terrain, v);
        sink << at.x << " " << at.y << " " << at.z << "\n";
    }
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = terrain.tin.m_aTri[t];
        sink << "3 " << tri.m_nVertex[0] << " " << tri.m_nVertex[1] << " " << tri.m_nVertex[2] << "\n";
    }
    sink.Flush();
}

void WriteAsBytes(const Terrain& terrain, SafeFile& file)
{
    ByteSink sink(file);
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const Position at = VertexInSurvey(terrain, v);
        sink.PutDouble(at.x);
        sink.PutDouble(at.y);
        sink.PutDouble(at.z);
    }
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        sink.PutByte(3);
        for (const int v : terrain.tin.m_aTri[t].m_nVertex) {
            sink.PutInt32(static_cast<std::uint32_t>(v));
        }
    }
    sink.Flush();
}

}   // namespace

void WritePly(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    file.Write(Header(terrain.tin, options));
    (options.ascii ? WriteAsText : WriteAsBytes)(terrain, file);
}

}   // namespace qsvtin
