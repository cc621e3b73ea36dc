#include "host/exchange/landxml.h"
#include "host/exchange/point_ids.h"
#include "host/exchange/words.h"
#include "host/exchange/xml_file.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"

#include <utility>

namespace qsvtin {

namespace {

// What a message is about, put into words only when there is one.
struct Subject {
    const char* kind;
    std::string_view name;

    std::string InWords() const { return kind + (name.empty() ? "" : " " + Quoted(name)); }
};

// Places of an element and the lines they stand in.
struct Places {
    std::vector<Position> positions;
    std::vector<int> lines;
};

class LandXmlReader
{
public:
    explicit LandXmlReader(const std::string& path) : m_xml(path)
    {
        m_file.path = path;
        m_file.format = "LandXML";
    }

    ExchangeFile Read()
    {
        const pugi::xml_node root = m_xml.Root();
        if (LocalName(root) != "LandXML") {
            throw Failure(m_file.path + " is XML but no LandXML, its root is " + Quoted(root.name()) +
                          "; export the surface as LandXML");
        }
        ReadUnits(ChildOf(root, "Units"));
        ForEachChild(root, "Surfaces", [&](pugi::xml_node surfaces) {
            ForEachChild(surfaces, "Surface", [&](pugi::xml_node surface) { ReadSurface(surface); });
        });
        if (m_file.surfaces.empty()) ReadSurveyPoints(root);
        if (m_file.surfaces.empty()) {
            throw Failure(m_file.path + " holds no surface and no points; export the surface as LandXML");
        }
        return std::move(m_file);
    }

private:
    void ReadUnits(pugi::xml_node units)
    {
        for (const char* const system : {"Metric", "Imperial"}) {
            const pugi::xml_node stated = ChildOf(units, system);
            if (!stated) continue;
            const char* const name = stated.attribute("linearUnit").value();
            m_areaUnit = stated.attribute("areaUnit").value();
            m_file.unit = UnitNamed(name);
            if (m_file.unit == LengthUnit::Unknown) {
                m_xml.Fail(stated, Quoted(name) + " is no known unit of length; write one of " + UnitNames());
            }
            const char* const ofHeights = stated.attribute("elevationUnit").value();
            m_heightUnit = HeightUnitNamed(ofHeights, m_file.unit);
            if (m_heightUnit == LengthUnit::Unknown) {
                m_xml.Fail(stated, Quoted(ofHeights) +
                                       " is no known unit of heights; write meter, kilometer, feet or miles");
            }
            if (m_heightUnit != m_file.unit) {
                m_file.remarks.push_back("heights are in " + std::string(NameOf(m_heightUnit)) +
                                         " and become " + std::string(NameOf(m_file.unit)));
            }
        }
    }

    void ReadSurface(pugi::xml_node node)
    {
        SurfaceData& surface = m_file.surfaces.emplace_back();
        surface.name = node.attribute("name").value();
        if (surface.name.empty()) surface.name = "surface " + std::to_string(m_file.surfaces.size());
        ReadSource(ChildOf(node, "SourceData"), surface);
        const pugi::xml_node definition = ChildOf(node, "Definition");
        surface.planArea = AreaOf(definition.attribute("area2DSurf"));
        surface.surfaceArea = AreaOf(definition.attribute("area3DSurf"));
        ReadMesh(definition, surface);
    }

    std::optional<double> AreaOf(pugi::xml_attribute attribute) const
    {
        double area = 0.0;
        if (!ParseNumber(attribute.value(), area)) return std::nullopt;
        return AreaInSquare(area, m_areaUnit, m_file.unit);
    }

    void ReadSource(pugi::xml_node source, SurfaceData& surface)
    {
        ForEachChild(ChildOf(source, "Boundaries"), "Boundary",
                     [&](pugi::xml_node node) { ReadBoundary(node, surface); });
        ForEachChild(source, "DataPoints", [&](pugi::xml_node node) {
            Places places = ReadList3D(node, {"data point", node.attribute("name").value()});
            surface.points.insert(surface.points.end(), places.positions.begin(), places.positions.end());
            surface.pointLines.insert(surface.pointLines.end(), places.lines.begin(), places.lines.end());
        });
        ForEachChild(ChildOf(source, "Breaklines"), "Breakline",
                     [&](pugi::xml_node node) { ReadBreakline(node, surface); });
        ForEachChild(ChildOf(source, "Contours"), "Contour",
                     [&](pugi::xml_node node) { ReadContour(node, surface); });
        for (Breakline& line : std::exchange(m_boundaryLines, {})) {
            line.number = static_cast<int>(surface.breaklines.size()) + 1;
            surface.breaklines.push_back(std::move(line));
        }
    }

