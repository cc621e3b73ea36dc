#include "host/exchange/dxf.h"
#include "host/failure.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"

#include <charconv>
#include <map>
#include <utility>

namespace qsvtin {

namespace {

// A code, which tells the meaning of the value in the next line.
struct Group {
    int code = 0;
    std::string_view value;
    int line = 0;   // of the value
};

// What stands between one group of code 0, which names it, and the next.
struct Entity {
    std::string_view type;
    int line = 0;
    std::vector<Group> groups;

    const Group* Find(int code) const
    {
        for (const Group& group : groups) {
            if (group.code == code) return &group;
        }
        return nullptr;
    }
};

class DxfReader
{
public:
    explicit DxfReader(const std::string& path) : m_text(path)
    {
        m_file.path = path;
        m_file.format = "DXF";
        m_file.areLayers = true;
    }

    ExchangeFile Read()
    {
        TakeGroup();
        while (!IsNext(0, "EOF")) {
            if (!IsNext(0, "SECTION")) Fail(m_next.line, "a section or the end of the file must follow");
            TakeGroup();
            const std::string_view section = m_next.value;
            TakeGroup();
            if (section == "HEADER") ReadUnit();
            if (section == "ENTITIES") ReadEntities();
            while (!IsNext(0, "ENDSEC")) TakeGroup();
            TakeGroup();
        }
        for (SurfaceData& layer : m_file.surfaces) {
            layer.mesh = JoinEqualVertices(layer.mesh);
            TurnUpwards(layer.mesh);
        }
        TellPassedOver();
        if (m_file.surfaces.empty()) {
            throw Failure(m_file.path +
                          " holds no points, lines or faces; export them as POINT, POLYLINE, 3DFACE");
        }
        return std::move(m_file);
    }

private:
    [[noreturn]] void Fail(int line, const std::string& what) const
    {
        throw Failure(m_file.path + ":" + std::to_string(line) + ": " + what);
    }

    void TakeGroup()
    {
        constexpr int kComment = 999;
        do {
            TakeAnyGroup();
        } while (m_next.code == kComment);
    }

    void TakeAnyGroup()
    {
        std::string_view code;
        if (!m_text.NextLine(code) || !m_text.NextLine(m_next.value)) {
            throw Failure(m_file.path + " is cut short or no ASCII DXF; export it again");
        }
        code = Trimmed(code);
        m_next.value = Trimmed(m_next.value);
        m_next.line = m_text.LineNumber();
        const auto [end, error] = std::from_chars(code.data(), code.data() + code.size(), m_next.code);
        if (error != std::errc() || end != code.data() + code.size()) {
            Fail(m_next.line - 1, Quoted(code) + " is no group code; is this an ASCII DXF?");
        }
    }

    bool IsNext(int code, std::string_view value) const
    {
        return m_next.code == code && m_next.value == value;
    }

    void ReadUnit()
    {
        for (; m_next.code != 0; TakeGroup()) {
            if (!IsNext(9, "$INSUNITS")) continue;
            TakeGroup();
            m_file.unit = UnitWithDrawingCode(WholeNumber(m_next));
        }
    }

    Entity TakeEntity()
    {
        Entity entity{m_next.value, m_next.line, {}};
        for (TakeGroup(); m_next.code != 0; TakeGroup()) {
            entity.groups.push_back(m_next);
        }
        return entity;
    }

    void ReadEntities()
    {
        while (!IsNext(0, "ENDSEC")) {
            const Entity entity = TakeEntity();
            if (entity.type == "POINT") {
                ReadPoint(entity);
            } else if (entity.type == "LINE") {
                ReadLine(entity);
            } else if (entity.type == "LWPOLYLINE") {
                ReadFlatPolyline(entity);
            } else if (entity.type == "POLYLINE") {
                ReadPolyline(entity);
            } else if (entity.type == "3DFACE") {
                ReadFace(entity);
            } else {
                constexpr std::size_t kReadable = 40;
                ++m_passedOver[std::string(entity.type.substr(0, kReadable))];
            }
        }
    }

    void ReadPoint(const Entity& entity)
    {
        SurfaceData& layer = LayerOf(entity);
        layer.points.push_back(Corner(entity, 0));
        layer.pointLines.push_back(entity.line);
    }

    void ReadLine(const Entity& entity)
    {
        Breakline line;
        AddCorner(line, Corner(entity, 0), entity.line);
        AddCorner(line, Corner(entity, 1), entity.line);
        AddBreakline(entity, std::move(line), false);
    }

    // All corners in one entity, at one height.
    void ReadFlatPolyline(const Entity& entity)
    {
        if (IsTilted(entity)) return;
        const double height = Number(entity, 38, 0.0);
        Breakline line;
        for (const Group& group : entity.groups) {
            if (group.code == 10) AddCorner(line, {Coordinate(group), 0.0, height}, group.line);
            if (group.code == 20 && !line.points.empty()) line.points.back().y = Coordinate(group);
            NoteCurve(group);
        }
        AddBreakline(entity, std::move(line), (Flags(entity) & 1) != 0);
    }

