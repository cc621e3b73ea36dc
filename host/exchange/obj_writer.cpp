#include "host/exchange/obj.h"

#include "host/output/text_sink.h"
#include "host/terrain/terrain.h"

namespace qsvtin {

namespace {

void WriteLine(TextSink& sink, const SurveyLine& line)
{
    if (line.SegmentCount() == 0) return;
    sink << "l";
    for (const int vertex : line.vertices) {
        sink << " " << vertex + 1;
    }
    if (line.closed) sink << " " << line.vertices.front() + 1;
    sink << "\n";
}

}   // namespace

void WriteObj(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    TextSink sink(file);
    sink << "# qsvtin: " << options.title << "\n";
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& vertex = terrain.tin.m_aVertex[v];
        const Position at = terrain.origin.ToSurvey({vertex.x, vertex.y, vertex.z});
        sink << "v " << at.x << " " << at.y << " " << at.z << "\n";
    }
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = terrain.tin.m_aTri[t];
        sink << "f " << tri.m_nVertex[0] + 1 << " " << tri.m_nVertex[1] + 1 << " " << tri.m_nVertex[2] + 1
             << "\n";
    }
    for (const SurveyLine& line : terrain.lines) {
        WriteLine(sink, line);
    }
    sink.Flush();
}

}   // namespace qsvtin