    void ReadBreakline(pugi::xml_node node, SurfaceData& surface)
    {
        const std::string name = NameOfLine(node);
        Places places = ReadList3D(node, {"breakline", name});
        if (places.positions.empty()) {
            m_file.remarks.push_back("breakline " + Quoted(name) + " of surface " + Quoted(surface.name) +
                                     " has no points with heights and is left out");
            return;
        }
        surface.breaklines.push_back(LineOf(name, surface.breaklines.size(), std::move(places)));
    }

    void ReadContour(pugi::xml_node node, SurfaceData& surface)
    {
        double height = 0.0;
        if (!ParseNumber(node.attribute("elev").value(), height) || !IsCoordinate(height)) {
            m_xml.Fail(node, "a contour needs its height in elev");
        }
        Places places = ReadList2D(node, {"contour", {}}, InFileUnit(height));
        if (places.positions.empty()) return;
        surface.breaklines.push_back(LineOf(NameOfLine(node), surface.breaklines.size(), std::move(places)));
    }

    // With heights it is a line to follow as well, unless it says that triangles are not trimmed at it.
    void ReadBoundary(pugi::xml_node node, SurfaceData& surface)
    {
        const std::string name = NameOfLine(node);
        const std::string_view type = node.attribute("bndType").value();
        BoundaryRing ring;
        ring.kind = type == "void"     ? BoundaryRing::Void
                    : type == "island" ? BoundaryRing::Island
                                       : BoundaryRing::Outer;
        Places places = ReadList3D(node, {"boundary", name});
        const bool hasHeights = !places.positions.empty();
        if (!hasHeights) places = ReadList2D(node, {"boundary", name}, 0.0);
        if (places.positions.size() < 3) m_xml.Fail(node, "a boundary needs three points");
        ring.line = LineOf(name, surface.boundaries.size(), std::move(places));
        surface.boundaries.push_back(ring);
        const std::string_view trim = node.attribute("edgeTrim").value();
        if (!hasHeights || trim == "false" || trim == "0") return;
        const Position first = ring.line.points.front(), last = ring.line.points.back();
        if (first.x != last.x || first.y != last.y) {
            ring.line.points.push_back(first);
            ring.line.lines.push_back(ring.line.lines.front());
        }
        m_boundaryLines.push_back(std::move(ring.line));
    }

    static std::string NameOfLine(pugi::xml_node node)
    {
        const std::string name = node.attribute("name").value();
        return name.empty() ? node.attribute("desc").value() : name;
    }

    Breakline LineOf(const std::string& name, std::size_t before, Places places) const
    {
        return {m_file.path, static_cast<int>(before) + 1, name, std::move(places.positions),
                std::move(places.lines)};
    }

    Places ReadList3D(pugi::xml_node parent, const Subject& subject)
    {
        return ReadList(parent, "PntList3D", subject, std::nullopt);
    }
    Places ReadList2D(pugi::xml_node parent, const Subject& subject, double height)
    {
        return ReadList(parent, "PntList2D", subject, height);
    }

    // Numbers in groups of north, east and, unless one is given for all, height.
    Places ReadList(pugi::xml_node parent, std::string_view element, const Subject& subject,
                    std::optional<double> height)
    {
        Places places;
        ForEachChild(parent, element, [&](pugi::xml_node list) {
            const int line = m_xml.LineOf(list);
            Words words(m_xml.TextOf(list));
            for (Position at; ReadPlace(words, list, subject, height, at);) {
                places.positions.push_back(at);
                places.lines.push_back(line > 0 ? line + words.LineEnds() : 0);
            }
        });
        return places;
    }

