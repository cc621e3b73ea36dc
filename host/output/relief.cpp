#include "host/output/relief.h"

#include "host/output/palette.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

constexpr int kSamples = 3;   // a pixel, each way
constexpr int kTints = 1024;

struct Corner {
    double x;   // in samples
    double y;
    double z;
    double shade;
};

// Sums of the samples that hit a pixel.
struct PixelSum {
    std::uint16_t r = 0;
    std::uint16_t g = 0;
    std::uint16_t b = 0;
    std::uint16_t hits = 0;
};

// A quantity that changes linearly over a triangle: its value at the sample origin and its change from sample
// to sample.
struct Plane {
    double atOrigin;
    double alongX;
    double alongY;
    double lowest;   // a sliver's plane, tilted by rounding, does not leave the values of its corners
    double highest;

    double At(double x, double y) const
    {
        return std::clamp(atOrigin + alongX * x + alongY * y, lowest, highest);
    }
};

Plane PlaneThrough(const std::array<Corner, 3>& c, double Corner::*value, double doubledArea)
{
    const double v0 = c[0].*value, v1 = c[1].*value - v0, v2 = c[2].*value - v0;
    const double x1 = c[1].x - c[0].x, y1 = c[1].y - c[0].y, x2 = c[2].x - c[0].x, y2 = c[2].y - c[0].y;
    const double alongX = (v1 * y2 - v2 * y1) / doubledArea, alongY = (v2 * x1 - v1 * x2) / doubledArea;
    const auto [lowest, highest] = std::minmax({v0, c[1].*value, c[2].*value});
    return {v0 - alongX * c[0].x - alongY * c[0].y, alongX, alongY, lowest, highest};
}

// Where the edge between two corners crosses the middle of a row of samples. The lower corner always comes
// first, so that both triangles of the edge find the same place to the bit.
double CrossingOfRow(const Corner& a, const Corner& b, double rowY)
{
    const Corner& upper = a.y < b.y || (a.y == b.y && a.x < b.x) ? a : b;
    const Corner& lower = &upper == &a ? b : a;
    return upper.x + (rowY - upper.y) / (lower.y - upper.y) * (lower.x - upper.x);
}

int FirstSampleFrom(double position, int count)
{
    return static_cast<int>(std::clamp(std::ceil(position - 0.5), 0.0, static_cast<double>(count)));
}

// The ground is smoother than its triangles, but a crease along a breakline is real: light falls on a slope
// between the triangle's own and the mean around each corner.
double Mixed(double facet, double smooth)
{
    constexpr double kSmooth = 0.65;
    return facet + kSmooth * (smooth - facet);
}

class Canvas
{
public:
    Canvas(int width, int height, double low, double high)
        : m_width(width), m_height(height), m_low(low),
          m_tintsPerHeight(high > low ? (kTints - 1) / (high - low) : 0.0),
          m_sums(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
        for (int i = 0; i < kTints; ++i) {
            m_tints[static_cast<std::size_t>(i)] =
                HeightTint(high > low ? static_cast<double>(i) / (kTints - 1) : 0.5);
        }
    }

    void Fill(const std::array<Corner, 3>& c)
    {
        const double doubledArea =
            (c[1].x - c[0].x) * (c[2].y - c[0].y) - (c[2].x - c[0].x) * (c[1].y - c[0].y);
        if (doubledArea == 0.0) return;
        const Plane height = PlaneThrough(c, &Corner::z, doubledArea);
        const Plane shade = PlaneThrough(c, &Corner::shade, doubledArea);
        const auto [top, bottom] = std::minmax({c[0].y, c[1].y, c[2].y});
        const int lastRow = FirstSampleFrom(bottom, m_height * kSamples);
        for (int row = FirstSampleFrom(top, m_height * kSamples); row < lastRow; ++row) {
            FillRow(c, row, height, shade);
        }
    }

    Relief Finish() const
    {
        Relief relief{m_width, m_height, {}};
        relief.pixels.reserve(m_sums.size());
        constexpr std::uint32_t kAll = kSamples * kSamples;
        for (const PixelSum& sum : m_sums) {
            const std::uint32_t alpha = 255u * sum.hits / kAll;
            relief.pixels.push_back(alpha << 24 | sum.r / kAll << 16 | sum.g / kAll << 8 | sum.b / kAll);
        }
        return relief;
    }

private:
    void FillRow(const std::array<Corner, 3>& c, int row, const Plane& height, const Plane& shade)
    {
        const double y = row + 0.5;
        double left = 1e300, right = -1e300;
        for (std::size_t k = 0; k < 3; ++k) {
            const Corner &a = c[k], &b = c[(k + 1) % 3];
            if ((a.y <= y) == (b.y <= y)) continue;
            const double x = CrossingOfRow(a, b, y);
            left = std::min(left, x);
            right = std::max(right, x);
        }
        if (left > right) return;
        const int last = FirstSampleFrom(right, m_width * kSamples);
        PixelSum* const sums =
            &m_sums[static_cast<std::size_t>(row / kSamples) * static_cast<std::size_t>(m_width)];
        for (int column = FirstSampleFrom(left, m_width * kSamples); column < last; ++column) {
            AddSample(sums[column / kSamples], height.At(column + 0.5, y), shade.At(column + 0.5, y));
        }
    }

    void AddSample(PixelSum& sum, double height, double shade)
    {
        const double tint = std::clamp((height - m_low) * m_tintsPerHeight, 0.0, kTints - 1.0);
        const Rgb colour = Shaded(m_tints[static_cast<std::size_t>(tint)], shade);
        const auto part = [](double value) { return static_cast<std::uint16_t>(value * 255.0 + 0.5); };
        sum.r = static_cast<std::uint16_t>(sum.r + part(colour.r));
        sum.g = static_cast<std::uint16_t>(sum.g + part(colour.g));
        sum.b = static_cast<std::uint16_t>(sum.b + part(colour.b));
        ++sum.hits;
    }

    int m_width;
    int m_height;
    double m_low;
    double m_tintsPerHeight;
    std::array<Rgb, kTints> m_tints;
    std::vector<PixelSum> m_sums;
};

}   // namespace

Relief DrawRelief(const PlanView& view, const PlanToPicture& toPixels, int width, int height,
                  double exaggeration)
{
    Canvas canvas(width, height, view.low.z, view.high.z);
    for (std::size_t t = 0; t < view.triangles.size(); ++t) {
        const Gradient facet = GradientOf(view, t);
        std::array<Corner, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) {
            const Position& p = CornerOf(view, t, k);
            const Gradient& smooth = view.gradients[static_cast<std::size_t>(view.triangles[t][k])];
            corners[k] = {
                kSamples * toPixels.X(p.x), kSamples * toPixels.Y(p.y), p.z,
                HillShade(exaggeration * Mixed(facet.x, smooth.x), exaggeration * Mixed(facet.y, smooth.y))};
        }
        canvas.Fill(corners);
    }
    return canvas.Finish();
}

}   // namespace qsvtin
