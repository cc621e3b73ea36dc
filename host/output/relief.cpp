#include "host/output/relief.h"

#include "host/output/palette.h"
#include "host/output/triangle_rows.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

constexpr int kSamples = 3;   // a pixel, each way
constexpr int kTints = 1024;

// Sums of the samples that hit a pixel.
struct PixelSum {
    std::uint16_t r = 0;
    std::uint16_t g = 0;
    std::uint16_t b = 0;
    std::uint16_t hits = 0;
};

double Mixed(double facet, double smooth)
{
    return facet + kSmoothShare * (smooth - facet);
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

    void Fill(const std::array<Dot, 3>& corners, const std::array<double, 3>& heights,
              const std::array<double, 3>& shades)
    {
        if (DoubledArea(corners) == 0.0) return;
        const Quantity height(corners, heights), shade(corners, shades);
        VisitRows(corners, 0, m_height * kSamples, m_width * kSamples, [&](int row, int first, int behind) {
            PixelSum* const sums =
                &m_sums[static_cast<std::size_t>(row / kSamples) * static_cast<std::size_t>(m_width)];
            for (int column = first; column < behind; ++column) {
                AddSample(sums[column / kSamples], height.At(column + 0.5, row + 0.5),
                          shade.At(column + 0.5, row + 0.5));
            }
        });
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
        std::array<Dot, 3> corners;
        std::array<double, 3> heights, shades;
        for (std::size_t k = 0; k < 3; ++k) {
            const Position& p = CornerOf(view, t, k);
            const Gradient& smooth = view.gradients[static_cast<std::size_t>(view.triangles[t][k])];
            corners[k] = {kSamples * toPixels.X(p.x), kSamples * toPixels.Y(p.y)};
            heights[k] = p.z;
            shades[k] =
                HillShade(exaggeration * Mixed(facet.x, smooth.x), exaggeration * Mixed(facet.y, smooth.y));
        }
        canvas.Fill(corners, heights, shades);
    }
    return canvas.Finish();
}

}   // namespace qsvtin
