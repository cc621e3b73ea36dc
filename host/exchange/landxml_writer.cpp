#include "host/exchange/landxml.h"
#include "host/exchange/xml_text.h"
#include "host/extension.h"
#include "host/say.h"
#include "host/terrain/outline_rings.h"
#include "host/terrain/plan_ring.h"
#include "host/terrain/terrain.h"
#include "host/terrain/triangles.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <utility>
#include <vector>

namespace qsvtin {

namespace {

// The time that the document must state. That of the run would make its bytes differ from run to run, so it is
// the one that the user sets, as for a reproducible build, or else the begin of 1970.
std::time_t TimeOfDocument()
{
    constexpr long long kLatest = 253402300799;   // the last second of the year 9999
    const char* const set = std::getenv("SOURCE_DATE_EPOCH");
    const long long seconds = set ? std::strtoll(set, nullptr, 10) : 0;
    return static_cast<std::time_t>(seconds >= 0 && seconds <= kLatest ? seconds : 0);
}

std::string Formatted(const char* format, std::time_t time)
{
    std::tm utc = {};
    if (const std::tm* const found = std::gmtime(&time)) utc = *found;
    char text[32];
    return {text, std::strftime(text, sizeof text, format, &utc)};
}

std::string UnitsElement(LengthUnit unit)
{
    if (unit == LengthUnit::Unknown) unit = LengthUnit::Meter;
    const std::string heights(HeightNameOf(unit));
    const std::string lengths = "linearUnit=\"" + std::string(NameOf(unit)) + "\"" +
                                (heights.empty() ? "" : " elevationUnit=\"" + heights + "\"");
    if (IsImperial(unit)) {
        return "<Imperial areaUnit=\"squareFoot\" " + lengths +
               " volumeUnit=\"cubicFeet\" temperatureUnit=\"fahrenheit\" pressureUnit=\"inHG\"/>";
    }
    return "<Metric areaUnit=\"squareMeter\" " + lengths +
           " volumeUnit=\"cubicMeter\" temperatureUnit=\"celsius\" pressureUnit=\"milliBars\"/>";
}

// The areas that a definition states, in its unit of area; coordinates are relative, so that no digit is lost.
struct Areas {
    double plan = 0.0;
    double surface = 0.0;
};

Areas AreasOf(const CTin& tin)
{
    Areas areas;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CXYZ& a = CornerOf(tin, t, 0);
        areas.plan += DoubledPlanArea(tin, t) / 2.0;
        areas.surface += (CornerOf(tin, t, 1) - a).Out(CornerOf(tin, t, 2) - a).Len() / 2.0;
    }
    return areas;
}

constexpr std::string_view kOuter = "outer", kVoid = "void", kIsland = "island";

// A ring of the outline, and what LandXML calls it: the edge of a hole is a void, that of a piece within an island.
struct NamedRing {
    std::string_view kind;
    std::vector<int> vertices;
};

std::vector<NamedRing> NameRings(const CTin& tin)
{
    const auto at = [&](int v) { return Position{tin.m_aVertex[v].x, tin.m_aVertex[v].y, 0.0}; };
    std::vector<NamedRing> rings;
    std::vector<PlanRing> holes;
    for (std::vector<int>& vertices : OutlineRings(tin)) {
        const bool isHole = RunsClockwise(tin, vertices);
        if (isHole) {
            std::vector<Position> corners;
            std::transform(vertices.begin(), vertices.end(), std::back_inserter(corners), at);
            holes.emplace_back(corners);
        }
        rings.push_back({isHole ? kVoid : kOuter, std::move(vertices)});
    }
    for (NamedRing& ring : rings) {
        const Position a = at(ring.vertices[0]), b = at(ring.vertices[1]);
        const auto isAround = [&](const PlanRing& hole) {
            return hole.Encloses((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
        };
        if (ring.kind == kOuter && std::any_of(holes.begin(), holes.end(), isAround)) ring.kind = kIsland;
    }
    return rings;
}

void AddPlace(TextSink& sink, const Terrain& terrain, int vertex)
{
    const CXYZ& v = terrain.tin.m_aVertex[vertex];
    const Position at = terrain.origin.ToSurvey({v.x, v.y, v.z});
    sink << at.y << " " << at.x << " " << at.z;
}

void AddList(TextSink& sink, const Terrain& terrain, const std::vector<int>& vertices)
{
    sink << "<PntList3D>";
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        sink << (i > 0 ? "\n" : "");
        AddPlace(sink, terrain, vertices[i]);
    }
    sink << "</PntList3D>";
}

}   // namespace

LandXmlWriter::LandXmlWriter(const WriteOptions& options, SafeFile& file)
    : m_sink(file), m_description(AsXml(options.title)), m_unit(options.unit)
{
    if (m_unit == LengthUnit::Unknown) {
        Note("LandXML states a unit, and that of the input is not known: the file says meter; "
             "--units of qsvtin build or convert tells another");
    }
    const std::time_t time = TimeOfDocument();
    m_sink << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<LandXML xmlns=\"http://www.landxml.org/schema/LandXML-1.2\" "
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xsi:schemaLocation=\"http://www.landxml.org/schema/LandXML-1.2 "
              "http://www.landxml.org/schema/LandXML-1.2/LandXML-1.2.xsd\" version=\"1.2\" date=\""
           << Formatted("%Y-%m-%d", time) << "\" time=\"" << Formatted("%H:%M:%S", time) << "\">\n<Units>"
           << UnitsElement(m_unit) << "</Units>\n<Application name=\"qsvtin\"/>\n<Surfaces>\n";
}

void LandXmlWriter::AddSurface(const Terrain& terrain, const std::string& name)
{
    m_sink << "<Surface name=\"" << AsXml(name) << "\" desc=\"" << m_description << "\">\n";
    if (terrain.surveyVertices > 0) AddSource(terrain);
    AddDefinition(terrain);
    m_sink << "</Surface>\n";
}

void LandXmlWriter::AddSource(const Terrain& terrain)
{
    m_sink << "<SourceData>\n";
    AddOutline(terrain);
    AddBreaklines(terrain);
    m_sink << "<DataPoints><PntList3D>";
    for (int v = 0; v < terrain.surveyVertices; ++v) {
        m_sink << (v > 0 ? "\n" : "");
        AddPlace(m_sink, terrain, v);
    }
    m_sink << "</PntList3D></DataPoints>\n</SourceData>\n";
}

void LandXmlWriter::AddOutline(const Terrain& terrain)
{
    m_sink << "<Boundaries>\n";
    for (const NamedRing& ring : NameRings(terrain.tin)) {
        m_sink << "<Boundary bndType=\"" << ring.kind << "\" edgeTrim=\"false\">";
        AddList(m_sink, terrain, ring.vertices);
        m_sink << "</Boundary>\n";
    }
    m_sink << "</Boundaries>\n";
}

void LandXmlWriter::AddBreaklines(const Terrain& terrain)
{
    const auto isLine = [](const SurveyLine& line) { return line.SegmentCount() > 0; };
    if (std::none_of(terrain.lines.begin(), terrain.lines.end(), isLine)) return;
    m_sink << "<Breaklines>\n";
    for (const SurveyLine& line : terrain.lines) {
        if (!isLine(line)) continue;
        std::vector<int> vertices = line.vertices;
        if (line.closed) vertices.push_back(vertices.front());
        m_sink << "<Breakline brkType=\"standard\" name=\"" << AsXml(line.name) << "\">";
        AddList(m_sink, terrain, vertices);
        m_sink << "</Breakline>\n";
    }
    m_sink << "</Breaklines>\n";
}

void LandXmlWriter::AddDefinition(const Terrain& terrain)
{
    const CTin& tin = terrain.tin;
    m_sink << "<Definition surfType=\"TIN\"";
    const Areas areas = AreasOf(tin);
    const double unit =
        AreaInSquare(1.0, IsImperial(m_unit) ? "squareFoot" : "squareMeter", m_unit).value_or(1.0);
    m_sink << " area2DSurf=\"" << areas.plan / unit << "\" area3DSurf=\"" << areas.surface / unit << "\"";
    m_sink << ">\n<Pnts>\n";
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        m_sink << "<P id=\"" << v + 1 << "\">";
        AddPlace(m_sink, terrain, v);
        m_sink << "</P>\n";
    }
    m_sink << "</Pnts>\n<Faces>\n";
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        m_sink << "<F>" << tri.m_nVertex[0] + 1 << " " << tri.m_nVertex[1] + 1 << " " << tri.m_nVertex[2] + 1
               << "</F>\n";
    }
    m_sink << "</Faces>\n</Definition>\n";
}

void LandXmlWriter::Finish()
{
    m_sink << "</Surfaces>\n</LandXML>\n";
    m_sink.Flush();
}

void WriteLandXml(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    const CString& stored = terrain.tin.m_strName;
    const bool isNamed = !stored.IsEmpty() && stored != CTin().m_strName;   // other than a new TIN
    LandXmlWriter writer(options, file);
    writer.AddSurface(terrain, !options.name.empty() ? options.name
                               : isNamed             ? stored.GetString()
                                                     : StemOf(file.Target()));
    writer.Finish();
}

}   // namespace qsvtin
