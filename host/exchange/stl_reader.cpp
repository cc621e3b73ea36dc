#include "host/exchange/stl.h"

#include "host/failure.h"
#include "host/input/byte_source.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"
#include "host/input/whole_file.h"
#include "host/terrain/local_origin.h"

namespace qsvtin {

namespace {

constexpr std::size_t kHeader = 80, kCount = 4, kTriangle = 50;

bool IsBinary(const std::string& bytes)
{
    if (bytes.size() < kHeader + kCount) return false;
    const std::size_t triangles = ByteSource(std::string_view(bytes).substr(kHeader)).TakeWhole(4);
    return bytes.size() == kHeader + kCount + kTriangle * triangles;
}

// Zero unless the header was written with coordinates relative to an origin.
LocalOrigin OriginInHeader(std::string_view header)
{
    const std::string_view start = kStlOrigin;
    std::vector<std::string_view> fields;
    LocalOrigin origin;
    if (header.substr(0, start.size()) != start) return {};
    SplitFields(header.substr(start.size()), Separator::Blank, fields);
    if (fields.size() != 2 || !ParseNumber(fields[0], origin.x) || !ParseNumber(fields[1], origin.y) ||
        !IsCoordinate(origin.x) || !IsCoordinate(origin.y)) {
        return {};
    }
    return origin;
}

void AddTriangle(MeshData& mesh, const std::array<Position, 3>& corners)
{
    const int first = static_cast<int>(mesh.vertices.size());
    mesh.vertices.insert(mesh.vertices.end(), corners.begin(), corners.end());
    mesh.triangles.push_back({first, first + 1, first + 2});
}

MeshData ReadBinary(const std::string& path, const std::string& bytes)
{
    const LocalOrigin origin = OriginInHeader(std::string_view(bytes).substr(0, kHeader));
    ByteSource source(std::string_view(bytes).substr(kHeader + kCount));
    MeshData mesh;
    while (source.Rest() > 0) {
        for (int i = 0; i < 3; ++i) source.TakeFloat();   // the normal
        std::array<Position, 3> corners;
        for (Position& corner : corners) {
            const double x = source.TakeFloat(), y = source.TakeFloat(), z = source.TakeFloat();
            corner = origin.ToSurvey({x, y, z});
            if (!IsCoordinate(corner.x) || !IsCoordinate(corner.y) || !IsCoordinate(corner.z)) {
                throw Failure(path + ": triangle " + std::to_string(mesh.triangles.size() + 1) +
                              " has a coordinate that is no usable number");
            }
        }
        source.TakeWhole(2);   // attributes
        AddTriangle(mesh, corners);
    }
    return mesh;
}

// Everything but the lines that begin with "vertex" only frames them.
MeshData ReadText(TextFile text)
{
    const auto fail = [&](const std::string& what) {
        throw Failure(text.Path() + ":" + std::to_string(text.LineNumber()) + ": " + what);
    };
    MeshData mesh;
    std::vector<std::string_view> fields;
    std::array<Position, 3> corners;
    std::size_t known = 0;
    bool ended = false;
    for (std::string_view line; text.NextLine(line);) {
        SplitFields(Trimmed(line), Separator::Blank, fields);
        if (fields.empty()) continue;
        ended = fields[0] == "endsolid";
        if (fields[0] == "vertex") {
            Position at;
            if (fields.size() != 4 || !ParseNumber(fields[1], at.x) || !ParseNumber(fields[2], at.y) ||
                !ParseNumber(fields[3], at.z) || !IsCoordinate(at.x) || !IsCoordinate(at.y) ||
                !IsCoordinate(at.z)) {
                fail("a vertex needs x, y and z");
            }
            if (known == corners.size()) fail("a facet has three vertices, this is one more");
            corners[known++] = at;
        } else if (fields[0] == "endfacet") {
            if (known != corners.size()) fail("a facet needs three vertices");
            AddTriangle(mesh, corners);
            known = 0;
        }
    }
    if (known != 0) fail("the last facet does not end; the file is cut short");
    if (!ended) fail("the solid does not end; the file is cut short");
    return mesh;
}

}   // namespace

MeshData ReadStlMesh(const std::string& path)
{
    std::string bytes = ReadRegularFile(path);
    if (IsBinary(bytes)) return JoinEqualVertices(ReadBinary(path, bytes));
    if (bytes.compare(0, 5, "solid") != 0) {
        throw Failure(path + " is no STL file, or cut short");
    }
    return JoinEqualVertices(ReadText(TextFile(path, std::move(bytes))));
}

}   // namespace qsvtin
