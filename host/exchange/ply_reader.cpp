#include "host/exchange/ply.h"

#include "host/failure.h"
#include "host/input/byte_source.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"
#include "host/input/whole_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>

namespace qsvtin {

namespace {

struct Type {
    std::size_t bytes;
    enum Kind { Signed, Unsigned, Real } kind;
};

struct NamedType {
    std::string_view name;
    Type type;
};

constexpr std::array kTypes = {
    NamedType{"char", {1, Type::Signed}},     NamedType{"int8", {1, Type::Signed}},
    NamedType{"uchar", {1, Type::Unsigned}},  NamedType{"uint8", {1, Type::Unsigned}},
    NamedType{"short", {2, Type::Signed}},    NamedType{"int16", {2, Type::Signed}},
    NamedType{"ushort", {2, Type::Unsigned}}, NamedType{"uint16", {2, Type::Unsigned}},
    NamedType{"int", {4, Type::Signed}},      NamedType{"int32", {4, Type::Signed}},
    NamedType{"uint", {4, Type::Unsigned}},   NamedType{"uint32", {4, Type::Unsigned}},
    NamedType{"float", {4, Type::Real}},      NamedType{"float32", {4, Type::Real}},
    NamedType{"double", {8, Type::Real}},     NamedType{"float64", {8, Type::Real}},
};

struct Property {
    std::string name;
    Type type;
    std::optional<Type> count;   // of a list
};

struct Element {
    std::string name;
    std::uint64_t count = 0;
    std::vector<Property> properties;
};

enum class Format { Ascii, LittleEndian, BigEndian };

struct Header {
    Format format = Format::Ascii;
    std::vector<Element> elements;
    std::size_t size = 0;   // bytes up to the data
};

class HeaderReader
{
public:
    HeaderReader(const std::string& path, std::string_view bytes) : m_path(path), m_bytes(bytes) {}

    Header Read()
    {
        if (NextLine() != "ply") Fail("is no PLY file");
        for (;;) {
            SplitFields(NextLine(), Separator::Blank, m_fields);
            const std::string_view word = m_fields.empty() ? std::string_view() : m_fields[0];
            if (word == "end_header") break;
            if (word == "format") ReadFormat();
            if (word == "element") ReadElement();
            if (word == "property") ReadProperty();
        }
        m_header.size = m_position;
        return std::move(m_header);
    }

private:
    [[noreturn]] void Fail(const std::string& what) const { throw Failure(m_path + " " + what); }

    std::string_view NextLine()
    {
        const std::size_t end = m_bytes.find('\n', m_position);
        if (end == std::string_view::npos) Fail("is no PLY file, or cut short in its header");
        const std::string_view line = m_bytes.substr(m_position, end - m_position);
        m_position = end + 1;
        return Trimmed(line);
    }

    std::string_view Field(std::size_t i) const
    {
        if (i >= m_fields.size()) Fail("has a header line that is cut short");
        return m_fields[i];
    }

    void ReadFormat()
    {
        if (Field(1) == "binary_little_endian") {
            m_header.format = Format::LittleEndian;
        } else if (Field(1) == "binary_big_endian") {
            m_header.format = Format::BigEndian;
        } else if (Field(1) != "ascii") {
            Fail("is in an unknown format, " + Quoted(Field(1)));
        }
    }

    void ReadElement()
    {
        double count = 0.0;
        if (!ParseNumber(Field(2), count) || !(count >= 0.0 && count < 1e10) || count != std::floor(count)) {
            Fail("has " + Quoted(Field(2)) + " of an element; is the header damaged?");
        }
        m_header.elements.push_back({std::string(Field(1)), static_cast<std::uint64_t>(count), {}});
    }

    Type TypeNamed(std::string_view name) const
    {
        const auto found =
            std::find_if(kTypes.begin(), kTypes.end(), [&](const NamedType& t) { return t.name == name; });
        if (found == kTypes.end()) Fail("has a property of unknown type " + Quoted(name));
        return found->type;
    }

    void ReadProperty()
    {
        if (m_header.elements.empty()) Fail("has a property in front of any element");
        std::vector<Property>& properties = m_header.elements.back().properties;
        if (Field(1) == "list") {
            properties.push_back({std::string(Field(4)), TypeNamed(Field(3)), TypeNamed(Field(2))});
        } else {
            properties.push_back({std::string(Field(2)), TypeNamed(Field(1)), std::nullopt});
        }
    }

