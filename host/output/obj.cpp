#include "host/output/obj.h"

#include <array>
#include <charconv>

namespace qsvtin {

namespace {

// Collects text and passes it on in large pieces. Numbers come with as few digits as give them back exactly.
class TextSink
{
public:
    explicit TextSink(SafeFile& file) : m_file(file) {}

    TextSink& operator<<(std::string_view text)
    {
        m_text += text;
        if (m_text.size() > kPiece) Flush();
        return *this;
    }
    template <class Number>
    TextSink& Add(Number number)
    {
        std::array<char, 32> digits;
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }
    TextSink& operator<<(double number) { return Add(number); }
    TextSink& operator<<(int number) { return Add(number); }

    void Flush()
    {
        m_file.Write(m_text);
        m_text.clear();
    }

private:
    static constexpr std::size_t kPiece = 1 << 16;
    SafeFile& m_file;
    std::string m_text;
};

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

void WriteObj(const Terrain& terrain, const std::string& title, SafeFile& file)
{
    TextSink sink(file);
    sink << "# qsvtin: " << title << "\n";
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