    // The corners follow as entities of their own.
    void ReadPolyline(const Entity& entity)
    {
        constexpr int kClosed = 1, k3D = 8, kMeshes = 16 | 64;
        const int flags = Flags(entity);
        const double height = Number(entity, 30, 0.0);
        Breakline line;
        while (IsNext(0, "VERTEX")) {
            const Entity vertex = TakeEntity();
            constexpr int kFrameOfSpline = 16;
            if ((Flags(vertex) & kFrameOfSpline) != 0) continue;
            AddCorner(line, {Number(vertex, 10), Number(vertex, 20), Number(vertex, 30, height)},
                      vertex.line);
            for (const Group& group : vertex.groups) NoteCurve(group);
        }
        if (IsNext(0, "SEQEND")) TakeEntity();
        if ((flags & kMeshes) != 0) {
            ++m_passedOver["POLYLINE mesh"];
        } else if ((flags & k3D) != 0 || !IsTilted(entity)) {
            AddBreakline(entity, std::move(line), (flags & kClosed) != 0);
        }
    }

    void ReadFace(const Entity& entity)
    {
        MeshData& mesh = LayerOf(entity).mesh;
        std::vector<int> corners;
        for (int k = 0; k < 4; ++k) {
            if (k == 3 && !entity.Find(13)) break;
            const Position at = Corner(entity, k);
            const Position* const before = k > 0 ? &mesh.vertices.back() : nullptr;
            if (before && at.x == before->x && at.y == before->y && at.z == before->z) continue;
            corners.push_back(static_cast<int>(mesh.vertices.size()));
            mesh.vertices.push_back(at);
        }
        mesh.AddPolygon(corners);
    }

    // Corner k has the codes 10 + k, 20 + k and 30 + k; without a height it lies at 0.
    Position Corner(const Entity& entity, int k) const
    {
        return {Number(entity, 10 + k), Number(entity, 20 + k), Number(entity, 30 + k, 0.0)};
    }

    static void AddCorner(Breakline& line, const Position& at, int fileLine)
    {
        line.points.push_back(at);
        line.lines.push_back(fileLine);
    }

    void AddBreakline(const Entity& entity, Breakline line, bool closed)
    {
        if (line.points.empty()) return;
        if (closed) AddCorner(line, Position(line.points.front()), line.lines.front());
        SurfaceData& layer = LayerOf(entity);
        line.file = m_file.path;
        line.number = ++m_lines;
        line.name = layer.name;
        layer.breaklines.push_back(std::move(line));
    }

    SurfaceData& LayerOf(const Entity& entity)
    {
        const Group* const layer = entity.Find(8);
        const std::string name(layer ? layer->value : "0");
        const auto [found, isNew] = m_layers.try_emplace(name, m_file.surfaces.size());
        if (isNew) m_file.surfaces.emplace_back().name = name;
        return m_file.surfaces[found->second];
    }

    // A plane other than the ground's has axes of its own.
    bool IsTilted(const Entity& entity)
    {
        const bool tilted = Number(entity, 210, 0.0) != 0.0 || Number(entity, 220, 0.0) != 0.0 ||
                            !(Number(entity, 230, 1.0) > 0.0);
        if (tilted) ++m_passedOver["tilted " + std::string(entity.type)];
        return tilted;
    }

    void NoteCurve(const Group& group)
    {
        if (group.code == 42 && Coordinate(group) != 0.0) ++m_curves;
    }

    double Coordinate(const Group& group) const
    {
        double value = 0.0;
        if (!ParseNumber(group.value, value) || !IsCoordinate(value)) {
            Fail(group.line, Quoted(group.value) + " is no coordinate");
        }
        return value;
    }
    double Number(const Entity& entity, int code) const
    {
        const Group* const group = entity.Find(code);
        if (!group) {
            Fail(entity.line,
                 std::string(entity.type) + " has no coordinate of code " + std::to_string(code));
        }
        return Coordinate(*group);
    }
    double Number(const Entity& entity, int code, double without) const
    {
        const Group* const group = entity.Find(code);
        return group ? Coordinate(*group) : without;
    }
    int WholeNumber(const Group& group) const
    {
        int value = 0;
        const char* const end = group.value.data() + group.value.size();
        const auto read = std::from_chars(group.value.data(), end, value);
        if (read.ec != std::errc() || read.ptr != end) {
            Fail(group.line, Quoted(group.value) + " is no whole number");
        }
        return value;
    }
    int Flags(const Entity& entity) const
    {
        const Group* const group = entity.Find(70);
        return group ? WholeNumber(*group) : 0;
    }

    void TellPassedOver()
    {
        constexpr std::size_t kShown = 20;
        std::string kinds;
        std::size_t shown = 0;
        for (auto kind = m_passedOver.begin(); kind != m_passedOver.end() && shown < kShown;
             ++kind, ++shown) {
            kinds += (shown > 0 ? ", " : "") + std::to_string(kind->second) + " " + kind->first;
        }
        if (shown > 0)
            m_file.remarks.push_back("passed over: " + kinds + AndMore(m_passedOver.size(), kShown));
        if (m_curves > 0) {
            m_file.remarks.push_back(std::to_string(m_curves) + " arcs in polylines are taken as straight");
        }
    }

    TextFile m_text;
    Group m_next;
    ExchangeFile m_file;
    std::map<std::string, std::size_t> m_layers;
    std::map<std::string, int> m_passedOver;
    int m_lines = 0;
    int m_curves = 0;
};

}   // namespace

ExchangeFile ReadDxf(const std::string& path)
{
    return DxfReader(path).Read();
}

}   // namespace qsvtin
