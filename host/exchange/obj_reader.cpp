#include "host/exchange/obj.h"

#include "host/failure.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"

#include <charconv>
#include <string_view>

namespace qsvtin {

namespace {

class ObjReader
{
public:
    explicit ObjReader(const std::string& path) : m_text(path) {}

    MeshData Read()
    {
        for (std::string_view line; m_text.NextLine(line);) {
            SplitFields(Trimmed(line), Separator::Blank, m_fields);
            if (m_fields.empty()) continue;
            if (m_fields[0] == "v") ReadVertex();
            if (m_fields[0] == "f") ReadFace();
            if (m_fields[0] == "l") ReadPolyline();
        }
        return std::move(m_mesh);
    }

private:
    [[noreturn]] void Fail(const std::string& what) const
    {
        throw Failure(m_text.Path() + ":" + std::to_string(m_text.LineNumber()) + ": " + what);
    }

    double Coordinate(std::size_t field) const
    {
        double value = 0.0;
        if (m_fields.size() <= field) Fail("a vertex needs x, y and z");
        if (!ParseNumber(m_fields[field], value) || !IsCoordinate(value)) {
            Fail(Quoted(m_fields[field]) + " is no coordinate");
        }
        return value;
    }

    void ReadVertex()
    {
        m_mesh.vertices.push_back({Coordinate(1), Coordinate(2), Coordinate(3)});
        m_mesh.vertexLines.push_back(m_text.LineNumber());
    }

    // A corner is "7", "7/1", "7//3" or "7/1/3"; numbers below 0 count back from the last vertex.
    int CornerNamed(std::string_view field) const
    {
        const std::string_view number = field.substr(0, field.find('/'));
        const int count = static_cast<int>(m_mesh.vertices.size());
        int corner = 0;
        const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), corner);
        if (error != std::errc() || end != number.data() + number.size()) {
            Fail(Quoted(field) + " is no number of a vertex");
        }
        const int index = corner < 0 ? count + corner : corner - 1;
        if (index < 0 || index >= count) Fail("there is no vertex " + std::to_string(corner));
        return index;
    }

    std::vector<int> Corners() const
    {
        std::vector<int> corners;
        for (std::size_t i = 1; i < m_fields.size(); ++i) {
            corners.push_back(CornerNamed(m_fields[i]));
        }
        return corners;
    }

    void ReadFace()
    {
        const std::vector<int> corners = Corners();
        if (corners.size() < 3) Fail("a face needs three corners");
        m_mesh.AddPolygon(corners);
    }

    void ReadPolyline()
    {
        m_mesh.lines.push_back(Corners());
        if (m_mesh.lines.back().size() < 2) Fail("a line needs two corners");
    }

    TextFile m_text;
    MeshData m_mesh;
    std::vector<std::string_view> m_fields;
};

}   // namespace

MeshData ReadObjMesh(const std::string& path)
{
    return ObjReader(path).Read();
}

}   // namespace qsvtin
