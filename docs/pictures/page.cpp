#include "docs/pictures/page.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kMargin = 18.0;
constexpr double kCaption = 26.0;

// Hundredths of a pixel: finer digits may differ from one C library to the next.
std::string Number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value == 0.0 ? 0.0 : value);
    return text;
}

}   // namespace

Panel::Panel(const std::string& caption, Place low, Place high)
    : m_low(low), m_high(high), m_scale(std::min((kWidth - 2 * kMargin) / (high.x - low.x),
                                                 (kHeight - 2 * kMargin - kCaption) / (high.y - low.y)))
{
    m_svg = "<text x=\"" + Number(kWidth / 2) + "\" y=\"" + Number(kHeight - 8.0) +
            "\" text-anchor=\"middle\" font-size=\"14\" fill=\"#333\">" + caption + "</text>\n";
}

std::string Panel::At(Place p) const
{
    const double x = kWidth / 2 + (p.x - (m_low.x + m_high.x) / 2) * m_scale;
    const double y = (kHeight - kCaption) / 2 - (p.y - (m_low.y + m_high.y) / 2) * m_scale;
    return Number(x) + " " + Number(y);
}

void Panel::Line(Place a, Place b, const std::string& style)
{
    Chain({a, b}, false, style);
}

void Panel::Chain(const std::vector<Place>& places, bool closed, const std::string& style)
{
    m_svg += "<path " + style + " d=\"";
    for (std::size_t i = 0; i < places.size(); ++i) {
        m_svg += (i == 0 ? "M" : "L") + At(places[i]);
    }
    m_svg += closed ? "z\"/>\n" : "\"/>\n";
}

void Panel::Circle(Place centre, double radius, const std::string& style)
{
    const std::string at = At(centre);
    const std::size_t gap = at.find(' ');
    m_svg += "<circle cx=\"" + at.substr(0, gap) + "\" cy=\"" + at.substr(gap + 1) + "\" r=\"" +
             Number(radius * m_scale) + "\" " + style + "/>\n";
}

void Panel::Dot(Place at, const std::string& colour)
{
    Circle(at, 3.5 / m_scale, "fill=\"" + colour + "\"");
}

void Panel::Text(Place at, const std::string& text, const std::string& colour, int size)
{
    const std::string place = At(at);
    const std::size_t gap = place.find(' ');
    m_svg += "<text x=\"" + place.substr(0, gap) + "\" y=\"" + place.substr(gap + 1) +
             "\" dy=\"0.35em\" text-anchor=\"middle\" font-size=\"" + std::to_string(size) + "\" fill=\"" +
             colour + "\">" + text + "</text>\n";
}

void DrawMesh(Panel& panel, CTin& tin, const std::string& style)
{
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        const CTriangle& tri = tin.m_aTri[t];
        panel.Chain(
            {PlaceOf(tin, tri.m_nVertex[0]), PlaceOf(tin, tri.m_nVertex[1]), PlaceOf(tin, tri.m_nVertex[2])},
            true, style + " stroke-linejoin=\"round\"");
    }
}

Place PlaceOf(CTin& tin, int vertex)
{
    return {tin.m_aVertex[vertex].x, tin.m_aVertex[vertex].y};
}

bool WritePage(const std::string& path, const std::vector<Panel>& panels)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    const double width = Panel::kWidth * static_cast<double>(panels.size());
    std::fprintf(file,
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %.0f %.0f\" width=\"%.0f\" "
                 "font-family=\"sans-serif\">\n<rect width=\"100%%\" height=\"100%%\" fill=\"#fff\"/>\n",
                 width, Panel::kHeight, width);
    for (std::size_t i = 0; i < panels.size(); ++i) {
        std::fprintf(file, "<g transform=\"translate(%.0f 0)\">\n%s</g>\n",
                     Panel::kWidth * static_cast<double>(i), panels[i].Svg().c_str());
    }
    std::fputs("</svg>\n", file);
    return std::fclose(file) == 0;
}