    // @return false at the end of the words
    bool ReadPlace(Words& words, pugi::xml_node node, const Subject& subject, std::optional<double> height,
                   Position& at)
    {
        std::string_view north, east, up;
        if (!words.Next(north)) return false;
        if (!words.Next(east) || (!height && !words.Next(up))) {
            m_xml.Fail(node, subject.InWords() + " ends within a place; give north, east" +
                                 (height ? "" : " and height"));
        }
        at = {NumberOf(east, node, subject), NumberOf(north, node, subject),
              height ? *height : InFileUnit(NumberOf(up, node, subject))};
        return true;
    }

    double InFileUnit(double height) const { return Convert(height, m_heightUnit, m_file.unit); }

    double NumberOf(std::string_view word, pugi::xml_node node, const Subject& subject)
    {
        double value = 0.0;
        if (!ParseNumber(word, value) || !IsCoordinate(value)) {
            m_xml.Fail(node, subject.InWords() + ": " + Quoted(word) + " is no coordinate");
        }
        return value;
    }

    // The only place of an element.
    Position ReadPoint(pugi::xml_node node, std::string_view id)
    {
        const Subject subject{"point", id};
        Words words(m_xml.TextOf(node));
        Position at;
        std::string_view more;
        if (!ReadPlace(words, node, subject, std::nullopt, at) || words.Next(more)) {
            m_xml.Fail(node, subject.InWords() + " needs three numbers: north, east and height");
        }
        return at;
    }

    void ReadMesh(pugi::xml_node definition, SurfaceData& surface)
    {
        PointIds ids;
        ForEachChild(ChildOf(definition, "Pnts"), "P", [&](pugi::xml_node p) {
            const char* const id = p.attribute("id").value();
            if (!ids.Add(id, static_cast<int>(surface.mesh.vertices.size()))) {
                m_xml.Fail(p, "there are two points " + Quoted(id) + "; give each an id of its own");
            }
            surface.mesh.vertices.push_back(ReadPoint(p, id));
            surface.mesh.vertexLines.push_back(m_xml.LineOf(p));
        });
        int face = 0, invisible = 0;
        ForEachChild(definition, "Faces", [&](pugi::xml_node faces) {
            ForEachChild(faces, "F", [&](pugi::xml_node f) {
                ++face;
                if (IsInvisible(f)) {
                    ++invisible;
                } else {
                    ReadFace(f, face, ids, surface.mesh);
                }
            });
        });
        if (invisible > 0) {
            m_file.remarks.push_back("surface " + Quoted(surface.name) + ": " + std::to_string(invisible) +
                                     " invisible faces are left out");
        }
        TurnUpwards(surface.mesh);
    }

    static bool IsInvisible(pugi::xml_node f)
    {
        const std::string_view mark = f.attribute("i").value();
        return !mark.empty() && mark != "0";
    }

    void ReadFace(pugi::xml_node f, int face, const PointIds& ids, MeshData& mesh)
    {
        Words words(m_xml.TextOf(f));
        m_corners.clear();
        for (std::string_view id; words.Next(id);) {
            const int vertex = ids.Find(id);
            if (vertex < 0) {
                m_xml.Fail(f, "face " + std::to_string(face) + " names point " + Quoted(id) +
                                  ", which is not there");
            }
            m_corners.push_back(vertex);
        }
        if (m_corners.size() < 3) m_xml.Fail(f, "face " + std::to_string(face) + " needs three points");
        mesh.AddPolygon(m_corners);
    }

    // The points of a survey without a surface; those that only refer to others have no place of their own.
    void ReadSurveyPoints(pugi::xml_node root)
    {
        SurfaceData points;
        points.name = StemOf(m_file.path);
        ForEachChild(root, "CgPoints", [&](pugi::xml_node group) {
            ForEachChild(group, "CgPoint", [&](pugi::xml_node p) {
                if (p.attribute("pntRef")) return;
                points.points.push_back(ReadPoint(p, p.attribute("name").value()));
                points.pointLines.push_back(m_xml.LineOf(p));
            });
        });
        if (!points.points.empty()) m_file.surfaces.push_back(std::move(points));
    }

    XmlFile m_xml;
    ExchangeFile m_file;
    LengthUnit m_heightUnit = LengthUnit::Unknown;
    std::string m_areaUnit;
    std::vector<int> m_corners;
    std::vector<Breakline> m_boundaryLines;   // of the surface being read; they come behind its own
};

}   // namespace

ExchangeFile ReadLandXml(const std::string& path)
{
    return LandXmlReader(path).Read();
}

}   // namespace qsvtin
