#include "host/exchange/dxf.h"
#include "host/output/text_sink.h"
#include "host/terrain/terrain.h"

namespace qsvtin {

namespace {

constexpr std::string_view kTinLayer = "TIN";
constexpr std::string_view kLineLayer = "BREAKLINES";

class DxfWriter
{
public:
    DxfWriter(const Terrain& terrain, SafeFile& file) : m_terrain(terrain), m_sink(file) {}

    void Write(const WriteOptions& options)
    {
        Put(999, "qsvtin: " + options.title);   // a comment
        BeginSection("HEADER");
        Put(9, "$ACADVER").Put(1, "AC1009");
        if (options.unit != LengthUnit::Unknown) Put(9, "$INSUNITS").Put(70, DrawingCodeOf(options.unit));
        EndSection();
        BeginSection("TABLES");
        Put(0, "TABLE").Put(2, "LAYER").Put(70, 2);
        PutLayer(kTinLayer, 8);
        PutLayer(kLineLayer, 1);
        Put(0, "ENDTAB");
        EndSection();
        BeginSection("ENTITIES");
        for (int t = 0; t < m_terrain.tin.m_aTri.GetSize(); ++t) {
            PutFace(m_terrain.tin.m_aTri[t]);
        }
        for (const SurveyLine& line : m_terrain.lines) {
            PutLine(line);
        }
        EndSection();
        Put(0, "EOF");
        m_sink.Flush();
    }

private:
    template <class Value>
    DxfWriter& Put(int code, const Value& value)
    {
        m_sink << code << "\n" << value << "\n";
        return *this;
    }
    void BeginSection(const char* name) { Put(0, "SECTION").Put(2, name); }
    void EndSection() { Put(0, "ENDSEC"); }
    void PutLayer(std::string_view name, int colour)
    {
        Put(0, "LAYER").Put(2, name).Put(70, 0).Put(62, colour).Put(6, "CONTINUOUS");
    }

    // Corner k has the codes 10 + k, 20 + k and 30 + k.
    void PutCorner(int vertex, int k)
    {
        const CXYZ& v = m_terrain.tin.m_aVertex[vertex];
        const Position at = m_terrain.origin.ToSurvey({v.x, v.y, v.z});
        Put(10 + k, at.x).Put(20 + k, at.y).Put(30 + k, at.z);
    }

    // A triangle repeats its last corner.
    void PutFace(const CTriangle& tri)
    {
        Put(0, "3DFACE").Put(8, kTinLayer);
        for (int k = 0; k < 4; ++k) {
            PutCorner(tri.m_nVertex[k < 3 ? k : 2], k);
        }
    }

    void PutLine(const SurveyLine& line)
    {
        constexpr int k3D = 8, kVertexOf3D = 32;
        if (line.SegmentCount() == 0) return;
        Put(0, "POLYLINE").Put(8, kLineLayer).Put(66, 1).Put(70, k3D + (line.closed ? 1 : 0));
        Put(10, 0).Put(20, 0).Put(30, 0);
        for (const int vertex : line.vertices) {
            Put(0, "VERTEX").Put(8, kLineLayer);
            PutCorner(vertex, 0);
            Put(70, kVertexOf3D);
        }
        Put(0, "SEQEND").Put(8, kLineLayer);
    }

    const Terrain& m_terrain;
    TextSink m_sink;
};

}   // namespace

void WriteDxf(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    DxfWriter(terrain, file).Write(options);
}

}   // namespace qsvtin
