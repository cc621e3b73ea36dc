#include "host/output/palette.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qsvtin {

namespace {

struct Stop {
    double t;
    Rgb colour;
};

constexpr std::array kStops = {
    Stop{0.00, {0.290, 0.515, 0.420}}, Stop{0.15, {0.455, 0.655, 0.470}}, Stop{0.32, {0.690, 0.790, 0.540}},
    Stop{0.50, {0.930, 0.880, 0.640}}, Stop{0.66, {0.860, 0.700, 0.460}}, Stop{0.82, {0.690, 0.480, 0.345}},
    Stop{0.92, {0.735, 0.600, 0.535}}, Stop{1.00, {0.945, 0.925, 0.905}},
};

}   // namespace

Rgb Mix(const Rgb& from, const Rgb& to, double share)
{
    return {from.r + share * (to.r - from.r), from.g + share * (to.g - from.g),
            from.b + share * (to.b - from.b)};
}

Rgb HeightTint(double t)
{
    std::size_t i = 1;
    while (i + 1 < kStops.size() && t > kStops[i].t) {
        ++i;
    }
    const Stop &below = kStops[i - 1], &above = kStops[i];
    return Mix(below.colour, above.colour, std::clamp((t - below.t) / (above.t - below.t), 0.0, 1.0));
}

double HillShade(double gx, double gy)
{
    constexpr double kSky = 0.30, kSteepest = 1.1;
    const double softened = 1.0 / (1.0 + std::hypot(gx, gy) / kSteepest);
    const double nx = -gx * softened, ny = -gy * softened;   // of the normal (nx, ny, 1)
    // Towards the light: (-1, 1, sqrt 2) / 2. Level ground receives sqrt(1/2) of it.
    const double light = (-nx + ny + std::sqrt(2.0)) / (2.0 * std::sqrt(nx * nx + ny * ny + 1.0));
    return kSky + (1.0 - kSky) * std::max(0.0, light) * std::sqrt(2.0);
}

Rgb Shaded(const Rgb& tint, double shade)
{
    constexpr Rgb kDark = {0.13, 0.15, 0.22};   // shadows are bluish, as under a clear sky
    constexpr Rgb kLight = {1.0, 0.995, 0.96};
    if (shade < 1.0) return Mix(kDark, tint, 0.12 + 0.88 * shade);
    return Mix(tint, kLight, std::min(0.6, 1.1 * (shade - 1.0)));
}

}   // namespace qsvtin
