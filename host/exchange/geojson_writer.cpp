#include "host/exchange/geojson.h"
#include "host/exchange/xml_text.h"
#include "host/output/text_sink.h"
#include "host/terrain/outline_rings.h"
#include "host/terrain/terrain.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace qsvtin {

namespace {

std::string AsJson(std::string_view text)
{
    return nlohmann::json(AsUtf8(text)).dump();
}

class GeoJsonWriter
{
public:
    GeoJsonWriter(const Terrain& terrain, SafeFile& file) : m_terrain(terrain), m_sink(file) {}

    void Write(const WriteOptions& options)
    {
        m_sink
            << "{\"type\": \"FeatureCollection\",\n\"title\": " << AsJson(options.title)
            << ",\n\"coordinate_note\": \"east, north and height of the survey, not WGS 84\",\n\"unit\": \""
            << NameOf(options.unit) << "\",\n\"features\": [";
        for (int t = 0; t < m_terrain.tin.m_aTri.GetSize(); ++t) {
            const CTriangle& tri = m_terrain.tin.m_aTri[t];
            Begin("Polygon");
            m_sink << "[";
            PutPlaces({tri.m_nVertex, tri.m_nVertex + 3}, true);
            m_sink << "]";
            End("triangle", "\"number\": " + std::to_string(t + 1));
        }
        for (const std::vector<int>& ring : OutlineRings(m_terrain.tin)) {
            PutLine(ring, true, "outline", {});
        }
        for (const SurveyLine& line : m_terrain.lines) {
            if (line.SegmentCount() == 0) continue;
            PutLine(line.vertices, line.closed, "breakline", "\"name\": " + AsJson(line.name));
        }
        m_sink << "\n]}\n";
        m_sink.Flush();
    }

private:
    void Begin(const char* type)
    {
        m_sink << (m_first ? "\n" : ",\n") << "{\"type\": \"Feature\", \"geometry\": {\"type\": \"" << type
               << "\", \"coordinates\": ";
        m_first = false;
    }

    void End(const char* kind, const std::string& more)
    {
        m_sink << "}, \"properties\": {\"kind\": \"" << kind << "\"" << (more.empty() ? "" : ", ") << more
               << "}}";
    }

    void PutLine(const std::vector<int>& vertices, bool closed, const char* kind, const std::string& more)
    {
        Begin("LineString");
        PutPlaces(vertices, closed);
        End(kind, more);
    }

    void PutPlaces(const std::vector<int>& vertices, bool closed)
    {
        m_sink << "[";
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            m_sink << (i > 0 ? ", " : "");
            PutPlace(vertices[i]);
        }
        if (closed) {
            m_sink << ", ";
            PutPlace(vertices.front());
        }
        m_sink << "]";
    }

    void PutPlace(int vertex)
    {
        const CXYZ& v = m_terrain.tin.m_aVertex[vertex];
        const Position at = m_terrain.origin.ToSurvey({v.x, v.y, v.z});
        m_sink << "[" << at.x << ", " << at.y << ", " << at.z << "]";
    }

    const Terrain& m_terrain;
    TextSink m_sink;
    bool m_first = true;
};

}   // namespace

void WriteGeoJson(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    GeoJsonWriter(terrain, file).Write(options);
}

}   // namespace qsvtin
