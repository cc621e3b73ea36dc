#include "host/view/surface_colours.h"

#include "host/output/pen.h"

#include <algorithm>
#include <cmath>

namespace qsvtin {

namespace {

constexpr int kSamples = 3;     // for a pixel, in each direction
constexpr int kBandRows = 32;   // pixels: limits what the samples of a large picture take up

constexpr Rgb kEarth = {0.56, 0.50, 0.44};       // of the skirt
constexpr Rgb kUnderside = {0.52, 0.53, 0.57};   // of ground seen from below

double Between(double value, const std::array<double, 2>& range)
{
    return value < range[0] ? range[0] : value > range[1] ? range[1] : value;
}

double ShadeOf(const CXYZ& normal)
{
    constexpr double kSteep = 0.02;   // a wall has no slope that could be lit
    const double up = std::max(std::fabs(normal.z), kSteep);
    return HillShade(-normal.x / up, -normal.y / up);
}

std::array<double, 3> Product(const std::array<double, 3>& a, const std::array<double, 3>& b)
{
    return {a[0] * b[0], a[1] * b[1], a[2] * b[2]};
}

bool IsFinite(const CXYZ& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

}   // namespace

SurfaceColours::SurfaceColours(const Scene& scene, const Drawing& drawing, const SurfaceStyle& style,
                               int samples)
    : m_scene(scene), m_drawing(drawing), m_style(style), m_samples(samples)
{
    const auto nearer = [](const Seen& a, const Seen& b) { return a.distance < b.distance; };
    const auto [nearest, farthest] = std::minmax_element(
        drawing.vertices.begin(), drawing.vertices.begin() + scene.tin.m_aVertex.GetSize(), nearer);
    m_nearest = nearest->distance;
    m_farthest = farthest->distance;
}

double SurfaceColours::ShadeAt(int triangle, int corner) const
{
    const CXYZ& facet = m_scene.tin.m_aTriNormal[triangle];
    const CXYZ& mean = m_scene.tin.m_aVtNormal[m_scene.tin.m_aTri[triangle].m_nVertex[corner]];
    if (!IsFinite(facet)) return 1.0;
    if (triangle >= m_scene.groundTriangles || !IsFinite(mean)) return ShadeOf(facet);
    return ShadeOf({facet.x + kSmoothShare * (mean.x - facet.x), facet.y + kSmoothShare * (mean.y - facet.y),
                    facet.z + kSmoothShare * (mean.z - facet.z)});
}

void SurfaceColours::Prepare(int triangle)
{
    const std::array<Dot, 3> corners = m_drawing.CornersOf(triangle);
    std::array<double, 3> nearness, height, shade;
    for (std::size_t k = 0; k < 3; ++k) {
        nearness[k] = m_nearest / m_drawing.Corner(triangle, k).distance;
        height[k] = m_scene.Corner(triangle, static_cast<int>(k)).z / m_scene.exaggeration + m_scene.centre.z;
        shade[k] = ShadeAt(triangle, static_cast<int>(k));
    }
    m_now.triangle = triangle;
    m_now.underside = DoubledArea(corners) > 0.0 && triangle < m_scene.groundTriangles;   // y runs down
    m_now.nearness = PlaneThrough(corners, nearness);
    m_now.height = PlaneThrough(corners, Product(height, nearness));
    m_now.shade = PlaneThrough(corners, Product(shade, nearness));
    m_now.heights = {std::min({height[0], height[1], height[2]}),
                     std::max({height[0], height[1], height[2]})};
    m_now.shades = {std::min({shade[0], shade[1], shade[2]}), std::max({shade[0], shade[1], shade[2]})};
    PrepareTexture(corners, nearness);
    PrepareLines(corners);
}

void SurfaceColours::PrepareTexture(const std::array<Dot, 3>& corners, const std::array<double, 3>& nearness)
{
    if (!m_scene.texture || m_now.triangle >= m_scene.groundTriangles) return;
    std::array<double, 3> east, north;
    std::array<Dot, 3> texels;
    for (std::size_t k = 0; k < 3; ++k) {
        const CXYZ& vertex = m_scene.Corner(m_now.triangle, static_cast<int>(k));
        east[k] = vertex.tu;
        north[k] = vertex.tv;
        texels[k] = {east[k] * m_scene.texture->Width(), north[k] * m_scene.texture->Height()};
    }
    m_now.east = PlaneThrough(corners, Product(east, nearness));
    m_now.north = PlaneThrough(corners, Product(north, nearness));
    m_now.texels = std::sqrt(std::fabs(DoubledArea(texels) / DoubledArea(corners))) / m_samples;
}

// Edges fade out as triangles become too small to tell apart.
void SurfaceColours::PrepareLines(const std::array<Dot, 3>& c)
{
    constexpr double kFirstArea = 90.0, kFullArea = 700.0, kAlpha = 0.26;
    m_now.lines = {};
    if (!m_style.edges || m_now.triangle >= m_scene.groundTriangles) return;
    const double area = 0.5 * std::fabs(DoubledArea(c)) / (m_style.lineWidth * m_style.lineWidth);
    const double share = std::clamp((area - kFirstArea) / (kFullArea - kFirstArea), 0.0, 1.0);
    for (std::size_t k = 0; k < 3; ++k) {
        const Dot &a = c[k], &b = c[(k + 1) % 3];
        const double dx = b.x - a.x, dy = b.y - a.y, length = std::hypot(dx, dy);
        if (length == 0.0) continue;
        Line& line = m_now.lines[k];
        line.distance = {(a.x * dy - a.y * dx) / length, -dy / length, dx / length};
        line.halfWidth = 0.5 * m_style.lineWidth;
        line.alpha = kAlpha * std::sqrt(share);
    }
}

Rgb SurfaceColours::Ground(double x, double y, double nearness) const
{
    const double shade = Between(m_now.shade.At(x, y) / nearness, m_now.shades);
    if (m_now.triangle >= m_scene.groundTriangles) return Shaded(kEarth, 0.35 + 0.5 * shade);
    if (m_now.underside) return Shaded(kUnderside, std::min(shade, 0.9));
    const double height = Between(m_now.height.At(x, y) / nearness, m_now.heights);
    const double range = m_scene.high - m_scene.low;
    const Rgb tint = HeightTint(range > 0.0 ? (height - m_scene.low) / range : 0.5);
    if (!m_scene.texture) return Shaded(tint, shade);
    constexpr double kLight = 0.55;   // a photograph has light of its own
    const Rgb over = m_scene.texture->Over(tint, m_now.east.At(x, y) / nearness,
                                           m_now.north.At(x, y) / nearness, m_now.texels);
    return Shaded(over, 1.0 + kLight * (shade - 1.0));
}

Rgb SurfaceColours::At(int triangle, int column, int row)
{
    if (triangle != m_now.triangle) Prepare(triangle);
    const double x = (column + 0.5) / m_samples, y = (row + 0.5) / m_samples;
    const double nearness = m_now.nearness.At(x, y);
    Rgb colour = Ground(x, y, nearness);
    for (const Line& line : m_now.lines) {
        if (line.alpha > 0.0 && std::fabs(line.distance.At(x, y)) <= line.halfWidth)
            colour = Mix(colour, kInk, line.alpha);
    }
    if (m_style.hazeShare > 0.0 && m_farthest > m_nearest) {
        const double away = (m_nearest / nearness - m_nearest) / (m_farthest - m_nearest);
        colour = Mix(colour, m_style.haze, m_style.hazeShare * std::clamp(away, 0.0, 1.0));
    }
    return colour;
}

namespace {

std::uint32_t MixPixel(SurfaceColours& colours, const Band& band, int x, int y)
{
    constexpr double kAll = kSamples * kSamples;
    Rgb sum;
    int hits = 0;
    for (int row = y * kSamples; row < (y + 1) * kSamples; ++row) {
        for (int column = x * kSamples; column < (x + 1) * kSamples; ++column) {
            const std::ptrdiff_t at = static_cast<std::ptrdiff_t>(row - band.firstRow) * band.width + column;
            const int owner = band.owners[static_cast<std::size_t>(at)];
            if (owner < 0) continue;
            const Rgb colour = colours.At(owner, column, row);
            sum = {sum.r + colour.r, sum.g + colour.g, sum.b + colour.b};
            ++hits;
        }
    }
    const auto byte = [](double share) { return static_cast<std::uint32_t>(std::lround(share * 255.0)); };
    const std::uint32_t alpha = byte(hits / kAll);
    const auto part = [&](double value) { return std::min(alpha, byte(value / kAll)); };
    return alpha << 24 | part(sum.r) << 16 | part(sum.g) << 8 | part(sum.b);
}

}   // namespace

std::vector<std::uint32_t> ColourSurface(const Scene& scene, const Drawing& drawing,
                                         const SurfaceStyle& style, int width, int height)
{
    SurfaceColours colours(scene, drawing, style, kSamples);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    Band band;
    band.width = width * kSamples;
    for (int top = 0; top < height; top += kBandRows) {
        const int bottom = std::min(top + kBandRows, height);
        band.firstRow = top * kSamples;
        band.rows = (bottom - top) * kSamples;
        Paint(drawing, kSamples, band);
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < width; ++x) {
                pixels.push_back(MixPixel(colours, band, x, y));
            }
        }
    }
    return pixels;
}

}   // namespace qsvtin
