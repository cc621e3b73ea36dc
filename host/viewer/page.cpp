#include "host/viewer/page.h"

#include "host/output/palette.h"
#include "host/output/text_sink.h"
#include "host/report/json_text.h"
#include "host/viewer/page_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace qsvtin {

namespace {

// Numbers as base64 of their bytes, lowest first (RFC 4648).
class Base64
{
public:
    explicit Base64(TextSink& text) : m_text(text) {}

    void PutInt(std::int32_t value) { PutBytes(static_cast<std::uint32_t>(value), 4); }
    void PutDouble(double value)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        PutBytes(bits, 8);
    }
    // Ends the text of the numbers put since the last call.
    void Finish()
    {
        constexpr std::string_view kPadding = "==";
        const int missing = m_held == 0 ? 0 : 3 - m_held;
        if (m_held > 0) {
            m_group <<= 8 * missing;
            PutGroup(4 - missing);
        }
        m_text << kPadding.substr(0, static_cast<std::size_t>(missing));
    }

private:
    void PutBytes(std::uint64_t bytes, int count)
    {
        for (int i = 0; i < count; ++i) {
            m_group = m_group << 8 | (bytes >> (8 * i) & 0xFF);
            if (++m_held == 3) PutGroup(4);
        }
    }

    void PutGroup(int digits)
    {
        constexpr std::string_view kDigits =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (int i = 0; i < digits; ++i) {
            m_text << kDigits.substr(m_group >> (18 - 6 * i) & 63, 1);
        }
        m_group = 0;
        m_held = 0;
    }

    TextSink& m_text;
    std::uint64_t m_group = 0;   // bytes that wait for a group of three
    int m_held = 0;              // how many
};

// A value inside a script of the page, where < could end the script.
std::string ForScript(const Json& value)
{
    std::string text;
    for (const char c : value.dump(-1, ' ', true, Json::error_handler_t::replace)) {
        text += c == '<' ? std::string("\\u003c") : std::string(1, c);
    }
    return text;
}

// Colours from the lowest to the highest place, as the maps have them.
Json Tints()
{
    constexpr int kSteps = 32;
    Json tints = Json::array();
    for (int i = 0; i <= kSteps; ++i) {
        const Rgb tint = HeightTint(static_cast<double>(i) / kSteps);
        tints.push_back(
            {std::lround(255.0 * tint.r), std::lround(255.0 * tint.g), std::lround(255.0 * tint.b)});
    }
    return tints;
}

void PutTriangles(const Terrain& terrain, TextSink& text)
{
    Base64 numbers(text);
    text << ",\"vertices\":\"";
    for (int v = 0; v < terrain.tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = terrain.tin.m_aVertex[v];
        for (const double coordinate : {p.x, p.y, p.z}) {
            numbers.PutDouble(coordinate);
        }
    }
    numbers.Finish();
    text << "\",\"triangles\":\"";
    for (int t = 0; t < terrain.tin.m_aTri.GetSize(); ++t) {
        for (const int v : terrain.tin.m_aTri[t].m_nVertex) {
            numbers.PutInt(v);
        }
    }
    numbers.Finish();
    text << "\"";
}

void PutBreaklines(const std::vector<Breakline>& lines, const LocalOrigin& origin, TextSink& text)
{
    Base64 numbers(text);
    text << ",\"lines\":[";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text << (i == 0 ? "\"" : ",\"");
        for (const Position& p : lines[i].points) {
            const Position local = origin.ToLocal(p);
            for (const double coordinate : {local.x, local.y, local.z}) {
                numbers.PutDouble(coordinate);
            }
        }
        numbers.Finish();
        text << "\"";
    }
    text << "]";
}

}   // namespace

bool HasViewer()
{
    return !kPageBeforeTerrain.empty();
}

void WritePage(const Terrain& terrain, const PageOptions& options, SafeFile& file)
{
    TextSink text(file);
    text << kPageBeforeTerrain << "{\"title\":" << ForScript(options.title)
         << ",\"exaggeration\":" << options.exaggeration
         << ",\"origin\":" << ForScript({terrain.origin.x, terrain.origin.y})
         << ",\"tints\":" << ForScript(Tints());
    PutTriangles(terrain, text);
    PutBreaklines(options.breaklines, terrain.origin, text);
    text << "}" << kPageAfterTerrain;
    text.Flush();
}

}   // namespace qsvtin