    const std::string& m_path;
    std::string_view m_bytes;
    std::size_t m_position = 0;
    std::vector<std::string_view> m_fields;
    Header m_header;
};

// The numbers behind the header, one after the other.
class Values
{
public:
    Values(const std::string& path, Format format, std::string_view bytes)
        : m_path(path), m_text(format == Format::Ascii), m_words(bytes),
          m_source(bytes, format == Format::BigEndian)
    {
    }

    double Next(const Type& type) { return m_text ? NextWord() : NextNumber(type); }
    std::size_t Rest() const { return m_text ? m_words.size() : m_source.Rest(); }
    [[noreturn]] void FailCutShort() const { throw Failure(m_path + " is cut short"); }

private:
    double NextWord()
    {
        constexpr std::string_view kBlanks = " \t\r\n";
        m_words.remove_prefix(std::min(m_words.find_first_not_of(kBlanks), m_words.size()));
        if (m_words.empty()) FailCutShort();
        const std::string_view word = m_words.substr(0, m_words.find_first_of(kBlanks));
        m_words.remove_prefix(word.size());
        double value = 0.0;
        if (!ParseNumber(word, value)) throw Failure(m_path + ": " + Quoted(word) + " is not a number");
        return value;
    }

    double NextNumber(const Type& type)
    {
        const double value = NumberOf(type);
        if (m_source.IsOverrun()) FailCutShort();
        return value;
    }

    double NumberOf(const Type& type)
    {
        if (type.kind == Type::Real) {
            return type.bytes == 4 ? static_cast<double>(m_source.TakeFloat()) : m_source.TakeDouble();
        }
        const std::uint32_t bits = m_source.TakeWhole(type.bytes);
        const std::int64_t range = std::int64_t{1} << (8 * type.bytes);
        const bool isNegative = type.kind == Type::Signed && bits >= range / 2;
        return static_cast<double>(isNegative ? bits - range : std::int64_t{bits});
    }

    const std::string& m_path;
    bool m_text;
    std::string_view m_words;
    ByteSource m_source;
};

class PlyReader
{
public:
    PlyReader(const std::string& path, std::string_view bytes)
        : m_path(path), m_header(HeaderReader(path, bytes).Read()),
          m_values(path, m_header.format, bytes.substr(m_header.size))
    {
    }

    MeshData Read()
    {
        for (const Element& element : m_header.elements) {
            if (element.properties.empty()) continue;
            if (element.count > m_values.Rest()) m_values.FailCutShort();   // one byte each at the least
            for (std::uint64_t i = 0; i < element.count; ++i) {
                ReadRecord(element);
            }
        }
        return std::move(m_mesh);
    }

private:
    void ReadRecord(const Element& element)
    {
        Position at{std::nan(""), std::nan(""), std::nan("")};
        for (const Property& property : element.properties) {
            if (property.count) {
                ReadList(element, property);
                continue;
            }
            const double value = m_values.Next(property.type);
            if (property.name == "x") at.x = value;
            if (property.name == "y") at.y = value;
            if (property.name == "z") at.z = value;
        }
        if (element.name != "vertex") return;
        if (!IsCoordinate(at.x) || !IsCoordinate(at.y) || !IsCoordinate(at.z)) {
            throw Failure(m_path + ": vertex " + std::to_string(m_mesh.vertices.size()) +
                          " has no usable x, y and z");
        }
        m_mesh.vertices.push_back(at);
    }

    void ReadList(const Element& element, const Property& property)
    {
        const double count = m_values.Next(*property.count);
        if (!(count >= 0.0 && count <= static_cast<double>(m_values.Rest()))) m_values.FailCutShort();
        m_list.clear();
        for (double i = 0.0; i < count; ++i) {
            m_list.push_back(m_values.Next(property.type));
        }
        if (element.name != "face" || property.name.compare(0, 6, "vertex") != 0) return;
        std::vector<int> corners;
        for (const double index : m_list) {
            if (!(index >= 0.0 && index < static_cast<double>(m_mesh.vertices.size()))) {
                throw Failure(m_path + ": a face refers to no vertex");
            }
            corners.push_back(static_cast<int>(index));
        }
        m_mesh.AddPolygon(corners);
    }

    const std::string& m_path;
    Header m_header;
    Values m_values;
    MeshData m_mesh;
    std::vector<double> m_list;
};

}   // namespace

MeshData ReadPlyMesh(const std::string& path)
{
    const std::string bytes = ReadRegularFile(path);
    return PlyReader(path, bytes).Read();
}

}   // namespace qsvtin
